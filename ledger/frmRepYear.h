#pragma once
// frmRepYear: asks for a year, and by its mode forwards balances into it, closes it, or prints its balances or ledger.

#include "ledger/YearTasks.h"
#include "platform/forms/Form.h"

namespace kv {

class Session;

class frmRepYear : public Form {
public:
    explicit frmRepYear(Session& session);

    /// Shows the dialog in a mode. True when the work was done.
    bool ShowDialog(int Mode);

    TextBox txtYear{*this, "txtYear"};
    Label lblPrepared{*this, "lblPrepared"};
    Label lblOpenBooks{*this, "lblOpenBooks"};
    Label lblResult{*this, "lblResult"};
    CommandButton cmdOption0{*this, "cmdOption0", "&OK"};
    CommandButton cmdOption1{*this, "cmdOption1", "Ca&ncel"};
    CommandButton cmdOption2{*this, "cmdOption2", "&View Entry", "office-report"};

private:
    void txtYear_Validate(bool& Cancel);
    void cmdOption0_Click();
    void cmdOption2_Click();
    bool yearIsRight();
    void ShowState();
    bool doTask(YearMode mode, const std::string& year);
    /// The year that ends: the one that is closed, or the one whose balances go forward.
    std::string endingYear() const;

    Session& session_;
    YearMode mode_ = YearMode::PostForwarded;
    bool done_ = false;
};

}  // namespace kv
