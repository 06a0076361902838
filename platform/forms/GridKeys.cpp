// What keys and the pointer do in a grid: walking, marking rows, copying and pasting blocks.
#include <QCoreApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include "platform/base/Text.h"
#include "platform/forms/GridView.h"

namespace kv {

namespace {

using Block = std::vector<std::vector<std::string>>;

/// Cells as spreadsheets put them on the clipboard: tabs between cells, lines between rows, quotes around a cell that
/// holds one of these. Empty for a text that is no block.
Block blockOf(std::string text) {
    text = replaceAll(text, "\r\n", "\n");
    if (!text.empty() && text.back() == '\n') text.pop_back();
    if (text.find_first_of("\t\n") == std::string::npos) return {};
    Block block(1, {std::string()});
    bool quoted = false;
    bool atStart = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        std::string& cell = block.back().back();
        if (quoted) {
            if (c != '"')
                cell += c == '\n' ? ' ' : c;
            else if (i + 1 < text.size() && text[i + 1] == '"')
                cell += text[++i];
            else
                quoted = false;
        } else if (c == '"' && atStart) {
            quoted = true;
        } else if (c == '\t') {
            block.back().emplace_back();
        } else if (c == '\n') {
            block.push_back({std::string()});
        } else {
            cell += c;
        }
        atStart = !quoted && (c == '\t' || c == '\n');
    }
    return block;
}

bool isPlain(const QKeyEvent& event) { return (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier; }
bool isEnter(const QKeyEvent& event) { return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter; }

bool writes(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text()[0].isPrint() &&
           !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

}  // namespace

bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != editor_) return QTableView::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::ShortcutOverride: {
            const auto& key = static_cast<QKeyEvent&>(*event);
            const bool restores = key.key() == Qt::Key_Escape && editor_->text() != model_.text(row_ - 1, col_);
            if (restores || key.key() == Qt::Key_F2) event->accept();
            return restores;
        }
        case QEvent::KeyPress: {
            auto& key = static_cast<QKeyEvent&>(*event);
            QString rest = editor_->text();
            if (editor_->hasSelectedText()) rest.remove(editor_->selectionStart(), editor_->selectionLength());
            filter_->startFrom(rest);
            return editorKey(key);
        }
        case QEvent::MouseButtonDblClick:
            if (!grid_.doubleClicked) return false;
            guard_("DblClick", [&] { grid_.doubleClicked(row_, col_); });
            return true;
        case QEvent::FocusOut:
            editorFocusOut(static_cast<QFocusEvent*>(event)->reason());
            return false;
        default:
            return false;
    }
}

bool GridView::editorKey(QKeyEvent& event) {
    if (event.key() == Qt::Key_Escape && editor_->text() != model_.text(row_ - 1, col_)) {
        show(model_.text(row_ - 1, col_));
        editor_->selectAll();
        return true;
    }
    if (event.key() == Qt::Key_F2 && isPlain(event) && !browse_->isVisible()) {
        if (ownerKey(event)) return true;
        editor_->end(false);
        return true;
    }
    return ownerKey(event) || moveKey(event) || sideKey(event) || blockKey(event);
}

bool GridView::ownerKey(const QKeyEvent& event) {
    const int key = event.key();
    const bool modifier = key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
                          key == Qt::Key_AltGr;
    if (!grid_.keyDown || modifier || writes(event) || key == Qt::Key_Tab || key == Qt::Key_Backtab) return false;
    bool handled = false;
    guard_("KeyDown", [&] { handled = grid_.keyDown(keyName(event)); });
    return handled;
}

bool GridView::moveKey(const QKeyEvent& event) {
    const bool shift = event.modifiers() & Qt::ShiftModifier;
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    if (event.modifiers() & Qt::AltModifier) return false;
    if (isEnter(event)) {
        enter();
        return true;
    }
    if (shift && !ctrl && (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down)) {
        if (row_ < 1 || !commit()) return true;
        const int from = markFrom_ ? markFrom_ : row_;
        const int to = markFrom_ ? std::clamp(row_ + (event.key() == Qt::Key_Up ? -1 : 1), 1, lastRow()) : row_;
        hideEditor();
        markRows(from, to);
        return true;
    }
    if (shift) return false;
    switch (event.key()) {
        case Qt::Key_Up:
            go(std::max(row_ - 1, 1), col_);
            return true;
        case Qt::Key_Down:
            go(std::min(row_ + 1, lastRow()), col_);
            return true;
        case Qt::Key_PageUp:
            go(std::max(row_ - pageRows(), 1), col_);
            return true;
        case Qt::Key_PageDown:
            go(std::min(row_ + pageRows(), lastRow()), col_);
            return true;
        case Qt::Key_Home:
            if (!ctrl) return false;
            go(1, col_);
            return true;
        case Qt::Key_End:
            if (!ctrl) return false;
            go(lastRow(), col_);
            return true;
        case Qt::Key_F2:
            browse();
            return true;
        default:
            return false;
    }
}

