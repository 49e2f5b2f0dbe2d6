#pragma once

#include "platform/FileStore.h"

#include <optional>
#include <string>

namespace tessivo {

/// Asks the operator for files. Each call shows a modal panel and returns when it is closed.
class FilePanels {
public:
    virtual ~FilePanels() = default;

    struct SaveRequest {
        std::string title;
        std::string proposedName;  ///< with its extension
        std::string extension;     ///< the only allowed one, without the dot
    };
    struct OpenRequest {
        std::string title;
        std::string extension;
    };

    /// One location to write to, new folders allowed; nothing when the operator cancels.
    virtual std::optional<FileLocation> chooseSaveLocation(const SaveRequest& request) = 0;
    /// One existing file, no folder; nothing when the operator cancels.
    virtual std::optional<FileLocation> chooseFileToOpen(const OpenRequest& request) = 0;
};

}  // namespace tessivo
