#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "import/RunSheetImport.h"

namespace tessivo {

/// The columns of the chosen sheet that are to be given a role. A row is read only when a view
/// draws it: there can be as many as a spreadsheet has.
class RunSheetColumnListModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum { LettersRole = Qt::UserRole, HeadingRole, MeaningRole, CountsRole };
    /// The last column that spreadsheets have, XFD; a file may claim others.
    static constexpr std::int64_t maximumListed = 16384;

    explicit RunSheetColumnListModel(const RunSheetImport& import) : import_(import) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// After a change of sheet.
    void showSheet();
    /// After a change of the headings' row, or of what columns mean.
    void update();

private:
    const RunSheetImport& import_;
    int count_ = 0;
};

}  // namespace tessivo
