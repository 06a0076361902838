#include "ledger/frmAPVRange.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/BatchQueries.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/ReportFrame.h"

namespace kv {

frmAPVRange::frmAPVRange(Session& session) : Form("frmAPVRange", "Batch Number Range"), session_(session) {
    lblHint.look(Label::Look::Hint);
    for (TextBox* box : {&txtStart, &txtEnd}) {
        box->code().maxLength(30).width(20).required();
        box->onValidate = [this, box](bool& cancel) { ValidateNumber(*box, cancel); };
    }
    cmdOption0.primary();
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
    setLayout(column({fields({{"&From :", txtStart}, {"&To :", txtEnd}}), lblHint, buttons({cmdOption0, cmdOption1})}));
    setFirstFocus(txtStart);
}

void frmAPVRange::ShowDialog(std::string_view Start) {
    txtStart.setText(Start);
    txtEnd.setText(Start);
    lblHint.setText(printedNumbers() ? "The numbers as they are printed, e.g. JVD03-001-24." : "");
    ShowModal();
}

/// The JV book may print numbers of its own; every other book prints the batch's.
bool frmAPVRange::printedNumbers() const {
    return session_.BookCode() == "JV" && session_.Parameters.UsePrintJVBatch();
}

void frmAPVRange::ValidateNumber(TextBox& box, bool& Cancel) {
    const std::string number = module1::ATrim(box.text());
    if (number.empty()) return;
    const std::string statement =
        printedNumbers()
            ? sql("Select * from JV2 where PrintJVBatch = '{}'").text(number).str()
            : sql("Select * from {} where Batch = '{}'").name(headerTableOf(session_.BookCode())).text(number).str();
    if (!session_.cn().Open(statement).eof()) return;
    MsgBox("Record not found! Please enter another.", Icon::Exclamation);
    Cancel = true;
}

void frmAPVRange::cmdOption0_Click() {
    const std::string from = module1::ATrim(txtStart.text());
    const std::string to = module1::ATrim(txtEnd.text());
    if (from.empty() || to.empty() || numberBefore(to, from)) {
        MsgBox("Invalid entry!", Icon::Exclamation);
        txtStart.setFocus();
        return;
    }
    module1::SaveUserLog(session_, "Print Batch Journal : " + from + " - " + to);
    module1::rptBatchJournal(session_, session_.BookCode(), from, to);
}

}  // namespace kv
