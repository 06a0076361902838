#pragma once
// PeriodTasks: what the period dialog does, by its mode: closing and reopening books, working periods, preparation.

#include <string>
#include <string_view>
#include <vector>

namespace kv {

class Session;

/// The modes of the period dialog.
enum class PeriodMode : int {
    ClosePeriod = 3,
    CloseAP = 21,
    CloseCDB = 22,
    PostBegBal = 23,
    SetGLPeriod = 51,
    ReopenBook = 52,
    SetAPPeriod = 61,
    SetCDBPeriod = 71,
    Prepare = 100,
};

/// How the dialog looks in a mode.
struct PeriodDialogLook {
    PeriodMode mode;
    const char* caption;
    const char* entityCaption;  ///< caption of txtEntity; nullptr hides it
    const char* okCaption;
};
/// nullptr for a mode that this version does not have.
const PeriodDialogLook* periodDialogLook(int mode);

/// The last day of the period: its row's PD_END, else the last day of the month.
std::string GetPeriodEndDate(Session& session, std::string_view Period, const char* pattern);

/// Closes the month of the open book (AR, CR, JV). False when the user said no.
bool PostGLPeriod(Session& session, std::string_view Period);
/// Closes AP or CDB, or brings the beginning balances in.
bool CloseThrough(Session& session, PeriodMode mode, std::string_view Period);
bool isBookCode(std::string_view book);
/// Opens a closed month again; the reason goes into the log of closes. False when the user said no.
bool UnPostBook(Session& session, std::string_view Book, std::string_view Period, std::string_view Reason = {});
/// The book that a mode closes: AP, CD, or the open one; empty for every other mode.
std::string bookClosedBy(const Session& session, PeriodMode mode);
/// Sets the working period of the ledger, AP or CDB.
void UpdatePrd(Session& session, PeriodMode mode, std::string_view Period);
void ReportPreparation(Session& session, std::string_view Period);

}  // namespace kv
