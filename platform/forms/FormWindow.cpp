// The window of a form: made, sized and placed, inside the shell or by itself; its menus, toolbar and shortcuts.

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <algorithm>
#include <cstdio>

#include "platform/base/Text.h"
#include "platform/forms/FormImpl.h"
#include "platform/forms/LayoutImpl.h"

namespace kv {

namespace {

constexpr int kCascade_px = 28;
constexpr int kCascadeSteps = 8;
constexpr int kDialog_px = 340;  ///< a dialog is at least this wide

/// Instead of the toolkit's own sign, which a maximized child would show beside the menus.
QIcon blankIcon() {
    QPixmap nothing(1, 1);
    nothing.fill(Qt::transparent);
    return QIcon(nothing);
}

QMenu* makeMenu(const MenuSpec& spec, QWidget* parent) {
    auto* menu = new QMenu(qs(spec.caption), parent);
    for (const auto& part : spec.parts) {
        if (part.item)
            menu->addAction(part.item->action());
        else if (part.sub)
            menu->addMenu(makeMenu(*part.sub, menu));
        else
            menu->addSeparator();
    }
    if (spec.owner) spec.owner->standFor(menu->menuAction());
    return menu;
}

void collectEntries(const MenuSpec& spec, const std::string& above, std::vector<Form::MenuEntry>& entries) {
    if (spec.owner && (!spec.owner->shown() || !spec.owner->able())) return;
    const std::string caption = replaceAll(spec.caption, "&", "");
    const std::string path = above.empty() ? caption : above + " > " + caption;
    for (const MenuSpec::Part& part : spec.parts) {
        if (part.item && part.item->shown() && part.item->able() && !part.item->action()->isSeparator())
            entries.push_back({part.item, path});
        if (part.sub) collectEntries(*part.sub, path, entries);
    }
}

}  // namespace

void Form::Impl::makeWindow() {
    if (window == Window::Shell) {
        auto* shell = new FormWindow<QMainWindow>(form);
        form.widget_ = shell;
        content = new QWidget(shell);
        shell->setCentralWidget(content);
        return;
    }
    auto* plain = new FormWindow<QWidget>(form);
    form.widget_ = plain;
    if (isDialog()) plain->setWindowFlags(Qt::Dialog);
    outer = new QVBoxLayout(plain);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    content = new QWidget(plain);
    outer->addWidget(content, 1);
}

void Form::setLayout(const Layout& layout) {
    const bool shell = impl_->window == Window::Shell;
    buildLayout(*this, layout, impl_->content, shell ? 0 : kMargin_px);
}

void Form::setMenu(std::vector<MenuSpec> menus) {
    const bool shell = impl_->window == Window::Shell;
    QMenuBar* bar = shell ? static_cast<QMainWindow*>(widget_)->menuBar() : new QMenuBar(widget_);
    impl_->menuBar = bar;
    bar->setNativeMenuBar(false);
    if (!shell) impl_->outer->insertWidget(0, bar);
    for (const auto& spec : menus) bar->addMenu(makeMenu(spec, bar));
    impl_->menus = menus;
    if (!shell) return;
    impl_->windowMenu = new QMenu(QStringLiteral("&Window"), bar);
    QObject::connect(impl_->windowMenu, &QMenu::aboutToShow, [this] { impl_->fillWindowMenu(); });
    const bool helpLast = !menus.empty() && menus.back().caption.find("Help") != std::string::npos;
    bar->insertMenu(helpLast ? bar->actions().back() : nullptr, impl_->windowMenu);
}

std::vector<Form::MenuEntry> Form::menuEntries() const {
    std::vector<MenuEntry> entries;
    for (const MenuSpec& menu : impl_->menus) collectEntries(menu, {}, entries);
    return entries;
}

void Form::setToolbar(Toolbar& toolbar) {
    auto* bar = static_cast<QToolBar*>(toolbar.widget());
    if (impl_->window == Window::Shell)
        static_cast<QMainWindow*>(widget_)->addToolBar(bar);
    else
        impl_->outer->insertWidget(impl_->menuBar ? 1 : 0, bar);
}

void Form::setStatusBar(StatusBar& bar) {
    impl_->status = &bar;
    auto* box = static_cast<QStatusBar*>(bar.widget());
    if (impl_->window == Window::Shell)
        static_cast<QMainWindow*>(widget_)->setStatusBar(box);
    else
        impl_->outer->addWidget(box);
}

void Form::shortcut(const std::string& keys, std::string procedure, std::function<void()> body) {
    const QKeySequence sequence(qs(keys));
    impl_->bindings.push_back({sequence, procedure, body});
    auto* key = new QShortcut(sequence, widget_);
    QObject::connect(key, &QShortcut::activated, [this, procedure = std::move(procedure), body = std::move(body)] {
        if (!impl_->dying) run(procedure, body, std::source_location{});
    });
}

/// Two open forms may mean the same key: the one in front goes before the shell. True when one took it.
bool Form::Impl::shortcutPressed(const QKeySequence& keys) {
    for (const auto& binding : bindings)
        if (binding.keys == keys) {
            form.run(binding.procedure, binding.body, std::source_location{});
            return true;
        }
    for (Control* one : form.controls())
        if (auto* entry = dynamic_cast<MenuItem*>(one); entry && entry->action()->shortcut() == keys)
            if (entry->shown() && entry->able()) {
                entry->pick();
                return true;
            }
    return mnemonicPressed(keys);
}

bool Form::Impl::mnemonicPressed(const QKeySequence& keys) {
    const auto means = [&keys](const QString& text) { return QKeySequence::mnemonic(text) == keys; };
    if (menuBar)
        for (QAction* head : menuBar->actions())
            if (head->isVisible() && head->isEnabled() && means(head->text())) {
                menuBar->setActiveAction(head);
                return true;
            }
    for (QWidget* one : form.widget()->findChildren<QWidget*>()) {
        if (!one->isVisible() || !one->isEnabled() || formOf(one) != &form) continue;
        if (auto* button = qobject_cast<QAbstractButton*>(one); button && means(button->text())) {
            if (button->focusPolicy() == Qt::NoFocus)
                button->click();
            else if (tryLeave(form, button)) {
                button->setFocus(Qt::ShortcutFocusReason);
                button->click();
            }
            return true;
        }
        if (auto* label = qobject_cast<QLabel*>(one); label && label->buddy() && means(label->text())) {
            if (tryLeave(form, label->buddy())) label->buddy()->setFocus(Qt::ShortcutFocusReason);
            return true;
        }
        if (auto* heads = qobject_cast<QTabBar*>(one))
            for (int i = 0; i < heads->count(); ++i)
                if (heads->isTabEnabled(i) && means(heads->tabText(i))) {
                    if (tryLeave(form, heads)) heads->setCurrentIndex(i);
                    return true;
                }
    }
    return false;
}

QMdiArea* Form::Impl::makeMdi() {
    if (mdi) return mdi;
    middle = new QStackedWidget(content);
    homePage = new QWidget(middle);
    auto* fill = new QVBoxLayout(homePage);
    fill->setContentsMargins(0, 0, 0, 0);
    mdi = new QMdiArea(middle);
    mdi->setFrameShape(QFrame::NoFrame);
    mdi->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi->setBackground(tones().desktop);
    onThemeChanged(mdi, [area = mdi] { area->setBackground(tones().desktop); });
    middle->addWidget(mdi);
    middle->addWidget(homePage);
    return mdi;
}

/// Size at first: the one remembered, else the one asked for, else what the layout needs; never beyond the screen.
void Form::Impl::place() {
    auto* plain = dynamic_cast<FormWindow<QWidget>*>(form.widget());
    if (plain && !form.widget()->windowHandle() && form.widget()->isWindow()) plain->makeNative();
    if (std::exchange(placed, true)) return;
    const QSize hint = form.widget()->sizeHint();
    QSize size = asked.isValid() ? asked.expandedTo(form.widget()->minimumSizeHint()) : hint;
    if (window == Window::Shell && !asked.isValid()) size = QSize(1280, 800);
    if (isDialog()) size.setWidth(std::max(size.width(), kDialog_px));
    first = size;
    int wide = 0;
    int high = 0;
    if (std::sscanf(remembered(form.name() + ".size").c_str(), "%dx%d", &wide, &high) == 2 && wide > 100 && high > 60)
        size = QSize(wide, high).expandedTo(form.widget()->minimumSizeHint());
    const QRect screen = form.widget()->screen()->availableGeometry();
    form.widget()->resize(size.boundedTo(screen.size() - QSize(0, 40)));
    if (window == Window::Shell) form.widget()->move(screen.center() - form.widget()->rect().center());
    for (const auto& [key, splitter] : splits)
        if (int at = 0; splitter && std::sscanf(remembered(key).c_str(), "%d", &at) == 1 && at > 0) {
            const int room = std::max(at + 50, form.widget()->width());
            static_cast<QSplitter*>(splitter.data())->setSizes({at, room - at});
        }
}

void Form::Impl::rememberSizes() {
    if (!placed) return;
    const QSize now = form.widget()->size();
    const bool whole = form.widget()->isMaximized() || (sub && sub->isMaximized());
    if (!home && !whole && now != first)
        remember(form.name() + ".size", std::to_string(now.width()) + "x" + std::to_string(now.height()));
    for (const auto& [key, splitter] : splits)
        if (splitter && form.widget()->isVisible())
            remember(key, std::to_string(static_cast<QSplitter*>(splitter.data())->sizes().value(0)));
}

void Form::Impl::showChild() {
    Impl& shell = Form::shell()->impl();
    QMdiArea* area = shell.makeMdi();
    if (home) {
        shell.homeForm = &form;
        shell.homePage->layout()->addWidget(form.widget());
        placed = true;
        form.widget()->show();
        shell.arrangeMiddle();
        return;
    }
    if (!sub) {
        place();
        const QSize wanted = form.widget()->size();
        if (shell.middle->currentWidget() != area) {
            area->resize(shell.middle->size());
            shell.middle->setCurrentWidget(area);
        }
        sub = area->addSubWindow(form.widget());
        sub->setWindowIcon(icon.empty() ? blankIcon() : iconOf(icon));
        const QSize room = area->viewport()->size();
        const QSize size =
            wanted.grownBy(sub->layout()->contentsMargins()).boundedTo(room - QSize(2 * kMargin_px, 2 * kMargin_px));
        const int step =
            kCascade_px * static_cast<int>((area->subWindowList().size() - 1) % kCascadeSteps) + kMargin_px;
        const QPoint at(std::min(step, room.width() - size.width()), std::min(step, room.height() - size.height()));
        sub->setGeometry(QRect(at, size));
    }
    focusFirst();
    form.widget()->show();
    sub->show();
    area->setActiveSubWindow(sub);
    shell.arrangeMiddle();
    focusFirst();
}

void Form::Impl::hideFrame() {
    if (bubble) bubble->hide();
    if (QWidget* inside = form.widget()->focusWidget()) inside->clearFocus();
    Form* shell = Form::shell();
    if (sub) {
        QMdiSubWindow* frame = sub;
        sub = nullptr;
        frame->setWidget(nullptr);
        if (QMdiArea* area = frame->mdiArea()) area->removeSubWindow(frame);
        frame->hide();
        frame->deleteLater();
    } else if (shell && shell != &form && shell->impl().homeForm == &form) {
        shell->impl().homeForm = nullptr;
        form.widget()->setParent(nullptr);
    }
    form.widget()->hide();
    if (!shell || shell == &form || window != Window::Child) return;
    Impl& around = shell->impl();
    around.arrangeMiddle();
    const bool alone = around.mdi && around.mdi->subWindowList().isEmpty();
    if (alone && shell->widget()->isActiveWindow()) around.focusFirst();
}

void Form::Impl::arrangeMiddle() {
    if (!middle) return;
    const bool children = !mdi->subWindowList().isEmpty();
    QWidget* front = children || !homeForm ? static_cast<QWidget*>(mdi) : homePage;
    const bool comes = front == homePage && middle->currentWidget() != front;
    middle->setCurrentWidget(front);
    if (!comes) return;
    Form* shown = homeForm;
    if (std::exchange(shown->impl().seen, true))
        shown->run(
            "Form_Activate", [shown] { shown->Form_Activate(); }, std::source_location{});
}

void Form::Impl::fillWindowMenu() {
    windowMenu->clear();
    QMdiArea* area = makeMdi();
    const auto windows = area->subWindowList();
    QAction* tile = windowMenu->addAction(QStringLiteral("&Tile"), [area] { area->tileSubWindows(); });
    QAction* cascade = windowMenu->addAction(QStringLiteral("&Cascade"), [area] { area->cascadeSubWindows(); });
    QAction* all = windowMenu->addAction(QStringLiteral("Close &All"), [area] { area->closeAllSubWindows(); });
    for (QAction* one : {tile, cascade, all}) one->setEnabled(!windows.isEmpty());
    if (!windows.isEmpty()) windowMenu->addSeparator();
    int number = 0;
    for (QMdiSubWindow* one : windows) {
        const QString text = QStringLiteral("&%1 %2").arg(++number).arg(one->windowTitle());
        QAction* entry = windowMenu->addAction(text, [area, one] { area->setActiveSubWindow(one); });
        entry->setCheckable(true);
        entry->setChecked(one == area->currentSubWindow());
    }
}

}  // namespace kv
