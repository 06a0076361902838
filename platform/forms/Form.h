#pragma once
// Form: a screen. Its controls are members, its events are methods named control_Event, its look is a Layout.
//
// Life: constructed, loaded (Form_Load, once, before it is first shown), shown modeless inside the shell or modally,
// unloaded (Form_QueryUnload may refuse, then Form_Unload). A form shown modally is a local object of its caller;
// modeless forms belong to the screens registry. Event handlers run in the common error path.

#include <functional>
#include <memory>
#include <source_location>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/Control.h"
#include "platform/forms/Layout.h"
#include "platform/forms/Menu.h"

namespace kv {

class Form {
public:
    /// What kind of window the form is.
    enum class Window { Dialog, Child, Shell };

    Form(std::string name, const std::string& caption, Window window = Window::Dialog);
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form();

    const std::string& name() const { return name_; }
    std::string caption() const;
    void setCaption(std::string_view caption);

    /// Loads when needed and shows the form inside the shell (Child) or as the shell itself.
    void Show();
    /// Loads when needed, shows the form over the active window and returns when it has been unloaded or hidden.
    /// A failing Form_Load shows the error and the form all the same, unless it unloaded the form.
    void ShowModal();
    void Hide();
    /// Unloads: Form_QueryUnload, Form_Unload, window gone. True when it went.
    bool Unload();
    void Load();  ///< runs Form_Load when the form is not loaded
    bool loaded() const;
    bool isVisible() const;
    void Refresh();  ///< lets the screen catch up (paints), without input

    virtual void Form_Load() {}
    /// The window's own close button, Escape and Unload ask here first.
    virtual void Form_QueryUnload(bool& /*Cancel*/) {}
    virtual void Form_Unload() {}
    virtual void Form_Resize() {}
    /// The home form is seen again: the last other child of the shell has closed.
    virtual void Form_Activate() {}
    /// Keys before their controls, for forms that set keyPreview.
    virtual void Form_KeyPress(int& /*KeyAscii*/) {}
    void setKeyPreview(bool on);

    /// Enables and shows menu entries by the user's rights and the parameters, from what the session holds alone. A
    /// form that has such entries calls it when it loads; "find anything" asks it of forms that are not open.
    virtual void Form_Rights() {}

    /// An entry of the form's menus that can be picked now, with the captions of the menus above it.
    struct MenuEntry {
        MenuItem* item = nullptr;
        std::string path;  ///< "File Maintenance > Hospital Links"
    };
    std::vector<MenuEntry> menuEntries() const;

    /// Validates the control that has the focus as leaving it would; false when it refused.
    bool validateActive();

    /// Runs `body` in the common error path: a failure shows the box "Application Error" with the description,
    /// "in Korvane.<form>.<procedure> " and "at line <n>". True when it went through.
    bool run(std::string_view procedure, const std::function<void()>& body,
             std::source_location at = std::source_location::current());

    Control* control(std::string_view name) const;  ///< by name; x0, x_0 and x(0) are one name
    const std::vector<Control*>& controls() const { return controls_; }
    Control* activeControl() const;

    /// The open forms, oldest first.
    static std::vector<Form*> openForms();
    /// The topmost modal form, else the active child of the shell, else the shell; nullptr before the first.
    static Form* active();
    static Form* shell();

    QWidget* widget() const { return widget_; }

    struct Impl;
    Impl& impl() const { return *impl_; }

protected:
    void setLayout(const Layout& layout);
    void setMenu(std::vector<MenuSpec> menus);
    void setToolbar(Toolbar& toolbar);
    void setStatusBar(StatusBar& bar);
    void setIcon(std::string icon);
    /// Size asked for at first; later the last size is remembered per form.
    void setSize(int width_px, int height_px);
    /// The control that has the focus when the form appears; without it the first field.
    void setFirstFocus(Control& control);
    /// A child that fills the shell's middle while no other child is open. It never becomes active().
    void setHome();
    /// Keys of the whole form, e.g. "F2", "Ctrl+S".
    void shortcut(const std::string& keys, std::string procedure, std::function<void()> body);

private:
    friend class Control;
    std::string name_;
    std::vector<Control*> controls_;
    std::unique_ptr<Impl> impl_;
    QWidget* widget_ = nullptr;
};

/// Busy pointer while it lives.
class Hourglass {
public:
    Hourglass();
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
    ~Hourglass();
};

}  // namespace kv
