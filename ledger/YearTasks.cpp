#include "ledger/YearTasks.h"

#include <algorithm>
#include <array>

#include "core/BookState.h"
#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/Form.h"
#include "reporting/ReportFrame.h"

namespace kv {
namespace {

constexpr auto kLooks = std::to_array<YearDialogLook>({
    {YearMode::PostForwarded, "Post Forwarded Balances", "&Post"},
    {YearMode::CloseYear, "Year End Closing", "&Close Year"},
    {YearMode::BegBalances, "Beginning Balances", "&OK"},
    {YearMode::GeneralLedger, "General Ledger", "&OK"},
});

constexpr const char* kDone = "Post successful! Press OK to continue.";

std::string next(std::string_view Year) {
    const Money year = module1::Value(Year);
    return std::to_string(year.units() / Money::kUnitsPerOne + 1);
}

std::string answer(Session& session, std::string_view statement) {
    const Recordset row = session.cn().Open(statement);
    return row.eof() ? std::string() : row.at(0).text();
}

void readPrepared(Session& session, YearState& state) {
    const Recordset row =
        session.cn().Open(sql("SELECT P.PreparedAt, P.StaleSince, ISNULL(E.FirstName + ' ' + E.LastName, "
                              "P.PreparedBy) AS PreparedBy FROM PreparedPeriod AS P LEFT JOIN "
                              "PASSWORD.dbo.tbPasswordMain AS E ON E.EmployeeID = P.PreparedBy "
                              "WHERE P.Period = '{}'")
                              .text(state.LastPeriod));
    if (row.eof()) return;
    state.Prepared = true;
    state.Stale = !row["StaleSince"].isNull();
    state.PreparedAt = Format(row["PreparedAt"].date(), "MM/dd/yyyy HH:nn");
    state.PreparedBy = row["PreparedBy"].text();
    const Recordset sum = session.cn().Open(sql("SELECT SUM(B.Ending) AS Balance FROM PeriodBalance AS B INNER JOIN "
                                                "AcctCode AS A ON A.Code = B.Code WHERE B.Period = '{}' AND A.Type IN "
                                                "('IN','EX')")
                                                .text(state.LastPeriod));
    if (!sum.eof()) state.Result = -sum["Balance"].money();
}

void readOpenBooks(Session& session, std::string_view first, YearState& state) {
    Recordset rows =
        session.cn().Open(sql("SELECT P.Book, P.Period FROM vwBookPeriod AS P WHERE P.Period BETWEEN '{}' AND "
                              "'{}' AND P.Closed = 0 AND P.Batches > 0 ORDER BY P.Period, P.Book")
                              .text(first)
                              .text(state.LastPeriod));
    for (; !rows.eof(); rows.moveNext()) {
        if (state.OpenBooks++ == 0) state.FirstOpen = rows["Book"].text() + " of " + periodName(rows["Period"].text());
    }
}

}  // namespace

const YearDialogLook* yearDialogLook(int mode) {
    const auto found = std::find_if(kLooks.begin(), kLooks.end(),
                                    [&](const YearDialogLook& look) { return static_cast<int>(look.mode) == mode; });
    return found == kLooks.end() ? nullptr : &*found;
}

std::string yearEndBatch(std::string_view Year) { return "YE" + std::string(Year); }

bool YearIsOpened(Session& session, std::string_view Year) {
    return answer(session, sql("SELECT COUNT(*) AS N FROM GL WHERE Period = dbo.fn_FirstPeriodOf('{}') AND BatchType = "
                               "'BB'")
                               .text(Year)) != "0";
}

YearState readYearState(Session& session, std::string_view Year) {
    YearState state;
    const Recordset months = session.cn().Open(sql("SELECT dbo.fn_FirstPeriodOf('{}') AS FirstPeriod, "
                                                   "dbo.fn_PeriodAfter(dbo.fn_FirstPeriodOf('{}'), -1) AS LastPeriod")
                                                   .text(Year)
                                                   .text(next(Year)));
    state.LastPeriod = months["LastPeriod"].text();
    readPrepared(session, state);
    readOpenBooks(session, months["FirstPeriod"].text(), state);
    state.Closed =
        !answer(session, sql("SELECT Batch FROM GLBatch WHERE Batch = '{}'").text(yearEndBatch(Year))).empty();
    state.Forwarded = YearIsOpened(session, next(Year));
    return state;
}

std::string preparedText(const YearState& state) {
    const std::string month = periodName(state.LastPeriod);
    if (!state.Prepared) return month + " has not been prepared yet.";
    return month + " was prepared on " + state.PreparedAt +
           (state.PreparedBy.empty() ? "" : " by " + state.PreparedBy) +
           (state.Stale ? "; the ledger has changed since." : ".");
}

std::string openBooksText(const YearState& state) {
    if (state.OpenBooks == 0) return "Every book with batches is closed.";
    const std::string others = state.OpenBooks == 1 ? "" : " and " + std::to_string(state.OpenBooks - 1) + " more";
    return "Not closed: " + state.FirstOpen + others + ".";
}

std::string resultText(const YearState& state, std::string_view account) {
    if (!state.Prepared) return "";
    const bool loss = state.Result < Money();
    return std::string(loss ? "Loss of " : "Profit of ") + Format(loss ? -state.Result : state.Result, "#,##0.00") +
           " to account " + std::string(account) +
           (state.Closed ? "; the year was closed before, and what stands is replaced." : ".");
}

bool PostForwardedBalances(Session& session, std::string_view Year, YearPlace at) {
    return traced("frmRepYear.PostForwarded", at, [&] {
        if (!Ask("Proceed with Posting Forwarded Balances for the Year " + std::string(Year) + " ?", "Warning!",
                 Icon::Exclamation)) {
            return false;
        }
        {
            const Hourglass busy;
            session.cn().Execute(sql("sp_PostForwardedBal '{}'").text(Year));
        }
        module1::SaveUserLog(session, "Post Forwarded Balances : " + std::string(Year));
        MsgBox(kDone, Icon::Information);
        return true;
    });
}

bool CloseYear(Session& session, std::string_view Year, YearPlace at) {
    return traced("frmRepYear.CloseYear", at, [&] {
        if (!Ask("Please run Financial Report Preparation for the last period of the year first. If it has been done, "
                 "do "
                 "you wish to proceed with year end closing procedure for the year " +
                     std::string(Year) + " ?",
                 "Warning!", Icon::Exclamation)) {
            return false;
        }
        {
            const Hourglass busy;
            session.cn().Execute(sql("sp_YearEndClose '{}','{}'").text(session.Sys.RetainedEarning).text(next(Year)));
        }
        module1::SaveUserLog(session, "Year End Closing : " + std::string(Year));
        MsgBox(kDone, Icon::Information);
        return true;
    });
}

void rptBegBalances(Session& session, std::string_view Year, YearPlace at) {
    traced("frmRepYear.rptBegBalances", at, [&] {
        const std::string path = module1::ReportPath(session, "BegBalances_Ver2.rpt");
        const bool opened = module1::OpenMainReport2(
            session, path,
            {{"@Year", std::string(Year)}, {"Hospital", session.Sys.Company}, {"Address", session.Sys.Address1}});
        if (opened) module1::ShowReportViewer(session, {.ReportCaption = "Beginning Balances"});
    });
}

void rptGL(Session& session, std::string_view Year, YearPlace at) {
    traced("frmRepYear.rptGL", at, [&] {
        const std::string path = module1::ReportPath(session, "ReportGL.rpt");
        const bool opened = module1::OpenMainReport2(
            session, path,
            {{"@Year", std::string(Year)}, {"Hospital", session.Sys.Company}, {"Address", session.Sys.Address1}});
        if (opened) module1::ShowReportViewer(session, {.ReportCaption = "General Ledger"});
    });
}

}  // namespace kv
