#pragma once
// FormImpl: a form's inside and the windows that carry forms. Only for the sources of this room.

#include <QButtonGroup>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeySequence>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <ctime>
#include <unordered_map>

#include "platform/forms/Internal.h"
#include "platform/forms/LayoutImpl.h"

namespace kv {

/// What every window that carries a form can do: name its form.
class FormHost {
public:
    explicit FormHost(Form& form) : form_(&form) {}
    virtual ~FormHost() = default;
    Form* form() const { return form_; }  ///< nullptr once the form has gone and the window is about to
    void forget() { form_ = nullptr; }

protected:
    Form* form_;
};

/// A window with the events of a form; Base is a plain widget or, for the shell, a main window.
template <class Base>
class FormWindow : public Base, public FormHost {
public:
    explicit FormWindow(Form& form) : FormHost(form) {}
    void makeNative() { this->create(); }

protected:
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

struct KeyBinding {
    QKeySequence keys;
    std::string procedure;
    std::function<void()> body;
};

struct Form::Impl {
    Form& form;
    int depth = 0;  ///< handlers of this form that are running
    Window window;
    std::clock_t born = std::clock();
    bool told = false;  ///< its opening was told to the watcher
    void tellOpening();
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);

    // life
    bool loaded = false;
    bool unloading = false;
    bool dying = false;  ///< the form object is going: no event reaches its handlers any more
    bool modal = false;
    bool home = false;
    bool seen = false;    ///< a home form that has been in front before
    bool placed = false;  ///< the window has had its first size and place
    QEventLoop* loop = nullptr;
    QPointer<QMdiSubWindow> sub;

    // controls and focus
    std::unordered_map<const QWidget*, Control*> byWidget;
    std::vector<Control*> order;                                           ///< as laid out: the way of Tab
    std::unordered_map<const Control*, std::vector<QWidget*>> companions;  ///< captions that come and go with a control
    Control* firstFocus = nullptr;
    Control* focused = nullptr;
    Control* pending = nullptr;  ///< left for a control that does not cause validation; validated later
    bool validating = false;
    bool keyPreview = false;
    QPointer<QLabel> bubble;  ///< the message at a refused field

    // window
    QVBoxLayout* outer = nullptr;  ///< dialogs and children: menu, toolbar, content, status bar
    QWidget* content = nullptr;
    QMenuBar* menuBar = nullptr;
    std::vector<MenuSpec> menus;
    StatusBar* status = nullptr;
    QMdiArea* mdi = nullptr;  ///< shell
    QStackedWidget* middle = nullptr;
    QWidget* homePage = nullptr;
    Form* homeForm = nullptr;
    QMenu* windowMenu = nullptr;
    QSize asked;
    QSize first;
    std::string icon;
    std::vector<KeyBinding> bindings;
    std::unordered_map<std::string, QButtonGroup*> groups;          ///< options that exclude each other
    std::vector<std::pair<std::string, QPointer<QWidget>>> splits;  ///< memory key, splitter

    Impl(Form& owner, Window kind) : form(owner), window(kind) {}
    bool isDialog() const { return window == Window::Dialog; }

    // FormFocus.cpp
    bool moveFocus(bool next);
    void focusFirst();
    void focusChanged(Control* now);
    void showHelp();
    void showBubble();
    CommandButton* buttonThat(bool (*is)(const CommandButton&)) const;

    // FormWindow.cpp
    void makeWindow();
    QMdiArea* makeMdi();
    void place();
    void showChild();
    void hideFrame();
    void arrangeMiddle();
    void rememberSizes();
    void fillWindowMenu();
    bool shortcutPressed(const QKeySequence& keys);
    bool mnemonicPressed(const QKeySequence& keys);

    static std::vector<Form*>& open();
    static std::vector<Form*>& modals();
};

/// The control that gives or takes the focus: its widget or what stands for it.
QWidget* focusTarget(const Control& control);
bool isPrimary(const CommandButton& button);
bool isCancel(const CommandButton& button);
/// Last message that a box showed: what a refused control says at the field.
std::string& lastMessage();
/// True while a Tab key of the user is handled; Qt asks for the next control also when one is hidden or disabled.
bool& userTab();

}  // namespace kv
