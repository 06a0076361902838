#include "platform/forms/player/Hands.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <QTextEdit>

#include "platform/forms/GridView.h"
#include "platform/forms/Internal.h"
#include "platform/forms/player/Stage.h"

namespace kv {

namespace {

Qt::Key keyOf(QChar c) {
    if (c == u'\n') return Qt::Key_Return;
    if (c == u'\t') return Qt::Key_Tab;
    return Qt::Key(c.toUpper().unicode());
}

bool emptied(QWidget* field) {
    if (auto* line = qobject_cast<QLineEdit*>(field)) return line->text().isEmpty();
    if (auto* combo = qobject_cast<QComboBox*>(field)) return combo->currentText().isEmpty();
    return false;
}

}  // namespace

void focusOn(Control& control) {
    Form& form = control.form();
    QWidget* widget = control.widget();
    if (!widget) throw Failure(control.name() + " cannot have the focus");
    const auto inside = [&] { return controlOf(form.widget()->focusWidget()) == &control; };
    if (inside() && control.hasFocus()) return;
    if (!inside()) {
        const bool free = tryLeave(form, widget);
        settle();
        if (!free && !inside()) {
            const Control* kept = controlOf(form.widget()->focusWidget());
            throw Failure("the focus could not move to " + control.name() + ": it stays in " +
                          (kept ? kept->name() : std::string("nothing")));
        }
    }
    while (widget->focusProxy()) widget = widget->focusProxy();
    widget->setFocus(Qt::MouseFocusReason);
    settle();
    if (!inside()) throw Failure("the focus did not reach " + control.name());
}

QWidget* fieldOf(Control& control) {
    if (auto* grid = dynamic_cast<Grid*>(&control)) {
        if (!grid->editorOpen()) throw Failure("no cell of " + grid->name() + " is open");
        return viewOf(*grid).editor();
    }
    if (isLocked(control)) throw Failure(control.name() + " is locked");
    QWidget* field = control.widget();
    if (QWidget* inside = control.form().widget()->focusWidget(); inside && controlOf(inside) == &control)
        field = inside;
    if (auto* combo = qobject_cast<QComboBox*>(field); combo && combo->lineEdit()) return combo->lineEdit();
    return field;
}

void typeText(QWidget* field, const std::string& text) {
    QPointer<QWidget> target = field;
    for (const QChar c : qs(text)) {
        if (!target) return;
        const bool upper = c.isLetter() && c.isUpper();
        QTest::sendKeyEvent(QTest::Click, target, keyOf(c), c == u'\n' ? QStringLiteral("\r") : QString(c),
                            upper ? Qt::ShiftModifier : Qt::NoModifier);
    }
}

namespace {

void selectAll(QWidget* field) {
    if (auto* line = qobject_cast<QLineEdit*>(field))
        line->selectAll();
    else if (auto* combo = qobject_cast<QComboBox*>(field); combo && combo->lineEdit())
        combo->lineEdit()->selectAll();
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(field))
        plain->selectAll();
    else if (auto* rich = qobject_cast<QTextEdit*>(field))
        rich->selectAll();
}

}  // namespace

void typeOver(QWidget* field, const std::string& text) {
    selectAll(field);
    if (!text.empty())
        typeText(field, text);
    else if (!emptied(field))
        QTest::keyClick(field, Qt::Key_Delete);
}

void pasteOver(QWidget* field, const std::string& text) {
    const std::string before = clipboard();
    setClipboard(text);
    selectAll(field);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    setClipboard(before);
}

void pressKey(QWidget* target, const std::string& key) {
    const QString text = qs(key);
    if (text.size() == 1) return typeText(target, key);
    const auto combination = keyFromName(key);
    if (!combination) throw Failure("there is no key " + key);
    const bool writes =
        !(combination->keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const bool character = combination->key() < Qt::Key_Escape;
    if (writes && character) {  // "Shift+A", "Space"
        QTest::sendKeyEvent(QTest::Click, target, combination->key(), QString(QChar(combination->key())),
                            combination->keyboardModifiers());
    } else {
        QTest::keyClick(target, combination->key(), combination->keyboardModifiers());
    }
}

void click(QWidget* target, QPoint at) { QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, at); }

void doubleClick(QWidget* target, QPoint at) {
    QPointer<QWidget> alive = target;
    click(target, at);
    settle();
    if (!alive) return;
    QWidget* inside = target->childAt(at);  // a grid's editor has opened under the pointer
    QWidget* hit = inside ? inside : target;
    const QPoint there = hit->mapFrom(target, at);
    QTest::mouseDClick(hit, Qt::LeftButton, Qt::NoModifier, there);
}

void dropOn(QWidget& target, QPoint at, const QMimeData& data) {
    QDragEnterEvent enter(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &enter);
    QDragMoveEvent move(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &move);
    if (!enter.isAccepted() || !move.isAccepted()) throw Failure("nothing can be dropped there");
    QDropEvent drop(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &drop);
}

void clickControl(const Control& control) {
    QWidget* widget = control.widget();
    QPoint at = widget->rect().center();
    if (control.kind() == "CheckBox" || control.kind() == "OptionButton") {
        const bool right = widget->layoutDirection() == Qt::RightToLeft;
        at = QPoint(right ? widget->width() - 10 : 10, widget->height() / 2);
    }
    click(widget, at);
}

GridView& viewOf(const Control& grid) { return *dynamic_cast<GridView*>(grid.widget()); }

namespace {

/// The next row comes by walking on from the last one with Enter, where the grid has one to give.
void walkToNewRow(GridView& view) {
    const int last = view.model().rowCount();
    if (view.currentRow() != last || !view.focusInside()) {
        int col = 0;
        while (col + 1 < view.model().columnCount() && (view.isColumnHidden(col) || view.isLocked(col))) ++col;
        goToCell(view, last, col);
    }
    for (int steps = view.model().columnCount(); steps > 0 && view.model().rowCount() == last; --steps) {
        if (!view.focusInside() || view.currentRow() != last) return;
        pressKey(view.editorOpen() ? view.editor() : static_cast<QWidget*>(&view), "Enter");
        settle();
    }
}

}  // namespace

void goToCell(GridView& view, int row, int col) {
    if (row > 1 && row == view.model().rowCount() + 1) walkToNewRow(view);
    const int rows = view.model().rowCount();
    if (row < 1 || row > rows) {
        throw Failure("there is no row " + std::to_string(row) + ", the grid has " + std::to_string(rows));
    }
    if (col < 0 || col >= view.model().columnCount()) throw Failure("there is no column " + std::to_string(col));
    if (view.isColumnHidden(col)) throw Failure("column " + std::to_string(col) + " is hidden");
    if (view.isCurrent(row, col) && view.editorOpen() && view.focusInside()) return;
    view.scrollTo(view.model().index(row - 1, col));
    const QRect cell = view.cellRect(row, col).intersected(view.viewport()->rect());
    if (cell.isEmpty()) throw Failure("the cell cannot be scrolled into view");
    QWidget* hit = view.viewport()->childAt(cell.center());
    if (hit && view.isCurrent(row, col))
        view.setFocus();  // the pointer would land in the open editor
    else
        click(view.viewport(), cell.center());
    settle();
    if (!view.isCurrent(row, col)) {
        throw Failure("the cell " + std::to_string(view.currentRow()) + " " + std::to_string(view.currentCol()) +
                      " refused to be left");
    }
}

}  // namespace kv
