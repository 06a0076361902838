#include "ledger/frmEntPeriod.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/LedgerReports.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSelectDates.h"

namespace kv {

frmEntPeriod::frmEntPeriod(Session& session) : Form("frmEntPeriod", "Period"), session_(session) {
    dtpPeriod.setHelp("Month: type 03/2024, or + and - to move by a month.");
    txtEntity.code().width(12);
    txtEntity.onValidate = [this](bool& cancel) { txtEntity_Validate(cancel); };
    cmdOption0.primary();
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
}

bool frmEntPeriod::ShowDialog(int Mode, int SubMode, std::string_view Text, std::string& Result) {
    const PeriodDialogLook* look = periodDialogLook(Mode);
    if (!look) throw Error(5, "frmEntPeriod", "Mode " + std::to_string(Mode) + " is not known.");
    mode_ = Mode;
    subMode_ = SubMode;
    done_ = false;
    setCaption(look->caption);
    cmdOption0.setCaption(look->okCaption);
    dtpPeriod.setValue(dateOfPeriod(session_.Sys.glperiod));
    txtEntity.setText(Text);
    if (look->entityCaption) {
        setLayout(column(
            {fields({{look->entityCaption, txtEntity}, {"&Period :", dtpPeriod}}), buttons({cmdOption0, cmdOption1})}));
        setFirstFocus(txtEntity);
    } else {
        txtEntity.setVisible(false);
        setLayout(column({fields({{"&Period :", dtpPeriod}}), buttons({cmdOption0, cmdOption1})}));
        setFirstFocus(dtpPeriod);
    }
    ShowModal();
    Result = txtEntity.text();
    return done_;
}

void frmEntPeriod::txtEntity_Validate(bool& Cancel) {
    if (mode_ != static_cast<int>(PeriodMode::ReopenBook) || isBookCode(txtEntity.text())) return;
    MsgBox("Invalid book.", Icon::Exclamation);
    Cancel = true;
}

void frmEntPeriod::cmdOption0_Click() {
    session_.CurrentPeriod = module1::GetPeriod(dtpPeriod.value());
    if (!doTask(static_cast<PeriodMode>(mode_), session_.CurrentPeriod)) return;
    done_ = true;
    Unload();
}

bool frmEntPeriod::doTask(PeriodMode mode, const std::string& period) {
    switch (mode) {
        case PeriodMode::ClosePeriod:
            return PostGLPeriod(session_, period);
        case PeriodMode::CloseAP:
        case PeriodMode::CloseCDB:
        case PeriodMode::PostBegBal:
            return CloseThrough(session_, mode, period);
        case PeriodMode::ReopenBook:
            return UnPostBook(session_, txtEntity.text(), period);
        case PeriodMode::SetGLPeriod:
        case PeriodMode::SetAPPeriod:
        case PeriodMode::SetCDBPeriod:
            UpdatePrd(session_, mode, period);
            return true;
        case PeriodMode::Prepare:
            ReportPreparation(session_, period);
            MsgBox("Financial Report Preparation Completed.", Icon::Information, "Message");
            return true;
        case PeriodMode::TrialBalance:
            rptTrialBalance(session_, period);
            return true;
    }
    return false;
}

}  // namespace kv
