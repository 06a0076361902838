#pragma once
// SelectDialog: the shape of every dialog that asks days, months, codes or numbers before a report.
//
// A dialog is a list of parts. Its values are texts: a day "yyyy-MM-dd", a month "yyyyMM", a code, an entry of a list,
// a number. Two days, two months or two numbers that follow each other are the start and the end of a range.

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms/Form.h"

namespace kv {

struct FoundCode {
    std::string code;
    std::string name;
};
/// Takes what was typed for a code (nothing: the search was asked for) and searches where it is not exact. Nothing when
/// no code was found or chosen; the user has been told.
using CodeLookup = std::function<std::optional<FoundCode>(const std::string& typed)>;

struct SelectPart {
    enum class Kind { Day, Month, Code, Choice, Text, Number, Year, Quarter };
    Kind kind = Kind::Day;
    const char* name = "";
    const char* caption = "";
    const char* button = "";     ///< the search of a code
    const char* nameLabel = "";  ///< what a code stands for
    bool blankAllowed = false;
};

struct SelectShape {
    const char* name = "";
    const char* caption = "";
    std::vector<SelectPart> parts;
    const char* frame = "";
    const char* note = "";
};

/// One part of a dialog on the screen.
class SelectField {
public:
    virtual ~SelectField() = default;
    virtual std::vector<Layout> controls() = 0;
    virtual Control& focusControl() = 0;
    virtual void show(const std::string& value) = 0;
    virtual std::string value() const = 0;
    /// What is wrong with the value; empty when it can be taken.
    virtual std::string fault() const { return {}; }
    /// Looks the value up where that has not been done. False: there is no such thing, and the user has been told.
    virtual bool settle() { return true; }
    virtual std::string codeName() const { return {}; }
};

class SelectDialog : public Form {
public:
    explicit SelectDialog(const SelectShape& shape);
    ~SelectDialog() override;

    CommandButton cmdOption0{*this, "cmdOption0", "&OK"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Cancel"};

protected:
    /// Shows the dialog with the values, one for each part. True when it was confirmed: the values are the new ones.
    bool ask(std::initializer_list<std::string*> values);
    void setLookup(std::size_t part, CodeLookup lookup);
    void setChoices(std::size_t part, const std::vector<std::string>& choices);
    /// Whether a report may be made for this day.
    virtual bool dayAllowed(const Date& /*day*/) { return true; }
    /// What the code of a part stands for.
    std::string codeName(std::size_t part) const { return fields_.at(part)->codeName(); }

private:
    void cmdOption0_Click();
    bool accepted();
    bool inOrder(std::size_t part);
    bool daysAllowed();
    void refuse(std::size_t part, const std::string& message);

    std::vector<SelectPart> parts_;
    std::vector<std::unique_ptr<SelectField>> fields_;
    std::unique_ptr<Label> note_;
    bool confirmed_ = false;
};

/// The first day of a period "yyyyMM"; today's month where the text is no period.
Date dateOfPeriod(std::string_view period);

}  // namespace kv
