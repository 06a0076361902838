#pragma once
// clsPeriod: whether a date falls into a month that a book still takes entries for.

#include <source_location>

#include "platform/base/Date.h"

namespace kv {

class Session;

class clsPeriod {
public:
    explicit clsPeriod(Session& session) : session_(session) {}

    enum Result : int { ThisMonth = 0, OtherMonth = 1, Closed = 2 };

    /// Against the workstation's month. BookIndex: 0 AP, 1 CD, 2 AR, 3 CR, any other JV.
    int CheckPeriodDate(const Date& date, int BookIndex,
                        std::source_location at = std::source_location::current()) const;

private:
    Session& session_;
};

}  // namespace kv
