#pragma once
// frmEntPeriod: asks for a period, and by its mode does the work on it.

#include "ledger/PeriodTasks.h"
#include "ledger/StatementTable.h"
#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmEntPeriod : public Form {
public:
    explicit frmEntPeriod(Session& session);

    /// Shows the dialog in a mode. `Text` is what txtEntity starts with; `Result` takes what was entered there.
    /// True when the work was done.
    bool ShowDialog(int Mode, int SubMode, std::string_view Text, std::string& Result);

    DatePicker dtpPeriod{*this, "dtpPeriod", "MMMM yyyy"};
    TextBox txtEntity{*this, "txtEntity"};
    CommandButton cmdEntity{*this, "cmdEntity", "..."};
    Label lblEntity{*this, "lblEntity"};
    TextBox txtReason{*this, "txtReason"};
    Label lblTotals{*this, "lblTotals"};
    Label lblTrouble{*this, "lblTrouble"};
    ListView lvwBatches{*this, "lvwBatches"};
    CommandButton cmdOption0{*this, "cmdOption0", "&OK"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Close"};

private:
    void Dress(const char* caption, const char* entity, const char* okCaption);
    /// Takes the code of a report's entity, or searches where it is not exact.
    bool FindEntity(const std::string& typed);
    void txtEntity_Validate(bool& Cancel);
    void cmdOption0_Click();
    bool doTask(PeriodMode mode, const std::string& period);
    Layout Fields(const char* entity);
    void ShowPreview();
    void OpenBatch();
    /// The book that the mode closes; empty for reports and every other work.
    std::string closedBook() const {
        return report_ ? std::string() : bookClosedBy(session_, static_cast<PeriodMode>(mode_));
    }

    Session& session_;
    const StatementRow* report_ = nullptr;  ///< the report of the mode; nullptr for other work
    int mode_ = 0;
    int subMode_ = 0;
    bool done_ = false;
};

}  // namespace kv
