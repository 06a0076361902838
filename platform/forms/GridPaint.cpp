#include "platform/forms/GridPaint.h"

#include <QPainter>
#include <QPainterPath>

#include "platform/forms/GridView.h"

namespace kv {

namespace {

QColor mixed(const QColor& a, const QColor& b, double share) {
    return QColor::fromRgbF(float(a.redF() + (b.redF() - a.redF()) * share),
                            float(a.greenF() + (b.greenF() - a.greenF()) * share),
                            float(a.blueF() + (b.blueF() - a.blueF()) * share));
}

QColor tinted(Tint tint, const QColor& base, const Tones& tone) {
    constexpr double kShare = 0.2;
    constexpr QRgb kAmber = 0xffe08a00;
    switch (tint) {
        case Tint::Good:
            return mixed(base, tone.good, kShare);
        case Tint::Waiting:
            return mixed(base, QColor(kAmber), kShare);
        case Tint::Bad:
            return mixed(base, tone.danger, kShare);
        case Tint::Noted:
            return mixed(base, tone.accent, kShare);
        case Tint::Idle:
            return tone.locked;
        case Tint::None:
            break;
    }
    return base;
}

Qt::Alignment alignmentOf(Align align) {
    switch (align) {
        case Align::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case Align::Center:
            return Qt::AlignCenter;
        default:
            return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

}  // namespace

GridPaint::GridPaint(GridView& view) : QStyledItemDelegate(&view), view_(view) {}

QColor GridPaint::background(int row, int col) const {
    const Tones& tone = tones();
    const QColor own = view_.model().back(row - 1, col);
    if (view_.rowMarked(row)) return tone.accentSoft;
    if (own.isValid()) return own;
    if (const Tint tint = view_.model().tint(row - 1, col); tint != Tint::None) {
        return tinted(tint, view_.palette().color(QPalette::Base), tone);
    }
    const QColor base = view_.isLocked(col) ? tone.locked : view_.palette().color(QPalette::Base);
    return row == view_.currentRow() ? mixed(base, tone.accentSoft, 0.55) : base;
}

void GridPaint::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int row = index.row() + 1;
    const int col = index.column();
    const Tones& tone = tones();
    const QRect cell = option.rect;
    const QString& text = view_.model().text(index.row(), col);
    if (view_.model().isMarker(col)) return paintMarker(*painter, cell, row, text);

    painter->fillRect(cell, background(row, col));
    painter->setPen(tone.rowLine);
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());
    painter->drawLine(cell.topRight(), cell.bottomRight());
    if (view_.isCurrent(row, col) && !view_.editorOpen()) {
        painter->setPen(QPen(view_.focusInside() ? tone.accent : tone.borderStrong, view_.focusInside() ? 2 : 1));
        painter->drawRect(cell.adjusted(1, 1, -2, -2));
    }
    if (text.isEmpty()) return;
    const QRect inside = cell.adjusted(kCellPadding_px, 0, -kCellPadding_px - 1, -1);
    const auto group = view_.isEnabled() ? QPalette::Active : QPalette::Disabled;
    const Align align = view_.model().column(col).align;
    const bool nothing = align == Align::Right && text == QLatin1String("0.00");
    painter->setPen(nothing ? tone.hint : view_.palette().color(group, QPalette::Text));
    painter->setFont(option.font);
    painter->drawText(inside, int(alignmentOf(align)) | Qt::TextSingleLine,
                      fitted(option.fontMetrics, text, inside.width(), align == Align::Right));
}

void GridPaint::paintMarker(QPainter& painter, const QRect& cell, int row, const QString& mark) const {
    const Tones& tone = tones();
    const bool current = row == view_.currentRow();
    painter.fillRect(cell, view_.rowMarked(row) ? tone.accentSoft : tone.header);
    painter.setPen(tone.border);
    painter.drawLine(cell.bottomLeft(), cell.bottomRight());
    painter.drawLine(cell.topRight(), cell.bottomRight());
    if (current) {
        QPainterPath arrow;
        const QPointF middle(cell.center().x(), cell.center().y());
        arrow.moveTo(middle + QPointF(-3, -5));
        arrow.lineTo(middle + QPointF(4, 0));
        arrow.lineTo(middle + QPointF(-3, 5));
        arrow.closeSubpath();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(arrow, tone.accent);
        painter.setRenderHint(QPainter::Antialiasing, false);
        return;
    }
    painter.setPen(tone.hint);
    const QString number = mark == QLatin1String("#") ? QStringLiteral("\u2217") : QString::number(row);
    const bool fits = painter.fontMetrics().horizontalAdvance(number) + 4 <= cell.width();
    if (fits) painter.drawText(cell, Qt::AlignCenter | Qt::TextSingleLine, number);
}

void EditorFrame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(QPen(tones().accent, 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

}  // namespace kv
