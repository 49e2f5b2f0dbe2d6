#pragma once

#include <QtCore/QString>

#include "platform/FilePanels.h"

class QFileDialog;

namespace tessivo {

/// The platform's file panels, or Qt's where it has none. Each opens where the last chosen file of
/// this run was, the first one among the user's documents. Needs a QApplication.
class DialogFilePanels : public FilePanels {
public:
    DialogFilePanels();

    /// The name in the panel is the proposed one made safe; the chosen one always ends in the
    /// extension. Qt's panel asks before an existing file is replaced.
    std::optional<FileLocation> chooseSaveLocation(const SaveRequest& request) override;
    std::optional<FileLocation> chooseFileToOpen(const OpenRequest& request) override;

private:
    std::optional<FileLocation> run(QFileDialog& dialog, const std::string& title,
                                    const std::string& extension);

    QString folder_;
};

}  // namespace tessivo
