// Every event passes here before the toolkit moves the focus: only here can a field that refuses keep it, whatever
// takes the focus away, without anything having happened yet.

#include "platform/forms/AppEvents.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QShortcutEvent>

#include "platform/forms/Application.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/FormImpl.h"

namespace kv {

namespace {

/// The widget to which the toolkit would give the focus on a click.
QWidget* clickTarget(QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::ClickFocus)) return widget;
        if (widget->isWindow()) break;
    }
    return nullptr;
}

bool isEnter(const QKeyEvent& event) { return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter; }

/// Fields in which Enter moves on as Tab does.
bool enterMovesOn(const QWidget* widget) {
    if (ownEnter(widget)) return false;
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QAbstractSpinBox*>(widget) || qobject_cast<const QCheckBox*>(widget) ||
           qobject_cast<const QRadioButton*>(widget);
}

/// The character of a key as handlers see it; 0 for keys without one.
int characterOf(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return 0;
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return 13;
        case Qt::Key_Escape:
            return 27;
        case Qt::Key_Backspace:
            return 8;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return 0;
        default:
            break;
    }
    const QString text = event.text();
    if (text.isEmpty() || !text.front().isPrint()) return 0;
    return static_cast<int>(text.toUcs4().front());
}

bool capsLockSeen = false;

void noteCapsLock(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.size() != 1 || !text.front().isLetter()) return;
    capsLockSeen = text.front().isUpper() != event.modifiers().testFlag(Qt::ShiftModifier);
}

/// Asks the form and the control about a key before it does anything. True: swallowed; `text` may come back changed.
bool handlersTake(Form& form, Control* control, const QKeyEvent& event, QString& text) {
    const auto alive = form.impl().alive;
    int character = characterOf(event);
    const int before = character;
    noteCapsLock(event);
    if (form.impl().keyPreview && character) {
        form.run(
            "Form_KeyPress", [&] { form.Form_KeyPress(character); }, std::source_location{});
        if (!*alive || !character) return true;
    }
    if (control && control->onKeyDown) {
        bool handled = false;
        form.run(
            control->name() + "_KeyDown", [&] { control->onKeyDown.callUnguarded(keyName(event), handled); },
            std::source_location{});
        if (!*alive || handled) return true;
    }
    if (control && control->onKeyPress && character) {
        form.run(
            control->name() + "_KeyPress", [&] { control->onKeyPress.callUnguarded(character); },
            std::source_location{});
        if (!*alive || !character) return true;
    }
    if (character != before) {
        const auto changed = static_cast<char32_t>(character);
        text = QString::fromUcs4(&changed, 1);
    }
    return false;
}

}  // namespace

bool capsLockOn() { return capsLockSeen; }

void setOwnEnter(QWidget* widget) { widget->setProperty("kvOwnEnter", true); }

bool ownEnter(const QWidget* widget) { return widget->property("kvOwnEnter").toBool(); }

AppEvents::AppEvents(int& argc, char** argv) : QApplication(argc, argv) {
    QObject::connect(this, &QApplication::focusChanged, [](QWidget*, QWidget* now) {
        Form* form = now ? formOf(now) : nullptr;
        Control* control = form ? controlOf(now) : nullptr;
        if (control) form->impl().focusChanged(control);
    });
}

namespace {

/// A click: the control left is validated before the one clicked gets the focus. True: the click is lost.
bool clickRefused(QWidget* widget) {
    Form* form = formOf(widget);
    QWidget* target = form ? clickTarget(widget) : nullptr;
    return target && formOf(target) == form && !tryLeave(*form, target);
}

/// Without a window manager no window is active once a menu or list has closed: the one it belongs to is again.
void windowAgain(const QWidget* popup) {
    if (QApplication::activeWindow() || !Application::offscreen()) return;
    QWidget* front = QApplication::activeModalWidget();
    if (!front && popup->parentWidget()) front = popup->parentWidget()->window();
    if (front && front->isVisible()) front->activateWindow();
}

/// An accelerator. Where two forms mean the same key the one in front takes it, then the shell.
bool shortcutRefused(QObject* object, const QShortcutEvent& event) {
    if (event.isAmbiguous()) {
        Form* front = Form::active();
        if (front && front->impl().shortcutPressed(event.key())) return true;
        if (Form::shell() && Form::shell() != front && Form::shell()->impl().shortcutPressed(event.key())) return true;
    }
    if (!object->isWidgetType()) return false;
    auto* widget = static_cast<QWidget*>(object);
    Form* form = formOf(widget);
    if (!form || qobject_cast<QMenuBar*>(widget) || qobject_cast<QMenu*>(widget)) return false;
    QWidget* target = widget;
    if (auto* label = qobject_cast<QLabel*>(widget)) target = label->buddy();
    return target && target->focusPolicy() != Qt::NoFocus && !tryLeave(*form, target);
}

}  // namespace

bool AppEvents::notify(QObject* object, QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::Shortcut) {
        const auto& shortcut = *static_cast<QShortcutEvent*>(event);
        if (shortcutRefused(object, shortcut)) return true;
        // the toolkit would press it down first and click it a tenth of a second later
        if (auto* button = qobject_cast<QPushButton*>(object); button && !shortcut.isAmbiguous()) {
            button->setFocus(Qt::ShortcutFocusReason);
            button->click();
            return true;
        }
    }
    if (!object->isWidgetType()) return QApplication::notify(object, event);
    auto* widget = static_cast<QWidget*>(object);
    if (type == QEvent::Hide && widget->windowType() == Qt::Popup) {
        const bool done = QApplication::notify(object, event);
        windowAgain(widget);
        return done;
    }
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) {
        if (clickRefused(widget)) return true;
    } else if (type == QEvent::Wheel) {
        // a wheel over a field neither changes its value nor takes the focus: it scrolls what is around it
        const bool field = qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractSpinBox*>(widget);
        if (field && widget->parentWidget()) return QApplication::notify(widget->parentWidget(), event);
    } else if (type == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        Form* form = formOf(widget);
        if (!form) return QApplication::notify(object, event);
        QString text = key->text();
        if (handlersTake(*form, controlOf(widget), *key, text)) {
            event->accept();
            return true;
        }
        if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
            const QScopedValueRollback<bool> guard(userTab(), true);
            return QApplication::notify(object, event);
        }
        if (isEnter(*key) && enterMovesOn(widget)) {
            const QScopedValueRollback<bool> guard(userTab(), true);
            QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
            event->accept();
            return QApplication::notify(object, &tab);
        }
        if (auto* button = qobject_cast<QAbstractButton*>(widget); button && isEnter(*key)) {
            event->accept();
            if (!key->isAutoRepeat()) button->click();
            return true;
        }
        if (text != key->text()) {
            QKeyEvent changed(type, key->key(), key->modifiers(), text, key->isAutoRepeat());
            return QApplication::notify(object, &changed);
        }
    }
    return QApplication::notify(object, event);
}

}  // namespace kv
