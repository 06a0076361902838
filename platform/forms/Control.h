#pragma once
// Controls: what stands on a form. Each has the name by which events, error tags, plays and help pages know it.
// A control is made as a member of its form; the form's layout puts it in place. No toolkit shows through here.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Date.h"

class QWidget;  // the toolkit's widget behind a control; only platform/forms looks inside
class QAction;

namespace kv {

class Form;

/// An event of a control. What it calls runs inside the common error path with the tag
/// "<form>.<control>_<event>": a failure shows the application-error box and leaves the form open.
template <class... Args>
class Event {
public:
    Event& operator=(std::function<void(Args...)> handler) {
        handler_ = std::move(handler);
        return *this;
    }
    explicit operator bool() const { return static_cast<bool>(handler_); }
    /// Only the control raises its events (through Control::raise, which adds the error path).
    void callUnguarded(Args... args) const {
        if (handler_) handler_(std::forward<Args>(args)...);
    }

private:
    std::function<void(Args...)> handler_;
};

enum class Align { Left, Right, Center };

class Control {
public:
    Control(Form& form, std::string name);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    const std::string& name() const { return name_; }
    Form& form() const { return form_; }
    virtual std::string kind() const = 0;  ///< "TextBox", "Grid", ...: for plays and listings
    /// What the control shows, as plays compare it.
    virtual std::string text() const { return {}; }

    bool visible() const;
    bool enabled() const;
    void setVisible(bool visible);
    void setEnabled(bool enabled);
    void setFocus();
    bool hasFocus() const;
    /// False: the focus may move here without the control left being validated (Cancel and Close buttons).
    void setCausesValidation(bool causes);
    /// One line in the status bar while the control has the focus.
    void setHelp(std::string line);
    /// Marks the control as refused with a message at the field, until it is changed or cleared.
    void setRefused(std::string message);
    void clearRefused();

    Event<bool&> onValidate;  ///< leaving by the user; setting the argument keeps the focus
    Event<> onGotFocus;
    Event<> onLostFocus;
    Event<int&> onKeyPress;               ///< a typed character (Unicode); 0 swallows it. 13 is Enter
    Event<std::string, bool&> onKeyDown;  ///< key by name ("F2", "Ctrl+Insert"); true: handled

    QWidget* widget() const { return widget_; }
    bool causesValidation() const { return causesValidation_; }
    const std::string& help() const { return help_; }
    const std::string& refused() const { return refused_; }  ///< empty while the control is not refused

protected:
    template <class... Args, class... Given>
    void raise(const Event<Args...>& event, std::string_view eventName, Given&&... args) const {
        if (event) guard(eventName, [&] { event.callUnguarded(std::forward<Given>(args)...); });
    }
    /// Runs a handler in the error path of the form.
    void guard(std::string_view eventName, const std::function<void()>& body) const;
    /// Makes the widget the one of this control; a widget adopted before is deleted.
    void adopt(QWidget* widget);
    /// The user or code changed the value: a mark of refusal goes.
    void changed() { clearRefused(); }
    /// Brings the wanted visibility and ability to what is on the screen.
    virtual void applyState();

private:
    friend bool tryLeave(Form& form, QWidget* to);
    Form& form_;
    std::string name_;
    QWidget* widget_ = nullptr;
    bool shown_ = true;
    bool able_ = true;
    bool causesValidation_ = true;
    bool marked_ = false;  ///< refused by its own validation, so the next one that passes clears it
    std::string help_;
    std::string refused_;
};

class Label : public Control {
public:
    Label(Form& form, std::string name, std::string caption = {});
    std::string kind() const override { return "Label"; }
    std::string text() const override;
    void setText(std::string_view text);
    void setAlign(Align align);
    /// Looks: a heading, a figure (right-aligned, equal-width digits), a hint.
    enum class Look { Plain, Heading, Figure, FigureBold, Hint, Box };
    Label& look(Look look);
    /// Long texts go on in further lines; room for so many is kept.
    Label& wrap(int lines);
    /// Warning colour, e.g. for a difference that is not zero.
    void setAlert(bool alert);
};

class TextBox : public Control {
public:
    TextBox(Form& form, std::string name);
    std::string kind() const override { return "TextBox"; }
    std::string text() const override;
    /// Sets what is shown as it stands: rules of typing do not touch it.
    void setText(std::string_view text);
    bool locked() const;
    void setLocked(bool locked);  ///< read-only and greyed
    bool isRequired() const;
    void selectAll();

