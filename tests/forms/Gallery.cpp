#include "tests/forms/Gallery.h"

#include <array>
#include <cstdio>

#include "platform/base/Text.h"

namespace kv::gallery {

namespace {

struct Line {
    const char* code;
    const char* title;
    const char* debit;
    const char* credit;
};

constexpr std::array kLines{
    Line{"1101", "Cash on hand", "12,500.00", ""},
    Line{"1210", "Accounts receivable - PhilHealth", "1,240,300.50", ""},
    Line{"2101", "Accounts payable - trade", "", "98,412.77"},
    Line{"4101", "Room and board", "", "1,154,387.73"},
};

void fillGrid(Grid& grid) {
    grid.setColumns({{"", 28},
                     {"Code", 96},
                     {"Dept.", 76},
                     {"Description", 260, Align::Left, true},
                     {"Debit", 118, Align::Right},
                     {"Credit", 118, Align::Right}});
    grid.setRows(static_cast<int>(kLines.size()) + 2);
    for (std::size_t i = 0; i < kLines.size(); ++i) {
        const int row = static_cast<int>(i) + 1;
        grid.setCell(row, 1, kLines[i].code);
        grid.setCell(row, 3, kLines[i].title);
        grid.setCell(row, 4, kLines[i].debit);
        grid.setCell(row, 5, kLines[i].credit);
    }
}

void fillList(ListView& list, int rows) {
    list.setColumns(
        {{"Batch", 14}, {"Date", 11}, {"Particulars", 30, Align::Left, true}, {"Amount", 14, Align::Right}});
    std::vector<ListView::Item> items;
    for (int i = 1; i <= rows; ++i) {
        const std::string number = Format(i, "00000");
        ListView::Item item(number, {"JV-2024-" + number, "03/" + Format(i % 28 + 1, "00") + "/2024",
                                     i % 3 ? "To record supplies issued to the wards" : "Adjustment of accruals",
                                     Format(1234.5 * i, "#,##0.00")});
        item.checked = i == 2;
        item.dim = i == 4;
        items.push_back(std::move(item));
    }
    list.setItems(std::move(items));
}

}  // namespace

frmControls::frmControls() : Form("frmControls", "Every control") {
    lblHeading.look(Label::Look::Heading);
    lblHint.look(Label::Look::Hint);
    txtVendorID.code().maxLength(10).width(10).required();
    txtVendorID.setText("V0001");
    cmdVendor.narrow();
    txtInvoice.required().placeholder("Number on the paper");
    txtAmount.align(Align::Right).width(14);
    txtAmount.setText("98,412.77");
    for (const char* type : {"REGULAR", "PETTY CASH", "REIMBURSEMENT"}) cboType.addItem(type);
    cboType.setIndex(0);
    cboTerms.addItem("30 DAYS");
    cboTerms.setText("45 DAYS NET");
    cboLocked.addItem("ACCOUNTS PAYABLE");
    cboLocked.setIndex(0);
    cboLocked.setLocked(true);
    txtLocked.setText("JVD03-007-24");
    txtLocked.setLocked(true);
    txtOff.setText("Disabled");
    txtOff.setEnabled(false);
    txtSecret.password();
    txtSecret.setText("secret");
    txtRefused.setText("99/99");
    txtRefused.setRefused("There is no such account.");
    txtParticular.lines(2);
    txtParticular.setText("To record supplies received for the operating rooms, March 2024.");
    chkVat.setChecked(true);
    chkOff.setEnabled(false);
    optCheck.choose();
    lvwVoucher.checkBoxes().rows(5);
    fillList(lvwVoucher, 9);
    lvwVoucher.select(2);
    tvwChart.addNode("", "A", "Assets", "folder");
    tvwChart.addNode("A", "A1", "Cash and cash equivalents");
    tvwChart.addNode("A1", "1101", "1101 Cash on hand");
    tvwChart.addNode("", "L", "Liabilities", "folder");
    tvwChart.expand("A");
    tvwChart.expand("A1");
    tvwChart.select("1101");
    rtfNotes.setHtml("<b>Notes</b><p>A closed month takes no entries.</p>");
    prgWork.setRange(100);
    prgWork.setValue(60);
    lblDebit.look(Label::Look::Figure);
    lblCredit.look(Label::Look::Figure);
    lblDifference.look(Label::Look::FigureBold);
    lblDifference.setAlert(true);
    lblVendor.look(Label::Look::Box);
    cmdOff.setEnabled(false);
    cmdSave.primary();
    cmdClose.cancels();
    setLayout(column({
        lblHeading,
        lblHint,
        fields({{"&Vendor:", {txtVendorID, cmdVendor, lblVendor}}}),
        fields({{"&Invoice:", txtInvoice},
                {"&Amount:", txtAmount},
                {"&Date:", dtpDate},
                {"P&eriod:", dtpPeriod},
                {"&Type:", cboType},
                {"Te&rms:", cboTerms},
                {"Boo&k:", cboLocked},
                {"Number:", txtLocked},
                {"Off:", txtOff},
                {"Pass&word:", txtSecret},
                {"Acc&ount:", txtRefused},
                {"Work:", prgWork}},
               2),
        fields({{"Par&ticulars:", txtParticular}}),
        row({group("Payment", row({optCash, optCheck, optCredit})), card(row({chkVat, chkOff}))}),
        tabs(tabPages,
             {{"&List", column({lvwVoucher})}, {"T&ree", column({tvwChart})}, {"&Notes", column({rtfNotes})}}),
        row({stretch(), lblDebit, lblCredit, lblDifference}),
        buttons({cmdPrint, cmdOff, cmdSave, cmdClose}),
    }));
    txtRefused.setHelp("Code of the account, or part of its title to search for it.");
}

frmVoucher::frmVoucher(Window window) : Form("frmVoucher", "Journal Batch Entry", window) {
    txtParticular.setText("To record hospital charges of the day");
    cboBatchType.addItem("GENERAL JOURNAL");
    cboBatchType.addItem("YEAR END ADJUSTMENT");
    cboBatchType.setIndex(0);
    txtVendorID.code().width(10);
    cmdVendor.narrow();
    lblVendor.look(Label::Look::Box);
    fillGrid(grdAccounts);
    grdAccounts.rowsShown(8);
    lblAccount.setText("Accounts receivable - PhilHealth");
    lblTotals0.look(Label::Look::FigureBold).setText("1,252,800.50");
    lblTotals1.look(Label::Look::FigureBold).setText("1,252,800.50");
    lblTotals2.look(Label::Look::FigureBold).setText("0.00");
    cmdSave.primary();
    cmdClose.cancels();
    setLayout(column({
        fields({{"&Date:", dtpBatchDate},
                {"Batch &type:", cboBatchType},
                {"&Particulars:", txtParticular},
                {"&Vendor:", {txtVendorID, cmdVendor, lblVendor}}},
               2),
        expand(grdAccounts),
        row({lblAccount, stretch(), lblTotals0, lblTotals1, lblTotals2}),
        buttons({cmdAdd, cmdDelete, stretch(), cmdSave, cmdClose}),
    }));
    setSize(860, 520);
}

frmBook::frmBook(std::string caption) : Form("frmBook", std::move(caption), Window::Child) {
    mnuPosted.setChecked(true);
    tlbBook.button("NEW", "New", "document-new").button("EDIT", "Edit", "document-edit");
    tlbBook.separator().button("PRINT", "Print", "document-print").button("FIND", "Find", "edit-find");
    tlbBook.setButtonEnabled("PRINT", false);
    fillList(lvwList, 40);
    lvwList.select(3);
    lblTotal.look(Label::Look::Hint);
    txtFind.placeholder("Find in the list").width(24);
    setMenu({{"&File", {mnuNew, mnuEdit, nullptr, mnuClose}}, {"&View", {mnuPosted}}});
    setToolbar(tlbBook);
    setLayout(column({row({txtFind, stretch(), lblTotal}), expand(lvwList)}));
    setSize(760, 460);
}

frmHome::frmHome() : Form("frmHome", "Home", Window::Child) {
    lblHospital.look(Label::Look::Heading);
    lblUser.look(Label::Look::Hint);
    setHome();
    setLayout(column({stretch(), row({stretch(), imgLogo, stretch()}), row({stretch(), lblHospital, stretch()}),
                      row({stretch(), lblUser, stretch()}), stretch()}));
}

frmShell::frmShell() : Form("frmShell", "Korvane Accounting", Window::Shell) {
    for (CommandButton* book : {&cmdAP, &cmdCDB, &cmdCRB, &cmdAR, &cmdJV, &cmdGL, &cmdHospital}) book->large();
    cmdAR.setEnabled(false);
    lblCompany.look(Label::Look::Heading);
    staBar.setPanels(4);
    int index = 0;
    for (const char* text : {"Maria Santos", "This computer", "ACCOUNTING", "1.0 rev0.1"})
        staBar.setPanel(index++, text);
    setMenu({{"&Books", {mnuAP, mnuGL, nullptr, mnuQuit}}, {"&File Maintenance", {mnuAccounts}}});
    setStatusBar(staBar);
    setLayout(column({
        row({cmdAP, cmdCDB, cmdCRB, cmdAR, cmdJV, cmdGL, cmdHospital, stretch(), lblCompany}),
        mdiArea(),
    }));
    cmdAP.setHelp("Vouchers, vendors and payments of the payables book.");
}

}  // namespace kv::gallery
