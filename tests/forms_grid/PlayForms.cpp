#include "tests/forms_grid/PlayForms.h"

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"

namespace kv::test {

// ---- database ----------------------------------------------------------------------------------------------------

namespace {
long privateCounter = 0;
}

long CounterConnection::value() const {
    if (file_.empty()) return privateCounter;
    return fileExists(file_) ? static_cast<long>(numberOf(readTextFile(file_))) : 0;
}

void CounterConnection::setValue(long value) {
    if (file_.empty())
        privateCounter = value;
    else
        writeTextFile(file_, std::to_string(value));
}

bool CounterConnection::run(std::string_view statement, std::vector<ResultSet>& results,
                            std::vector<DbError>& messages) {
    const std::vector<std::string> words = split(statement, ' ');
    ResultSet one{{Field{"value"}}, {}};
    if (startsNoCase(statement, "BEGIN")) {
        before_ = value();
        ++depth_;
    } else if (startsNoCase(statement, "ROLLBACK") || startsNoCase(statement, "IF @@TRANCOUNT")) {
        if (depth_) setValue(before_);
        depth_ = 0;
    } else if (startsNoCase(statement, "COMMIT")) {
        depth_ = 0;
    } else if (words[0] == "ADD") {
        setValue(value() + static_cast<long>(numberOf(words[1])));
    } else if (words[0] == "COUNT") {
        one.rows.push_back({Value(static_cast<std::int64_t>(value()))});
        results.push_back(one);
    } else if (words[0] == "NULL") {
        one.rows.push_back({Value()});
        results.push_back(one);
    } else if (words[0] == "TYPED") {
        const Value values[] = {Value(true), Value(Money::whole(100)), Value(Date(2024, 3, 15)), Value("text")};
        one.rows.push_back({values[static_cast<int>(numberOf(words[1]))]});
        results.push_back(one);
    } else if (words[0] == "NONE") {
        results.push_back(one);
    } else {
        messages.push_back(DbError{.number = words.size() > 1 ? static_cast<long>(numberOf(words[1])) : 208,
                                   .description = "It fails"});
        return false;
    }
    return true;
}

// ---- forms -------------------------------------------------------------------------------------------------------

frmPick::frmPick() : Form("frmPick", "Account Codes") {
    grdDispWindow.setColumns({{"", 24}, {"Title", 260}, {"Code", 100}});
    grdDispWindow.isLocked = [](int) { return true; };
    grdDispWindow.rowsShown(5);
    txtSearchStr.onChange = [this] { fill(); };
    cmdSelect.onClick = [this] {
        chosen = grdDispWindow.cell(grdDispWindow.row(), 2);
        Unload();
    };
    cmdCancel.onClick = [this] { Unload(); };
    cmdCancel.cancels();
    setLayout(column({txtSearchStr, expand(grdDispWindow), buttons({cmdSelect, cmdCancel})}));
    fill();
}

void frmPick::fill() {
    static const std::vector<std::vector<std::string>> kAccounts{
        {"CASH IN BANK", "1101"}, {"CASH ON HAND", "1102"}, {"SALARIES", "6101"}};
    grdDispWindow.setRows(1);
    for (const auto& account : kAccounts) {
        if (!startsNoCase(account[0], txtSearchStr.text())) continue;
        grdDispWindow.setRows(grdDispWindow.rows() + 1);
        grdDispWindow.setCell(grdDispWindow.rows() - 1, 1, account[0]);
        grdDispWindow.setCell(grdDispWindow.rows() - 1, 2, account[1]);
    }
    cmdSelect.setEnabled(grdDispWindow.rows() > 1);
}

frmVoucher::frmVoucher(Connection& connection) : Form("frmVoucher", "Edit Voucher"), connection_(connection) {
    txtVendorID.code().width(12);
    cmdOption1.cancels();
    lvwList.setColumns({{"Voucher", 12}, {"Payee", 20}, {"Amount", 12, Align::Right}});
    lvwList.checkBoxes().rows(3);
    grdAccounts.setColumns(
        {{"", 30}, {"Code", 120}, {"Title", 200, Align::Left, true}, {"Debit", 110, Align::Right}, {"Hidden", 0}});
    grdAccounts.rowsShown(4);
    setLayout(column({
        fields({{"&Vendor:", txtVendorID},
                {"&Name:", txtName},
                {"Locked:", txtLocked},
                {"&Date:", dtpDate},
                {"&Type:", cboType},
                {"", {chkRush, optKind_0, optKind_1}}},
               2),
        tabs(tabVoucher, {{"&Lines", expand(grdAccounts)}, {"&List", column({lvwList, expand(tvwChart)})}}),
        row({lblLast, stretch(), lblTotal}),
        row({cmdPick, cmdAmount, cmdPrint, cmdExport, cmdBroken, cmdStuck, cmdOff}),
        buttons({cmdOption0, cmdOption1}),
    }));
    setSize(820, 640);
    wire();
    wireGrid();
}

void frmVoucher::Form_Load() {
    txtLocked.setText("fixed");
    txtLocked.setLocked(true);
    cmdOff.setEnabled(false);
    for (const char* type : {"REGULAR", "PETTY CASH", "ADVANCE"}) cboType.addItem(type);
    cboType.setIndex(0);
    lvwList.setItems({{"V1", {"V0001", "ACME SUPPLY", "1,100.00"}},
                      {"V2", {"V0002", "BAKER * SONS", "90.00"}},
                      {"V3", {"V0003", "CLINIC", "2,000.00"}}});
    tvwChart.addNode("", "G-1", "Assets");
    tvwChart.addNode("G-1", "G-101", "Cash");
    tvwChart.addNode("", "G-2", "Liabilities");
    grdAccounts.setRows(2);
    grdAccounts.moveTo(1, 1);
}

void frmVoucher::Form_QueryUnload(bool& Cancel) {
    if (asksOnClose)
        Cancel = !Ask("Changes will be ignored! Do you really wish to Exit?", "Warning", Icon::Question, false);
}

void frmVoucher::wire() {
    txtVendorID.onValidate = [this](bool& cancel) {
        cancel = startsNoCase(txtVendorID.text(), "BAD");
        if (cancel) MsgBox("Item does not exists.", Icon::Exclamation);
    };
    lvwList.onItemClick = [this](int row) { lblLast.setText("click " + lvwList.item(row).key); };
    lvwList.onDblClick = [this](int row) { lblLast.setText("open " + lvwList.item(row).key); };
    lvwList.onItemCheck = [this](int row) { lblLast.setText("check " + lvwList.item(row).key); };
    tvwChart.onNodeClick = [this](std::string key) { lblLast.setText("node " + key); };
    cboType.onChange = [this] { lblLast.setText("type " + cboType.text()); };
    optKind_1.onClick = [this] { lblLast.setText("cash"); };
    cmdOption0.onClick = [this] { save(); };
    cmdOption1.onClick = [this] { Unload(); };
    cmdPick.onClick = [this] {
        frmPick dialog;
        dialog.ShowModal();
        lblLast.setText("picked " + dialog.chosen);
    };
    cmdAmount.onClick = [this] { lblLast.setText("amount " + InputBox("Enter amount to pay.").value_or("none")); };
    cmdPrint.onClick = [this] { lblLast.setText(askPrinter() ? "printed" : "not printed"); };
    cmdExport.onClick = [this] {
        const auto file = askSaveFile("Export", "lines.csv", {"CSV (*.csv)|*.csv", "csv"});
        if (file) writeTextFile(*file, "Code,Debit\n1101,100.00\n");
        lblLast.setText(file ? "exported" : "not exported");
    };
    cmdBroken.onClick = [this] { connection_.Execute("FAIL 50000"); };
    cmdStuck.onClick = [] {
        volatile bool stuck = true;  // a loop that does nothing may be left out by the compiler
        while (stuck) {
        }
    };
}

void frmVoucher::wireGrid() {
    grdAccounts.isLocked = [](int col) { return col == 0 || col == 2; };
    grdAccounts.hasBrowse = [](int col) { return col == 1; };
    grdAccounts.canEnter = [this](int row, int col) { return col == 1 || !grdAccounts.cell(row, 1).empty(); };
    grdAccounts.filterKeys = [](int col, const std::string& keys, const std::string&) {
        return col == 1 ? UCase(keys) : keys;
    };
    grdAccounts.validate = [this](int row, int col, std::string& text) {
        if (text.empty()) return true;
        if (col == 3) {
            if (!IsNumeric(text)) MsgBox("Type mismatch", Icon::Exclamation);
            return IsNumeric(text);
        }
        if (startsNoCase(text, "BAD")) return false;
        if (text == "CASH") text = "1101";
        grdAccounts.setCell(row, 2, "Account " + text);
        return true;
    };
    grdAccounts.display = [](int col, const std::string& text) {
        return col == 3 && !text.empty() ? Format(numberOf(text), "#,##0.00") : text;
    };
    grdAccounts.committed = [this](int, int) { showTotal(); };
    grdAccounts.browse = [this](int row, int col) {
        frmPick dialog;
        dialog.ShowModal();
        if (!dialog.chosen.empty()) grdAccounts.setCell(row, col, dialog.chosen);
    };
    grdAccounts.next = [this](int row, int col) {
        if (col == 1) return std::pair(row, 3);
        if (row + 1 == grdAccounts.rows()) grdAccounts.setRows(row + 2);
        return std::pair(row + 1, 1);
    };
    grdAccounts.pasted = [this](int row, int col, const std::vector<std::vector<std::string>>& block) {
        for (std::size_t r = 0; r < block.size(); ++r) {
            const int at = row + static_cast<int>(r);
            if (at >= grdAccounts.rows()) grdAccounts.setRows(at + 1);
            for (std::size_t c = 0; c < block[r].size(); ++c)
                grdAccounts.setCell(at, col + static_cast<int>(c), block[r][c]);
        }
    };
}

void frmVoucher::showTotal() {
    double total = 0;
    for (int row = 1; row < grdAccounts.rows(); ++row) total += numberOf(grdAccounts.cell(row, 3));
    lblTotal.setText(Format(total, "#,##0.00"));
}

void frmVoucher::save() {
    connection_.Execute("ADD 1");
    connection_.Execute("ADD 10");
    MsgBox("Voucher is successfully saved.", Icon::Information);
    asksOnClose = false;
    Unload();
}

frmShell::frmShell(Connection& connection) : Form("frmShell", "The Shell", Window::Shell), connection_(connection) {
    mnuFileVoucher.onClick = [this] {
        frmVoucher voucher(connection_);
        voucher.ShowModal();
    };
    mnuOff.setEnabled(false);
    mnuHidden.setVisible(false);
    tbrMain.button("POST", "Post", "", "").button("VOID", "Void", "", "");
    tbrMain.onButtonClick = [this](std::string key) { lblHello.setText("tool " + key); };
    tbrMain.setButtonEnabled("VOID", false);
    cmdHello.onClick = [this] { lblHello.setText("hello"); };
    MenuSpec file{"&File", {}};
    for (MenuItem* item : {&mnuFileVoucher, &mnuOff, &mnuHidden}) file.parts.emplace_back(*item);
    setMenu({file});
    setToolbar(tbrMain);
    setLayout(column({row({cmdHello, lblHello, stretch()}), stretch()}));
    setSize(1000, 700);
}

frmSignIn::frmSignIn() : Form("frmSignIn", "Sign In") {
    txtPassword.password();
    cmdOK.onClick = [this] {
        accepted = txtEmployeeCode.text() == "E001" && txtPassword.text() == "secret";
        if (accepted)
            Unload();
        else
            MsgBox("Wrong password.", Icon::Stop);
    };
    cmdCancel.onClick = [this] { Unload(); };
    setLayout(column({fields({{"Code:", txtEmployeeCode}, {"Password:", txtPassword}}), buttons({cmdOK, cmdCancel})}));
}

// ---- program -----------------------------------------------------------------------------------------------------

namespace {

class PaperReport : public ShownReport {
public:
    std::string title() const override { return "Trial Balance"; }
    std::string text() const override { return "1101 CASH IN BANK 100.00\n"; }
    void save(const std::string& path) override { writeTextFile(path, text()); }
};

}  // namespace

PlayForms::~PlayForms() = default;

bool PlayForms::start() {
    frmSignIn dialog;
    dialog.ShowModal();
    if (!dialog.accepted) return false;
    report_ = std::make_unique<PaperReport>();
    shell_ = std::make_unique<frmShell>(connection_);
    shell_->Show();
    return true;
}

void PlayForms::stop() { shell_.reset(); }

}  // namespace kv::test
