#include "platform/forms/GridView.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "platform/forms/GridPaint.h"

namespace kv {

namespace {

constexpr int kBrowse_px = 26;

}  // namespace

QValidator::State GridFilter::validate(QString& text, int& cursor) const {
    if (text == before_) return Acceptable;
    auto tail = std::min(text.size() - cursor, before_.size());
    while (tail > 0 && text.right(tail) != before_.right(tail)) --tail;
    const auto most = std::min(text.size(), before_.size()) - tail;
    qsizetype head = 0;
    while (head < most && text[head] == before_[head]) ++head;
    const QString typed = text.mid(head, text.size() - tail - head);
    if (!typed.isEmpty()) {
        const QString left = text.left(head);
        const QString right = text.right(tail);
        const QString taken = take_(typed, left + right);
        text = left + taken + right;
        cursor = static_cast<int>(head + taken.size());
    }
    before_ = text;
    return Acceptable;
}

GridView::GridView(Grid& grid, Guard guard) : grid_(grid), guard_(std::move(guard)) {
    setModel(&model_);
    setItemDelegate(new GridPaint(*this));
    setShowGrid(false);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setWordWrap(false);
    setAutoScroll(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    setFocusPolicy(Qt::StrongFocus);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(kGridRow_px);
    verticalHeader()->setDefaultSectionSize(kGridRow_px);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setMinimumSectionSize(24);
    horizontalHeader()->setFixedHeight(kGridRow_px);
    horizontalHeader()->setFocusPolicy(Qt::NoFocus);
    setOwnEnter(this);
    buildEditor();
    QObject::connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int col) {
        if (grid_.columnClicked && commit()) guard_("ColumnClick", [&] { grid_.columnClicked(col); });
    });
    QObject::connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { layEditor(); });
    onThemeChanged(this, [this] { viewport()->update(); });
}

void GridView::buildEditor() {
    box_ = new EditorFrame(viewport());
    box_->setObjectName("qt_grid_box");
    box_->hide();
    editor_ = new QLineEdit(box_);
    editor_->setObjectName("qt_grid_editor");
    editor_->setFrame(false);
    editor_->setContextMenuPolicy(Qt::NoContextMenu);
    editor_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    editor_->setStyleSheet("border:0;background:transparent;padding:0;margin:0;min-height:0;");
    setOwnEnter(editor_);
    filter_ = new GridFilter(editor_, [this](const QString& typed, const QString& rest) {
        QString taken = typed;
        if (grid_.filterKeys) {
            guard_("KeyPress", [&] { taken = qs(grid_.filterKeys(col_, toStd(typed), toStd(rest))); });
        }
        return taken;
    });
    editor_->setValidator(filter_);
    browse_ = new QToolButton(box_);
    browse_->setObjectName("qt_grid_browse");
    browse_->setText(QStringLiteral("\u2026"));
    browse_->setFocusPolicy(Qt::NoFocus);
    browse_->setFixedWidth(kBrowse_px);
    browse_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    browse_->setToolTip(QStringLiteral("Search (F2)"));
    QObject::connect(browse_, &QToolButton::clicked, this, [this] { browse(); });
    auto* lay = new QHBoxLayout(box_);
    lay->setContentsMargins(2, 2, 2, 2);
    lay->setSpacing(0);
    lay->addWidget(editor_);
    lay->addWidget(browse_);
    editor_->installEventFilter(this);
}

// ---- the current cell --------------------------------------------------------------------------------------------

bool GridView::isLocked(int col) const { return model_.isMarker(col) || (grid_.isLocked && grid_.isLocked(col)); }

QRect GridView::cellRect(int row, int col) const { return visualRect(model_.index(row - 1, col)); }

bool GridView::go(int row, int col) {
    if (!commit()) return false;
    if (row < 1 || row > lastRow() || col < 0 || col >= model_.columnCount()) return false;
    markRows(0, 0);
    place(row, col);
    return true;
}

void GridView::place(int row, int col) {
    if (model_.columnCount() == 0 || lastRow() == 0) {
        hideEditor();
        row_ = 0;
        return;
    }
    row = std::clamp(row, 1, lastRow());
    col = std::clamp(col, 0, model_.columnCount() - 1);
    const bool moved = row != row_ || col != col_;
    if (moved) {
        const int before = row_;
        hideEditor();
        row_ = row;
        col_ = col;
        const QModelIndex index = model_.index(row - 1, col);
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        model_.repaintRow(before - 1);
        model_.repaintRow(row - 1);
        scrollTo(index);
        if (grid_.entered) guard_("EnterCell", [&] { grid_.entered(row, col); });
        if (!isCurrent(row, col)) return;  // the owner moved on
    } else {
        scrollTo(model_.index(row - 1, col));
    }
    if (focusInside()) openEditor();
}

