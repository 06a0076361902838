#pragma once
// GridModel: the cells of a Grid as the toolkit's table asks for them. Model rows count from 0, without the heading.

#include <QAbstractTableModel>
#include <QColor>
#include <vector>

#include "platform/forms/Grid.h"

namespace kv {

class GridModel : public QAbstractTableModel {
public:
    void setColumns(std::vector<GridColumn> columns);
    const GridColumn& column(int col) const { return columns_[static_cast<std::size_t>(col)]; }
    /// Column 0 without a heading shows the state of its row and is never a cell to type in.
    bool isMarker(int col) const { return col == 0 && columns_[0].heading.empty(); }

    void setRowCount(int rows);
    void insertRow(int before);
    void removeRow(int row);

    const QString& text(int row, int col) const;
    void setText(int row, int col, const QString& text);
    /// Invalid where the cell has no colour of its own.
    QColor back(int row, int col) const;
    void setBack(int row, int col, const QColor& colour);
    Tint tint(int row, int col) const;
    void setTint(int row, int col, Tint tint);
    void repaintRow(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Line {
        std::vector<QString> cells;
        std::vector<QColor> backs;  ///< empty until a cell of the row has a colour
        std::vector<Tint> tints;    ///< the same
    };
    Line blank() const { return {std::vector<QString>(columns_.size()), {}, {}}; }

    std::vector<GridColumn> columns_;
    std::vector<Line> lines_;
};

}  // namespace kv
