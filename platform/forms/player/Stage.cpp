#include "platform/forms/player/Stage.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>

#include "platform/base/Text.h"
#include "platform/forms/FormImpl.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Lists.h"
#include "platform/forms/player/Play.h"

namespace kv {

namespace {

constexpr int kTitleBar_px = 30;
constexpr int kRowsListed_max = 30;

/// An entry can be reached when each menu above it can.
bool menusAbove(const QAction* action, bool (QAction::*state)() const) {
    for (QObject* where : action->associatedObjects()) {
        const auto* menu = qobject_cast<QMenu*>(where);
        if (menu && (!(menu->menuAction()->*state)() || !menusAbove(menu->menuAction(), state))) return false;
    }
    return true;
}

std::string rowsText(const Control& control) {
    std::string text;
    const int rows = rowsOf(control);
    const auto* list = dynamic_cast<const ListView*>(&control);
    const auto* grid = dynamic_cast<const Grid*>(&control);
    for (int row = 0; row < std::min(rows, kRowsListed_max); ++row) {
        std::vector<std::string> cells;
        if (list) {
            for (int c = 0; c < static_cast<int>(list->columns().size()); ++c) cells.push_back(list->cell(row, c));
        } else if (grid) {
            for (int c = 0; c < grid->cols(); ++c) cells.push_back(grid->cell(row + 1, c));
        } else {
            return {};
        }
        text += "\n        #" + std::to_string(grid ? row + 1 : row) + "  " + join(cells, " | ");
    }
    return rows > kRowsListed_max ? text + "\n        ..." : text;
}

std::string stateOf(const Control& control) {
    std::string state;
    if (!isShown(control)) state += " hidden";
    if (!isAble(control)) state += " disabled";
    if (isLocked(control)) state += " locked";
    if (isChecked(control).value_or(false)) state += " checked";
    if (holdsFocus(control)) state += " focus";
    if (const auto* grid = dynamic_cast<const Grid*>(&control)) {
        state += " at " + std::to_string(grid->row()) + " " + std::to_string(grid->col());
        if (grid->editorOpen()) state += " editing";
    }
    if (const int rows = rowsOf(control); rows >= 0) state += " rows " + std::to_string(rows);
    return state;
}

}  // namespace

// ---- states ------------------------------------------------------------------------------------------------------

bool isShown(const Control& control) {
    if (const auto* item = dynamic_cast<const MenuItem*>(&control)) {
        return item->shown() && menusAbove(item->action(), &QAction::isVisible);
    }
    return control.widget() ? control.widget()->isVisible() : control.visible();
}

bool isAble(const Control& control) {
    if (const auto* item = dynamic_cast<const MenuItem*>(&control)) {
        return item->able() && menusAbove(item->action(), &QAction::isEnabled);
    }
    return control.widget() ? control.widget()->isEnabled() : control.enabled();
}

bool isLocked(const Control& control) {
    if (const auto* text = dynamic_cast<const TextBox*>(&control)) return text->locked();
    if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) return combo->locked();
    if (const auto* date = dynamic_cast<const DatePicker*>(&control)) return date->locked();
    return false;
}

std::optional<bool> isChecked(const Control& control) {
    if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return check->checked();
    if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return option->chosen();
    if (const auto* item = dynamic_cast<const MenuItem*>(&control)) return item->checked();
    return std::nullopt;
}

bool holdsFocus(const Control& control) {
    if (!control.widget()) return false;
    return controlOf(control.form().widget()->focusWidget()) == &control;
}

std::shared_ptr<const bool> lifeOf(const Form& form) { return form.impl().alive; }

int rowsOf(const Control& control) {
    if (const auto* list = dynamic_cast<const ListView*>(&control)) return list->count();
    if (const auto* grid = dynamic_cast<const Grid*>(&control)) return grid->rows() - 1;
    if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) return combo->count();
    return -1;
}

std::string oneLineEnd(std::string text) { return replaceAll(text, "\r\n", "\n"); }

std::string inQuotes(std::string_view text) {
    return "\"" + replaceAll(replaceAll(text, "\"", "\\\""), "\n", "\\n") + "\"";
}

// ---- windows -----------------------------------------------------------------------------------------------------

Scene* Stage::asking() const {
    return scenes_.empty() || scenes_.back()->kind == Scene::Kind::Form ? nullptr : scenes_.back();
}

BoxWindow* Stage::box() const { return asking() ? asking()->box : nullptr; }

std::string Stage::describe() const {
    if (const Scene* scene = asking()) {
        switch (scene->kind) {
            case Scene::Kind::Box:
                return "the box " + inQuotes(oneLineEnd(scene->box->box().text)) + " under the title " +
                       inQuotes(scene->box->box().title);
            case Scene::Kind::Input:
                return "the input box " + inQuotes(oneLineEnd(scene->input->prompt()));
            case Scene::Kind::File:
                return "the file dialog " + inQuotes(scene->title);
            default:
                return "the printer dialog";
        }
    }
    const Form* form = Form::active();
    return form ? "the form " + form->name() : "no window";
}

