#pragma once
// Balances: beginning balances as records: when they may be entered, and how they are stored, whole or not at all.

#include <source_location>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Date.h"
#include "platform/base/Money.h"

namespace kv {

class Session;

/// A line of a balance screen. Lines without an account are not stored.
struct BalanceLine {
    std::string Code, Dept;
    Money Debit, Credit;
};

/// A line of one account: a month of a book.
struct AccountBalanceLine {
    std::string Period, BatchType, Dept;
    Money Debit, Credit;
};

/// "1000" to "2999".
bool isYear(std::string_view text);
/// Six digits, the last two a month.
bool isPeriod(std::string_view text);

/// Client FTOXG enters a year's balances once, and none of years that are over. Other clients as often as they like.
bool YearMayBeEdited(Session& session, std::string_view Year, const Date& today);
/// Client RDPT enters a month's figures once, and none of months that are over.
bool PeriodMayBeEdited(Session& session, std::string_view Period, const Date& today);

using BalancePlace = std::source_location;

/// Replaces the opening balances of a year and logs it, in one transaction.
void SaveYearBalances(Session& session, std::string_view Year, const std::vector<BalanceLine>& lines,
                      BalancePlace at = BalancePlace::current());
/// Replaces the figures of a book and period and logs it, in one transaction.
void SavePeriodBalances(Session& session, std::string_view Period, std::string_view Book,
                        const std::vector<BalanceLine>& lines, BalancePlace at = BalancePlace::current());
/// Replaces one account's opening balance of a year and its figures by book and month, and logs it, in one
/// transaction.
void SaveAccountBalance(Session& session, std::string_view Year, const BalanceLine& opening,
                        const std::vector<AccountBalanceLine>& lines, BalancePlace at = BalancePlace::current());

}  // namespace kv
