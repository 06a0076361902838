#pragma once
// Internal: what the sources of this room share. The only header here that knows the toolkit; nothing outside
// platform/forms and its tests includes it.

#include <QColor>
#include <QEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/Form.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace kv {

// ---- text ------------------------------------------------------------------------------------------------------
inline QString qs(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }
inline std::string toStd(const QString& text) { return text.toStdString(); }

// ---- who is who ------------------------------------------------------------------------------------------------
// Control::adopt(widget) gives the widget the control's name and enters it here; inner widgets of a control (the
// editor of a grid, the button of a date field) are not adopted: controlOf climbs to the control they belong to.

/// The form that a widget is part of; nullptr for menus, popups and boxes, which are windows of their own.
Form* formOf(const QWidget* widget);
/// The control that a widget is or is part of.
Control* controlOf(const QWidget* widget);
/// The window of the widgets of a form as the toolkit sees it: the dialog, the sub window or the shell.
QWidget* frameOf(const Form& form);

/// A widget with something open inside (a grid's cell) that has to be accepted before the focus may leave it.
/// The adopted widget of a control implements it; it is asked before onValidate.
struct Leavable {
    virtual ~Leavable() = default;
    virtual bool canLeave() = 0;
};

/// True: the focus may move to `to` (nullptr: "validate now"). Validates what has the focus; see Form::validateActive.
bool tryLeave(Form& form, QWidget* to);

/// A widget that handles Enter itself (a grid, a list, free text): Enter is not turned into Tab there.
void setOwnEnter(QWidget* widget);
bool ownEnter(const QWidget* widget);

/// What is dragged from lists and trees: the key of the row or node, as UTF-8.
constexpr const char* kDraggedKey = "application/x-korvane-key";

// ---- keys ------------------------------------------------------------------------------------------------------
/// "F2", "Ctrl+Insert", "Shift+Tab", "Enter", "Escape", "PageUp", "A": one name a key.
std::string keyName(const QKeyEvent& event);
std::optional<QKeyCombination> keyFromName(std::string_view name);

// ---- boxes -----------------------------------------------------------------------------------------------------
/// A message box as a window. It does not wait: whoever opened it decides when to run events.
class BoxWindow : public QWidget {
public:
    BoxWindow(const MessageBox& box, QWidget* owner);
    const MessageBox& box() const { return box_; }
    QPushButton* button(Answer answer) const;  ///< nullptr where the box has no such button
    Answer defaultAnswer() const;              ///< what Enter presses when the box has just appeared
    Answer escapeAnswer() const;               ///< what Escape and the window's close button answer
    std::optional<Answer> answered() const { return answer_; }
    std::function<void()> onAnswered;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void take(Answer answer);
    MessageBox box_;
    std::vector<std::pair<Answer, QPushButton*>> buttons_;
    std::optional<Answer> answer_;
};

/// An input box as a window; answered with the text, or without one when it was cancelled.
class InputWindow : public QWidget {
public:
    InputWindow(std::string_view prompt, std::string_view title, std::string_view proposed, QWidget* owner);
    QLineEdit* field() const { return field_; }
    std::string prompt() const { return prompt_; }
    void accept();
    void cancel();
    bool done() const { return done_; }
    std::optional<std::string> result() const { return result_; }
    std::function<void()> onDone;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    std::string prompt_;
    QLineEdit* field_ = nullptr;
    bool done_ = false;
    std::optional<std::string> result_;
};

/// Builds and shows the box over the active window (modal to everything else) and returns at once.
std::unique_ptr<BoxWindow> openBox(const MessageBox& box);
std::unique_ptr<InputWindow> openInput(std::string_view prompt, std::string_view title, std::string_view proposed);

/// Puts the window that was active back in front when it ends: a closed dialog leaves no window active.
class Reactivate {
public:
    Reactivate();
    ~Reactivate();
    Reactivate(const Reactivate&) = delete;
    Reactivate& operator=(const Reactivate&) = delete;

private:
    QPointer<QWidget> was_;
};

/// Lets everything that is queued happen (paint, activation, deletion); never waits.
void settle();

// ---- look ------------------------------------------------------------------------------------------------------
/// Colours beside the palette's roles.
struct Tones {
    bool dark = false;
    QColor accent, accentText, accentSoft;  ///< accentSoft: selections with dark text
    QColor border, borderStrong, rowLine;   ///< rowLine: between rows of lists and grids
    QColor panel, header, headerText;       ///< panel: cards; header: column headings
    QColor locked, hint, danger, dangerSoft, good;
    QColor desktop, titleBar, titleBarText;
    QColor alternate;
    QColor mark;  ///< behind a text that was searched
};
const Tones& tones();
/// Called when the theme changes, as long as `owner` lives.
void onThemeChanged(QObject* owner, std::function<void()> body);

constexpr int kMargin_px = 16;
constexpr int kGap_px = 8;
constexpr int kField_px = 30;  ///< height of a field of one line
constexpr int kListRow_px = 26;
constexpr int kGridRow_px = 28;

/// An icon of ours by its name ("document-save"), in the theme's colours; empty when there is none.
QIcon iconOf(std::string_view name);
/// A cell's text in `width_px`: words are shortened with an ellipsis, a figure that has no room is all "#", since a
/// part of it would read as another figure.
QString fitted(const QFontMetrics& metrics, const QString& text, int width_px, bool figure);
/// Width of `chars` ordinary characters in the widget's font.
int charsWidth(const QWidget* widget, int chars);

// ---- memory ----------------------------------------------------------------------------------------------------
/// What the workstation remembers under a key as "frmX.lvwList.columns"; empty when nothing (see setMemoryFile).
std::string remembered(std::string_view key);
void remember(std::string_view key, std::string_view value);

}  // namespace kv
