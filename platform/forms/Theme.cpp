#include "platform/forms/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPixmapCache>
#include <QToolTip>
#include <algorithm>
#include <list>

#include "platform/forms/Style.h"

namespace kv {

namespace {

constexpr double kFont_pt = 9.5;

Tones lightTones() {
    Tones t;
    t.accent = QColor("#2563eb");
    t.accentText = QColor("#ffffff");
    t.accentSoft = QColor("#dbe7ff");
    t.border = QColor("#cbd3de");
    t.borderStrong = QColor("#9aa7b8");
    t.rowLine = QColor("#e9edf3");
    t.panel = QColor("#ffffff");
    t.header = QColor("#eef1f5");
    t.headerText = QColor("#3b4657");
    t.locked = QColor("#eceff4");
    t.hint = QColor("#6b7788");
    t.danger = QColor("#c62828");
    t.dangerSoft = QColor("#fdeceb");
    t.good = QColor("#1b7f4b");
    t.desktop = QColor("#e4e8ee");
    t.titleBar = QColor("#ffffff");
    t.titleBarText = QColor("#1f2937");
    t.alternate = QColor("#f7f9fc");
    t.mark = QColor("#ffe08a");
    return t;
}

Tones darkTones() {
    Tones t;
    t.dark = true;
    t.accent = QColor("#5b93ff");
    t.accentText = QColor("#0d1524");
    t.accentSoft = QColor("#2b4270");
    t.border = QColor("#434c5c");
    t.borderStrong = QColor("#6c778a");
    t.rowLine = QColor("#2e3643");
    t.panel = QColor("#252b36");
    t.header = QColor("#2d3441");
    t.headerText = QColor("#c3ccd9");
    t.locked = QColor("#1a1f27");
    t.hint = QColor("#97a3b4");
    t.danger = QColor("#ff7b72");
    t.dangerSoft = QColor("#4a2426");
    t.good = QColor("#4fc38a");
    t.desktop = QColor("#161a20");
    t.titleBar = QColor("#2a313d");
    t.titleBarText = QColor("#e7ebf1");
    t.alternate = QColor("#262c37");
    t.mark = QColor("#6b5310");
    return t;
}

Tones& current() {
    static Tones t = lightTones();
    return t;
}

QPalette paletteFor(const Tones& t) {
    const QColor text(t.dark ? "#e7ebf1" : "#1f2937");
    const QColor dim(t.dark ? "#788496" : "#8a94a3");
    QPalette p;
    p.setColor(QPalette::Window, QColor(t.dark ? "#1e232c" : "#f3f5f8"));
    p.setColor(QPalette::Base, QColor(t.dark ? "#232933" : "#ffffff"));
    p.setColor(QPalette::AlternateBase, t.alternate);
    p.setColor(QPalette::Button, QColor(t.dark ? "#2c333f" : "#ffffff"));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        p.setColor(role, text);
        p.setColor(QPalette::Disabled, role, dim);
    }
    p.setColor(QPalette::Highlight, QColor(t.dark ? "#35528c" : "#cfdffc"));
    p.setColor(QPalette::Inactive, QPalette::Highlight, t.dark ? QColor("#333c4b") : QColor("#e1e6ee"));
    p.setColor(QPalette::HighlightedText, text);
    p.setColor(QPalette::PlaceholderText, t.hint);
    p.setColor(QPalette::BrightText, t.danger);
    p.setColor(QPalette::Link, t.accent);
    p.setColor(QPalette::LinkVisited, t.accent);
    p.setColor(QPalette::ToolTipBase, t.panel);
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::Light, t.panel);
    p.setColor(QPalette::Midlight, t.rowLine);
    p.setColor(QPalette::Mid, t.border);
    p.setColor(QPalette::Dark, t.borderStrong);
    p.setColor(QPalette::Shadow, QColor(0, 0, 0));
    return p;
}

bool& desktopDark() {
    static bool dark = false;
    return dark;
}

struct Listener {
    QPointer<QObject> owner;
    std::function<void()> body;
};

std::list<Listener>& listeners() {
    static std::list<Listener> all;
    return all;
}

}  // namespace

const Tones& tones() { return current(); }

bool desktopIsDark() { return desktopDark(); }

void onThemeChanged(QObject* owner, std::function<void()> body) {
    listeners().remove_if([](const Listener& one) { return one.owner.isNull(); });
    listeners().push_back({owner, std::move(body)});
}

void dressApplication(QApplication& application) {
    const QPalette before = QGuiApplication::palette();
    desktopDark() = before.color(QPalette::Window).lightness() < before.color(QPalette::WindowText).lightness();
    application.setStyle(new Style);
    QFont font(QStringLiteral("Noto Sans"));
    font.setPointSizeF(kFont_pt);
    font.setHintingPreference(QFont::PreferVerticalHinting);
    application.setFont(font);
    application.setPalette(paletteFor(current()));
}

void applyTheme(bool dark) {
    if (current().dark == dark) return;
    current() = dark ? darkTones() : lightTones();
    QPixmapCache::clear();
    QApplication::setPalette(paletteFor(current()));
    QToolTip::setPalette(QApplication::palette());
    for (const auto& one : std::list<Listener>(listeners()))
        if (one.owner) one.body();
    // the toolkit tells its widgets only inside its own event loop
    for (QWidget* one : QApplication::allWidgets()) {
        QEvent change(QEvent::ApplicationPaletteChange);
        QCoreApplication::sendEvent(one, &change);
        one->update();
    }
}

QString fitted(const QFontMetrics& metrics, const QString& text, int width_px, bool figure) {
    if (metrics.horizontalAdvance(text) <= width_px) return text;
    const bool number = figure && std::any_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); }) &&
                        std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
    if (!number) return metrics.elidedText(text, Qt::ElideRight, width_px);
    return QString(std::max(1, width_px / std::max(1, metrics.horizontalAdvance(u'#'))), u'#');
}

int charsWidth(const QWidget* widget, int chars) {
    return widget->fontMetrics().horizontalAdvance(QLatin1Char('0')) * chars;
}

}  // namespace kv
