#pragma once
// Menus, toolbar and status bar of a shell or form.

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms/Control.h"

namespace kv {

/// A menu entry with a name; the caption "-" makes it a separator that can be hidden. Entries take no focus: what has
/// the focus is not validated by picking one.
class MenuItem : public Control {
public:
    MenuItem(Form& form, std::string name, std::string caption, std::string icon = {}, std::string shortcut = {});
    std::string kind() const override { return "Menu"; }
    std::string text() const override;
    void setCaption(std::string_view caption);
    void setChecked(bool checked);
    void pick();  ///< as the user picks it, when enabled and visible
    bool shown() const { return visible(); }
    bool able() const { return enabled(); }
    bool checked() const;
    Event<> onClick;
    QAction* action() const { return action_; }
    void standFor(QAction* head);  ///< the head of the menu that shows and hides with this entry

protected:
    void applyState() override;

private:
    friend class Form;
    QAction* action_ = nullptr;
    QAction* menu_ = nullptr;
};

/// One menu of a menu bar: entries, separators (nullptr) and sub-menus.
struct MenuSpec {
    std::string caption;
    struct Part {
        MenuItem* item = nullptr;  ///< nullptr with no sub-menu: a separator
        std::shared_ptr<MenuSpec> sub;
        Part(MenuItem& entry) : item(&entry) {}                                    // NOLINT
        Part(std::nullptr_t) {}                                                    // NOLINT
        Part(MenuSpec menu) : sub(std::make_shared<MenuSpec>(std::move(menu))) {}  // NOLINT
    };
    std::vector<Part> parts;
    MenuItem* owner = nullptr;  ///< a named entry that stands for the menu itself (its visibility hides the menu)
};

class Toolbar : public Control {
public:
    Toolbar(Form& form, std::string name);
    std::string kind() const override { return "Toolbar"; }
    Toolbar& button(std::string key, std::string caption, std::string icon, std::string hint = {});
    Toolbar& separator();
    void setButtonVisible(std::string_view key, bool visible);
    void setButtonEnabled(std::string_view key, bool enabled);
    bool buttonVisible(std::string_view key) const;
    bool buttonEnabled(std::string_view key) const;
    std::vector<std::string> keys() const;
    bool press(std::string_view key);  ///< false when there is no such enabled and visible button
    Event<std::string> onButtonClick;  ///< key

private:
    struct Button {
        std::string key;
        QAction* action = nullptr;
    };
    const Button* find(std::string_view key) const;
    std::vector<Button> buttons_;
};

class StatusBar : public Control {
public:
    StatusBar(Form& form, std::string name);
    std::string kind() const override { return "StatusBar"; }
    std::string text() const override;  ///< panels joined by " | "
    void setPanels(int count);
    void setPanel(int index, std::string_view text);
    std::string panel(int index) const;
    void setHelpLine(std::string_view text);

private:
    std::vector<std::string> panels_;
    std::vector<QWidget*> boxes_;
    QWidget* helpBox_ = nullptr;
};

}  // namespace kv
