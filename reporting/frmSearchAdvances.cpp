#include "reporting/frmSearchAdvances.h"

#include "core/Session.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

std::string figure(Money amount) { return Format(amount, "#,##0.00"); }

std::vector<std::string> cellsOf(const Advance& advance) {
    return {"",
            advance.earlier ? "*" : "",
            advance.DisplayCVNo,
            advance.CVDate ? Format(*advance.CVDate, "MM/dd/yyyy") : "",
            figure(advance.Amount),
            figure(advance.Balance),
            figure(advance.Applied),
            figure(advance.newBalance()),
            advance.Account,
            advance.Particulars};
}

}  // namespace

void markAdvance(Advance& advance, bool marked) { advance.Applied = marked ? advance.Balance : Money(); }

std::string changeAdvance(Advance& advance, std::string_view amount) {
    if (!IsNumeric(amount)) return "Invalid amount.";
    const Money wanted = Round(Money::fromDouble(numberOf(amount)), 2);
    if (wanted < Money()) return "Invalid amount.";
    if (wanted > advance.Balance) {
        return "Amount to apply must not be greater than the balance " + figure(advance.Balance) + ".";
    }
    advance.Applied = wanted;
    return {};
}

frmSearchAdvances::frmSearchAdvances(Session& session)
    : Form("frmSearchAdvances", "Advances to Apply"), session_(session) {
    grdAdvances.checkBoxes().rows(10);
    grdAdvances.setColumns({{"Mark", 6},
                            {"*", 3},
                            {"Chk Voucher", 14},
                            {"Chk Date", 11},
                            {"Orig Amount", 14, Align::Right},
                            {"Balance", 14, Align::Right},
                            {"Applied", 14, Align::Right},
                            {"New Balance", 14, Align::Right},
                            {"Acct", 10},
                            {"Particulars", 30, Align::Left, true}});
    grdAdvances.setHelp("Blank marks an advance, Enter changes the amount that is applied.");
    grdAdvances.onItemCheck = [this](int row) {
        markAdvance(at(row), grdAdvances.checked(row));
        showRow(row);
    };
    grdAdvances.onDblClick = [this](int) { cmdChangeAmount_Click(); };
    cmdChangeAmount.onClick = [this] { cmdChangeAmount_Click(); };
    cmdSelect.primary();
    cmdSelect.onClick = [this] {
        confirmed_ = true;
        Unload();
    };
    cmdCancel.cancels();
    cmdCancel.onClick = [this] { Unload(); };
    lblTotal.look(Label::Look::FigureBold);
    setLayout(
        column({expand(grdAdvances), row({cmdChangeAmount, stretch(), lblTotal}), buttons({cmdSelect, cmdCancel})}));
    setSize(1040, 460);
    setFirstFocus(grdAdvances);
}

bool frmSearchAdvances::ShowDialog(std::string_view VendorID, std::string_view Voucher, std::vector<Advance>& Applied) {
    confirmed_ = false;
    LoadAdvancesToApply(VendorID, Voucher);
    ShowModal();
    if (!confirmed_) return false;
    Applied.clear();
    for (const Advance& advance : advances_) {
        if (advance.marked()) Applied.push_back(advance);
    }
    return true;
}

void frmSearchAdvances::LoadAdvancesToApply(std::string_view VendorID, std::string_view Voucher) {
    Recordset rows =
        session_.cn().Open(call("sp_Load_AdvancesToApply").separator(",").text(VendorID).text(Voucher).str());
    advances_.clear();
    std::vector<ListView::Item> items;
    for (; !rows.eof(); rows.moveNext()) {
        Advance advance;
        advance.CVNo = rows["CVNo"].text();
        advance.DisplayCVNo = rows.has("DisplayCVNo") ? rows["DisplayCVNo"].text() : advance.CVNo;
        if (!rows["CVDate"].isNull()) advance.CVDate = rows["CVDate"].date();
        advance.Amount = rows["Amount"].money();
        advance.Balance = rows["Balance"].money();
        advance.Applied = rows["AmountToApply"].money();
        advance.earlier = advance.marked();
        advance.Account = rows.has("Code") && !rows["Code"].text().empty()
                              ? rows["Code"].text()
                              : session_.Parameters.AdvancesToSupplierCode();
        advance.Particulars = rows.has("Particulars") ? rows["Particulars"].text() : std::string();
        ListView::Item item(std::to_string(advances_.size()), cellsOf(advance));
        item.checked = advance.marked();
        items.push_back(std::move(item));
        advances_.push_back(std::move(advance));
    }
    grdAdvances.setItems(std::move(items));
    if (!advances_.empty()) grdAdvances.select(0);
    cmdSelect.setEnabled(!advances_.empty());
    cmdChangeAmount.setEnabled(!advances_.empty());
    showTotal();
}

void frmSearchAdvances::cmdChangeAmount_Click() {
    const int row = grdAdvances.selected();
    if (row < 0) return;
    Advance& advance = at(row);
    const std::string proposed = figure(advance.marked() ? advance.Applied : advance.Balance);
    const std::optional<std::string> typed = InputBox("Enter new amount:", kProgramTitle, proposed);
    if (!typed) return;
    if (const std::string fault = changeAdvance(advance, *typed); !fault.empty()) MsgBox(fault, Icon::Exclamation);
    grdAdvances.setChecked(row, advance.marked());
    showRow(row);
}

/// Rows may be sorted; their keys are the places of the advances.
Advance& frmSearchAdvances::at(int row) { return advances_[std::stoul(grdAdvances.item(row).key)]; }

void frmSearchAdvances::showRow(int row) {
    const std::vector<std::string> cells = cellsOf(at(row));
    for (std::size_t c = 0; c < cells.size(); ++c) grdAdvances.setCell(row, static_cast<int>(c), cells[c]);
    showTotal();
}

void frmSearchAdvances::showTotal() {
    Money total;
    for (const Advance& advance : advances_) total = total + advance.Applied;
    lblTotal.setText("Total applied " + figure(total));
}

}  // namespace kv
