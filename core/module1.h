#pragma once
// module1: the small routines that every screen calls. Those that send a statement use the session's connection and
// raise their failures again with their own tag.

#include <source_location>
#include <string>
#include <string_view>

#include "platform/base/Date.h"
#include "platform/base/Money.h"
#include "platform/data/Connection.h"

namespace kv {

class Session;
class TextBox;
class ComboBox;
class DatePicker;

namespace module1 {

using Place = std::source_location;

// text and numbers
std::string ATrim(std::string_view text);
/// The amount in a text by the locale's rules, 0 where there is none. The conversion passes through a double.
Money Value(std::string_view text);
/// For a text between apostrophes in a statement: trimmed, apostrophes doubled.
std::string SQLString(std::string_view text);
/// Adds 0.001, then rounds to two decimals with ties to even.
Money Round2(Money amount);
std::string FormatCurrency(double amount);  ///< "0.00########"
std::string FormatMoney(double amount);     ///< two decimals, ties to even, grouped
inline std::string FormatMoney(Money amount) { return FormatMoney(amount.toDouble()); }
std::string FormatTin(std::string_view tin);
int CountChars(std::string_view text);  ///< characters without line ends, trimmed
std::string GUID(Connection& cn, Place at = Place::current());
/// The server's clock; the hospital's row must exist.
Date ServerDate(Connection& cn, Place at = Place::current());

// dates and periods
/// Blank passes. No date, or one before 2000: "Invalid date!" and false.
bool ValidDate(std::string_view text);
/// Outside the period's days: a message and false. An unknown period passes.
bool ValidPeriodDate(Connection& cn, const Date& date, std::string_view period, Place at = Place::current());
std::string GetPeriod(const Date& date);
/// First and last day of a period "yyyyMM". These four raise 0x80040000 for a text that is no number of six characters;
/// a month beyond 12 rolls over into the next year.
Date GetPeriodStartDate(std::string_view period, Place at = Place::current());
Date GetPeriodEndDate(std::string_view period, Place at = Place::current());
std::string GetPreviousPeriod(std::string_view period, Place at = Place::current());
std::string GetLastYearPeriod(std::string_view period, Place at = Place::current());
/// The month before; empty for a text that is no period.
std::string GetLastPeriod(std::string_view period);
/// A book is closed for a period exactly when the ledger holds a row of both.
bool IsBookOpen(Connection& cn, std::string_view BookCode, std::string_view Period, Place at = Place::current());
/// First and last day of the month, "MM/dd/yyyy"; a month-day-year text whose day is impossible is repaired.
std::string BOM(std::string_view text);
std::string EOM(std::string_view text);

// database inspection
bool ColumnExists(Connection& cn, std::string_view table, std::string_view column, Place at = Place::current());
bool TableExists(Connection& cn, std::string_view table, Place at = Place::current());
bool ObjectExists(Connection& cn, std::string_view name, Place at = Place::current());
bool IsFieldExists(const Recordset& rows, std::string_view field);
kv::Value WhenMissing(const Recordset& rows, std::string_view field, const kv::Value& otherwise);

// lookups
std::string GetAcctName(Connection& cn, std::string_view code, std::string_view dept, Place at = Place::current());
std::string GetCodeAndDescription(Connection& cn, std::string_view code, std::string_view kind,
                                  Place at = Place::current());
std::string GetVendorName(Connection& cn, std::string_view id, Place at = Place::current());
std::string GetEmployeeName(Connection& cn, std::string_view code, Place at = Place::current());

// screen helpers
void LockTextBox(TextBox& box, bool lock);
void LockComboBox(ComboBox& box, bool lock);
void LockDatePicker(DatePicker& picker, bool lock);  ///< greyed and disabled
void LockDTPicker(DatePicker& picker, bool lock);    ///< only disabled
int NewControlSize(int newOuter, int oldOuter, int oldControl);
int DockControlBottom(int outerHeight, int oldOuterHeight, int oldTop);
int DockControlRight(int outerWidth, int oldOuterWidth, int oldLeft);
/// Asks for the printer where the parameters say so. False: none was selected, and the user has been told.
bool SelectPrinter(Session& session, Place at = Place::current());

// logs
/// The text goes out as it stands: it must not hold an apostrophe.
void SaveUserLog(Session& session, std::string_view Text, Place at = Place::current());
bool Save_AuditLog_Err(Session& session, std::string_view Book, std::string_view Reference, std::string_view Extra,
                       std::string_view Text, Place at = Place::current());
/// Logs that a check voucher is added, or edited when it stands already; so it goes before the save that makes it.
void SaveCDBAuditLog(Session& session, std::string_view CVNo, std::string_view Extra, Place at = Place::current());

/// Raises the first error that the connection has collected, if any.
void CheckErrors(Connection& cn, Place at = Place::current());

}  // namespace module1

namespace Module3 {
/// Keystrokes to the active window, "{Tab}" and plain characters.
void SendKeys(std::string_view keys, bool wait = false);
/// The user's desktop; empty where there is none.
std::string getPathToDesktop();
}  // namespace Module3

}  // namespace kv
