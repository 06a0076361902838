#pragma once
// JournalBatch: a numbered set of lines in a book: what is wrong with it, and how it is stored, whole or not at all.

#include <optional>
#include <string>
#include <vector>

#include "core/DocumentNumbers.h"
#include "platform/base/Date.h"
#include "platform/base/Money.h"

namespace kv {

class Session;

struct JournalLine {
    std::string Code, Dept, Voucher, Description, SubCode;
    Money Debit, Credit;
    bool NeedsDept = false;  ///< the account asks for a department

    bool hasAccount() const { return !Code.empty(); }
    Money amount() const { return Debit - Credit; }
};

struct JournalTotals {
    Money Debit, Credit;
    Money difference() const { return Debit - Credit; }
};
JournalTotals totalsOf(const std::vector<JournalLine>& lines);

/// What keeps the lines from being saved, in the words that the user reads.
struct JournalFault {
    enum class Kind { AccountMissing, Unbalanced, DepartmentMissing };
    Kind kind;
    int line;  ///< from 1; 0 for the batch as a whole
    std::string message;
};
/// The first fault in the order in which a save looks for them: accounts, balance, departments.
std::optional<JournalFault> faultOf(const std::vector<JournalLine>& lines);

struct JournalBatch {
    std::string FormMode;  ///< "NEW", else the printed JV number or the batch number
    std::string Batch;     ///< empty until the first save
    PrintedNumber Printed;
    Date BatchDate;
    std::string Particular;
    std::string BatchType;  ///< "JV" or "YE" in the JV book; the book's code elsewhere
    std::vector<JournalLine> Lines;
    bool HasSubCode = false;

    bool isNew() const { return FormMode == "NEW"; }
};

/// The daily table that the reports of the AR and CR books read; empty for the JV book.
std::string DailyTableOf(std::string_view BookCode);

/// Stores the batch in the session's book: draws its numbers when it has none, replaces its lines, daily rows and
/// header. One transaction; on a failure nothing is stored and the batch is as it was.
void SaveJournalBatch(Session& session, JournalBatch& batch, std::source_location at = std::source_location::current());

/// JV: marks the batch cancelled. AR and CR: removes it and gives its hospital upload free again. One transaction.
void DropJournalBatch(Session& session, std::string_view Batch,
                      std::source_location at = std::source_location::current());

}  // namespace kv
