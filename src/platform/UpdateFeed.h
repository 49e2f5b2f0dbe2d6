#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tessivo {

/// Where the newest published version of the program is announced.
class UpdateFeed {
public:
    /// The version as it is shown, numbers between dots; nothing when it could not be learned.
    using Answer = std::function<void(std::optional<std::string> version)>;

    virtual ~UpdateFeed() = default;

    /// Asks, and calls `answer` once on a later turn of the main thread.
    virtual void fetchLatestVersion(Answer answer) = 0;
};

}  // namespace tessivo
