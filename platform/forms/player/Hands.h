#pragma once
// Hands: keys and clicks as a person gives them, so that focus rules, shortcuts and validation run.

#include <QPoint>
#include <QWidget>
#include <string>

#include "platform/forms/Control.h"
#include "platform/forms/player/Play.h"

class QMimeData;

namespace kv {

class GridView;

/// Brings the focus to the control as a click would, the control left validated first. Raises Failure when it stays.
void focusOn(Control& control);
/// The widget inside a control that takes its keys. Raises Failure for a locked one and a grid without an open cell.
QWidget* fieldOf(Control& control);
/// Types over all of the text in a field; an empty text empties it.
void typeOver(QWidget* field, const std::string& text);
void typeText(QWidget* field, const std::string& text);
void pasteOver(QWidget* field, const std::string& text);
/// One key by name, or a character. Raises Failure for an unknown name.
void pressKey(QWidget* target, const std::string& key);
void click(QWidget* target, QPoint at);
void doubleClick(QWidget* target, QPoint at);
/// Lets go over the widget what was dragged there.
void dropOn(QWidget& target, QPoint at, const QMimeData& data);
/// A click where a person would: on the mark of a check box, in the middle of a button.
void clickControl(const Control& control);

/// The grid's cell becomes the current one by a click; a row behind the last is reached by Enter, as it is typed.
/// Raises Failure when it cannot, or when the open one refuses.
void goToCell(GridView& view, int row, int col);
GridView& viewOf(const Control& grid);

}  // namespace kv