void GridView::structureChanged() {
    if (row_ > lastRow() || row_ < 1 || col_ >= model_.columnCount()) {
        hideEditor();
        row_ = std::min(std::max(row_, 1), lastRow());
        col_ = std::clamp(col_, model_.columnCount() > 1 && model_.isMarker(0) ? 1 : 0,
                          std::max(model_.columnCount() - 1, 0));
    } else if (open_) {
        hideEditor();
    }
    markRows(0, 0);
    if (row_ >= 1 && focusInside()) openEditor();
}

bool GridView::focusInside() const {
    const QWidget* inside = window()->focusWidget();
    return inside == this || inside == editor_;
}

// ---- the editor --------------------------------------------------------------------------------------------------

void GridView::show(const QString& text) {
    filter_->startFrom(text);
    editor_->setText(text);
}

void GridView::setEditorText(const QString& text) {
    if (open_) show(text);
}

void GridView::openEditor() {
    if (open_ || row_ < 1 || row_ > lastRow() || col_ >= model_.columnCount() || !isEnabled()) return;
    const int row = row_;
    const int col = col_;
    if (grid_.canEnter) {
        bool may = false;
        guard_("ShowEntry", [&] { may = grid_.canEnter(row, col); });
        if (!may) return;
    }
    if (grid_.focusEntry) guard_("FocusEntry", [&] { grid_.focusEntry(row, col); });
    if (open_ || !isCurrent(row, col) || isLocked(col)) return;
    const GridColumn& column = model_.column(col_);
    editor_->setAlignment(column.align == Align::Right ? Qt::AlignRight : Qt::AlignLeft);
    const bool searched = grid_.hasBrowse && grid_.hasBrowse(col_);
    browse_->setVisible(searched);
    editor_->setTextMargins(kCellPadding_px - 3, 0, searched ? 0 : kCellPadding_px - 2, 0);
    open_ = true;
    ++opened_;
    show(model_.text(row_ - 1, col_));
    layEditor();
    box_->show();
    box_->raise();
    if (focusInside()) editor_->setFocus();
    editor_->selectAll();
}

void GridView::hideEditor() {
    if (!open_) return;
    open_ = false;
    if (window()->focusWidget() == editor_) {
        QScopedValueRollback<bool> guard(passing_, true);
        setFocus();
    }
    box_->hide();
    viewport()->update(cellRect(row_, col_));
}

void GridView::release() {
    passing_ = true;
    open_ = false;
    editor_->removeEventFilter(this);
}

void GridView::layEditor() {
    if (open_) box_->setGeometry(cellRect(row_, col_).adjusted(-1, -1, 0, 0));
}

bool GridView::commit() {
    if (validating_) return false;
    refused_ = false;
    if (!open_ || committed_) return true;
    const int row = row_;
    const int col = col_;
    const int opened = opened_;
    const QString typed = editor_->text();
    std::string text = toStd(typed);
    if (grid_.validate) {
        bool accepted = false;
        validating_ = true;
        guard_("ValidateEntry", [&] { accepted = grid_.validate(row, col, text); });
        validating_ = false;
        if (!accepted) {
            refused_ = true;
            if (!open_) openEditor();
            editor_->setFocus();
            editor_->selectAll();
            return false;
        }
    }
    if (!open_ || !isCurrent(row, col) || opened != opened_) return true;  // the owner took the row away or moved on
    if (text == toStd(typed)) text = toStd(editor_->text());
    if (grid_.display) guard_("AfterValidate", [&] { text = grid_.display(col, text); });
    model_.setText(row - 1, col, qs(text));
    show(qs(text));
    if (grid_.committed) guard_("AfterValidate", [&] { grid_.committed(row, col); });
    if (open_ && !focusInside()) hideEditor();
    return true;
}

void GridView::browse() {
    if (!open_ || !grid_.hasBrowse || !grid_.hasBrowse(col_) || !grid_.browse) return;
    const int row = row_;
    const int col = col_;
    guard_("Browse", [&] { grid_.browse(row, col); });
    if (open_ && isCurrent(row, col)) {
        editor_->setFocus();
        editor_->selectAll();
    }
}

void GridView::editorFocusOut(Qt::FocusReason reason) {
    if (passing_ || validating_ || !open_) return;
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason) {
        return;
    }
    // Text that was typed and not validated yet stays open: whatever validates the grid later must find it.
    if (!focusInside() && editor_->text() == model_.text(row_ - 1, col_)) hideEditor();
}

void GridView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    viewport()->update();
    if (passing_) return;
    if (row_ < 1 && lastRow() > 0) structureChanged();
    if (isLocked(col_) && row_ >= 1 && event->reason() != Qt::MouseFocusReason && openColumn(col_, 1) >= 0) {
        place(row_, openColumn(col_, 1));
    }
    if (open_)
        editor_->setFocus();
    else
        openEditor();
}

void GridView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    viewport()->update();
}

// ---- scrolling ---------------------------------------------------------------------------------------------------

void GridView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    layEditor();
}

void GridView::updateGeometries() {
    QTableView::updateGeometries();
    layEditor();
}

int GridView::pageRows() const { return std::max(viewport()->height() / kGridRow_px - 1, 1); }

}  // namespace kv
