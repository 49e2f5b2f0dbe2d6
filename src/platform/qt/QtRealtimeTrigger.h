#pragma once

#include <QObject>

#include "platform/MainQueue.h"

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
    /// Runs end when `queue` or the trigger is destroyed, whichever comes first.
    QtRealtimeTrigger(QObject& queue, MainQueue::Task task);
    ~QtRealtimeTrigger() override;
    QtRealtimeTrigger(const QtRealtimeTrigger&) = delete;
    QtRealtimeTrigger& operator=(const QtRealtimeTrigger&) = delete;

    void fire() noexcept override;

private:
    std::shared_ptr<MainQueue::Task> task_;  // also held by a run, which may destroy the trigger
#ifdef __linux__
    int counter_;
    std::unique_ptr<QSocketNotifier> notifier_;
#else
    QObject context_;
#endif
};

}  // namespace tessivo
