#pragma once

#include "platform/FilePanels.h"

namespace tessivo {

/// The platform's file panels, or Qt's where it has none. Needs a QApplication.
class DialogFilePanels : public FilePanels {
public:
    /// The name in the panel is the proposed one made safe; the chosen one always ends in the
    /// extension. Qt's panel asks before an existing file is replaced.
    std::optional<FileLocation> chooseSaveLocation(const SaveRequest& request) override;
    std::optional<FileLocation> chooseFileToOpen(const OpenRequest& request) override;
};

}  // namespace tessivo
