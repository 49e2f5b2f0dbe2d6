#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

class MainQueue;

/// Looks for a newer version of the program. The address of the feed is fixed when the program is
/// built; builds that come from a package have none, since the system updates them, and then every
/// check finds none.
class UpdaterModel {
public:
    explicit UpdaterModel(MainQueue& mainQueue);

    /// Called on the main thread after each check, with the display version of the update that was
    /// found, or with nothing.
    std::function<void(std::optional<std::string> version)> onUpdateAvailable;

    /// Checks in the background, without showing anything.
    void checkForUpdateInformation();

private:
    MainQueue& mainQueue_;
    std::shared_ptr<UpdaterModel*> self_;  // pending checks hold this weakly
};

}  // namespace tessivo