    // rules of typing; they hold for keys, paste, drop and input methods alike
    TextBox& code();                      ///< upper case, no apostrophe
    TextBox& chars(std::string allowed);  ///< only these characters
    TextBox& maxLength(int chars);
    TextBox& width(int chars);  ///< width in characters; without it the field takes the room there is
    TextBox& password();
    TextBox& lines(int rows);  ///< several lines of free text
    TextBox& align(Align align);
    TextBox& placeholder(std::string text);
    TextBox& required();  ///< marked as needed

    Event<> onChange;
};

class CommandButton : public Control {
public:
    CommandButton(Form& form, std::string name, std::string caption = {}, std::string icon = {});
    std::string kind() const override { return "CommandButton"; }
    std::string text() const override;  ///< the caption with its "&"
    void setCaption(std::string_view caption);
    /// Large button of a shell: icon above the text.
    CommandButton& large();
    CommandButton& primary();   ///< the one filled button of a form; Enter presses it where no field takes Enter
    CommandButton& cancels();   ///< Escape presses it; it does not cause validation
    CommandButton& narrow();    ///< a "..." or icon button beside a field
    CommandButton& skipsTab();  ///< Tab and Enter pass it by; a key of its field does what it does
    void press();               ///< as a click by code: no focus change, no validation
    void setIcon(std::string_view icon);

    Event<> onClick;
};

class CheckBox : public Control {
public:
    CheckBox(Form& form, std::string name, std::string caption = {});
    std::string kind() const override { return "CheckBox"; }
    std::string text() const override;
    bool checked() const;
    void setChecked(bool checked);
    Event<> onClick;
};

class OptionButton : public Control {
public:
    /// Options of one `group` exclude each other.
    OptionButton(Form& form, std::string name, std::string caption = {}, std::string group = {});
    std::string kind() const override { return "OptionButton"; }
    std::string text() const override;
    bool chosen() const;
    void choose();
    Event<> onClick;
};

class ComboBox : public Control {
public:
    ComboBox(Form& form, std::string name, bool editable = false);
    std::string kind() const override { return "ComboBox"; }
    std::string text() const override;
    void clear();
    void addItem(std::string_view text, std::string_view key = {});
    int count() const;
    std::string item(int index) const;
    int index() const;  ///< -1 without a choice
    void setIndex(int index);
    std::string key() const;
    void setKey(std::string_view key);
    void setText(std::string_view text);
    void setLocked(bool locked);
    bool locked() const;
    ComboBox& width(int chars);
    Event<> onChange;  ///< the choice changed by the user or by code
};

/// A date that is typed in the short form or picked from a calendar. Months ("MMMM yyyy") for periods.
class DatePicker : public Control {
public:
    DatePicker(Form& form, std::string name, std::string format = "MM/dd/yyyy");
    std::string kind() const override { return "DatePicker"; }
    std::string text() const override;  ///< "yyyy-MM-dd"
    Date value() const;
    void setValue(const Date& date);
    std::string shown() const;  ///< as the field shows it
    bool locked() const;
    void setLocked(bool locked);
    Event<> onChange;
};

class Image : public Control {
public:
    Image(Form& form, std::string name, std::string icon = {}, int size_px = 48);
    std::string kind() const override { return "Image"; }
    void setFile(const std::string& path);
    void setIcon(const std::string& icon, int size_px);
};

class RichText : public Control {
public:
    RichText(Form& form, std::string name, bool readOnly = true);
    std::string kind() const override { return "RichText"; }
    std::string text() const override;
    void setText(std::string_view text);
    void setHtml(std::string_view html);
};

class ProgressBar : public Control {
public:
    ProgressBar(Form& form, std::string name);
    std::string kind() const override { return "ProgressBar"; }
    std::string text() const override;  ///< percent
    void setRange(int most);
    void setValue(int value);  ///< also lets the screen catch up
};

/// Heads of pages. The pages themselves are given in the layout.
class TabStrip : public Control {
public:
    TabStrip(Form& form, std::string name);
    std::string kind() const override { return "TabStrip"; }
    std::string text() const override;  ///< caption of the page in front
    int index() const;                  ///< pages from 0
    void setIndex(int index);
    void setPageEnabled(int index, bool enabled);
    void setPageVisible(int index, bool visible);
    std::string pageCaption(int index) const;
    int pages() const;
    Event<int> onClick;  ///< a page came to the front
};

}  // namespace kv
