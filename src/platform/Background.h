#pragma once

#include <functional>

namespace tessivo {

/// Work that would hold up the main thread. It uses nothing that others change meanwhile, and tells
/// its result through `Turns::poster()`, which is also where it ends when its owner has gone.
class Background {
public:
    virtual ~Background() = default;

    /// Runs `work` once on another thread, beside whatever else runs there. Main thread only.
    virtual void run(std::function<void()> work) = 0;
};

}  // namespace tessivo
