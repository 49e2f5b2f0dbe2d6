#pragma once

#include <QObject>

#include "platform/MainQueue.h"
#include "platform/qt/QtWakeUp.h"

#include <deque>
#include <mutex>

namespace tessivo {

/// The main queue on Qt's event loop. Made and destroyed on the main thread, while the application
/// object lives; what is still waiting when it is destroyed never runs.
class QtMainQueue final : public MainQueue {
public:
    QtMainQueue();

    void post(Task task) override;
    /// Delays are whole milliseconds, rounded up, and at most 24 days.
    void postAfter(double seconds, Task task) override;
    /// Runs at the instants start + n × `seconds`. Those that pass while the main thread is busy
    /// are made up for by one run.
    std::unique_ptr<Repetition> repeatEvery(double seconds, Task task) override;

private:
    void runFirst();

    QObject context_;  // what runs belongs to it and ends with it
    std::mutex mutex_;
    std::deque<Task> posted_;
    QtWakeUp wake_;  // one firing for each posted task
};

}  // namespace tessivo
