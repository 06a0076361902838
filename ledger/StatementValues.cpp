#include "ledger/StatementValues.h"

#include <array>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "reporting/SelectDialog.h"

namespace kv {
namespace {

constexpr int kMonthsMost = 12;

/// Months are counted by their number, so that January leads into the year before.
std::string monthsLater(std::string_view period, int months) {
    return Format(dateOfPeriod(period).addMonths(months), "yyyyMM");
}

Date dayOfPeriod(Session& session, const std::string& period, const char* column) {
    const Recordset row =
        session.cn().Open(sql("Select PD_Start, PD_END from Periods where Period = '{}'").text(period));
    if (row.eof() || row[column].isNull()) {
        throw Error(kErrNoPeriod, "Statements", "Period " + period + " has no days in the table of periods.");
    }
    return row[column].date();
}

StatementFact factOf(Session& session, const StatementRow& row, const StatementChoice& choice, std::string_view name);

std::string rangeText(Session& session, const StatementRow& row, const StatementChoice& choice) {
    return expandedText(row.range, [&](std::string_view name) { return factOf(session, row, choice, name); });
}

StatementFact factOf(Session& session, const StatementRow& row, const StatementChoice& choice, std::string_view name) {
    const std::string& period = choice.period2;
    if (name == "company") return {session.Sys.Company, {}};
    if (name == "address") return {session.Sys.Address1, {}};
    if (name == "period" || name == "period2") return {period, {}};
    if (name == "period1") return {choice.period1, {}};
    if (name == "lastYearPeriod") return {monthsLater(period, -kMonthsMost), {}};
    if (name == "lastPeriod") return {monthsLater(period, -1), {}};
    if (name == "entity") return {choice.entity, {}};
    if (name == "entityOrAll") return {choice.entity.empty() ? "*" : choice.entity, {}};
    if (name == "arAcct") return {session.Sys.ARAcct, {}};
    if (name == "date1") return {choice.date1, {}};
    if (name == "date2") return {choice.date2, {}};
    if (name == "month" || name == "month2") return {{}, dateOfPeriod(period)};
    if (name == "month1") return {{}, dateOfPeriod(choice.period1)};
    if (name == "day1") return {{}, parseDate(choice.date1)};
    if (name == "day2") return {{}, parseDate(choice.date2)};
    if (name == "pdStart") return {{}, dayOfPeriod(session, period, "PD_Start")};
    if (name == "pdEnd") return {{}, dayOfPeriod(session, period, "PD_END")};
    if (name == "range") return {rangeText(session, row, choice), {}};
    throw Error(5, "Statements", "No statement knows the fact '" + std::string(name) + "'.");
}

/// Rows of Type and Amount under the names of their types, with an ending; types without a row are nothing.
void addTotals(Session& session, std::string_view statement, const std::string& ending,
               ReportParamsDictionary& values) {
    constexpr auto kTypes = std::to_array<const char*>({"ASC", "ASO", "LIC", "LIO", "EQ", "NI"});
    const Recordset rows = session.cn().Open(statement);
    const int typeColumn = rows.indexOf("Type");
    const int amountColumn = rows.indexOf("Amount");
    for (const char* type : kTypes) {
        Money amount;
        for (const Row& row : rows.rows()) {
            if (row[typeColumn].text() == type) amount = row[amountColumn].money();
        }
        values.emplace_back(type + ending, kv::Value(amount));
    }
}

void addEquity(Session& session, std::string_view statement, const std::string& ending,
               ReportParamsDictionary& values) {
    constexpr auto kColumns = std::to_array<const char*>({"IssuedAmount", "SubscribedAmount", "ReceivableAmount",
                                                          "TreasuryAmount", "RetainedAmount", "CapitalStock",
                                                          "Authorized", "Issued", "Subscribed", "Treasury"});
    const Recordset row = session.cn().Open(statement);
    for (const char* column : kColumns) values.emplace_back(column + ending, row[column]);
}

}  // namespace

std::string expandedText(std::string_view text, const StatementFacts& facts) {
    std::string out;
    while (!text.empty()) {
        const std::size_t open = text.find('{');
        const std::size_t close = open == std::string_view::npos ? open : text.find('}', open);
        if (close == std::string_view::npos) return out + std::string(text);
        out += text.substr(0, open);
        const std::string_view inside = text.substr(open + 1, close - open - 1);
        const std::size_t bar = inside.find('|');
        const StatementFact fact = facts(inside.substr(0, bar));
        out += fact.day && bar != std::string_view::npos ? Format(*fact.day, inside.substr(bar + 1)) : fact.text;
        text.remove_prefix(close + 1);
    }
    return out;
}

ReportParamsDictionary statementValues(Session& session, const StatementRow& row, const StatementChoice& choice) {
    ReportParamsDictionary values;
    for (const StatementValue& value : *row.values) {
        values.emplace_back(value.name, expandedText(value.text, [&](std::string_view name) {
                                return factOf(session, row, choice, name);
                            }));
    }
    if (row.more) row.more(session, choice, values);
    return values;
}

std::string periodBefore(std::string_view period) { return monthsLater(period, -1); }

std::string monthHeading(int position, std::string_view period) {
    // as the reports have always printed them
    constexpr auto kOrdinals =
        std::to_array<const char*>({"FIRST", "SECOND", "THIRD", "FORTH", "FIFTH", "SIXTH", "SEVENTH", "EIGHTH", "NINTH",
                                    "TENTH", "ELEVENTH", "TWELFTH"});
    return std::string("FOR THE ") + kOrdinals.at(static_cast<std::size_t>(position) - 1) + " MONTH ENDED " +
           Format(dateOfPeriod(period), "MMMM, yyyy");
}

void BSReport(Session& session, const StatementChoice& choice, ReportParamsDictionary& values) {
    const std::string& period = choice.period2;
    values.emplace_back("LYYear", std::to_string(dateOfPeriod(period).year() - 1));
    values.emplace_back("PrevPeriod", periodBefore(period));
    addTotals(session, sql("sp_BSTotals '{}'").text(period), "", values);
    addTotals(session, sql("sp_BSLYTotals '{}'").text(period), "LY", values);
}

void BSReport2(Session& session, const StatementChoice& choice, ReportParamsDictionary& values) {
    addEquity(session, sql("sp_BS_OSQEL '{}'").text("3" + choice.period2), "", values);
    addEquity(session, sql("sp_BS_OSQEL '{}'").text("4" + choice.period2), "LY", values);
}

void MonthHeadings(Session& /*session*/, const StatementChoice& choice, ReportParamsDictionary& values) {
    std::string month = choice.period1;
    for (int position = 1; position <= kMonthsMost; ++position) {
        const bool inRange = month <= choice.period2;
        values.emplace_back("Heading" + std::to_string(position),
                            inRange ? monthHeading(position, month) : std::string());
        month = monthsLater(month, 1);
    }
}

}  // namespace kv
