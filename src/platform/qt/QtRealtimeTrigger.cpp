#include "platform/qt/QtRealtimeTrigger.h"

#ifdef __linux__

#include <QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace tessivo {

// Each read takes 1 from the counter, and the notifier fires once per turn of the event loop for as
// long as something is left: one run per firing, with room for input between two of them.
QtRealtimeTrigger::QtRealtimeTrigger(QObject& queue, MainQueue::Task task)
    : task_(std::make_shared<MainQueue::Task>(std::move(task))),
      counter_(eventfd(0, EFD_SEMAPHORE | EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (counter_ < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    notifier_ = std::make_unique<QSocketNotifier>(counter_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, &queue,
                     [counter = counter_, held = std::weak_ptr(task_)] {
                         eventfd_t taken = 0;
                         const auto live = held.lock();
                         if (live && eventfd_read(counter, &taken) == 0) {
                             (*live)();
                         }
                     });
}

QtRealtimeTrigger::~QtRealtimeTrigger() {
    notifier_.reset();
    close(counter_);
}

void QtRealtimeTrigger::fire() noexcept {
    eventfd_write(counter_, 1);
}

}  // namespace tessivo

#else

namespace tessivo {

QtRealtimeTrigger::QtRealtimeTrigger(QObject& queue, MainQueue::Task task)
    : task_(std::make_shared<MainQueue::Task>(std::move(task))) {
    QObject::connect(&queue, &QObject::destroyed, &context_, [this] { task_.reset(); });
}

QtRealtimeTrigger::~QtRealtimeTrigger() = default;

void QtRealtimeTrigger::fire() noexcept {
    QMetaObject::invokeMethod(
        &context_,
        [this] {
            if (const auto live = task_) {
                (*live)();
            }
        },
        Qt::QueuedConnection);
}

}  // namespace tessivo

#endif
