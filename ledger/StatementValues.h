#pragma once
// StatementValues: what the templates of the ledger's statements are told: the facts behind the texts of the table, the
// totals of the balance sheets, the headings of months.

#include <functional>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>

#include "ledger/StatementTable.h"
#include "platform/base/Date.h"

namespace kv {

/// What a name in braces stands for: a text, or a day that the pattern behind "|" shows.
struct StatementFact {
    std::string text;
    std::optional<Date> day;
};
using StatementFacts = std::function<StatementFact(std::string_view name)>;

/// The text with its facts in place of the braces: "As of {pdEnd|MMMM d, yyyy}".
std::string expandedText(std::string_view text, const StatementFacts& facts);

/// The values of a row, in its order. Raises kErrNoPeriod where a text needs the first or last day of a period that
/// has no row in PERIODS.
ReportParamsDictionary statementValues(Session& session, const StatementRow& row, const StatementChoice& choice);

/// The month before a period taken as a number: 200101 gives "200012".
std::string periodBefore(std::string_view period);
/// "FOR THE FIRST MONTH ENDED January, 2024" for a month's position in a range, from 1 to 12.
std::string monthHeading(int position, std::string_view period);

/// Totals of the balance sheet by type for the month and a year before (BS.rpt).
void BSReport(Session& session, const StatementChoice& choice, ReportParamsDictionary& values);
/// The share capital for the month and a year before (BS_OSQEL.rpt).
void BSReport2(Session& session, const StatementChoice& choice, ReportParamsDictionary& values);
/// Heading1 to Heading12.
void MonthHeadings(Session& session, const StatementChoice& choice, ReportParamsDictionary& values);

constexpr long kErrNoPeriod = 3021;

}  // namespace kv
