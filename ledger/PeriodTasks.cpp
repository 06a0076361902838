#include "ledger/PeriodTasks.h"

#include <algorithm>
#include <array>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Date.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSelectDates.h"

namespace kv {
namespace {

constexpr auto kLooks = std::to_array<PeriodDialogLook>({
    {PeriodMode::ClosePeriod, "Close Period", nullptr, "Close &Month"},
    {PeriodMode::CloseAP, "Close Period", nullptr, "Close &Month"},
    {PeriodMode::CloseCDB, "Close Period", nullptr, "Close &Month"},
    {PeriodMode::PostBegBal, "Post Beginning Balances", nullptr, "&Post"},
    {PeriodMode::SetGLPeriod, "Set GL Period", nullptr, "&OK"},
    {PeriodMode::ReopenBook, "Open Period", "&Book :", "&OK"},
    {PeriodMode::SetAPPeriod, "Set AP Period", nullptr, "&OK"},
    {PeriodMode::SetCDBPeriod, "Set CDB Period", nullptr, "&OK"},
    {PeriodMode::Prepare, "Financial Report Preparation", nullptr, "&Prepare"},
});

/// A close that one procedure does, with its log.
struct CloseTask {
    PeriodMode mode;
    const char* statement;
    const char* log;
};
constexpr auto kCloseTasks = std::to_array<CloseTask>({
    {PeriodMode::CloseAP, "sp_PostAPtoGL '{}'", "Close Period > Post AP to GL period: "},
    {PeriodMode::CloseCDB, "sp_PostCDBtoGL '{}'", "Close Period > Post CDB to GL period: "},
    {PeriodMode::PostBegBal, "sp_PostBegBaltoGL '{}'", "Close Period > Post BegBal to GL period: "},
});

struct WorkingPeriod {
    PeriodMode mode;
    const char* statement;
    std::string SysCopies::*copy;
    const char* log;
};
constexpr auto kWorkingPeriods = std::to_array<WorkingPeriod>({
    {PeriodMode::SetGLPeriod, "update SYS set GLPeriod = '{}'", &SysCopies::glperiod, "Set GL Period : "},
    {PeriodMode::SetAPPeriod, "update SYS set APPeriod = '{}'", &SysCopies::APPERIOD, "Set AP Period : "},
    {PeriodMode::SetCDBPeriod, "update SYS set CDBPeriod = '{}'", &SysCopies::CDBPERIOD, "Set CDB Period : "},
});

template <class Table>
const auto& rowOf(const Table& table, PeriodMode mode) {
    return *std::find_if(table.begin(), table.end(), [&](const auto& row) { return row.mode == mode; });
}

}  // namespace

const PeriodDialogLook* periodDialogLook(int mode) {
    const auto found = std::find_if(kLooks.begin(), kLooks.end(),
                                    [&](const PeriodDialogLook& look) { return static_cast<int>(look.mode) == mode; });
    return found == kLooks.end() ? nullptr : &*found;
}

std::string GetPeriodEndDate(Session& session, std::string_view Period, const char* pattern) {
    const Recordset row = session.cn().Open(sql("Select * from Periods where period = '{}'").text(Period));
    if (!row.eof() && !row["PD_END"].isNull()) return Format(row["PD_END"].date(), pattern);
    return Format(dateOfPeriod(Period).addMonths(1).addDays(-1), pattern);
}

bool PostGLPeriod(Session& session, std::string_view Period) {
    if (!Ask("About to close the month ending " + GetPeriodEndDate(session, Period, "dd MMM yyyy") +
                 ". All transactions for this period can no longer be editted. Are you sure?.",
             "Confirmation")) {
        return false;
    }
    {
        const Hourglass busy;
        session.cn().Execute(sql("sp_PostGLtoGL '{}','{}'").text(Period).text(session.BookCode()));
    }
    module1::SaveUserLog(session, "Posted GL to GL : " + std::string(Period) + " | BatchType : " + session.BookCode());
    MsgBox("The month has been closed. You must rerun the Financial Preparation to update the Reports.",
           Icon::Information);
    return true;
}

bool CloseThrough(Session& session, PeriodMode mode, std::string_view Period) {
    if (!Ask("Transactions on the current period can no longer be edited after closing. Do you wish to proceed?",
             "Warning", Icon::Exclamation)) {
        return false;
    }
    const CloseTask& task = rowOf(kCloseTasks, mode);
    {
        const Hourglass busy;
        module1::SaveUserLog(session, task.log + std::string(Period));
        session.cn().Execute(sql(task.statement).text(Period));
    }
    MsgBox("The month has been closed.", Icon::Exclamation);
    return true;
}

bool isBookCode(std::string_view book) {
    constexpr std::array<std::string_view, 5> kBooks = {"JV", "CD", "CR", "AR", "AP"};
    return std::find(kBooks.begin(), kBooks.end(), book) != kBooks.end();
}

std::string bookClosedBy(const Session& session, PeriodMode mode) {
    return mode == PeriodMode::CloseAP       ? "AP"
           : mode == PeriodMode::CloseCDB    ? "CD"
           : mode == PeriodMode::ClosePeriod ? session.BookCode()
                                             : std::string();
}

bool UnPostBook(Session& session, std::string_view Book, std::string_view Period, std::string_view Reason) {
    if (!Ask("Are you sure you want to open " + std::string(Book) + " Book for month ending " +
                 GetPeriodEndDate(session, Period, "dd MMM yyyy") + "?",
             "Warning", Icon::Exclamation)) {
        return false;
    }
    {
        const Hourglass busy;
        Statement reopen = sql("sp_UnpostBook '{}','{}'").text(Book).text(Period);
        if (!Reason.empty()) reopen.more(",'{}'").text(Reason);
        session.cn().Execute(reopen);
    }
    module1::SaveUserLog(session, "Opened Book : " + std::string(Book) + " | Period : " + std::string(Period));
    MsgBox("The month has been opened.", Icon::Information);
    return true;
}

void UpdatePrd(Session& session, PeriodMode mode, std::string_view Period) {
    const WorkingPeriod& period = rowOf(kWorkingPeriods, mode);
    session.cn().Execute(sql(period.statement).text(Period));
    session.Sys.*period.copy = Period;
    module1::SaveUserLog(session, period.log + std::string(Period));
}

void ReportPreparation(Session& session, std::string_view Period) {
    const Hourglass busy;
    session.cn().Execute(sql("UPDATE SYS SET rptpdStart = '{}' , rptpdEnd = '{}'").text(Period).text(Period));
    session.Sys.rptpdstart = Period;
    session.Sys.rptpdEnd = Period;
    session.cn().Execute(sql("sp_PrepareFinance '{}'").text(Period));
}

}  // namespace kv
