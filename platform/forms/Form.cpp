#include "platform/forms/Form.h"

#include <QApplication>
#include <QWindow>
#include <algorithm>
#include <cctype>

#include "platform/base/Error.h"
#include "platform/forms/FormImpl.h"
#include "platform/forms/Openings.h"

namespace kv {

namespace {

Form* theShell = nullptr;
OpeningWatcher openingWatcher;

template <class List, class Value>
void drop(List& list, const Value& value) {
    list.erase(std::remove(list.begin(), list.end(), value), list.end());
}

/// x0, x_0 and x(0) are one name.
std::string plainName(std::string_view name) {
    std::string plain;
    for (const char c : name)
        if (c != '_' && c != '(' && c != ')') plain += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return plain;
}

}  // namespace

void watchOpenings(OpeningWatcher watcher) { openingWatcher = std::move(watcher); }

std::vector<Form*>& Form::Impl::open() {
    static std::vector<Form*> forms;
    return forms;
}

std::vector<Form*>& Form::Impl::modals() {
    static std::vector<Form*> forms;
    return forms;
}

Form::Form(std::string name, const std::string& caption, Window window)
    : name_(std::move(name)), impl_(std::make_unique<Impl>(*this, window)) {
    impl_->makeWindow();
    widget_->setObjectName(qs(name_));
    widget_->setWindowTitle(qs(caption));
}

Form::~Form() {
    impl_->dying = true;
    *impl_->alive = false;
    drop(Impl::open(), this);
    drop(Impl::modals(), this);
    if (theShell == this) theShell = nullptr;
    if (impl_->loop) impl_->loop->quit();
    impl_->hideFrame();
    dynamic_cast<FormHost*>(widget_)->forget();
    if (impl_->depth > 0)
        widget_->deleteLater();  // a handler of the form is on the stack, and its widget with it
    else
        delete widget_;
}

std::string Form::caption() const { return toStd(widget_->windowTitle()); }

void Form::setCaption(std::string_view caption) { widget_->setWindowTitle(qs(caption)); }

bool Form::loaded() const { return impl_->loaded; }

bool Form::isVisible() const { return widget_->isVisible(); }

void Form::setKeyPreview(bool on) { impl_->keyPreview = on; }

void Form::setHome() { impl_->home = true; }

void Form::setIcon(std::string icon) {
    impl_->icon = std::move(icon);
    widget_->setWindowIcon(iconOf(impl_->icon));
}

void Form::setSize(int width_px, int height_px) { impl_->asked = QSize(width_px, height_px); }

void Form::setFirstFocus(Control& control) { impl_->firstFocus = &control; }

void Form::Load() {
    if (impl_->loaded) return;
    impl_->loaded = true;
    Impl::open().push_back(this);
    if (impl_->window == Window::Shell) theShell = this;
    run(
        "Form_Load", [this] { Form_Load(); }, std::source_location{});
}

void Form::Impl::tellOpening() {
    if (!openingWatcher || told) return;
    told = true;
    form.widget()->grab();
    openingWatcher(form, 1e3 * static_cast<double>(std::clock() - born) / CLOCKS_PER_SEC);
}

void Form::Show() {
    Load();
    if (!impl_->loaded) return;
    if (impl_->window == Window::Child && theShell && theShell != this) {
        impl_->showChild();
        impl_->tellOpening();
        return;
    }
    impl_->place();
    impl_->focusFirst();
    widget_->show();
    widget_->raise();
    widget_->activateWindow();
    impl_->focusFirst();
    impl_->tellOpening();
}

void Form::ShowModal() {
    const auto alive = impl_->alive;
    Load();
    if (!*alive || !impl_->loaded) return;
    Reactivate before;
    QWidget* owner = QApplication::activeModalWidget();
    if (!owner) owner = QApplication::activeWindow();
    if (!owner && theShell) owner = theShell->widget();
    if (!(widget_->windowFlags() & Qt::Dialog)) widget_->setWindowFlags(Qt::Dialog);
    widget_->setWindowModality(Qt::ApplicationModal);
    impl_->place();
    if (owner && owner != widget_ && owner->isVisible()) {
        if (owner->windowHandle()) widget_->windowHandle()->setTransientParent(owner->windowHandle());
        const QPoint middle = owner->mapToGlobal(owner->rect().center());
        widget_->move(middle - QPoint(widget_->width() / 2, widget_->height() / 2));
    }
    impl_->modal = true;
    Impl::modals().push_back(this);
    impl_->focusFirst();
    widget_->show();
    widget_->activateWindow();
    impl_->focusFirst();
    impl_->tellOpening();
    if (dialogHooks().modal) dialogHooks().modal(*this);
    if (*alive && isVisible()) {
        QEventLoop loop;
        impl_->loop = &loop;
        loop.exec(QEventLoop::DialogExec);
        if (*alive) impl_->loop = nullptr;
    }
    drop(Impl::modals(), this);
    if (*alive) impl_->modal = false;
    if (Form* front = active()) front->impl().showHelp();
}

void Form::Hide() {
    impl_->rememberSizes();
    impl_->hideFrame();
    if (impl_->loop) impl_->loop->quit();
}

bool Form::Unload() {
    if (!impl_->loaded) return true;
    if (impl_->unloading) return false;
    impl_->unloading = true;
    const auto alive = impl_->alive;
    bool cancel = false;
    const auto here = std::source_location{};
    run(
        "Form_QueryUnload", [&] { Form_QueryUnload(cancel); }, here);
    if (!*alive) return true;
    // A shell goes only with everything in it, the topmost first.
    if (!cancel && impl_->window == Window::Shell)
        for (const auto others = Impl::open(); !cancel && Impl::open().size() > 1;) {
            Form* top = Impl::open().back() == this ? Impl::open().front() : Impl::open().back();
            const bool went = top->Unload();
            if (!*alive) return true;
            cancel = !went;
        }
    if (cancel) {
        impl_->unloading = false;
        return false;
    }
    impl_->rememberSizes();
    run(
        "Form_Unload", [this] { Form_Unload(); }, here);
    if (!*alive) return true;
    drop(Impl::open(), this);
    impl_->loaded = impl_->unloading = false;
    impl_->focused = impl_->pending = nullptr;
    impl_->hideFrame();
    if (impl_->loop) impl_->loop->quit();
    if (theShell == this) {
        theShell = nullptr;
        QCoreApplication::quit();
    }
    return true;
}

void Form::Refresh() {
    widget_->repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

bool Form::run(std::string_view procedure, const std::function<void()>& body, std::source_location at) {
    const std::string tag = "Korvane." + name_ + "." + std::string(procedure);
    const auto alive = impl_->alive;
    ++impl_->depth;
    MessageBox box{.text = {}, .title = "Application Error", .icon = Icon::Stop};
    try {
        body();
        if (*alive) --impl_->depth;
        return true;
    } catch (Error& error) {
        error.addPlace(tag);
        box.text = error.description;
    } catch (const std::exception& failure) {
        Error error(5, tag, failure.what(), at);
        error.addPlace(tag);
        box.text = error.description;
    }
    if (*alive) --impl_->depth;
    showBox(box);
    return false;
}

Control* Form::control(std::string_view name) const {
    for (Control* one : controls_)
        if (one->name() == name) return one;
    const std::string wanted = plainName(name);
    for (Control* one : controls_)
        if (plainName(one->name()) == wanted) return one;
    return nullptr;
}

Control* Form::activeControl() const { return controlOf(widget_->focusWidget()); }

std::vector<Form*> Form::openForms() { return Impl::open(); }

Form* Form::shell() { return theShell; }

Form* Form::active() {
    const auto& modals = Impl::modals();
    for (auto it = modals.rbegin(); it != modals.rend(); ++it)
        if ((*it)->isVisible()) return *it;
    if (!theShell) {
        for (auto it = Impl::open().rbegin(); it != Impl::open().rend(); ++it)
            if ((*it)->isVisible()) return *it;
        return nullptr;
    }
    if (theShell->impl_->mdi)
        if (QMdiSubWindow* front = theShell->impl_->mdi->currentSubWindow(); front && front->isVisible())
            if (const auto* host = dynamic_cast<FormHost*>(front->widget()); host && host->form()) return host->form();
    return theShell;
}

Form* formOf(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (const auto* host = dynamic_cast<const FormHost*>(widget))
            return host->form() && !host->form()->impl().dying ? host->form() : nullptr;
        if (widget->isWindow()) break;
    }
    return nullptr;
}

Control* controlOf(const QWidget* widget) {
    const Form* form = formOf(widget);
    if (!form) return nullptr;
    const auto& known = form->impl().byWidget;
    for (; widget && widget != form->widget(); widget = widget->parentWidget())
        if (const auto it = known.find(widget); it != known.end()) return it->second;
    return nullptr;
}

QWidget* frameOf(const Form& form) {
    if (form.impl().sub) return form.impl().sub;
    return form.widget();
}

}  // namespace kv
