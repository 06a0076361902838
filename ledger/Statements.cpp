#include "ledger/Statements.h"

#include <array>

#include "core/MainMenu.h"
#include "core/Session.h"
#include "core/module1.h"
#include "ledger/ReportDialogs.h"
#include "ledger/StatementValues.h"
#include "ledger/frmEntPeriod.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSelectDates.h"

namespace kv {
namespace {

/// The month that dialogs start with: the one the figures were last prepared for.
std::string startPeriod(const Session& session) {
    return session.Sys.rptpdEnd.empty() ? session.Sys.glperiod : session.Sys.rptpdEnd;
}

/// First and last day of that month.
void startDays(const Session& session, StatementChoice& choice) {
    const Date first = dateOfPeriod(startPeriod(session));
    choice.date1 = Format(first, "yyyy-MM-dd");
    choice.date2 = Format(first.addMonths(1).addDays(-1), "yyyy-MM-dd");
}

bool askMonths(Session& session, const StatementRow& row, StatementChoice& choice) {
    choice.period2 = startPeriod(session);
    choice.period1 = row.entity == StatementEntity::None ? choice.period2.substr(0, 4) + "01" : choice.period2;
    frmRepPrd dialog(session, row.title, row.entity);
    return dialog.ShowDialog(choice.entity, choice.period1, choice.period2);
}

/// A cancelled dialog gives false.
bool ask(Session& session, const StatementRow& row, StatementChoice& choice) {
    startDays(session, choice);
    switch (row.dialog) {
        case StatementDialog::RepPrd:
            return askMonths(session, row, choice);
        case StatementDialog::RepDate: {
            frmRepDate dialog(row.title);
            return dialog.ShowDialog(choice.date1, choice.date2);
        }
        case StatementDialog::SelectDate: {
            frmSelectDate dialog(session);
            return dialog.ShowDialog(choice.date1, choice.date2);
        }
        default: {
            choice.period2 = startPeriod(session);
            frmSelectPeriod dialog;
            const bool chosen = dialog.ShowDialog(choice.period2);
            choice.period1 = choice.period2;
            return chosen;
        }
    }
}

bool mayReadLedger(const Session& session) {
    const std::string_view right = rightOf("cmdGL");
    return right.empty() || session.UserAccess.CanAccess(right);
}

/// Which screen shows the documents of a book.
struct DocumentScreen {
    const char* book;
    const char* screen;
};
constexpr auto kDocumentScreens = std::to_array<DocumentScreen>({{"JV", "frmJournEntry"},
                                                                 {"YE", "frmJournEntry"},
                                                                 {"AR", "frmJournEntry"},
                                                                 {"CR", "frmJournEntry"},
                                                                 {"AP", "frmAPVEntry"},
                                                                 {"CD", "frmChkVoucherEntry"}});

void openVoucher(Session& session, std::string_view key, const std::string& book) {
    for (const DocumentScreen& document : kDocumentScreens) {
        if (document.book != book) continue;
        if (!session.screens.hasDocuments(document.screen)) break;
        session.screens.openDocument(session, document.screen, key);
        return;
    }
    MsgBox("No screen shows " + std::string(key) + ".", Icon::Information);
}

}  // namespace

void ShowStatement(Session& session, const StatementRow& row, const StatementChoice& choice, std::source_location at) {
    traced(row.routine, at, [&] {
        const std::string path = module1::ReportPath(session, row.file);
        const ReportParamsDictionary values = statementValues(session, row, choice);
        bool opened = false;
        if (row.binding == StatementBinding::Name) {
            opened = module1::OpenMainReport2(session, path, values);
        } else {
            ReportParams params;
            for (const auto& [name, value] : values) params.push_back(value);
            opened = module1::OpenMainReport(session, path, params);
        }
        if (opened) module1::ShowReportViewer(session, {.ShowGroupTree = true, .ReportCaption = row.title});
    });
}

bool RunStatement(Session& session, const StatementRow& row) {
    if (row.dialog == StatementDialog::EntPeriod) {
        frmEntPeriod dialog(session);
        std::string entity;
        return dialog.ShowDialog(row.mode, 0, "", entity);
    }
    StatementChoice choice;
    if (!ask(session, row, choice)) return false;
    ShowStatement(session, row, choice);
    return true;
}

void OpenLedgerDocument(Session& session, std::string_view key) {
    const std::vector<std::string> parts = split(std::string(key), ' ');
    const bool account = parts.front() == "account";
    if (!account && parts.front() != "group") {
        openVoucher(session, key, parts.front());
        return;
    }
    if (parts.size() < 3) throw Error(5, "frmGL", "The ledger knows nothing by the key '" + std::string(key) + "'.");
    if (!mayReadLedger(session)) {
        MsgBox("You have no right to read the general ledger.", Icon::Exclamation);
        return;
    }
    ShowStatement(session, *findStatement(account ? "mnuGLDetailed" : "mnuNP_BSS"),
                  {.period1 = parts[2], .period2 = parts.back(), .entity = parts[1]});
}

}  // namespace kv
