// Where the focus may go: validation on leaving, the way of Tab, first focus, help line and the message at a field.

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "platform/forms/FormImpl.h"

namespace kv {

bool& userTab() {
    static bool on = false;
    return on;
}

std::string& lastMessage() {
    static std::string text;
    return text;
}

QWidget* focusTarget(const Control& control) {
    QWidget* target = control.widget();
    while (target && target->focusProxy()) target = target->focusProxy();
    return target;
}

namespace {

bool isTabStop(const Form& form, const Control& control) {
    const QWidget* target = focusTarget(control);
    if (!target || !target->isEnabled() || !target->isVisibleTo(form.widget())) return false;
    if (const auto* text = dynamic_cast<const TextBox*>(&control); text && text->locked()) return false;
    return (target->focusPolicy() & Qt::TabFocus) != 0;
}

/// The message below a field that was refused.
class Bubble : public QLabel {
public:
    explicit Bubble(QWidget* parent) : QLabel(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setWordWrap(true);
        setTextFormat(Qt::PlainText);
        setContentsMargins(10, 5, 10, 5);
        setForegroundRole(QPalette::BrightText);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(tones().danger);
        painter.setBrush(tones().dangerSoft);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
        painter.end();
        QLabel::paintEvent(event);
    }
};

bool canRefuse(const Form& form, const Control& control) {
    const QWidget* target = focusTarget(control);
    return target && target->isEnabled() && target->isVisibleTo(form.widget());
}

}  // namespace

bool tryLeave(Form& form, QWidget* to) {
    Form::Impl& in = form.impl();
    if (in.validating) return false;
    QPointer<QWidget> before = form.widget()->focusWidget();
    Control* target = controlOf(to);
    Control* from = in.pending ? in.pending : controlOf(before);
    if (!from || !canRefuse(form, *from) || (to && target == from)) {
        in.pending = nullptr;
        return true;
    }
    if (target && !target->causesValidation()) {
        in.pending = from;
        return true;
    }
    in.pending = nullptr;
    const auto alive = in.alive;
    bool cancel = false;
    in.validating = true;
    lastMessage().clear();
    if (auto* open = dynamic_cast<Leavable*>(from->widget()))
        form.run(
            from->name() + "_Leave", [&] { cancel = !open->canLeave(); }, std::source_location{});
    if (*alive && !cancel && from->onValidate)
        form.run(
            from->name() + "_Validate", [&] { from->onValidate.callUnguarded(cancel); }, std::source_location{});
    if (!*alive) return false;  // the handler unloaded the form and its owner let it go
    in.validating = false;
    if (!in.loaded) return false;
    if (cancel) {
        if (from->refused().empty() && !dynamic_cast<Leavable*>(from->widget())) {
            from->setRefused(lastMessage());
            from->marked_ = true;
        }
        if (form.widget()->focusWidget() == before && controlOf(before) != from) from->setFocus();
        in.showBubble();
        return false;
    }
    if (from->marked_) from->clearRefused();
    return form.widget()->focusWidget() == before;  // false: the handler moved the focus itself
}

bool Form::validateActive() { return tryLeave(*this, nullptr); }

bool Form::Impl::moveFocus(bool next) {
    if (!form.widget()->isVisible() || order.empty()) return false;
    const Control* from = controlOf(form.widget()->focusWidget());
    const auto at = std::find(order.begin(), order.end(), from);
    const int count = static_cast<int>(order.size());
    int index = at == order.end() ? (next ? -1 : count) : static_cast<int>(at - order.begin());
    Control* to = nullptr;
    for (int steps = 0; steps < count && !to; ++steps) {
        index = (index + (next ? 1 : count - 1)) % count;
        if (order[static_cast<std::size_t>(index)] != from && isTabStop(form, *order[static_cast<std::size_t>(index)]))
            to = order[static_cast<std::size_t>(index)];
    }
    if (!to) return !userTab() || tryLeave(form, nullptr);
    if (userTab() && !tryLeave(form, to->widget())) return true;
    // leaving may have opened a field that stands nearer
    for (int back = index; back != static_cast<int>(at - order.begin()) && at != order.end();) {
        back = (back + (next ? count - 1 : 1)) % count;
        Control* nearer = order[static_cast<std::size_t>(back)];
        if (nearer != from && isTabStop(form, *nearer)) to = nearer;
    }
    focusTarget(*to)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void Form::Impl::focusFirst() {
    Control* start = controlOf(form.widget()->focusWidget());
    if (!start) start = firstFocus;
    for (auto it = order.begin(); !start && it != order.end(); ++it)
        if (isTabStop(form, **it) && !dynamic_cast<TabStrip*>(*it)) start = *it;
    if (start)
        start->setFocus();
    else
        form.widget()->setFocus();
}

void Form::Impl::focusChanged(Control* now) {
    if (now == focused || dying) return;
    Control* old = std::exchange(focused, now);
    const auto living = alive;
    if (old && old->onLostFocus)
        form.run(
            old->name() + "_LostFocus", [old] { old->onLostFocus.callUnguarded(); }, std::source_location{});
    if (!*living || focused != now) return;
    showHelp();
    showBubble();
    if (now->onGotFocus)
        form.run(
            now->name() + "_GotFocus", [now] { now->onGotFocus.callUnguarded(); }, std::source_location{});
}

void Form::Impl::showHelp() {
    StatusBar* bar = status;
    if (!bar && Form::shell()) bar = Form::shell()->impl().status;
    if (bar) bar->setHelpLine(focused ? focused->help() : std::string());
}

void Form::Impl::showBubble() {
    const bool wanted = focused && !focused->refused().empty() && focused->widget()->isVisible();
    if (!wanted) {
        if (bubble) bubble->hide();
        return;
    }
    if (!bubble) {
        bubble = new Bubble(form.widget());
    }
    QLabel* label = bubble;
    label->setText(qs(focused->refused()).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    label->setMaximumWidth(std::max(160, form.widget()->width() - 2 * kMargin_px));
    label->setMinimumWidth(std::min(label->maximumWidth(), label->fontMetrics().horizontalAdvance(label->text()) + 24));
    label->adjustSize();
    QPoint at = focused->widget()->mapTo(form.widget(), QPoint(0, focused->widget()->height() + 3));
    at.setX(std::max(0, std::min(at.x(), form.widget()->width() - label->width() - 4)));
    if (at.y() + label->height() > form.widget()->height())
        at.setY(focused->widget()->mapTo(form.widget(), QPoint(0, 0)).y() - label->height() - 3);
    label->move(at);
    label->raise();
    label->show();
}

CommandButton* Form::Impl::buttonThat(bool (*is)(const CommandButton&)) const {
    for (Control* one : form.controls())
        if (auto* button = dynamic_cast<CommandButton*>(one); button && is(*button))
            if (button->widget()->isEnabled() && button->widget()->isVisibleTo(form.widget())) return button;
    return nullptr;
}

template <class Base>
bool FormWindow<Base>::focusNextPrevChild(bool next) {
    return form_ && !form_->impl().dying && form_->impl().moveFocus(next);
}

template <class Base>
void FormWindow<Base>::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (!form_ || event->isAutoRepeat()) return;
    if (event->key() == Qt::Key_Escape) {
        if (auto* cancel = form_->impl().buttonThat(isCancel)) {
            event->accept();
            cancel->press();
        } else if (form_->impl().isDialog()) {
            event->accept();
            form_->Unload();
        }
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* primary = form_->impl().buttonThat(isPrimary)) {
            event->accept();
            if (tryLeave(*form_, primary->widget())) primary->press();
        }
    }
}

template <class Base>
void FormWindow<Base>::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!form_ || form_->Unload()) event->accept();
}

template <class Base>
void FormWindow<Base>::resizeEvent(QResizeEvent* event) {
    Base::resizeEvent(event);
    if (form_ && !form_->impl().dying && form_->loaded())
        form_->run(
            "Form_Resize", [this] { form_->Form_Resize(); }, std::source_location{});
}

template class FormWindow<QWidget>;
template class FormWindow<QMainWindow>;

}  // namespace kv
