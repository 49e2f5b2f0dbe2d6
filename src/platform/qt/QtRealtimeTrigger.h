#pragma once

#include <QObject>

#include "base/Lifetime.h"
#include "platform/MainQueue.h"

#ifdef __linux__
#include "platform/posix/FileDescriptor.h"
#endif

#include <memory>

class QSocketNotifier;

namespace tessivo {

/// A trigger that costs the real-time thread one write to a kernel counter. Qt's own ways of
/// waking the main thread allocate an event and take the lock of its queue.
///
/// On systems without such a counter the firing is posted through that queue, which isn't free of
/// locks: a port to one of them brings its own kernel object.
class QtRealtimeTrigger final : public MainQueue::RealtimeTrigger {
public:
    /// Runs end when `queue` or the trigger is destroyed, whichever comes first. Throws
    /// std::system_error when the system has no counter left: triggers are made at the start,
    /// before there is a show to lose.
    QtRealtimeTrigger(QObject& queue, MainQueue::Task task);
    ~QtRealtimeTrigger() override;
    QtRealtimeTrigger(const QtRealtimeTrigger&) = delete;
    QtRealtimeTrigger& operator=(const QtRealtimeTrigger&) = delete;

    void fire() noexcept override;

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