Form& Stage::form() const {
    if (asking()) throw Failure("the active window is " + describe());
    Form* form = Form::active();
    if (!form) throw Failure("no window is open");
    return *form;
}

std::vector<Form*> Stage::reach() const {
    Form& front = form();
    std::vector<Form*> forms{&front};
    if (front.impl().modal) return forms;
    if (Form* shell = Form::shell(); shell && shell != &front) forms.push_back(shell);
    for (Form* open : Form::openForms()) {
        if (open != &front && open->impl().home && open->isVisible()) forms.push_back(open);
    }
    return forms;
}

Control& Stage::control(const std::string& name, const Kinds& kinds) const {
    const auto fits = [&](const Control& one) {
        return kinds.empty() || std::find(kinds.begin(), kinds.end(), one.kind()) != kinds.end();
    };
    Form& front = form();
    if (name == "*") {
        std::vector<std::string> names;
        Control* only = nullptr;
        for (Control* one : front.controls()) {
            if (!fits(*one) || !isShown(*one)) continue;
            names.push_back(one->name());
            only = one;
        }
        if (names.size() == 1) return *only;
        throw Failure(front.name() + " has " + (names.empty() ? "no" : "more than one") + " visible control for *" +
                      (names.empty() ? "" : ": " + join(names, ", ")));
    }
    for (Form* where : reach()) {
        Control* found = where->control(name);
        if (!found) continue;
        if (!fits(*found)) throw Failure(found->name() + " is a " + found->kind());
        return *found;
    }
    throw Failure("there is no control " + name + " on " + front.name());
}

Control& Stage::usable(const std::string& name, const Kinds& kinds) const {
    Control& found = control(name, kinds);
    if (!isShown(found)) throw Failure(found.name() + " is not visible");
    if (!isAble(found)) throw Failure(found.name() + " is disabled");
    return found;
}

Toolbar* Stage::toolbarWith(const std::string& key) const {
    for (Form* where : reach()) {
        for (Control* one : where->controls()) {
            auto* bar = dynamic_cast<Toolbar*>(one);
            if (!bar) continue;
            for (const std::string& own : bar->keys()) {
                if (own == key) return bar;
            }
        }
    }
    return nullptr;
}

QWidget* Stage::window() const {
    if (const Scene* scene = asking()) {
        if (scene->box) return scene->box;
        if (scene->input) return scene->input;
    }
    Form* form = Form::active();
    if (!form) return nullptr;
    return form->widget()->window();
}

QWidget* Stage::keyTarget() const {
    if (QWidget* popup = QApplication::activePopupWidget()) return popup;
    QWidget* top = window();
    if (!top) throw Failure("no window is open");
    if (!asking() && Form::active()) top = Form::active()->widget();
    QWidget* inside = top->focusWidget();
    return inside ? inside : top;
}

// ---- pictures and lists ------------------------------------------------------------------------------------------

QImage Stage::picture() const {
    QWidget* top = window();
    if (!top) return {};
    const QImage inside = top->grab().toImage();
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) return inside;
    const qreal ratio = inside.devicePixelRatio();
    const int width = top->width();
    QImage image(QSize(width, top->height() + kTitleBar_px) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    const Tones& tone = tones();
    QPainter painter(&image);
    painter.fillRect(QRect(0, 0, width, kTitleBar_px), tone.titleBar);
    painter.setPen(tone.border);
    painter.drawLine(0, kTitleBar_px - 1, width, kTitleBar_px - 1);
    QFont font = top->font();
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(tone.titleBarText);
    painter.drawText(QRect(12, 0, width - 56, kTitleBar_px), Qt::AlignVCenter | Qt::AlignLeft, top->windowTitle());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(tone.titleBarText, 1.3));
    const QRectF cross(width - 25, kTitleBar_px / 2.0 - 5, 10, 10);
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.topRight(), cross.bottomLeft());
    painter.drawImage(QPoint(0, kTitleBar_px), inside);
    return image;
}

std::string Stage::controls() const {
    std::string list = "active window: " + describe() + "\n";
    if (asking() || !Form::active()) return list;
    for (Form* where : reach()) {
        list += where->name() + " " + inQuotes(where->caption()) + "\n";
        for (const Control* one : where->controls()) {
            list += "    " + one->kind() + " " + one->name() + " " + inQuotes(oneLineEnd(one->text())) + stateOf(*one) +
                    rowsText(*one) + "\n";
        }
    }
    return list;
}

}  // namespace kv