/// Left and Right walk on to the next cell where the text has no room to go: at its edge, or while all of it is marked.
bool GridView::sideKey(const QKeyEvent& event) {
    if (!isPlain(event) || (event.key() != Qt::Key_Left && event.key() != Qt::Key_Right)) return false;
    const bool left = event.key() == Qt::Key_Left;
    if (open_) {
        const bool all = editor_->selectedText() == editor_->text();
        const bool edge =
            !editor_->hasSelectedText() && editor_->cursorPosition() == (left ? 0 : editor_->text().size());
        if (!all && !edge) return false;
    }
    const int to = openColumn(col_ + (left ? -1 : 1), left ? -1 : 1);
    if (to >= 0) go(row_, to);
    return true;
}

bool GridView::blockKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Copy) && (markFrom_ || !open_)) {
        copyRows();
        return true;
    }
    return event.matches(QKeySequence::Paste) && paste();
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (row_ < 1) return event->ignore();
    if (event->key() == Qt::Key_Escape && markFrom_) {
        markRows(0, 0);
        return openEditor();
    }
    if (ownerKey(*event) || moveKey(*event) || sideKey(*event) || blockKey(*event)) return;
    if (writes(*event) || event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace ||
        event->matches(QKeySequence::Paste)) {
        markRows(0, 0);
        openEditor();
        if (open_) QCoreApplication::sendEvent(editor_, event);
        return;
    }
    event->ignore();
}

void GridView::enter() {
    if (markFrom_) {
        markRows(0, 0);
        return openEditor();
    }
    const int row = row_;
    const int col = col_;
    if (row < 1 || !commit() || !isCurrent(row, col) || !focusInside()) return;
    std::pair<int, int> to = following();
    if (grid_.next) {
        to = {row, col};
        guard_("NextCell", [&] { to = grid_.next(row, col); });
    }
    if (!isCurrent(row, col)) return;
    if (to.first < 1 || to.first > lastRow()) return moveOn();
    if (to == std::pair(row, col)) editor_->selectAll();
    place(to.first, to.second);
}

/// Enter behind the last cell goes on to the next control, as in any other field; the cell is committed already.
void GridView::moveOn() {
    const QScopedValueRollback<bool> guard(committed_, true);
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
    QCoreApplication::sendEvent(window()->focusWidget(), &tab);
}

std::pair<int, int> GridView::following() const {
    if (const int right = openColumn(col_ + 1, 1); right >= 0) return {row_, right};
    const int first = openColumn(0, 1);
    return row_ < lastRow() && first >= 0 ? std::pair(row_ + 1, first) : std::pair(row_, col_);
}

int GridView::openColumn(int from, int step) const {
    for (int col = from; col >= 0 && col < model_.columnCount(); col += step) {
        if (!isLocked(col) && !isColumnHidden(col)) return col;
    }
    return -1;
}

// ---- marked rows and blocks --------------------------------------------------------------------------------------

bool GridView::rowMarked(int row) const {
    return markFrom_ && row >= std::min(markFrom_, markTo_) && row <= std::max(markFrom_, markTo_);
}

void GridView::markRows(int from, int to) {
    if (!from && !markFrom_) return;
    markFrom_ = from;
    markTo_ = to;
    if (to && to != row_) place(to, col_);
    if (to) hideEditor();
    viewport()->update();
}

void GridView::copyRows() const {
    if (row_ < 1) return;
    if (!markFrom_) return setClipboard(toStd(model_.text(row_ - 1, col_)));
    std::vector<std::string> lines;
    for (int row = std::min(markFrom_, markTo_); row <= std::max(markFrom_, markTo_); ++row) {
        std::vector<std::string> cells;
        for (int col = 0; col < model_.columnCount(); ++col) {
            if (!isColumnHidden(col) && !model_.isMarker(col))
                cells.push_back(spreadsheetCell(toStd(model_.text(row - 1, col))));
        }
        lines.push_back(join(cells, "\t"));
    }
    setClipboard(join(lines, "\n"));
}

bool GridView::paste() {
    std::string text = clipboard();
    Block block = blockOf(text);
    if (block.empty() || !grid_.pasted) {
        if (!open_) return false;
        text = replaceAll(text, "\r\n", "\n");
        if (!text.empty() && text.back() == '\n') text.pop_back();
        editor_->insert(qs(replaceAll(replaceAll(text, "\n", " "), "\t", " ")));
        return true;
    }
    const int row = row_;
    const int col = col_;
    markRows(0, 0);
    hideEditor();
    guard_("Paste", [&] { grid_.pasted(row, col, std::move(block)); });
    if (focusInside()) openEditor();
    return true;
}

// ---- pointer -----------------------------------------------------------------------------------------------------

void GridView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) return;
    const int row = index.row() + 1;
    const int col = index.column();
    if (!model_.isMarker(col)) {
        if (!go(row, col)) return;
    } else {
        if (!commit()) return;
        const bool extends = (event->modifiers() & Qt::ShiftModifier) && markFrom_;
        markRows(extends ? markFrom_ : row, row);
    }
    if (grid_.clicked) guard_("Click", [&] { grid_.clicked(row, col); });
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton) || !markFrom_) return;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid() && index.row() + 1 != markTo_) markRows(markFrom_, index.row() + 1);
}

void GridView::mouseReleaseEvent(QMouseEvent* /*event*/) {}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || event->button() != Qt::LeftButton) return;
    if (!isCurrent(index.row() + 1, index.column()) && !go(index.row() + 1, index.column())) return;
    if (grid_.doubleClicked) guard_("DblClick", [&] { grid_.doubleClicked(row_, col_); });
}

}  // namespace kv
