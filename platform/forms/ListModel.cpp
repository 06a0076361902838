#include "platform/forms/ListModel.h"

#include <QMimeData>
#include <algorithm>
#include <numeric>

#include "platform/base/Date.h"
#include "platform/base/Text.h"
#include "platform/forms/Internal.h"

namespace kv {

namespace {

/// What a column is sorted by: one number a row, or its text in lower case.
struct SortKeys {
    bool numeric = true;
    std::vector<double> numbers;
    std::vector<std::string> texts;
};

SortKeys keysOf(const std::vector<const std::string*>& cells) {
    SortKeys keys;
    bool numbers = true;
    bool dates = true;
    for (const std::string* cell : cells) {
        if (cell->empty()) continue;
        numbers = numbers && IsNumeric(*cell);
        dates = dates && !numbers && IsDate(*cell);
        if (!numbers && !dates) break;
    }
    // A column whose first rows read as numbers and later ones as dates is text.
    if (!numbers) dates = std::all_of(cells.begin(), cells.end(), [](auto* c) { return c->empty() || IsDate(*c); });
    keys.numeric = numbers || dates;
    for (const std::string* cell : cells) {
        if (!keys.numeric)
            keys.texts.push_back(LCase(*cell));
        else if (cell->empty())
            keys.numbers.push_back(-std::numeric_limits<double>::infinity());
        else
            keys.numbers.push_back(numbers ? numberOf(*cell) : double(parseDate(*cell)->msSince1900()));
    }
    return keys;
}

}  // namespace

void ListModel::setColumns(std::vector<ListColumn> columns) {
    beginResetModel();
    columns_ = std::move(columns);
    endResetModel();
}

void ListModel::setItems(std::vector<ListView::Item> items) {
    beginResetModel();
    items_ = std::move(items);
    icons_ = std::any_of(items_.begin(), items_.end(), [](const ListView::Item& one) { return !one.icon.empty(); });
    keysKnown_ = false;
    applyFilter();
    endResetModel();
}

int ListModel::add(ListView::Item item) {
    const int row = count();
    const bool shown = passes(item);
    const int line = rowCount();
    if (shown) beginInsertRows({}, line, line);
    if (keysKnown_ && !item.key.empty()) keys_.emplace(item.key, row);
    icons_ = icons_ || !item.icon.empty();
    items_.push_back(std::move(item));
    if (filtered_ && shown) lines_.push_back(row);
    if (shown) endInsertRows();
    return row;
}

void ListModel::remove(int row) {
    if (!has(row)) return;
    const int line = lineOf(row);
    if (line >= 0) beginRemoveRows({}, line, line);
    items_.erase(items_.begin() + row);
    keysKnown_ = false;
    applyFilter();
    if (line >= 0) endRemoveRows();
}

void ListModel::changed(int row) {
    if (const int line = lineOf(row); line >= 0) emit dataChanged(index(line, 0), index(line, columnCount() - 1));
}

void ListModel::setCell(int row, int column, std::string_view text) {
    if (!has(row) || column < 0) return;
    auto& cells = items_[static_cast<std::size_t>(row)].cells;
    if (cells.size() <= static_cast<std::size_t>(column)) cells.resize(static_cast<std::size_t>(column) + 1);
    cells[static_cast<std::size_t>(column)] = text;
    changed(row);
}

void ListModel::setChecked(int row, bool checked) {
    if (!has(row)) return;
    items_[static_cast<std::size_t>(row)].checked = checked;
    changed(row);
}

void ListModel::checkAll(bool checked) {
    for (auto& item : items_) item.checked = checked;
    if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, 0));
}

int ListModel::find(std::string_view key) const {
    if (!keysKnown_) {
        keys_.clear();
        for (int row = 0; row < count(); ++row) {
            if (!item(row).key.empty()) keys_.emplace(item(row).key, row);
        }
        keysKnown_ = true;
    }
    const auto it = keys_.find(std::string(key));
    return it == keys_.end() ? -1 : it->second;
}

