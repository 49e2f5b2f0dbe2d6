#pragma once

#include "platform/Background.h"

#include <memory>

namespace tessivo {

/// A thread for each piece of work.
class ThreadBackground final : public Background {
public:
    ThreadBackground();
    /// Waits for what still runs, but not for long: a disk that hangs must not keep the program.
    ~ThreadBackground() override;

    void run(std::function<void()> work) override;

private:
    struct Running;
    std::shared_ptr<Running> running_;
};

}  // namespace tessivo
