#pragma once
// CloseBoard: how far each book and the statements are in each month of a year, as the close cockpit shows it.

#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Date.h"
#include "platform/data/Connection.h"
#include "platform/forms/Grid.h"

namespace kv {

enum class MonthState { Idle, Open, Unposted, Unbalanced, Closed, Reopened, Prepared, Stale, Unprepared };

/// What is known of a book's month.
struct MonthFacts {
    int batches = 0;
    int unposted = 0;
    int unbalanced = 0;
    bool closed = false;
    bool reopened = false;  ///< the last thing done to it was a reopening
};
/// `posting`: batches have to be posted before a close. A month without batches before `thisMonth` still has to be
/// closed; later it is idle.
MonthState monthState(const MonthFacts& facts, bool posting, bool later);

struct BoardCell {
    std::string book;    ///< "JV"; "GL" for the statements
    std::string period;  ///< yyyyMM
    MonthState state = MonthState::Idle;
    MonthFacts facts;
    std::string lastAt, lastBy, lastReason;  ///< of the last close, reopening or preparation
};
std::string cellText(const BoardCell& cell);
Tint cellTint(MonthState state);
/// "Closed on 03/31/2024 17:30 by E001", "Opened again on ... by E001: late charges"; what has to be done otherwise.
std::string cellStory(const BoardCell& cell);

struct BoardRow {
    std::string book;
    std::string name;
    std::vector<BoardCell> months;
};
/// The five books and the statements, `months` months from `first` on.
std::vector<BoardRow> readCloseBoard(Connection& cn, std::string_view first, int months, bool posting,
                                     const Date& today);

/// A batch whose lines are others than those that the last reopening of the month took out of the ledger.
struct ChangedBatch {
    std::string batch, display, date, particular, change;
    Money before, now;
};
std::vector<ChangedBatch> readChangedBatches(Connection& cn, std::string_view book, std::string_view period);

}  // namespace kv
