#pragma once
// Errors: the table of error texts by number, and the filling of message formats.

#include <string>
#include <string_view>
#include <vector>

#include "platform/embedded/Types.h"

namespace kv::tsql {

struct ErrorText {
    int number;
    int severity;
    std::string_view text;  ///< arguments as %s and %d
};

/// The row of the table, or null for a number that the engine does not raise itself.
const ErrorText* findErrorText(int number);

/// A RAISERROR or FORMATMESSAGE text with its arguments put in: %d %i %u %o %x %X %s with flags, width and precision,
/// %%. A missing argument prints as (null). Raises 2786 for an argument of the wrong type, 2787 for a format it does
/// not know.
std::string formatMessage(std::string_view format, const std::vector<Datum>& arguments);

}  // namespace kv::tsql
