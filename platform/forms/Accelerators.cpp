#include "platform/forms/Accelerators.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTabBar>
#include <map>

#include "platform/forms/FormImpl.h"

namespace kv {

namespace {

class Keys {
public:
    void add(const QString& text) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty()) texts_[key.toString()].push_back(QString(text).remove(u'&').simplified());
    }
    std::vector<std::string> doubled() const {
        std::vector<std::string> lines;
        for (const auto& [key, texts] : texts_)
            if (texts.size() > 1) lines.push_back(toStd(key + QStringLiteral(": ") + texts.join(QStringLiteral(", "))));
        return lines;
    }

private:
    std::map<QString, QStringList> texts_;
};

}  // namespace

std::vector<std::string> doubledAccelerators(const Form& form) {
    Keys keys;
    const QWidget* whole = form.widget();
    for (const QWidget* one : whole->findChildren<QWidget*>()) {
        if (!one->isVisibleTo(whole) || formOf(one) != &form) continue;
        if (const auto* label = qobject_cast<const QLabel*>(one); label && label->buddy()) keys.add(label->text());
        if (const auto* button = qobject_cast<const QAbstractButton*>(one)) keys.add(button->text());
        if (const auto* bar = qobject_cast<const QTabBar*>(one))
            for (int i = 0; i < bar->count(); ++i)
                if (bar->isTabVisible(i)) keys.add(bar->tabText(i));
        if (const auto* bar = qobject_cast<const QMenuBar*>(one))
            for (const QAction* action : bar->actions())
                if (action->isVisible()) keys.add(action->text());
    }
    return keys.doubled();
}

}  // namespace kv
