#include <QCoreApplication>

#include <doctest/doctest.h>

// With the application object that Qt's event loop needs.
int main(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    return doctest::Context(argumentCount, arguments).run();
}
