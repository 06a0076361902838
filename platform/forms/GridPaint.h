#pragma once
// GridPaint: how the cells of a Grid and the frame of its editor look.

#include <QFrame>
#include <QStyledItemDelegate>

namespace kv {

class GridView;

constexpr int kCellPadding_px = 6;

class GridPaint : public QStyledItemDelegate {
public:
    explicit GridPaint(GridView& view);
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintMarker(QPainter& painter, const QRect& cell, int row, const QString& mark) const;
    QColor background(int row, int col) const;
    GridView& view_;
};

/// The frame around the open editor: the one cell that the keys go to.
class EditorFrame : public QFrame {
public:
    using QFrame::QFrame;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace kv
