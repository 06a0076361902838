// Names of keys, and keys sent by code.

#include <QApplication>
#include <QKeySequence>
#include <QTimer>
#include <array>
#include <utility>

#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/Internal.h"

namespace kv {

namespace {

/// Where our names differ from the toolkit's portable ones.
constexpr std::array<std::pair<const char*, int>, 11> kNames{{
    {"Enter", Qt::Key_Return},
    {"Enter", Qt::Key_Enter},
    {"Escape", Qt::Key_Escape},
    {"PageUp", Qt::Key_PageUp},
    {"PageDown", Qt::Key_PageDown},
    {"Insert", Qt::Key_Insert},
    {"Delete", Qt::Key_Delete},
    {"Tab", Qt::Key_Tab},
    {"Tab", Qt::Key_Backtab},
    {"Backspace", Qt::Key_Backspace},
    {"Space", Qt::Key_Space},
}};

std::string baseName(int key) {
    for (const auto& [name, code] : kNames)
        if (code == key) return name;
    return toStd(QKeySequence(key).toString(QKeySequence::PortableText));
}

struct Stroke {
    QKeyCombination key;
    QString text;
};

/// "{Tab}ab{F2}": names in braces, everything else characters.
std::vector<Stroke> strokesOf(std::string_view keys) {
    std::vector<Stroke> strokes;
    const QString all = qs(keys);
    for (int i = 0; i < all.size(); ++i) {
        const auto close = all[i] == u'{' ? all.indexOf(u'}', i + 2) : -1;
        if (close > 0) {
            if (const auto key = keyFromName(toStd(all.mid(i + 1, close - i - 1)))) {
                const QString text = key->key() == Qt::Key_Return ? QStringLiteral("\r")
                                     : key->key() == Qt::Key_Tab  ? QStringLiteral("\t")
                                                                  : QString();
                strokes.push_back({*key, text});
            }
            i = static_cast<int>(close);
            continue;
        }
        strokes.push_back({QKeyCombination(static_cast<Qt::Key>(all[i].toUpper().unicode())), QString(all[i])});
    }
    return strokes;
}

void send(const Stroke& stroke) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QWidget* target = QApplication::focusWidget();
        if (!target) target = QApplication::activeWindow();
        if (!target) return;
        QKeyEvent event(type, stroke.key.key(), stroke.key.keyboardModifiers(), stroke.text);
        QCoreApplication::sendEvent(target, &event);
    }
}

}  // namespace

std::string keyName(const QKeyEvent& event) {
    std::string name;
    const auto held = event.modifiers();
    const bool shifted = held & Qt::ShiftModifier || event.key() == Qt::Key_Backtab;
    const bool typed = !event.text().isEmpty() && event.text().front().isPrint() && event.text() != QStringLiteral(" ");
    if (held & Qt::ControlModifier) name += "Ctrl+";
    if (held & Qt::AltModifier) name += "Alt+";
    if (shifted && (!typed || held & (Qt::ControlModifier | Qt::AltModifier))) name += "Shift+";
    return name + baseName(event.key());
}

std::optional<QKeyCombination> keyFromName(std::string_view name) {
    Qt::KeyboardModifiers held;
    for (std::size_t plus = name.find('+'); plus != std::string_view::npos && plus + 1 < name.size();
         plus = name.find('+')) {
        const std::string_view part = name.substr(0, plus);
        if (equalsNoCase(part, "Ctrl"))
            held |= Qt::ControlModifier;
        else if (equalsNoCase(part, "Shift"))
            held |= Qt::ShiftModifier;
        else if (equalsNoCase(part, "Alt"))
            held |= Qt::AltModifier;
        else
            return std::nullopt;
        name.remove_prefix(plus + 1);
    }
    for (const auto& [known, key] : kNames)
        if (equalsNoCase(name, known)) return QKeyCombination(held, static_cast<Qt::Key>(key));
    if (equalsNoCase(name, "Esc")) return QKeyCombination(held, Qt::Key_Escape);
    const QKeySequence sequence = QKeySequence::fromString(qs(name), QKeySequence::PortableText);
    if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown) return std::nullopt;
    return QKeyCombination(held | sequence[0].keyboardModifiers(), sequence[0].key());
}

void sendKeys(std::string_view keys, bool wait) {
    for (const Stroke& stroke : strokesOf(keys)) {
        if (wait)
            send(stroke);
        else
            QTimer::singleShot(0, qApp, [stroke] { send(stroke); });
    }
}

void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

}  // namespace kv
