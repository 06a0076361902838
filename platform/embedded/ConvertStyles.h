#pragma once
// ConvertStyles: the numbered styles of CONVERT between dates and text.

#include <optional>
#include <string>

#include "platform/embedded/DateTime.h"
#include "platform/embedded/Types.h"

namespace kv::tsql {

struct ConvertStyle {
    int number;
    std::string_view pattern;  ///< see ConvertStyles.cpp
    DayOrder order;            ///< how numeric day texts of this style are read
    bool timeOnly;
};

const ConvertStyle* findStyle(int number);

/// The default style of a date type: 0 for datetime and smalldatetime, 121 for date and datetime2.
int defaultStyle(const Type& dateType);

/// A moment in a style. Raises 281 for an unknown style, 9809 for a time of day of a date.
std::string momentInStyle(Moment moment, const Type& type, int style);

}  // namespace kv::tsql
