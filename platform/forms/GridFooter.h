#pragma once
// GridFooter: the line below a grid with the totals of its columns, each under the column it belongs to.

#include <QPointer>
#include <QWidget>
#include <vector>

#include "platform/forms/GridView.h"

namespace kv {

class GridFooter : public QWidget {
public:
    struct Cell {
        int column;
        QWidget* total;
        QString caption;  ///< at the left of the total
    };
    /// `note` stands at the left, may be null.
    GridFooter(GridView& view, std::vector<Cell> cells, QWidget* note, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();
    QRect captionRoom(const Cell& cell) const;
    QPointer<GridView> view_;
    std::vector<Cell> cells_;
    QWidget* note_;
};

}  // namespace kv
