#pragma once
// BookState: how far each book is: which of its months are closed, which batches wait, how old the figures are.

#include <string>
#include <vector>

#include "platform/base/Date.h"
#include "platform/data/Connection.h"

namespace kv {

struct BookMonth {
    std::string period;  ///< yyyyMM
    bool closed = false;
};

struct BookState {
    std::string code;
    std::string name;
    std::string workingPeriod;
    std::vector<BookMonth> months;  ///< oldest first
    int pending = 0;                ///< batches that are entered and neither posted nor cancelled, of open months
};

/// The five books with `count` months up to the one of `today`.
std::vector<BookState> readBookStates(Connection& cn, const Date& today, int count);

/// When and by whom the statements were last prepared, and whether a later close made them old.
struct Preparation {
    bool any = false;
    std::string period;
    Date at;
    std::string by;
    bool stale = false;
};
Preparation readPreparation(Connection& cn);

/// "yyyyMM" as "March 2024".
std::string periodName(std::string_view period);
std::string shortPeriodName(std::string_view period);  ///< "Mar 2024"

}  // namespace kv
