#include "platform/forms/GridModel.h"

#include "platform/forms/Internal.h"

namespace kv {

void GridModel::setColumns(std::vector<GridColumn> columns) {
    beginResetModel();
    columns_ = std::move(columns);
    for (Line& line : lines_) {
        line.cells.resize(columns_.size());
        line.backs.clear();
        line.tints.clear();
    }
    endResetModel();
}

void GridModel::setRowCount(int rows) {
    const int now = static_cast<int>(lines_.size());
    rows = std::max(rows, 0);
    if (rows > now) {
        beginInsertRows({}, now, rows - 1);
        lines_.resize(static_cast<std::size_t>(rows), blank());
        endInsertRows();
    } else if (rows < now) {
        beginRemoveRows({}, rows, now - 1);
        lines_.resize(static_cast<std::size_t>(rows));
        endRemoveRows();
    }
}

void GridModel::insertRow(int before) {
    before = std::clamp(before, 0, static_cast<int>(lines_.size()));
    beginInsertRows({}, before, before);
    lines_.insert(lines_.begin() + before, blank());
    endInsertRows();
}

void GridModel::removeRow(int row) {
    if (row < 0 || row >= static_cast<int>(lines_.size())) return;
    beginRemoveRows({}, row, row);
    lines_.erase(lines_.begin() + row);
    endRemoveRows();
}

const QString& GridModel::text(int row, int col) const {
    static const QString none;
    if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount()) return none;
    return lines_[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(col)];
}

void GridModel::setText(int row, int col, const QString& text) {
    if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount()) return;
    QString& cell = lines_[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(col)];
    if (cell == text) return;
    cell = text;
    emit dataChanged(index(row, col), index(row, col));
}

Tint GridModel::tint(int row, int col) const {
    const auto& tints = lines_[static_cast<std::size_t>(row)].tints;
    return tints.empty() ? Tint::None : tints[static_cast<std::size_t>(col)];
}

void GridModel::setTint(int row, int col, Tint tint) {
    auto& tints = lines_[static_cast<std::size_t>(row)].tints;
    tints.resize(columns_.size(), Tint::None);
    tints[static_cast<std::size_t>(col)] = tint;
    emit dataChanged(index(row, col), index(row, col));
}

QColor GridModel::back(int row, int col) const {
    const auto& backs = lines_[static_cast<std::size_t>(row)].backs;
    return backs.empty() ? QColor() : backs[static_cast<std::size_t>(col)];
}

void GridModel::setBack(int row, int col, const QColor& colour) {
    if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount()) return;
    auto& backs = lines_[static_cast<std::size_t>(row)].backs;
    backs.resize(columns_.size());
    backs[static_cast<std::size_t>(col)] = colour;
    emit dataChanged(index(row, col), index(row, col));
}

void GridModel::repaintRow(int row) {
    if (row >= 0 && row < rowCount()) emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return text(index.row(), index.column());
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const GridColumn& head = column(section);
    if (role == Qt::DisplayRole) return qs(head.heading);
    if (role != Qt::TextAlignmentRole) return {};
    switch (head.align) {
        case Align::Right:
            return int(Qt::AlignRight | Qt::AlignVCenter);
        case Align::Center:
            return int(Qt::AlignCenter);
        default:
            return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

}  // namespace kv
