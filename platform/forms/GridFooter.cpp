#include "platform/forms/GridFooter.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include "platform/forms/GridPaint.h"

namespace kv {

namespace {
constexpr int kCaptionGap_px = 10;
constexpr int kCaptionedTotal_chars = 17;
}  // namespace

GridFooter::GridFooter(GridView& view, std::vector<Cell> cells, QWidget* note, QWidget* parent)
    : QWidget(parent), view_(&view), cells_(std::move(cells)), note_(note) {
    setFixedHeight(kGridRow_px);
    if (note_) note_->setParent(this);
    for (const Cell& cell : cells_) {
        cell.total->setParent(this);
        cell.total->installEventFilter(this);
    }
    view.viewport()->installEventFilter(this);
    QObject::connect(view.horizontalHeader(), &QHeaderView::sectionResized, this, [this] { arrange(); });
    QObject::connect(view.horizontalHeader(), &QHeaderView::geometriesChanged, this, [this] { arrange(); });
    QObject::connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { arrange(); });
}

bool GridFooter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move) arrange();
    return QWidget::eventFilter(watched, event);
}

void GridFooter::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void GridFooter::arrange() {
    if (!view_) return;
    for (const Cell& cell : cells_) {
        const int left = view_->viewport()->x() + view_->columnViewportPosition(cell.column);
        const int right = left + view_->columnWidth(cell.column) - kCellPadding_px - 1;
        const int wide = cell.caption.isEmpty() ? view_->columnWidth(cell.column) - 2 * kCellPadding_px
                                                : charsWidth(cell.total, kCaptionedTotal_chars);
        cell.total->setGeometry(right - wide, 1, wide, height() - 2);
    }
    if (note_) {
        int room = width();
        for (const Cell& cell : cells_) room = std::min(room, captionRoom(cell).left());
        note_->setGeometry(kCellPadding_px + 1, 1, std::max(0, room - kCaptionGap_px - kCellPadding_px), height() - 2);
    }
    update();
}

QRect GridFooter::captionRoom(const Cell& cell) const {
    const int words = fontMetrics().horizontalAdvance(cell.caption);
    return {cell.total->x() - kCaptionGap_px - words, 0, words, height()};
}

void GridFooter::paintEvent(QPaintEvent* /*event*/) {
    const Tones& tone = tones();
    QPainter painter(this);
    painter.fillRect(rect(), tone.header);
    painter.setPen(tone.border);
    painter.drawRect(rect().adjusted(0, -1, -1, -1));
    painter.setPen(tone.headerText);
    for (const Cell& cell : cells_) {
        painter.drawText(captionRoom(cell), Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, cell.caption);
    }
}

}  // namespace kv
