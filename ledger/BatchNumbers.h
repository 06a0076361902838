#pragma once
// BatchNumbers: how journal batches are numbered: the internal number of a book and the printed number by a mask.

#include <source_location>
#include <string>
#include <string_view>

#include "platform/base/Date.h"

namespace kv {

class Session;

/// The printed number of a JV batch and its parts.
struct PrintedNumber {
    std::string PrintJVBatch, JVYear, JVMonth, JVSeries;
};

/// Replaces the tokens MM, YYYY and YY of a mask by the parts of the date.
std::string maskDate(std::string_view mask, const Date& date);
/// Replaces "####", then "###", by the series; the digits widen where it needs more.
std::string maskSeries(std::string_view mask, int series);

using Place = std::source_location;

/// The next batch number of the book. The number is reserved first, so that two workstations never get the same.
std::string GetNewBatchNum(Session& session, std::string_view BookCode, Place at = Place::current());
/// The next value of a monthly series; Type is "AP", "CV" or "JV".
double GetNewSeriesCount(Session& session, std::string_view Type, std::string_view Year, std::string_view Month,
                         Place at = Place::current());
PrintedNumber GetNextJvNumber(Session& session, std::string_view Period, const Date& date, Place at = Place::current());
/// The printed number that a batch was saved with; empty texts where it has none.
PrintedNumber GetInternalNumbersJV(Session& session, std::string_view Batch, Place at = Place::current());

}  // namespace kv
