#pragma once

#include <QAbstractTableModel>
#include <QtQml/qqmlregistration.h>

#include "import/RunSheetImport.h"

#include <cstdint>

namespace tessivo {

/// The chosen sheet as a grid, row 0 being the sheet's first row. A cell is read only when a view
/// draws it.
class RunSheetTableModel final : public QAbstractTableModel {
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum { TextRole = Qt::UserRole, LettersRole, MeaningRole, UnreadRole };
    /// Nobody looks further down, and a view's coordinates stay exact.
    static constexpr std::int64_t maximumRows = 100'000;

    explicit RunSheetTableModel(const RunSheetImport& import) : import_(import) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The width in logical pixels in which most texts of a column can be read.
    Q_INVOKABLE int widthOf(int column) const;

    /// After a change of sheet.
    void showSheet();
    /// After a change of what columns mean.
    void update();

private:
    bool isUnread(std::int64_t row, std::int64_t column) const;

    const RunSheetImport& import_;
};

}  // namespace tessivo
