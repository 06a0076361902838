#pragma once
// SelectFields: the parts of the date and period dialogs as controls, one class for each kind.

#include <array>
#include <memory>

#include "reporting/SelectDialog.h"

namespace kv {

/// A day or a month.
class SelectDateField : public SelectField {
public:
    SelectDateField(Form& form, const SelectPart& part);
    std::vector<Layout> controls() override { return {picker_}; }
    Control& focusControl() override { return picker_; }
    void show(const std::string& value) override;
    std::string value() const override;

private:
    bool month_;
    DatePicker picker_;
};

/// A code with its search and the name of what it stands for.
class SelectCodeField : public SelectField {
public:
    SelectCodeField(Form& form, const SelectPart& part);
    std::vector<Layout> controls() override;
    Control& focusControl() override { return box_; }
    void show(const std::string& value) override;
    std::string value() const override { return box_.text(); }
    std::string fault() const override;
    bool settle() override { return box_.text().empty() || find(box_.text()); }
    std::string codeName() const override { return name_.text(); }
    void setLookup(CodeLookup lookup);

private:
    bool find(const std::string& typed);
    void take(const FoundCode& found);
    void search();

    std::string caption_;
    bool blankAllowed_;
    TextBox box_;
    CommandButton button_;
    Label name_;
    CodeLookup lookup_;
    std::string known_;  ///< the code that the lookup has accepted
};

class SelectChoiceField : public SelectField {
public:
    SelectChoiceField(Form& form, const SelectPart& part);
    std::vector<Layout> controls() override { return {box_}; }
    Control& focusControl() override { return box_; }
    void show(const std::string& value) override;
    std::string value() const override { return box_.text(); }
    void setChoices(const std::vector<std::string>& choices);

private:
    ComboBox box_;
};

/// A free text, the number of a document, or a year.
class SelectWordField : public SelectField {
public:
    SelectWordField(Form& form, const SelectPart& part);
    std::vector<Layout> controls() override { return {box_}; }
    Control& focusControl() override { return box_; }
    void show(const std::string& value) override;
    std::string value() const override;
    std::string fault() const override;

private:
    SelectPart part_;
    TextBox box_;
};

class SelectQuarterField : public SelectField {
public:
    SelectQuarterField(Form& form, const SelectPart& part);
    std::vector<Layout> controls() override;
    Control& focusControl() override;
    void show(const std::string& value) override;
    std::string value() const override;

private:
    std::array<std::unique_ptr<OptionButton>, 4> options_;
};

std::unique_ptr<SelectField> makeSelectField(Form& form, const SelectPart& part);

/// A caption as a message names it: without its quick key, colon and blanks.
std::string plainCaption(std::string_view caption);
/// Whether the number of one document comes behind another's: by value where both are digits only.
bool comesAfter(const std::string& number, const std::string& other);

}  // namespace kv