int ListModel::findText(std::string_view text) const {
    for (int row = 0; row < count(); ++row) {
        if (equalsNoCase(this->text(row, 0), text)) return row;
    }
    return -1;
}

void ListModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= columnCount()) return;
    std::vector<const std::string*> cells;
    cells.reserve(items_.size());
    for (int row = 0; row < count(); ++row) cells.push_back(&text(row, column));
    const SortKeys keys = keysOf(cells);
    std::vector<int> order_of(items_.size());
    std::iota(order_of.begin(), order_of.end(), 0);
    const auto less = [&](int a, int b) {
        if (order == Qt::DescendingOrder) std::swap(a, b);
        const auto x = static_cast<std::size_t>(a);
        const auto y = static_cast<std::size_t>(b);
        return keys.numeric ? keys.numbers[x] < keys.numbers[y] : keys.texts[x] < keys.texts[y];
    };
    std::stable_sort(order_of.begin(), order_of.end(), less);

    emit layoutAboutToBeChanged();
    std::vector<int> newRow(items_.size());
    std::vector<ListView::Item> sorted;
    sorted.reserve(items_.size());
    for (const int row : order_of) {
        newRow[static_cast<std::size_t>(row)] = static_cast<int>(sorted.size());
        sorted.push_back(std::move(items_[static_cast<std::size_t>(row)]));
    }
    const QModelIndexList kept = persistentIndexList();
    std::vector<int> keptRows;
    for (const QModelIndex& index : kept) keptRows.push_back(newRow[static_cast<std::size_t>(rowOf(index.row()))]);
    items_ = std::move(sorted);
    keysKnown_ = false;
    applyFilter();
    for (int i = 0; i < static_cast<int>(kept.size()); ++i) {
        changePersistentIndex(kept[i], index(lineOf(keptRows[static_cast<std::size_t>(i)]), kept[i].column()));
    }
    emit layoutChanged();
}

bool ListModel::passes(const ListView::Item& item) const {
    return !filtered_ || std::any_of(item.cells.begin(), item.cells.end(),
                                     [this](const std::string& cell) { return containsNoCase(cell, filterText_); });
}

void ListModel::applyFilter() {
    lines_.clear();
    if (!filtered_) return;
    for (int row = 0; row < count(); ++row) {
        if (passes(item(row))) lines_.push_back(row);
    }
}

void ListModel::filter(std::string_view text) {
    beginResetModel();
    filterText_ = text;
    filtered_ = !text.empty();
    applyFilter();
    endResetModel();
}

int ListModel::lineOf(int row) const {
    if (!filtered_) return has(row) ? row : -1;
    const auto it = std::lower_bound(lines_.begin(), lines_.end(), row);
    return it != lines_.end() && *it == row ? static_cast<int>(it - lines_.begin()) : -1;
}

int ListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    return static_cast<int>(filtered_ ? lines_.size() : items_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

const std::string& ListModel::text(int row, int column) const {
    static const std::string none;
    const auto& cells = item(row).cells;
    return static_cast<std::size_t>(column) < cells.size() ? cells[static_cast<std::size_t>(column)] : none;
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int row = rowOf(index.row());
    switch (role) {
        case Qt::DisplayRole:
            return qs(text(row, index.column()));
        case Qt::ToolTipRole:
            return qs(text(row, index.column()));
        default:
            return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const ListColumn& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) return qs(column.heading);
    if (role != Qt::TextAlignmentRole) return {};
    switch (column.align) {
        case Align::Right:
            return int(Qt::AlignRight | Qt::AlignVCenter);
        case Align::Center:
            return int(Qt::AlignCenter);
        default:
            return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

// ---- dragging ------------------------------------------------------------------------------------------------------

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

QStringList ListModel::mimeTypes() const { return {QString::fromLatin1(kDraggedKey)}; }

QMimeData* ListModel::mimeData(const QModelIndexList& indexes) const {
    if (indexes.isEmpty()) return nullptr;
    auto* data = new QMimeData;
    data->setData(QString::fromLatin1(kDraggedKey), QByteArray::fromStdString(item(rowOf(indexes.first().row())).key));
    return data;
}

}  // namespace kv
