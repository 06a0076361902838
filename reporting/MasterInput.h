#pragma once
// MasterInput: the controls of one field on the entry tab of a master-file screen.

#include <functional>
#include <memory>

#include "platform/data/Value.h"
#include "platform/forms/Form.h"
#include "reporting/MasterFile.h"

namespace kv {

class MasterInput {
public:
    /// `field` must outlive the input.
    MasterInput(Form& form, Session& session, const MasterField& field);

    const MasterField& field() const { return field_; }
    std::string value() const;
    void setValue(std::string_view value);
    /// As the row of the database has it, with the name of a code.
    void show(const Value& value, std::string_view description);
    void setLocked(bool locked);
    /// Fills the choices that depend on other fields, keeping the one that is chosen where it stays possible.
    void refreshChoices(const MasterValues& values);
    Control& control() const;
    FieldRow row() const;

    std::function<void(bool& Cancel)> onLeave;  ///< after the field's own check
    std::function<void()> onChoice;             ///< another choice was made

private:
    void makeText();
    void makeChoice();
    void makeLookup();
    void validate(bool& Cancel);
    void takeCode(std::string_view text, bool& Cancel);
    void fillChoices(const std::vector<MasterChoice>& choices);

    Form& form_;
    Session& session_;
    const MasterField& field_;
    std::unique_ptr<TextBox> text_;
    std::unique_ptr<ComboBox> combo_;
    std::unique_ptr<CheckBox> tick_;
    std::unique_ptr<CommandButton> button_;
    std::unique_ptr<Label> name_;
    std::string accepted_;  ///< the code that was looked up last
    bool filling_ = false;
};

}  // namespace kv
