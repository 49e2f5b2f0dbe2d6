#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

namespace tessivo::test {

/// Runs the event loop until `condition` holds; false when it still doesn't after half a minute.
template <typename Condition>
bool runUntil(const Condition& condition) {
    QElapsedTimer waited;
    waited.start();
    while (!condition() && waited.elapsed() < 30'000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return condition();
}

}  // namespace tessivo::test
