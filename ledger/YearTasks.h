#pragma once
// YearTasks: what the year dialog does, by its mode: forwarding balances, closing a year, and its two reports.

#include <source_location>
#include <string>
#include <string_view>

#include "platform/base/Money.h"

namespace kv {

class Session;

/// The modes of the year dialog.
enum class YearMode : int {
    PostForwarded = 1,
    CloseYear = 2,
    BegBalances = 11,
    GeneralLedger = 12,
};

/// How the dialog looks in a mode.
struct YearDialogLook {
    YearMode mode;
    const char* caption;
    const char* okCaption;
};
/// nullptr for a mode that there is not.
const YearDialogLook* yearDialogLook(int mode);

/// How far a year is: what a person wants to know before closing it or forwarding its balances.
struct YearState {
    std::string LastPeriod;  ///< yyyyMM
    bool Prepared = false;
    bool Stale = false;  ///< the ledger changed after the last month was prepared
    std::string PreparedAt, PreparedBy;
    int OpenBooks = 0;       ///< months of books with batches that are not closed
    std::string FirstOpen;   ///< the first of them, "AR of November 2024"
    Money Result;            ///< income less expense, as prepared
    bool Closed = false;     ///< its year-end batch stands
    bool Forwarded = false;  ///< the next year's opening stands in the ledger
};
YearState readYearState(Session& session, std::string_view Year);
/// The state in words for a person, one line each.
std::string preparedText(const YearState& state);
std::string openBooksText(const YearState& state);
std::string resultText(const YearState& state, std::string_view account);

/// The opening balances of the year stand in the ledger.
bool YearIsOpened(Session& session, std::string_view Year);
/// The number of the batch that closed a year.
std::string yearEndBatch(std::string_view Year);

using YearPlace = std::source_location;

/// Both ask first; false when the user said no.
bool PostForwardedBalances(Session& session, std::string_view Year, YearPlace at = YearPlace::current());
bool CloseYear(Session& session, std::string_view Year, YearPlace at = YearPlace::current());

/// The opening balances of a year.
void rptBegBalances(Session& session, std::string_view Year, YearPlace at = YearPlace::current());
/// The ledger of a year: each account with its months.
void rptGL(Session& session, std::string_view Year, YearPlace at = YearPlace::current());

}  // namespace kv
