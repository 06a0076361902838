#include "platform/forms/Accelerators.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QStackedWidget>
#include <QTabBar>
#include <map>
#include <set>

#include "platform/forms/FormImpl.h"

namespace kv {

namespace {

using Texts = std::map<QString, QStringList>;  ///< by key

/// The page of tabs that a widget lies on; null for what is always in sight.
const QWidget* pageOf(const QWidget* widget) {
    for (; widget && widget->parentWidget(); widget = widget->parentWidget())
        if (qobject_cast<const QStackedWidget*>(widget->parentWidget())) return widget;
    return nullptr;
}

QStringList textsOf(const QWidget* one) {
    QStringList texts;
    if (const auto* label = qobject_cast<const QLabel*>(one); label && label->buddy()) texts += label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(one)) texts += button->text();
    if (const auto* bar = qobject_cast<const QTabBar*>(one))
        for (int i = 0; i < bar->count(); ++i)
            if (bar->isTabVisible(i)) texts += bar->tabText(i);
    if (const auto* bar = qobject_cast<const QMenuBar*>(one))
        for (const QAction* action : bar->actions())
            if (action->isVisible()) texts += action->text();
    return texts;
}

}  // namespace

std::vector<std::string> doubledAccelerators(const Form& form) {
    const QWidget* whole = form.widget();
    std::map<const QWidget*, Texts> pages;  // null: beside the pages
    pages[nullptr];
    for (const QWidget* one : whole->findChildren<QWidget*>()) {
        const QWidget* page = formOf(one) == &form ? pageOf(one) : nullptr;
        if (formOf(one) != &form || !one->isVisibleTo(page ? page : whole)) continue;
        for (const QString& text : textsOf(one))
            if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty())
                pages[page][key.toString()] += QString(text).remove(u'&').simplified();
    }
    std::set<std::string> lines;
    for (const auto& [page, texts] : pages) {
        Texts seen = pages[nullptr];
        if (page)
            for (const auto& [key, more] : texts) seen[key] += more;
        for (const auto& [key, all] : seen)
            if (all.size() > 1) lines.insert(toStd(key + QStringLiteral(": ") + all.join(QStringLiteral(", "))));
    }
    return {lines.begin(), lines.end()};
}

}  // namespace kv
