#define DOCTEST_CONFIG_IMPLEMENT
#include <QCoreApplication>

#include <doctest/doctest.h>

// doctest's own main, with the application object that Qt's event loop needs.
int main(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    return doctest::Context(argumentCount, arguments).run();
}
