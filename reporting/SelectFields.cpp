#include "reporting/SelectFields.h"

#include <algorithm>

#include "core/module1.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr int kCode_chars = 15;
constexpr int kWord_chars = 50;
constexpr int kName_chars = 36;

bool isDigits(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

std::string withoutZeros(const std::string& digits) {
    const auto first = digits.find_first_not_of('0');
    return first == std::string::npos ? "" : digits.substr(first);
}

}  // namespace

std::string plainCaption(std::string_view caption) {
    std::string plain = replaceAll(caption, "&", "");
    plain.erase(std::remove(plain.begin(), plain.end(), ':'), plain.end());
    return std::string(trimBlanks(plain));
}

bool comesAfter(const std::string& number, const std::string& other) {
    if (!isDigits(number) || !isDigits(other)) return number > other;
    const std::string a = withoutZeros(number);
    const std::string b = withoutZeros(other);
    return a.size() != b.size() ? a.size() > b.size() : a > b;
}

// ---- days and months ---------------------------------------------------------------------------------------------

SelectDateField::SelectDateField(Form& form, const SelectPart& part)
    : month_(part.kind == SelectPart::Kind::Month), picker_(form, part.name, month_ ? "MMMM yyyy" : "MM/dd/yyyy") {
    picker_.setHelp(month_ ? "Month: type 03/2024, or + and - to move by a month."
                           : "Day: type 03/15/2024, or + and - to move by a day.");
}

void SelectDateField::show(const std::string& value) {
    picker_.setValue(month_ ? dateOfPeriod(value) : parseDate(value).value_or(Today()));
}

std::string SelectDateField::value() const {
    return month_ ? module1::GetPeriod(picker_.value()) : Format(picker_.value(), "yyyy-MM-dd");
}

// ---- codes -------------------------------------------------------------------------------------------------------

SelectCodeField::SelectCodeField(Form& form, const SelectPart& part)
    : caption_(plainCaption(part.caption)),
      blankAllowed_(part.blankAllowed),
      box_(form, part.name),
      button_(form, part.button, "..."),
      name_(form, part.nameLabel) {
    box_.code().maxLength(kCode_chars).width(kCode_chars);
    box_.setHelp(blankAllowed_ ? "Code, or the beginning of its name. F2 searches; blank for all."
                               : "Code, or the beginning of its name. F2 searches.");
    if (!blankAllowed_) box_.required();
    box_.onChange = [this] {
        if (box_.text() != known_) name_.setText("");
    };
    box_.onValidate = [this](bool& cancel) { cancel = !settle(); };
    box_.onKeyDown = [this](const std::string& key, bool& handled) {
        handled = key == "F2";
        if (handled) search();
    };
    button_.narrow().skipsTab();
    button_.setCausesValidation(false);
    button_.onClick = [this] { search(); };
    name_.look(Label::Look::Hint);
}

std::vector<Layout> SelectCodeField::controls() { return {box_, button_, width(Layout(name_), kName_chars)}; }

void SelectCodeField::setLookup(CodeLookup lookup) { lookup_ = std::move(lookup); }

void SelectCodeField::show(const std::string& value) {
    known_.clear();
    box_.setText(value);
    name_.setText("");
}

void SelectCodeField::take(const FoundCode& found) {
    known_ = found.code;
    box_.setText(found.code);
    name_.setText(found.name);
}

bool SelectCodeField::find(const std::string& typed) {
    if (typed == known_ && !typed.empty()) return true;
    const std::optional<FoundCode> found = lookup_(typed);
    if (found) take(*found);
    return found.has_value();
}

void SelectCodeField::search() {
    if (const std::optional<FoundCode> found = lookup_({})) take(*found);
    box_.setFocus();
}

std::string SelectCodeField::fault() const {
    return box_.text().empty() && !blankAllowed_ ? caption_ + " is blank." : std::string();
}

// ---- entries of a list -------------------------------------------------------------------------------------------

SelectChoiceField::SelectChoiceField(Form& form, const SelectPart& part) : box_(form, part.name) {}

void SelectChoiceField::setChoices(const std::vector<std::string>& choices) {
    box_.clear();
    for (const std::string& choice : choices) box_.addItem(choice);
    box_.setIndex(0);
}

void SelectChoiceField::show(const std::string& value) {
    for (int i = 0; i < box_.count(); ++i) {
        if (equalsNoCase(box_.item(i), value)) box_.setIndex(i);
    }
}

// ---- texts, numbers, years ---------------------------------------------------------------------------------------

SelectWordField::SelectWordField(Form& form, const SelectPart& part) : part_(part), box_(form, part.name) {
    if (part.kind == SelectPart::Kind::Year) {
        box_.chars("0123456789").maxLength(4).width(8);
    } else if (part.kind == SelectPart::Kind::Number) {
        box_.code().maxLength(kCode_chars).width(kCode_chars);
    } else {
        box_.maxLength(kWord_chars).width(kName_chars);
    }
    if (!part.blankAllowed) box_.required();
}

void SelectWordField::show(const std::string& value) {
    const bool today = value.empty() && part_.kind == SelectPart::Kind::Year;
    box_.setText(today ? std::to_string(Today().year()) : value);
}

std::string SelectWordField::value() const { return std::string(trimBlanks(box_.text())); }

std::string SelectWordField::fault() const {
    if (value().empty()) return part_.blankAllowed ? "" : plainCaption(part_.caption) + " is blank.";
    if (part_.kind != SelectPart::Kind::Year || (value().size() == 4 && value() >= "2000")) return "";
    return "Invalid year!";
}

// ---- quarters ----------------------------------------------------------------------------------------------------

SelectQuarterField::SelectQuarterField(Form& form, const SelectPart& part) {
    static constexpr const char* kCaptions[] = {"&1st (January to March)", "&2nd (April to June)",
                                                "&3rd (July to September)", "&4th (October to December)"};
    for (std::size_t i = 0; i < options_.size(); ++i) {
        options_[i] = std::make_unique<OptionButton>(form, part.name + std::to_string(i), kCaptions[i], part.name);
    }
}

std::vector<Layout> SelectQuarterField::controls() {
    std::vector<Layout> rows;
    for (const auto& option : options_) rows.emplace_back(*option);
    return {column(rows)};
}

Control& SelectQuarterField::focusControl() {
    for (const auto& option : options_) {
        if (option->chosen()) return *option;
    }
    return *options_[0];
}

void SelectQuarterField::show(const std::string& value) {
    const int quarter = value.size() == 1 && value >= "1" && value <= "4" ? value[0] - '0' : (Today().month() + 2) / 3;
    options_[static_cast<std::size_t>(quarter - 1)]->choose();
}

std::string SelectQuarterField::value() const {
    for (std::size_t i = 0; i < options_.size(); ++i) {
        if (options_[i]->chosen()) return std::to_string(i + 1);
    }
    return {};
}

std::unique_ptr<SelectField> makeSelectField(Form& form, const SelectPart& part) {
    switch (part.kind) {
        case SelectPart::Kind::Day:
        case SelectPart::Kind::Month:
            return std::make_unique<SelectDateField>(form, part);
        case SelectPart::Kind::Code:
            return std::make_unique<SelectCodeField>(form, part);
        case SelectPart::Kind::Choice:
            return std::make_unique<SelectChoiceField>(form, part);
        case SelectPart::Kind::Quarter:
            return std::make_unique<SelectQuarterField>(form, part);
        default:
            return std::make_unique<SelectWordField>(form, part);
    }
}

}  // namespace kv
