#include "platform/forms/ListTable.h"

#include <QHeaderView>
#include <QIcon>
#include <QMouseEvent>
#include <QPainter>

#include "platform/forms/Internal.h"

namespace kv {

namespace {

constexpr int kPadding_px = 6;
constexpr int kCheck_px = 16;
constexpr int kIcon_px = 16;

}  // namespace

ListTable::ListTable(ListModel& model) : rows_(model) {
    setModel(&model);
    setItemDelegate(new ListPaint(*this, model));
    setShowGrid(false);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(kListRow_px);
    verticalHeader()->setDefaultSectionSize(kListRow_px);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicatorClearable(false);
    horizontalHeader()->setFixedHeight(kGridRow_px);
    horizontalHeader()->setFocusPolicy(Qt::NoFocus);
    setOwnEnter(this);
    onThemeChanged(this, [this] { viewport()->update(); });
}

int ListTable::currentRow() const {
    const QModelIndex index = currentIndex();
    return index.isValid() ? rows_.rowOf(index.row()) : -1;
}

QRect ListTable::checkBox(const QModelIndex& index) const {
    const QRect cell = visualRect(index.siblingAtColumn(0));
    return {cell.left() + kPadding_px, cell.center().y() - kCheck_px / 2 + 1, kCheck_px, kCheck_px};
}

void ListTable::keyPressEvent(QKeyEvent* event) {
    const int row = currentRow();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (row < 0 || !rowOpened || !rowOpened(row)) event->ignore();
        return;
    }
    if (event->key() == Qt::Key_Space && checks && row >= 0) {
        if (rowChecked) rowChecked(row);
        return;
    }
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F2) return event->ignore();
    QTableView::keyPressEvent(event);
    if (currentRow() != row && currentRow() >= 0 && rowClicked) rowClicked(currentRow());
}

bool ListTable::tick(const QMouseEvent& event) {
    const QModelIndex index = indexAt(event.position().toPoint());
    if (!checks || event.button() != Qt::LeftButton || index.column() != 0) return false;
    if (!checkBox(index).adjusted(-4, -4, 4, 4).contains(event.position().toPoint())) return false;
    if (rowChecked) rowChecked(rows_.rowOf(index.row()));
    return true;
}

void ListTable::mousePressEvent(QMouseEvent* event) {
    if (tick(*event)) return;  // the row that is selected stays so
    QTableView::mousePressEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && rowClicked) rowClicked(rows_.rowOf(index.row()));
}

void ListTable::mouseDoubleClickEvent(QMouseEvent* event) {
    if (tick(*event)) return;  // the second of two quick clicks on a check box
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && rowOpened) rowOpened(rows_.rowOf(index.row()));
}

void ListTable::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                       event->reason() == Qt::ShortcutFocusReason;
    if (byKey && model() && !currentIndex().isValid() && model()->rowCount() > 0) {
        selectionModel()->setCurrentIndex(model()->index(0, 0), QItemSelectionModel::NoUpdate);
    }
    viewport()->update();
}

void ListTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (emptyText.isEmpty() || rows_.rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(tones().hint);
    const QString text = rows_.count() > 0 ? QStringLiteral("Nothing here matches.") : emptyText;
    painter.drawText(viewport()->rect().adjusted(24, 0, -24, 0), Qt::AlignCenter | Qt::TextWordWrap, text);
}

// ---- look --------------------------------------------------------------------------------------------------------

void ListPaint::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const Tones& tone = tones();
    const ListView::Item& item = rows_.item(rows_.rowOf(index.row()));
    const bool chosen = option.state & QStyle::State_Selected;
    const bool current = index.row() == table_.currentIndex().row() && table_.hasFocus();
    const QColor base = index.row() % 2 ? tone.alternate : table_.palette().color(QPalette::Base);
    painter->fillRect(option.rect, chosen ? tone.accentSoft : base);
    painter->setPen(tone.rowLine);
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    if (current) {
        painter->setPen(tone.accent);
        painter->drawLine(option.rect.topLeft(), option.rect.topRight());
        painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    }
    QRect inside = option.rect.adjusted(kPadding_px, 0, -kPadding_px, -1);
    if (index.column() == 0 && table_.checks) {
        paintCheck(*painter, table_.checkBox(index), item.checked);
        inside.setLeft(inside.left() + kCheck_px + kPadding_px);
    }
    if (index.column() == 0 && rows_.hasIcons()) {
        const QRect place(inside.left(), option.rect.center().y() - kIcon_px / 2, kIcon_px, kIcon_px);
        if (!item.icon.empty()) iconOf(item.icon).paint(painter, place);
        inside.setLeft(inside.left() + kIcon_px + kPadding_px);
    }
    const QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty()) return;
    const bool pale = item.dim || !table_.isEnabled();
    painter->setPen(pale ? tone.hint : table_.palette().color(QPalette::Text));
    painter->setFont(option.font);
    const Align align = rows_.columns()[static_cast<std::size_t>(index.column())].align;
    const int side = align == Align::Right ? Qt::AlignRight : align == Align::Center ? Qt::AlignHCenter : Qt::AlignLeft;
    const QString shown = fitted(option.fontMetrics, text, inside.width(), align == Align::Right);
    if (!table_.marked.isEmpty()) {
        const int room = inside.width() - option.fontMetrics.horizontalAdvance(shown);
        paintMarks(*painter, inside, shown,
                   inside.left() + (side == Qt::AlignRight     ? room
                                    : side == Qt::AlignHCenter ? room / 2
                                                               : 0));
    }
    painter->drawText(inside, side | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

void ListPaint::paintMarks(QPainter& painter, const QRect& inside, const QString& text, int left) const {
    const QFontMetrics metrics = painter.fontMetrics();
    const auto length = table_.marked.size();
    for (qsizetype at = text.indexOf(table_.marked, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(table_.marked, at + length, Qt::CaseInsensitive)) {
        const int from = left + metrics.horizontalAdvance(text, static_cast<int>(at));
        const int to = left + metrics.horizontalAdvance(text, static_cast<int>(at + length));
        const QRect band(from, inside.center().y() - metrics.height() / 2, to - from, metrics.height() + 1);
        painter.fillRect(band, tones().mark);
    }
}

void ListPaint::paintCheck(QPainter& painter, const QRect& box, bool checked) const {
    const Tones& tone = tones();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(checked ? tone.accent : tone.borderStrong, 1));
    painter.setBrush(checked ? tone.accent : table_.palette().color(QPalette::Base));
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    if (checked) {
        painter.setPen(QPen(tone.accentText, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF corner = box.topLeft();
        painter.drawPolyline(QPolygonF{{corner + QPointF(4, 8), corner + QPointF(7, 11), corner + QPointF(12, 5)}});
    }
    painter.restore();
}

}  // namespace kv
