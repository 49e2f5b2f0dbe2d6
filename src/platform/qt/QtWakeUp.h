#pragma once

#include <QObject>

#include "platform/MainQueue.h"

#ifdef __linux__
#include "platform/posix/FileDescriptor.h"
#endif

#include <memory>

class QSocketNotifier;

namespace tessivo {

/// Runs a task on the main thread whenever another thread asks for it, at the cost of one write to
/// a kernel counter: Qt's own ways of waking the main thread are made of bare futexes, which a
/// thread checker can't see. Where there is no such counter they have to do.
class QtWakeUp {
public:
    /// Runs end when `queue` or this is destroyed, whichever comes first. Throws std::system_error
    /// when the system has no counter left.
    QtWakeUp(QObject& queue, MainQueue::Task task);
    ~QtWakeUp();
    QtWakeUp(const QtWakeUp&) = delete;
    QtWakeUp& operator=(const QtWakeUp&) = delete;

    /// Asks for one run, in a turn of its own. Any thread may call this.
    void fire();

private:
    MainQueue::Task task_;
#ifdef __linux__
    FileDescriptor counter_;
    std::unique_ptr<QSocketNotifier> notifier_;
#else
    QObject context_;
#endif
};

}  // namespace tessivo
