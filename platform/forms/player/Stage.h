#pragma once
// Stage: what a play sees: the active window, its controls by name, their states and their picture.

#include <QImage>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms/Dialogs.h"
#include "platform/forms/Internal.h"
#include "platform/forms/Menu.h"

namespace kv {

/// A window that waits for its answer while the next lines of the play run inside it.
struct Scene {
    enum class Kind { Form, Box, Input, File, Printer };
    Kind kind = Kind::Form;
    Form* form = nullptr;
    BoxWindow* box = nullptr;
    InputWindow* input = nullptr;
    std::string title;  ///< of a file dialog
    bool answered = false;
    std::optional<std::string> file;
    std::optional<PrinterChoice> printer;
};

class Stage {
public:
    void enter(Scene& scene) { scenes_.push_back(&scene); }
    void leave() { scenes_.pop_back(); }
    /// The box or dialog on top; nullptr where the active window is a form.
    Scene* asking() const;
    BoxWindow* box() const;
    /// What is on top, in a few words.
    std::string describe() const;

    /// The active form. Raises Failure while a box is in front of it.
    Form& form() const;
    /// The active form and, where nothing modal is open, the shell and its middle: where a name is looked for.
    std::vector<Form*> reach() const;

    using Kinds = std::vector<std::string_view>;
    /// The control of this name, or with "*" the only visible one of these kinds. Raises Failure.
    Control& control(const std::string& name, const Kinds& kinds = {}) const;
    /// The same; it has to be visible and enabled too.
    Control& usable(const std::string& name, const Kinds& kinds) const;
    /// nullptr where no toolbar in reach has a button with this key.
    Toolbar* toolbarWith(const std::string& key) const;

    /// The window that gets the keys.
    QWidget* keyTarget() const;
    QWidget* window() const;
    QImage picture() const;
    /// Each control of the active window with its kind, text and state, one a line.
    std::string controls() const;

private:
    std::vector<Scene*> scenes_;
};

// ---- states, as a person sees them --------------------------------------------------------------------------------
bool isShown(const Control& control);
bool isAble(const Control& control);
bool isLocked(const Control& control);
/// Nothing for a control that cannot be checked.
std::optional<bool> isChecked(const Control& control);
bool holdsFocus(const Control& control);
/// False as soon as the form has gone.
std::shared_ptr<const bool> lifeOf(const Form& form);
/// Rows that have data; -1 for a control without rows.
int rowsOf(const Control& control);
/// With "\n" for every kind of line end.
std::string oneLineEnd(std::string text);
std::string inQuotes(std::string_view text);

}  // namespace kv
