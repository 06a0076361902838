#include "core/module1.h"

#include "core/Session.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"

namespace kv::module1 {

std::string ATrim(std::string_view text) { return std::string(trimBlanks(text)); }

Money Value(std::string_view text) { return Money::fromDouble(numberOf(text)); }

std::string SQLString(std::string_view text) { return replaceAll(trimBlanks(text), "'", "''"); }

Money Round2(Money amount) { return Round(amount + Money::fromUnits(10), 2); }

std::string FormatCurrency(double amount) { return Format(amount, "0.00########"); }

std::string FormatMoney(double amount) { return Format(Round(Money::fromDouble(amount), 2), "#,##0.00"); }

std::string FormatTin(std::string_view tin) {
    const std::string digits = replaceAll(tin, "-", "");
    return midChars(digits, 0, 3) + "-" + midChars(digits, 3, 3) + "-" + midChars(digits, 6, 3) + "-" +
           midChars(digits, 9, 5);
}

int CountChars(std::string_view text) {
    const std::string plain = replaceAll(replaceAll(text, "\n", ""), "\r", "");
    return static_cast<int>(charCount(trimBlanks(plain)));
}

std::string GUID(Connection& cn, Place at) {
    return traced("module1.GUID", at, [&] {
        const Recordset row = cn.Open("select NEWID() as GUID");
        return row.eof() ? std::string() : row["GUID"].text();
    });
}

Date ServerDate(Connection& cn, Place at) {
    return traced("module1.ServerDate", at, [&] {
        return cn.Open("select getdate() [ServerDate] from patient_data..tbhospitalinfo")["ServerDate"].date();
    });
}

bool ValidDate(std::string_view text) {
    if (trimBlanks(text).empty()) return true;
    const auto date = parseDate(text);
    if (date && Format(*date, "yyyy/MM/dd") >= "2000/01/01") return true;
    MsgBox("Invalid date!", Icon::Exclamation);
    return false;
}

bool ValidPeriodDate(Connection& cn, const Date& date, std::string_view period, Place at) {
    return traced("module1.ValidPeriodDate", at, [&] {
        const Recordset row = cn.Open("Select * from Periods where period = '" + std::string(period) + "'");
        if (row.eof()) return true;
        const std::string day = Format(date, "yyyy-MM-dd");
        if (day >= Format(row["PD_Start"].date(), "yyyy-MM-dd") && day <= Format(row["PD_END"].date(), "yyyy-MM-dd")) {
            return true;
        }
        MsgBox("Date is not covered by the period.", Icon::Exclamation);
        return false;
    });
}

std::string GetPeriod(const Date& date) { return Format(date, "yyyyMM"); }

Date GetPeriodStartDate(std::string_view period, Place at) {
    constexpr long kPeriodNotValid = static_cast<long>(0x80040000);
    if (!IsNumeric(period) || charCount(period) != 6) {
        throw Error(kPeriodNotValid, "Korvane", "Period «" + std::string(period) + "» is not valid.", at);
    }
    return Date::serial(static_cast<int>(numberOf(period.substr(0, 4))), static_cast<int>(numberOf(period.substr(4))),
                        1);
}

Date GetPeriodEndDate(std::string_view period, Place at) {
    return GetPeriodStartDate(period, at).addMonths(1).addDays(-1);
}

std::string GetPreviousPeriod(std::string_view period, Place at) {
    return GetPeriod(GetPeriodStartDate(period, at).addMonths(-1));
}

std::string GetLastYearPeriod(std::string_view period, Place at) {
    return GetPeriod(GetPeriodStartDate(period, at).addMonths(-12));
}

std::string GetLastPeriod(std::string_view period) {
    const auto first = Date::fromIso(midChars(period, 0, 4) + "-" + midChars(period, 4) + "-01");
    return first ? GetPeriod(first->addMonths(-1)) : std::string();
}

bool IsBookOpen(Connection& cn, std::string_view BookCode, std::string_view Period, Place at) {
    return traced("module1.IsBookOpen", at, [&] {
        return cn
            .Open("select top 1 * from GL where Period = '" + std::string(Period) + "' and BatchType = '" +
                  std::string(BookCode) + "'")
            .eof();
    });
}

std::string BOM(std::string_view text) {
    if (const auto date = parseDate(text)) return Format(Date(date->year(), date->month(), 1), "MM/dd/yyyy");
    const std::size_t length = charCount(text);
    return midChars(text, 0, 3) + "01" + midChars(text, length > 5 ? length - 5 : 0);
}

std::string EOM(std::string_view text) {
    Date first = CDate(BOM(text));
    return Format(first.addMonths(1).addDays(-1), "MM/dd/yyyy");
}

bool ColumnExists(Connection& cn, std::string_view table, std::string_view column, Place at) {
    return traced("module1.ColumnExists", at, [&] {
        return !cn.Open("SELECT 1 FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_NAME = '" + std::string(table) +
                        "' AND COLUMN_NAME = '" + std::string(column) + "'")
                    .eof();
    });
}

bool TableExists(Connection& cn, std::string_view table, Place at) {
    return traced("module1.TableExists", at, [&] {
        return !cn.Open("SELECT 1 FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_NAME = '" + std::string(table) + "'")
                    .eof();
    });
}

bool ObjectExists(Connection& cn, std::string_view name, Place at) {
    return traced("module1.ObjectExists", at, [&] {
        return !cn.Open("select * from sys.all_objects where name = '" + std::string(name) + "'").eof();
    });
}

bool IsFieldExists(const Recordset& rows, std::string_view field) { return rows.has(field); }

kv::Value WhenMissing(const Recordset& rows, std::string_view field, const kv::Value& otherwise) {
    if (!rows.has(field)) return otherwise;
    const kv::Value& found = rows[field];
    return found.isNull() ? otherwise : found;
}

std::string GetAcctName(Connection& cn, std::string_view code, std::string_view dept, Place at) {
    return traced("module1.GetAcctName", at, [&] {
        const Recordset row = cn.Open("select dbo.fn_AccountTitle( '" + ATrim(code) + "','" + ATrim(dept) +
                                      "') as Description from [SYS]");
        return row.eof() ? std::string() : row["Description"].text();
    });
}

std::string GetCodeAndDescription(Connection& cn, std::string_view code, std::string_view kind, Place at) {
    return traced("module1.GetCodeAndDescription", at, [&] {
        return UCase(kind) == "ACCT" ? std::string(code) + " - " + GetAcctName(cn, code, "") : std::string();
    });
}

std::string GetVendorName(Connection& cn, std::string_view id, Place at) {
    return traced("module1.GetVendorName", at, [&] {
        const Recordset row = cn.Open("Select VendorID, Company from Vend where VendorID = '" + ATrim(id) + "'");
        return row.eof() ? std::string("Vendor ID not found!") : row["Company"].text();
    });
}

std::string GetEmployeeName(Connection& cn, std::string_view code, Place at) {
    return traced("module1.GetEmployeeName", at, [&] {
        const Recordset row =
            cn.Open("select top 1 * from PASSWORD..tbPasswordMain where EmployeeID = '" + std::string(code) + "'");
        if (row.eof()) return std::string();
        std::string name = properCase(row["FirstName"].text()) + " ";
        const std::string middle = row["MiddleName"].text();
        if (!middle.empty()) name += UCase(midChars(middle, 0, 1)) + ". ";
        return name + properCase(row["LastName"].text());
    });
}

void LockTextBox(TextBox& box, bool lock) { box.setLocked(lock); }
void LockComboBox(ComboBox& box, bool lock) { box.setLocked(lock); }

void LockDatePicker(DatePicker& picker, bool lock) {
    picker.setLocked(lock);
    picker.setEnabled(!lock);
}

void LockDTPicker(DatePicker& picker, bool lock) { picker.setEnabled(!lock); }

int NewControlSize(int newOuter, int oldOuter, int oldControl) { return newOuter - oldOuter + oldControl; }
int DockControlBottom(int outerHeight, int oldOuterHeight, int oldTop) {
    return outerHeight - (oldOuterHeight - oldTop);
}
int DockControlRight(int outerWidth, int oldOuterWidth, int oldLeft) { return outerWidth - (oldOuterWidth - oldLeft); }

bool SelectPrinter(Session& session, Place at) {
    return traced("module1.SelectPrinter", at, [&] {
        if (!session.Parameters.AlwaysShowPrintDialog(session.ClientCode())) return true;
        if (askPrinter()) return true;
        MsgBox("No printer selected.");
        return false;
    });
}

void SaveUserLog(Session& session, std::string_view Text, Place at) {
    try {
        session.cn().Execute("ACCOUNTING..sp_SaveUserLogs '" + session.EmployeeCode + "', 'ACCOUNTING', '" +
                             std::string(Text) + "'");
    } catch (Error& failure) {
        failure.line = at.line();  // no place of its own: the caller's line is what counts
        throw;
    }
}

bool Save_AuditLog_Err(Session& session, std::string_view Book, std::string_view Reference, std::string_view Extra,
                       std::string_view Text, Place at) {
    return traced("module1.Save_AuditLog_Err", at, [&] {
        session.cn().Execute("ACCOUNTING..sp_SaveAuditLog '" + session.EmployeeCode + "', '" + std::string(Book) +
                             "', '" + std::string(Reference) + "', '" + std::string(Extra) + "', '" +
                             std::string(Text) + "'");
        return true;
    });
}

void SaveCDBAuditLog(Session& session, std::string_view CVNo, std::string_view Extra, Place at) {
    traced("module1.SaveCDBAuditLog", at, [&] {
        const Recordset row =
            session.cn().Open("SELECT COUNT(*) AS CDBCount FROM CDB WHERE CVNo  = '" + SQLString(CVNo) + "'");
        const bool edited = !row.eof() && row["CDBCount"].integer() > 0;
        const std::string number(CVNo);
        Save_AuditLog_Err(session, "CDB", CVNo, Extra,
                          edited ? "Edited on CV No : " + number : "Added on CV No : " + number);
    });
}

void CheckErrors(Connection& cn, Place at) {
    for (const DbError& error : cn.errors()) {
        if (error.severity > 10) throw Error(error.number, error.source, error.description, at);
    }
}

}  // namespace kv::module1

namespace kv::Module3 {

void SendKeys(std::string_view keys, bool wait) { sendKeys(keys, wait); }

std::string getPathToDesktop() { return desktopFolder(); }

}  // namespace kv::Module3
