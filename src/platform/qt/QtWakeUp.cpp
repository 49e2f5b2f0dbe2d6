#include "platform/qt/QtWakeUp.h"

#ifdef __linux__

#include <QSocketNotifier>

#include <sys/eventfd.h>

#include <cerrno>
#include <system_error>

namespace tessivo {

// Each read takes 1 from the counter, and the notifier fires once per turn of the event loop for as
// long as something is left: one run per firing, with room for input between two of them.
QtWakeUp::QtWakeUp(QObject& queue, MainQueue::Task task)
    : task_(std::move(task)), counter_(eventfd(0, EFD_SEMAPHORE | EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (!counter_.isOpen()) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    notifier_ = std::make_unique<QSocketNotifier>(counter_.value(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, &queue, [this] {
        eventfd_t taken = 0;
        if (eventfd_read(counter_.value(), &taken) == 0) {
            task_();
        }
    });
}

QtWakeUp::~QtWakeUp() = default;

void QtWakeUp::fire() {
    eventfd_write(counter_.value(), 1);
}

}  // namespace tessivo

#else

#include "base/Lifetime.h"

namespace tessivo {

QtWakeUp::QtWakeUp(QObject& queue, MainQueue::Task task) : task_(std::move(task)) {
    QObject::connect(&queue, &QObject::destroyed, &context_, [this] { task_ = nullptr; });
}

QtWakeUp::~QtWakeUp() = default;

void QtWakeUp::fire() {
    QMetaObject::invokeMethod(
        &context_, [this] { callHandler(task_); }, Qt::QueuedConnection);
}

}  // namespace tessivo

#endif
