#include "app/DialogList.h"

#include <algorithm>
#include <utility>

#include "core/Session.h"
#include "ledger/CodeLookups.h"
#include "ledger/ReportDialogs.h"
#include "platform/base/Text.h"
#include "reporting/frmExportGrid.h"
#include "reporting/frmExportTextFile.h"
#include "reporting/frmReceiptDetails.h"
#include "reporting/frmRefusedCells.h"
#include "reporting/frmSearch.h"
#include "reporting/frmSearchAcct.h"
#include "reporting/frmSearchAdvances.h"
#include "reporting/frmSearchCheck.h"
#include "reporting/frmSearchVend.h"
#include "reporting/frmSearchVoucher.h"
#include "reporting/frmSearchWTax.h"
#include "reporting/frmSelectDates.h"

namespace kv {
namespace {

using Values = DialogValues;

template <class Dialog, std::size_t... I>
bool show(Dialog& dialog, Values& values, std::index_sequence<I...> /*order*/) {
    return dialog.ShowDialog(values[I]...);
}

/// Shows a dialog of `Count` values.
template <std::size_t Count, class Dialog>
bool ask(Dialog&& dialog, Values& values) {
    values.resize(Count);
    return show(dialog, values, std::make_index_sequence<Count>());
}

/// A search starts with a text and gives code and title.
bool search(SearchDialog& dialog, Values& values) {
    values.resize(2);
    if (!dialog.ShowDialog(values[0])) return false;
    values = {dialog.Code(), dialog.Title()};
    return true;
}

bool searchAccount(Session& session, Values& values) {
    frmSearchAcct dialog(session);
    dialog.SearchMasters();
    return search(dialog, values);
}

bool searchCostCenter(Session& session, Values& values) {
    frmSearch dialog(session);
    dialog.SearchCaption = "Cost Center";
    dialog.Query = "select Description, CstCtr [Code]  from CstCtr where Description like '##%' order by Description";
    return search(dialog, values);
}

bool searchSupplier(Session& session, Values& values) {
    frmSearchVend dialog(session);
    dialog.SetMode("I", true);
    return search(dialog, values);
}

/// Starts with a caption and a statement.
bool exportGrid(Session& session, Values& values) {
    values.resize(2);
    frmExportGrid(session).ShowDialog(values[0], values[1]);
    values.clear();
    return true;
}

/// Starts with a statement and the name of a file.
bool exportTextFile(Session& session, Values& values) {
    values.resize(2);
    frmExportTextFile(session).ShowDialog(values[0], values[1]);
    values.clear();
    return true;
}

/// Starts with line, column, text and reason of each cell.
bool showRefusedCells(Session& /*session*/, Values& values) {
    std::vector<RefusedCell> cells;
    for (std::size_t i = 0; i + 3 < values.size(); i += 4) {
        cells.push_back({static_cast<int>(numberOf(values[i])), values[i + 1], values[i + 2], values[i + 3]});
    }
    frmRefusedCells(std::move(cells)).ShowDialog();
    values.clear();
    return true;
}

/// Starts with a receipt and a text, gives the code of the item.
bool searchReceiptItem(Session& session, Values& values) {
    values.resize(2);
    frmReceiptDetails dialog(session);
    dialog.SetReceipt(values[0]);
    if (!dialog.ShowDialog(values[1])) return false;
    values = {dialog.Code()};
    return true;
}

/// Starts with a vendor and a voucher, gives number and amount of each advance applied.
bool searchAdvances(Session& session, Values& values) {
    values.resize(2);
    std::vector<Advance> applied;
    if (!frmSearchAdvances(session).ShowDialog(values[0], values[1], applied)) return false;
    values.clear();
    for (const Advance& advance : applied) {
        values.push_back(advance.CVNo);
        values.push_back(Format(advance.Applied, "0.00"));
    }
    return true;
}

/// A search with a statement of its own.
template <class Dialog>
bool searchIn(Session& session, Values& values) {
    Dialog dialog(session);
    return search(dialog, values);
}

bool selectQuarter(Session& /*session*/, Values& values) {
    frmSelectQuarter dialog;
    if (!dialog.ShowDialog()) return false;
    values = {std::to_string(dialog.Quarter()), std::to_string(dialog.Year())};
    return true;
}

/// With a third value the range is one of receipts.
bool selectPeriodRange(Session& /*session*/, Values& values) {
    const bool receipts = values.size() == 3;
    return ask<2>(
        frmSelectPeriodRange(receipts ? frmSelectPeriodRange::Of::Receipts : frmSelectPeriodRange::Of::Periods),
        values);
}

bool selectDate(Session& session, Values& values) {
    const bool checked = values.size() == 3;
    values.resize(2);
    return frmSelectDate(session).ShowDialog(values[0], values[1], checked);
}

std::vector<DialogEntry> makeList() {
    const auto bank = [](Session& s) { return AccountLookup(s, "BANK"); };
    // clang-format off
    return {
        {"frmExportGrid", "reporting", "Export", exportGrid},
        {"frmExportTextFile", "reporting", "Export Text File", exportTextFile},
        {"frmReceiptDetails", "reporting", "Receipt Items", searchReceiptItem},
        {"frmRefusedCells", "reporting", "Refused Cells", showRefusedCells},
        {"frmRepDate", "ledger", "Days of a Report",
            [](Session&, Values& v) { return ask<2>(frmRepDate("Days of a Report"), v); }},
        {"frmRepPrd", "ledger", "Months of a Report",
            [](Session& s, Values& v) {
                return ask<3>(frmRepPrd(s, "Months of a Report", StatementEntity::Account), v);
            }},
        {"frmSearch", "reporting", "Search", searchCostCenter},
        {"frmSearchAcct", "reporting", "Account Codes", searchAccount},
        {"frmSearchAdvances", "reporting", "Advances to Apply", searchAdvances},
        {"frmSearchCheck", "reporting", "Checks", searchIn<frmSearchCheck>},
        {"frmSearchVend", "reporting", "Vendors", searchSupplier},
        {"frmSearchVoucher", "reporting", "Accounts Payable Vouchers", searchIn<frmSearchVoucher>},
        {"frmSearchWTax", "reporting", "WITHHOLDING Tax CODES", searchIn<frmSearchWTax>},
        {"frmSelectDate", "reporting", "Select Report Date", selectDate},
        {"frmSelectDateBank", "reporting", "Select Report Date",
            [=](Session& s, Values& v) { return ask<2>(frmSelectDateBank(bank(s)), v); }},
        {"frmSelectDateEntity", "reporting", "Select Report Date",
            [](Session& s, Values& v) { return ask<3>(frmSelectDateEntity(AccountLookup(s)), v); }},
        {"frmSelectDateMisc", "reporting", "Select Report Date",
            [](Session&, Values& v) { return ask<3>(frmSelectDateMisc(), v); }},
        {"frmSelectDateRangeBank", "reporting", "Select Report Date",
            [=](Session& s, Values& v) { return ask<3>(frmSelectDateRangeBank(bank(s)), v); }},
        {"frmSelectDateWType", "reporting", "Select Report Date",
            [](Session& s, Values& v) { return ask<3>(frmSelectDateWType(s), v); }},
        {"frmSelectPeriod", "reporting", "Select Report Period",
            [](Session&, Values& v) { return ask<1>(frmSelectPeriod(), v); }},
        {"frmSelectPeriodAccount", "reporting", "Select Period / Account Code",
            [](Session& s, Values& v) { return ask<2>(frmSelectPeriodAccount(AccountLookup(s)), v); }},
        {"frmSelectPeriodAccountCstCtr", "reporting", "Report Options",
            [](Session& s, Values& v) {
                return ask<4>(frmSelectPeriodAccountCstCtr(AccountLookup(s), CostCenterLookup(s)), v);
            }},
        {"frmSelectPeriodBank", "reporting", "Select Report Date",
            [=](Session& s, Values& v) { return ask<2>(frmSelectPeriodBank(bank(s)), v); }},
        {"frmSelectPeriodRange", "reporting", "Select Period", selectPeriodRange},
        {"frmSelectPeriodRangeType", "reporting", "Select Period",
            [](Session& s, Values& v) { return ask<3>(frmSelectPeriodRangeType(s), v); }},
        {"frmSelectQuarter", "reporting", "Select Quarter", selectQuarter},
        {"frmSelectRange", "reporting", "Range", [](Session&, Values& v) { return ask<2>(frmSelectRange(), v); }},
        {"frmSelectReportDate", "reporting", "Select Report Date",
            [](Session&, Values& v) { return ask<1>(frmSelectReportDate(), v); }},
        {"frmSelectYear", "reporting", "Report Year", [](Session&, Values& v) { return ask<1>(frmSelectYear(), v); }},
    };
    // clang-format on
}

}  // namespace

const std::vector<DialogEntry>& dialogs() {
    static const std::vector<DialogEntry> list = makeList();
    return list;
}

bool askDialog(Session& session, std::string_view name, DialogValues& values) {
    const auto found =
        std::find_if(dialogs().begin(), dialogs().end(), [&](const DialogEntry& e) { return e.name == name; });
    if (found == dialogs().end()) {
        throw Error(kErrObjectMissing, "DialogList", "This version has no dialog " + std::string(name) + ".");
    }
    return found->ask(session, values);
}

}  // namespace kv
