#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace tessivo::test {

/// Runs the event loop until `condition` holds; false when it still doesn't after half a minute.
template <typename Condition>
bool runUntil(const Condition& condition) {
    QElapsedTimer waited;
    waited.start();
    QTimer look;  // what comes from other threads and processes wakes nobody here
    look.start(5);
    while (!condition() && waited.elapsed() < 30'000) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return condition();
}

}  // namespace tessivo::test
