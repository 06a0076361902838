#include "platform/forms/Control.h"

#include <QApplication>
#include <QLineEdit>
#include <QStackedWidget>
#include <algorithm>

#include "platform/forms/FormImpl.h"
#include "platform/forms/LayoutImpl.h"

namespace kv {

Control::Control(Form& owner, std::string name) : form_(owner), name_(std::move(name)) {
    form_.controls_.push_back(this);
}

Control::~Control() {
    Form::Impl& in = form_.impl();
    // A form goes from its last control to its first, while its window may still be open.
    if (!std::exchange(in.dying, true)) in.hideFrame();
    auto& all = form_.controls_;
    all.erase(std::remove(all.begin(), all.end(), this), all.end());
    in.order.erase(std::remove(in.order.begin(), in.order.end(), this), in.order.end());
    if (in.focused == this) in.focused = nullptr;
    if (in.pending == this) in.pending = nullptr;
    if (!widget_) return;
    in.byWidget.erase(widget_);
    widget_->blockSignals(true);
    for (QObject* inner : widget_->findChildren<QObject*>()) inner->blockSignals(true);
}

void Control::adopt(QWidget* widget) {
    Form::Impl& in = form_.impl();
    if (widget_) {
        in.byWidget.erase(widget_);
        widget_->deleteLater();
        widget_->hide();
    }
    widget_ = widget;
    widget_->setObjectName(qs(name_));
    in.byWidget[widget_] = this;
    if (!shown_ || !able_) applyState();
}

void Control::applyState() {
    if (!widget_) return;
    widget_->setEnabled(able_);
    widget_->setVisible(shown_);
    const auto& captions = form_.impl().companions;
    if (const auto it = captions.find(this); it != captions.end())
        for (QWidget* caption : it->second) caption->setVisible(shown_);
}

bool Control::visible() const { return shown_; }

bool Control::enabled() const { return able_; }

void Control::setVisible(bool visible) {
    if (std::exchange(shown_, visible) != visible) applyState();
}

void Control::setEnabled(bool enabled) {
    if (std::exchange(able_, enabled) != enabled) applyState();
}

void Control::setFocus() {
    // code that moves the focus has decided: what was left unvalidated before is not asked any more
    if (causesValidation_) form_.impl().pending = nullptr;
    QWidget* target = focusTarget(*this);
    if (!target) return;
    // a control on a page behind brings its page to the front
    for (QWidget* page = widget_; page && page != form_.widget(); page = page->parentWidget())
        if (auto* tabs = page->parentWidget() ? dynamic_cast<TabBox*>(page->parentWidget()->parentWidget()) : nullptr)
            if (const int index = tabs->pages()->indexOf(page); index >= 0) tabs->bar()->setCurrentIndex(index);
    target->setFocus(Qt::TabFocusReason);
    if (auto* line = qobject_cast<QLineEdit*>(target)) line->selectAll();
}

bool Control::hasFocus() const {
    const QWidget* now = QApplication::focusWidget();
    return now && widget_ && (now == widget_ || widget_->isAncestorOf(now));
}

void Control::setCausesValidation(bool causes) { causesValidation_ = causes; }

void Control::setHelp(std::string line) {
    help_ = std::move(line);
    if (form_.impl().focused == this) form_.impl().showHelp();
}

void Control::setRefused(std::string message) {
    refused_ = message.empty() ? std::string("Please check this value.") : std::move(message);
    marked_ = false;
    if (!widget_) return;
    widget_->setProperty("kvRefused", true);
    widget_->setToolTip(qs(refused_));
    widget_->update();
    if (form_.impl().focused == this) form_.impl().showBubble();
}

void Control::clearRefused() {
    if (refused_.empty()) return;
    refused_.clear();
    marked_ = false;
    if (!widget_) return;
    widget_->setProperty("kvRefused", QVariant());
    widget_->setToolTip(QString());
    widget_->update();
    if (form_.impl().focused == this) form_.impl().showBubble();
}

void Control::guard(std::string_view eventName, const std::function<void()>& body) const {
    if (form_.impl().dying) return;
    form_.run(name_ + "_" + std::string(eventName), body, std::source_location{});
}

// ---- tabs ------------------------------------------------------------------------------------------------------

TabStrip::TabStrip(Form& owner, std::string name) : Control(owner, std::move(name)) {
    auto* box = new TabBox(owner.widget());
    adopt(box);
    QObject::connect(box->bar(), &QTabBar::currentChanged, [this](int index) {
        if (form().loaded()) raise(onClick, "Click", index);
    });
}

namespace {
QTabBar* headsOf(const Control& strip) { return static_cast<TabBox*>(strip.widget())->bar(); }
}  // namespace

std::string TabStrip::text() const { return pageCaption(index()); }

int TabStrip::index() const { return headsOf(*this)->currentIndex(); }

void TabStrip::setIndex(int index) { headsOf(*this)->setCurrentIndex(index); }

void TabStrip::setPageEnabled(int index, bool enabled) { headsOf(*this)->setTabEnabled(index, enabled); }

void TabStrip::setPageVisible(int index, bool visible) { headsOf(*this)->setTabVisible(index, visible); }

std::string TabStrip::pageCaption(int index) const { return toStd(headsOf(*this)->tabText(index).remove(u'&')); }

int TabStrip::pages() const { return headsOf(*this)->count(); }

}  // namespace kv
