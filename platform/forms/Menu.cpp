#include "platform/forms/Menu.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include "platform/base/Text.h"
#include "platform/forms/FormImpl.h"

namespace kv {

// ---- entries ---------------------------------------------------------------------------------------------------

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
MenuItem::MenuItem(Form& owner, std::string name, std::string caption, std::string icon, std::string shortcut)
    : Control(owner, std::move(name)), action_(new QAction(qs(caption), owner.widget())) {
    action_->setObjectName(qs(this->name()));
    action_->setSeparator(caption == "-");
    if (!icon.empty()) action_->setIcon(iconOf(icon));
    if (!shortcut.empty()) action_->setShortcut(QKeySequence(qs(shortcut)));
    owner.widget()->addAction(action_);
    QObject::connect(action_, &QAction::triggered, [this](bool checked) {
        if (action_->isCheckable()) action_->setChecked(!checked);  // only the screen decides what is checked
        raise(onClick, "Click");
    });
}

std::string MenuItem::text() const { return toStd(action_->text()); }

void MenuItem::setCaption(std::string_view caption) { action_->setText(qs(caption)); }

void MenuItem::setChecked(bool checked) {
    action_->setCheckable(true);
    action_->setChecked(checked);
}

bool MenuItem::checked() const { return action_->isChecked(); }

void MenuItem::pick() {
    if (shown() && able()) raise(onClick, "Click");
}

void MenuItem::standFor(QAction* head) {
    menu_ = head;
    applyState();
}

void MenuItem::applyState() {
    for (QAction* one : {action_, menu_}) {
        if (!one) continue;
        one->setVisible(visible());
        one->setEnabled(enabled());
    }
}

// ---- toolbar ---------------------------------------------------------------------------------------------------

Toolbar::Toolbar(Form& owner, std::string name) : Control(owner, std::move(name)) {
    auto* bar = new QToolBar(owner.widget());
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setIconSize(QSize(20, 20));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    adopt(bar);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
Toolbar& Toolbar::button(std::string key, std::string caption, std::string icon, std::string hint) {
    auto* bar = static_cast<QToolBar*>(widget());
    QAction* action = bar->addAction(iconOf(icon), qs(caption));
    action->setToolTip(hint.empty() ? qs(caption).remove(u'&') : qs(hint));
    action->setObjectName(qs(key));
    if (QWidget* face = bar->widgetForAction(action)) face->setFocusPolicy(Qt::NoFocus);
    QObject::connect(action, &QAction::triggered, [this, key] { raise(onButtonClick, "ButtonClick", key); });
    buttons_.push_back({std::move(key), action});
    return *this;
}

Toolbar& Toolbar::separator() {
    static_cast<QToolBar*>(widget())->addSeparator();
    return *this;
}

const Toolbar::Button* Toolbar::find(std::string_view key) const {
    for (const auto& one : buttons_)
        if (one.key == key) return &one;
    return nullptr;
}

void Toolbar::setButtonVisible(std::string_view key, bool visible) {
    if (const Button* one = find(key)) one->action->setVisible(visible);
}

void Toolbar::setButtonEnabled(std::string_view key, bool enabled) {
    if (const Button* one = find(key)) one->action->setEnabled(enabled);
}

bool Toolbar::buttonVisible(std::string_view key) const {
    const Button* one = find(key);
    return one && one->action->isVisible();
}

bool Toolbar::buttonEnabled(std::string_view key) const {
    const Button* one = find(key);
    return one && one->action->isEnabled() && enabled();
}

std::vector<std::string> Toolbar::keys() const {
    std::vector<std::string> all;
    for (const auto& one : buttons_) all.push_back(one.key);
    return all;
}

bool Toolbar::press(std::string_view key) {
    if (!visible() || !buttonVisible(key) || !buttonEnabled(key)) return false;
    raise(onButtonClick, "ButtonClick", std::string(key));
    return true;
}

// ---- status bar ------------------------------------------------------------------------------------------------

namespace {

/// A panel of the status bar, with a line at its left.
class Panel : public QLabel {
public:
    explicit Panel(QWidget* parent) : QLabel(parent) { setContentsMargins(14, 0, 14, 0); }

protected:
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        QPainter(this).fillRect(QRect(0, 4, 1, height() - 8), tones().border);
    }
};

}  // namespace

StatusBar::StatusBar(Form& owner, std::string name) : Control(owner, std::move(name)) {
    auto* bar = new QStatusBar(owner.widget());
    bar->setSizeGripEnabled(false);
    bar->setMinimumHeight(kField_px);
    auto* help = new QLabel(bar);
    help->setForegroundRole(QPalette::PlaceholderText);
    help->setContentsMargins(kMargin_px - 6, 0, 0, 0);
    bar->addWidget(help, 1);
    helpBox_ = help;
    adopt(bar);
}

std::string StatusBar::text() const { return join(panels_, " | "); }

void StatusBar::setPanels(int count) {
    auto* bar = static_cast<QStatusBar*>(widget());
    while (static_cast<int>(boxes_.size()) > count) {
        delete boxes_.back();
        boxes_.pop_back();
    }
    while (static_cast<int>(boxes_.size()) < count) {
        auto* box = new Panel(bar);
        bar->addPermanentWidget(box);
        boxes_.push_back(box);
    }
    panels_.resize(boxes_.size());
}

void StatusBar::setPanel(int index, std::string_view text) {
    if (index < 0) return;
    if (index >= static_cast<int>(boxes_.size())) setPanels(index + 1);
    panels_[static_cast<std::size_t>(index)] = text;
    static_cast<QLabel*>(boxes_[static_cast<std::size_t>(index)])->setText(qs(text));
}

std::string StatusBar::panel(int index) const {
    return index >= 0 && index < static_cast<int>(panels_.size()) ? panels_[static_cast<std::size_t>(index)]
                                                                  : std::string();
}

void StatusBar::setHelpLine(std::string_view text) { static_cast<QLabel*>(helpBox_)->setText(qs(text)); }

}  // namespace kv
