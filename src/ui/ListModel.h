#pragma once

#include "engine/Published.h"

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QVariant>
#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace kelvo {

/// How many rows of a list stayed as they were at its beginning and at its end, and what lies
/// between: `removed` old rows gave way to `added` new ones.
struct RowDifference {
    std::size_t kept = 0; ///< equal rows before the difference
    std::size_t removed = 0;
    std::size_t added = 0;
};

/// The difference of two lists of values, by their common beginning and end.
template <class Row>
RowDifference difference(const std::vector<Row>& before, const std::vector<Row>& after) {
    const auto [left, right] =
        std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto kept = static_cast<std::size_t>(left - before.begin());
    std::size_t removed = before.size() - kept;
    std::size_t added = after.size() - kept;
    while (removed > 0 && added > 0 && before[kept + removed - 1] == after[kept + added - 1]) {
        --removed;
        --added;
    }
    return {kept, removed, added};
}

/// The difference of two views of one list that only grows, without looking at any row.
template <class Container, RowOrder order>
RowDifference difference(const RowsView<Container, order>& before,
                         const RowsView<Container, order>& after) {
    if (after.size() < before.size()) return {0, before.size(), after.size()};
    const std::size_t kept = order == RowOrder::oldestFirst ? before.size() : 0;
    return {kept, 0, after.size() - before.size()};
}

/// What a delegate finds of a row under `name`.
template <class Row>
struct ListColumn {
    QByteArray name;
    QVariant (*value)(const Row& row);
};

/// The one list model of the window: rows of a published list, with a named column for each thing
/// that a delegate shows of a row. It tells rows that came, went or changed apart and never resets,
/// so that a list of any length costs no more than what is new of it and what is visible.
///
/// `Rows` is a vector of values or a `RowsView`; the latter is held as the view that it is.
template <class Rows>
class ListModel final : public QAbstractListModel {
public:
    using Row = typename Rows::value_type;

    using Column = ListColumn<Row>;

    explicit ListModel(std::vector<Column> columns, QObject* parent = nullptr)
        : QAbstractListModel(parent), columns_(std::move(columns)) {}

    /// Shows `rows` from now on. Rows at the same place in both lists whose values differ are told
    /// as changed; only what is left over on one side is told as inserted or removed.
    void show(Rows rows) {
        const RowDifference found = difference(rows_, rows);
        const std::size_t changed = std::min(found.removed, found.added);
        const std::size_t first = found.kept + changed;
        if (found.added > changed) {
            beginInsertRows({}, at(first), at(found.kept + found.added) - 1);
            rows_ = std::move(rows);
            endInsertRows();
        } else if (found.removed > changed) {
            beginRemoveRows({}, at(first), at(found.kept + found.removed) - 1);
            rows_ = std::move(rows);
            endRemoveRows();
        } else {
            rows_ = std::move(rows);
        }
        if (changed > 0) Q_EMIT dataChanged(index(at(found.kept)), index(at(first) - 1));
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : at(rows_.size());
    }

    QVariant data(const QModelIndex& place, int role) const override {
        const int column = role - Qt::UserRole;
        if (!place.isValid() || place.row() >= rowCount()) return {};
        if (column < 0 || column >= at(columns_.size())) return {};
        return columns_[static_cast<std::size_t>(column)].value(
            rows_[static_cast<std::size_t>(place.row())]);
    }

    QHash<int, QByteArray> roleNames() const override {
        QHash<int, QByteArray> names;
        for (std::size_t i = 0; i < columns_.size(); ++i)
            names.insert(Qt::UserRole + at(i), columns_[i].name);
        return names;
    }

    const Rows& rows() const { return rows_; }

private:
    static int at(std::size_t row) { return static_cast<int>(row); }

    std::vector<Column> columns_;
    Rows rows_;
};

} // namespace kelvo
