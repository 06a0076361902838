#include "reporting/SelectDialog.h"

#include <charconv>

#include "platform/forms/Dialogs.h"
#include "reporting/SelectFields.h"

namespace kv {
namespace {

using Kind = SelectPart::Kind;

bool isRange(const std::vector<SelectPart>& parts, std::size_t start) {
    if (start + 1 >= parts.size() || parts[start].kind != parts[start + 1].kind) return false;
    const Kind kind = parts[start].kind;
    return kind == Kind::Day || kind == Kind::Month || kind == Kind::Number;
}

}  // namespace

SelectDialog::SelectDialog(const SelectShape& shape) : Form(shape.name, shape.caption), parts_(shape.parts) {
    std::vector<FieldRow> rows;
    for (const SelectPart& part : parts_) {
        fields_.push_back(makeSelectField(*this, part));
        FieldRow line(part.caption, {});
        line.controls = fields_.back()->controls();
        rows.push_back(std::move(line));
    }
    cmdOption0.primary();
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
    std::vector<Layout> content{fields(rows)};
    if (*shape.frame) content = {group(shape.frame, content.front())};
    if (*shape.note) {
        note_ = std::make_unique<Label>(*this, "lblNote", shape.note);
        note_->look(Label::Look::Hint);
        content.emplace_back(*note_);
    }
    content.push_back(buttons({cmdOption0, cmdOption1}));
    setLayout(column(content));
}

SelectDialog::~SelectDialog() = default;

void SelectDialog::setLookup(std::size_t part, CodeLookup lookup) {
    dynamic_cast<SelectCodeField&>(*fields_.at(part)).setLookup(std::move(lookup));
}

void SelectDialog::setChoices(std::size_t part, const std::vector<std::string>& choices) {
    dynamic_cast<SelectChoiceField&>(*fields_.at(part)).setChoices(choices);
}

bool SelectDialog::ask(std::initializer_list<std::string*> values) {
    confirmed_ = false;
    std::size_t part = 0;
    for (const std::string* value : values) fields_.at(part++)->show(*value);
    setFirstFocus(fields_.front()->focusControl());
    ShowModal();
    if (!confirmed_) return false;
    part = 0;
    for (std::string* value : values) *value = fields_.at(part++)->value();
    return true;
}

void SelectDialog::refuse(std::size_t part, const std::string& message) {
    MsgBox(message, Icon::Exclamation);
    fields_[part]->focusControl().setFocus();
    fields_[part]->focusControl().setRefused(message);
}

bool SelectDialog::inOrder(std::size_t part) {
    const std::string start = fields_[part]->value();
    const std::string end = fields_[part + 1]->value();
    const bool numbers = parts_[part].kind == Kind::Number;
    if (!(numbers ? comesAfter(start, end) : start > end)) return true;
    refuse(part, numbers ? "Invalid entry!" : "The Start Date must not be greater than End Date.");
    return false;
}

bool SelectDialog::daysAllowed() {
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        if (parts_[i].kind != Kind::Day) continue;
        const Date day = CDate(fields_[i]->value());
        if (dayAllowed(day)) continue;
        refuse(i, "The date " + Format(day, "dd MMM yyyy") + " is not valid for this report. Select a different date.");
        return false;
    }
    return true;
}

bool SelectDialog::accepted() {
    if (!validateActive()) return false;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const std::string fault = fields_[i]->fault();
        if (!fault.empty()) refuse(i, fault);
        if (!fault.empty() || !fields_[i]->settle()) return false;
    }
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        if (isRange(parts_, i) && !inOrder(i)) return false;
    }
    return daysAllowed();
}

void SelectDialog::cmdOption0_Click() {
    if (!accepted()) return;
    confirmed_ = true;
    Unload();
}

Date dateOfPeriod(std::string_view period) {
    int number = 0;
    const auto read = std::from_chars(period.data(), period.data() + period.size(), number);
    const bool plain = period.size() == 6 && read.ec == std::errc() && read.ptr == period.data() + period.size();
    if (plain && isRealDay(number / 100, number % 100, 1)) return Date(number / 100, number % 100, 1);
    return Date(Today().year(), Today().month(), 1);
}

}  // namespace kv
