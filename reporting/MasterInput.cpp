#include "reporting/MasterInput.h"

#include <algorithm>

#include "platform/base/Date.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

constexpr int kWidestField = 60;
constexpr int kNumberWidth = 16;
constexpr const char* kShortDate = "MM/dd/yyyy";

std::string shortDate(std::string_view text) {
    const auto date = parseDate(text);
    return date ? Format(*date, kShortDate) : std::string(text);
}

}  // namespace

MasterInput::MasterInput(Form& form, Session& session, const MasterField& field)
    : form_(form), session_(session), field_(field) {
    switch (field.kind) {
        case MasterKind::Choice:
            makeChoice();
            break;
        case MasterKind::Tick:
            tick_ = std::make_unique<CheckBox>(form, field.control, field.caption);
            break;
        case MasterKind::Lookup:
            makeText();
            makeLookup();
            break;
        default:
            makeText();
    }
    if (!field.help.empty()) control().setHelp(field.help);
    control().onValidate = [this](bool& cancel) { validate(cancel); };
}

void MasterInput::makeText() {
    text_ = std::make_unique<TextBox>(form_, field_.control);
    TextBox& box = *text_;
    const MasterKind kind = field_.kind;
    if (kind == MasterKind::Code || kind == MasterKind::Lookup) box.code();
    if (kind == MasterKind::Digits) box.code().chars("0123456789");
    if (kind == MasterKind::Whole || kind == MasterKind::Decimal) {
        box.chars(kind == MasterKind::Whole ? "0123456789-" : "0123456789-.,").align(Align::Right).width(kNumberWidth);
    }
    if (kind == MasterKind::Date) {
        box.width(kNumberWidth).placeholder(kShortDate);
        box.onGotFocus = [this] { text_->setText(shortDate(text_->text())); };
    }
    if (field_.length > 0) {
        box.maxLength(field_.length);
        if (kind != MasterKind::Date) box.width(std::clamp(field_.length + 2, 8, kWidestField));
    }
    if (!field_.needed.empty()) box.required();
}

void MasterInput::makeChoice() {
    combo_ = std::make_unique<ComboBox>(form_, field_.control);
    fillChoices(field_.choices);
    combo_->onChange = [this] {
        if (onChoice && !filling_) onChoice();
    };
}

void MasterInput::makeLookup() {
    button_ = std::make_unique<CommandButton>(form_, field_.button, "...");
    button_->narrow().skipsTab();
    button_->setCausesValidation(false);
    button_->onClick = [this] {
        bool refused = false;
        takeCode(value() == accepted_ ? std::string() : value(), refused);
        text_->setFocus();
    };
    text_->onKeyDown = [this](const std::string& key, bool& handled) {
        if (key != "F2" || text_->locked()) return;
        handled = true;
        button_->press();
    };
    name_ = std::make_unique<Label>(form_, field_.button + "Name");
    name_->look(Label::Look::Hint);
}

void MasterInput::fillChoices(const std::vector<MasterChoice>& choices) {
    combo_->clear();
    std::size_t widest = 8;
    for (const MasterChoice& choice : choices) {
        combo_->addItem(choice.text, choice.value);
        widest = std::max(widest, charCount(choice.text) + 4);
    }
    combo_->width(static_cast<int>(std::min<std::size_t>(widest, kWidestField)));
}

void MasterInput::refreshChoices(const MasterValues& values) {
    if (!combo_ || !field_.choicesFor) return;
    const std::string chosen = combo_->key();
    filling_ = true;
    fillChoices(field_.choicesFor(values));
    setValue(chosen);
    if (combo_->index() < 0 && combo_->count() > 0) combo_->setIndex(0);
    filling_ = false;
}

Control& MasterInput::control() const {
    if (text_) return *text_;
    if (combo_) return *combo_;
    return *tick_;
}

FieldRow MasterInput::row() const {
    FieldRow made(tick_ ? std::string() : field_.caption, control());
    if (button_) {
        made.controls.emplace_back(*button_);
        made.controls.push_back(expand(*name_));
    } else {
        made.controls.push_back(stretch());
    }
    return made;
}

std::string MasterInput::value() const {
    if (text_) return std::string(trimBlanks(text_->text()));
    if (combo_) return combo_->key();
    return field_.choices.at(tick_->checked() ? 0 : 1).value;
}

void MasterInput::setValue(std::string_view value) {
    if (text_) text_->setText(value);
    if (combo_) combo_->setKey(value);
    if (tick_) tick_->setChecked(value == field_.choices.at(0).value);
    if (name_) name_->setText("");
    accepted_ = value;
    control().clearRefused();
}

void MasterInput::show(const Value& value, std::string_view description) {
    if (field_.kind == MasterKind::Date && value.isDate()) {
        setValue(Format(value.date(), kShortDate));
    } else if (field_.kind == MasterKind::Decimal && !value.isNull()) {
        setValue(Format(value.money(), "#,##0.00##"));
    } else {
        setValue(value.text());
    }
    if (combo_ && !value.text().empty() && combo_->key() != value.text()) {  // a value that is no longer offered stays
        combo_->addItem(value.text(), value.text());
        combo_->setKey(value.text());
    }
    if (name_) name_->setText(description);
}

void MasterInput::setLocked(bool locked) {
    if (text_) text_->setLocked(locked);
    if (combo_) combo_->setLocked(locked);
    if (tick_) tick_->setEnabled(!locked);
    if (button_) button_->setEnabled(!locked);
}

void MasterInput::takeCode(std::string_view text, bool& Cancel) {
    const auto found = field_.lookup(session_, text);
    if (!found) {
        Cancel = true;
        return;
    }
    text_->setText(found->code);
    name_->setText(found->description);
    accepted_ = found->code;
}

void MasterInput::validate(bool& Cancel) {
    if (text_ && text_->locked()) return;
    if (field_.kind == MasterKind::Lookup && value() != accepted_) {
        if (value().empty()) {
            setValue("");
        } else {
            takeCode(value(), Cancel);
        }
        if (Cancel) return;
    }
    const bool typedWrong = !value().empty() && !masterRefusal(field_, value()).empty();
    if (typedWrong || (field_.refusesNow && value().empty() && !field_.needed.empty())) {
        const std::string refusal = masterRefusal(field_, value());
        MsgBox(refusal, Icon::Exclamation);
        control().setRefused(refusal);
        Cancel = true;
        return;
    }
    if (field_.kind == MasterKind::Date) text_->setText(shortDate(text_->text()));
    if (onLeave) onLeave(Cancel);
}

}  // namespace kv
