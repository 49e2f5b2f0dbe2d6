#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QVariant>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tessivo {

/// A list of values for a screen, changed by giving it the new rows: what moved is moved, what came
/// or went is inserted or removed, what changed is announced, and nothing is ever reset, so views
/// keep their delegates. `Row` has `operator==` and a `key()`; keys may repeat, and then the first
/// row not yet matched is taken. The one role is the row itself.
template <typename Row>
class KeyedListModel : public QAbstractListModel {
public:
    enum { RowRole = Qt::UserRole };

    explicit KeyedListModel(QByteArray roleName, QObject* parent = nullptr)
        : QAbstractListModel(parent), roleName_(std::move(roleName)) {}

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || index.row() >= rowCount() || role != RowRole) {
            return {};
        }
        return QVariant::fromValue(rows_[static_cast<std::size_t>(index.row())]);
    }
    QHash<int, QByteArray> roleNames() const override { return {{RowRole, roleName_}}; }

    const std::vector<Row>& rows() const { return rows_; }

    void setRows(std::vector<Row> rows) {
        removeMissing(rows);
        for (std::size_t target = 0; target < rows.size(); ++target) {
            place(std::move(rows[target]), target);
        }
    }

private:
    void removeMissing(const std::vector<Row>& wanted) {
        std::vector<bool> matched(wanted.size(), false);
        std::vector<std::size_t> missing;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            std::size_t match = i;  // most rows stay where they are
            const auto fits = [&](std::size_t j) {
                return j < wanted.size() && !matched[j] && wanted[j].key() == rows_[i].key();
            };
            if (!fits(match)) {
                for (match = 0; match < wanted.size() && !fits(match); ++match) {
                }
            }
            if (match < wanted.size()) {
                matched[match] = true;
            } else {
                missing.push_back(i);
            }
        }
        for (auto i = missing.rbegin(); i != missing.rend(); ++i) {
            beginRemoveRows({}, static_cast<int>(*i), static_cast<int>(*i));
            rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(*i));
            endRemoveRows();
        }
    }

    /// Brings `row` to position `target`; the rows before it are in place already.
    void place(Row row, std::size_t target) {
        const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(target);
        const auto found = std::find_if(
            begin, rows_.end(), [&](const Row& present) { return present.key() == row.key(); });
        const int targetRow = static_cast<int>(target);
        if (found == rows_.end()) {
            beginInsertRows({}, targetRow, targetRow);
            rows_.insert(begin, std::move(row));
            endInsertRows();
            return;
        }
        if (found != begin) {
            const int from = static_cast<int>(found - rows_.begin());
            beginMoveRows({}, from, from, {}, targetRow);
            std::rotate(begin, found, found + 1);
            endMoveRows();
        }
        if (rows_[target] != row) {
            rows_[target] = std::move(row);
            const QModelIndex changed = index(targetRow);
            Q_EMIT dataChanged(changed, changed, {RowRole});
        }
    }

    QByteArray roleName_;
    std::vector<Row> rows_;
};

}  // namespace tessivo
