#include "ledger/frmRepYear.h"

#include "core/Session.h"
#include "ledger/Balances.h"
#include "platform/base/Date.h"
#include "platform/forms/Dialogs.h"
#include "reporting/ReportFrame.h"
#include "reporting/frmSelectDates.h"

namespace kv {

frmRepYear::frmRepYear(Session& session) : Form("frmRepYear", "Year"), session_(session) {
    txtYear.chars("0123456789").maxLength(4).width(8).required();
    txtYear.onValidate = [this](bool& cancel) { txtYear_Validate(cancel); };
    for (Label* label : {&lblPrepared, &lblOpenBooks, &lblResult}) label->look(Label::Look::Hint);
    cmdOption0.primary();
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
    cmdOption2.setHelp("The entry that closed income and expense of this year.");
    cmdOption2.onClick = [this] { cmdOption2_Click(); };
}

bool frmRepYear::ShowDialog(int Mode) {
    const YearDialogLook* look = yearDialogLook(Mode);
    if (!look) throw Error(5, "frmRepYear", "Mode " + std::to_string(Mode) + " is not known.");
    mode_ = look->mode;
    done_ = false;
    setCaption(look->caption);
    cmdOption0.setCaption(look->okCaption);
    const int year = dateOfPeriod(session_.Sys.glperiod).year();
    txtYear.setText(std::to_string(mode_ == YearMode::CloseYear ? year - 1 : year));
    const bool closing = mode_ == YearMode::CloseYear;
    cmdOption2.setVisible(closing);
    if (closing || mode_ == YearMode::PostForwarded) {
        setLayout(column({
            fields({{"&Year:", {txtYear, stretch()}}}),
            card(column({lblPrepared, lblOpenBooks, lblResult})),
            row({cmdOption2, stretch(), cmdOption0, cmdOption1}),
        }));
        setSize(640, 200);
        ShowState();
    } else {
        for (Label* label : {&lblPrepared, &lblOpenBooks, &lblResult}) label->setVisible(false);
        setLayout(column({fields({{"&Year:", {txtYear, stretch()}}}), buttons({cmdOption0, cmdOption1})}));
    }
    setFirstFocus(txtYear);
    ShowModal();
    return done_;
}

std::string frmRepYear::endingYear() const {
    return mode_ == YearMode::CloseYear ? txtYear.text() : std::to_string(std::stoi(txtYear.text()) - 1);
}

/// What a person would look up first: whether the year is ready, and what its result is.
void frmRepYear::ShowState() {
    const YearState state = readYearState(session_, endingYear());
    lblPrepared.setText(preparedText(state));
    lblPrepared.setAlert(!state.Prepared || state.Stale);
    lblOpenBooks.setText(openBooksText(state));
    lblOpenBooks.setAlert(state.OpenBooks > 0);
    if (mode_ == YearMode::CloseYear) {
        lblResult.setText(resultText(state, session_.Sys.RetainedEarning));
        cmdOption2.setEnabled(state.Closed);
    } else {
        lblResult.setText(state.Forwarded
                              ? "The balances of " + txtYear.text() + " stand in the ledger and are replaced."
                          : state.Closed ? endingYear() + " is closed."
                                         : endingYear() +
                                               " is not closed: without balances that were entered, its "
                                               "result goes to account " +
                                               session_.Sys.ProfitLoss + " first.");
    }
}

bool frmRepYear::yearIsRight() {
    if (isYear(txtYear.text())) return true;
    MsgBox("Invalid Year!", Icon::Exclamation);
    return false;
}

void frmRepYear::txtYear_Validate(bool& Cancel) {
    Cancel = !yearIsRight();
    if (!Cancel && lblPrepared.visible()) ShowState();
}

void frmRepYear::cmdOption0_Click() {
    if (!yearIsRight() || !doTask(mode_, txtYear.text())) return;
    done_ = true;
    Unload();
}

bool frmRepYear::doTask(YearMode mode, const std::string& year) {
    switch (mode) {
        case YearMode::PostForwarded:
            return PostForwardedBalances(session_, year);
        case YearMode::CloseYear:
            return CloseYear(session_, year);
        case YearMode::BegBalances:
            rptBegBalances(session_, year);
            return true;
        case YearMode::GeneralLedger:
            rptGL(session_, year);
            return true;
    }
    return false;
}

void frmRepYear::cmdOption2_Click() {
    const std::string batch = yearEndBatch(txtYear.text());
    module1::rptBatchJournal(session_, "GL", batch, batch);
}

}  // namespace kv
