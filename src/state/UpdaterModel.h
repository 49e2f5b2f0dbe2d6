#pragma once

#include "base/Lifetime.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

class UpdateFeed;

/// Whether `candidate` comes after `current`; both are numbers between dots, compared from the
/// left, where a missing number counts as 0. Anything else is never newer.
bool isNewerVersion(std::string_view candidate, std::string_view current);

/// Looks for a newer version of the program.
class UpdaterModel {
public:
    explicit UpdaterModel(UpdateFeed& feed) : feed_(feed) {}

    /// Called on the main thread after each check, with the display version of the update that was
    /// found, or with nothing.
    std::function<void(std::optional<std::string> version)> onUpdateAvailable;

    /// Checks in the background, without showing anything.
    void checkForUpdateInformation();

    /// Whether the last check that came to its end couldn't learn the newest version.
    bool hasFailed() const { return hasFailed_; }

private:
    UpdateFeed& feed_;
    bool hasFailed_ = false;
    Lifetime life_;
};

}  // namespace tessivo
