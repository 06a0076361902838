#include "core/DemoHospital.h"

#include <algorithm>
#include <future>
#include <vector>

#include "platform/base/Csv.h"
#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/login/Passwords.h"

namespace kv {

namespace {

constexpr long kErrExists = 58;
constexpr const char* kOpenPeriod = "202403";
constexpr int kFirstYear = 2023;
constexpr int kLastYear = 2026;

/// One file of the demo hospital: a row becomes a row of the table, its columns under their own names.
struct TableFile {
    const char* file;
    const char* table;
    const char* columns;  ///< "CSV heading" or "CSV heading=table column", separated by ";"
};

constexpr TableFile kTables[] = {
    {"glgroups.csv", "GLGROUP", "GLGroup;Description;Type;Class"},
    {"chart_of_accounts.csv", "AcctCode", "Code;Description;Type;GLGroup;Subsidiary;Mast=Mast_Dept"},
    {"cost_centers.csv", "CstCtr", "CstCtr;Description;DeptCode"},
    {"terms.csv", "TERMS", "TermsID;Terms;NoDays;Status"},
    {"vendor_classes.csv", "VendClass", "ClassCode;Description"},
    {"vendors.csv", "VEND",
     "VendorID;Company;LastName;FirstName;MiddleName;Class;TIN;Addr1;Addr2;City;Prov;ZIP;Phone;Contact;VatRate;ATC;"
     "WTXRate;APType;APTerm;Active"},
    {"aptypes.csv", "APTYPE", "Code;Description;Status;VATClass;AcctCode;APAcct;ITxAcctCode;DisAcctCode"},
    {"banks.csv", "BANK", "BankID;Description;Acct;CheckNo;Status;ChkReportName"},
    {"atc.csv", "WTaxCode", "TaxCode;Description=TaxDesc;TaxPercent"},
};

constexpr const char* kDepartments[][2] = {
    {"1", "ANCILLIARY SERVICES"}, {"2", "ADMINISTRATION & OPERATIONS"}, {"3", "NURSING SERVICES"}};

/// A field as a value of the statement: nothing where the file has nothing, unless the column must have a text.
std::string fieldText(std::string_view column, const std::string& field) {
    const bool needsText = column == "Class" || column == "Mast_Dept" || column == "Description";
    return field.empty() && !needsText ? "NULL" : "'" + SQLString(field) + "'";
}

CsvTable readCsv(const std::string& folder, const char* file) {
    return CsvTable::parse(readTextFile(buildPath(folder, file)));
}

/// Puts the file's name and line before a failure's text.
template <class Body>
void named(const char* file, std::size_t row, Body&& body) {
    try {
        body();
    } catch (Error& failure) {
        failure.description = std::string(file) + ", row " + std::to_string(row + 1) + ": " + failure.description;
        throw;
    }
}

void loadTable(Connection& cn, const std::string& folder, const TableFile& of) {
    const CsvTable csv = readCsv(folder, of.file);
    std::vector<std::string> headings;
    std::vector<std::string> columns;
    for (const std::string& one : split(of.columns, ';')) {
        const std::vector<std::string> parts = split(one, '=');
        headings.push_back(parts.front());
        columns.push_back(parts.back());
    }
    const std::string head = "INSERT INTO dbo." + std::string(of.table) + " (" + join(columns, ", ") + ") VALUES (";
    for (std::size_t row = 0; row < csv.size(); ++row) {
        std::vector<std::string> values;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            values.push_back(fieldText(columns[i], csv.at(row, headings[i])));
        }
        named(of.file, row, [&] { cn.Execute(head + join(values, ", ") + ")"); });
    }
}

void loadEmployees(Connection& cn, const std::string& folder) {
    constexpr const char* file = "employees.csv";
    const CsvTable csv = readCsv(folder, file);
    std::vector<std::future<std::string>> hashes;
    for (std::size_t row = 0; row < csv.size(); ++row) {
        hashes.push_back(std::async(std::launch::async, [&csv, row] { return hashPassword(csv.at(row, "Password")); }));
    }
    for (std::size_t row = 0; row < csv.size(); ++row) {
        const std::string& access = csv.at(row, "Access");
        const std::string& id = csv.at(row, "EmployeeID");
        cn.Execute(
            sql("INSERT INTO PASSWORD.dbo.tbPasswordMain (EmployeeID, LastName, FirstName, MiddleName, PasswordHash, "
                "UserRights, DeptCode) VALUES ('{}', '{}', '{}', '{}', '{}', '{}', '{}')")
                .text(id)
                .text(csv.at(row, "LastName"))
                .text(csv.at(row, "FirstName"))
                .text(csv.at(row, "MiddleName"))
                .text(hashes[row].get())
                .text(csv.at(row, "UserRights"))
                .text(access == "-" ? "10" : "55"));
        if (access == "-" || access.empty()) continue;
        Recordset rights = cn.Open("SELECT T.AccessID FROM dbo.ACCESSTYPES AS T ORDER BY T.Sequence");
        const std::vector<std::string> granted = split(access, ';');
        for (; !rights.eof(); rights.moveNext()) {
            const std::string right = rights["AccessID"].text();
            const bool can = access == "*" || std::find(granted.begin(), granted.end(), right) != granted.end();
            cn.Execute(sql("INSERT INTO dbo.ACCESS (UserID, AccessID, CanAccess) VALUES ('{}', '{}', {})")
                           .text(id)
                           .text(right)
                           .number(can ? 1 : 0));
        }
    }
}

void loadSettings(Connection& cn, const std::string& folder) {
    cn.Execute(
        sql("UPDATE dbo.SYS SET Company = 'EXAMPLE GENERAL HOSPITAL', Address1 = '1 SAMPLE STREET, SAMPLE CITY', "
            "Client = 'DEMO', YearType = 'CALENDAR', sw_APVNo = '1', sw_CheckNo = '0', sw_Compare = '0', sw_wDirect = "
            "'0', "
            "APPERIOD = '{}', glperiod = '{}', CDBPERIOD = '{}'")
            .text(kOpenPeriod)
            .text(kOpenPeriod)
            .text(kOpenPeriod));
    cn.Execute(
        "UPDATE dbo.tbBIRRegistration SET TIN = '990-000-001-000', RegisteredName = 'EXAMPLE GENERAL HOSPITAL', "
        "TradeName = 'EXAMPLE GENERAL HOSPITAL', Address1 = '1 SAMPLE STREET', Address2 = 'SAMPLE CITY', RDOCode = "
        "'001'");
    constexpr const char* file = "account_roles.csv";
    const CsvTable csv = readCsv(folder, file);
    for (std::size_t row = 0; row < csv.size(); ++row) {
        const std::string& setting = csv.at(row, "Setting");
        const std::string& code = csv.at(row, "Code");
        named(file, row, [&] {
            if (csv.at(row, "Table") == "SYS") {
                cn.Execute(sql("UPDATE dbo.SYS SET {} = {}").name(setting).text(code));
            } else {
                cn.Execute(call("sp_Update_Parameters").text(setting).text(code).text(csv.at(row, "Note")));
            }
        });
    }
    cn.Execute(
        "UPDATE A SET Class = G.Class FROM dbo.AcctCode AS A INNER JOIN dbo.GLGROUP AS G ON G.GLGroup = A.GLGroup");
    cn.Execute("UPDATE dbo.AcctCode SET IsBankAcct = 1 WHERE Code IN (SELECT B.Acct FROM dbo.BANK AS B)");
    // Tax of doctors' fees stands on an account of its own.
    cn.Execute(
        "UPDATE dbo.WTaxCode SET GLCode = CASE WHEN TaxCode IN ('WI 150', 'WI 151') THEN '2305' ELSE '2304' END");
    cn.Execute(
        "INSERT INTO patient_data.dbo.tbhospitalinfo (HospitalID, HospitalName) "
        "VALUES (1, 'EXAMPLE GENERAL HOSPITAL')");
}

void loadPeriods(Connection& cn) {
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const Date first(year, month, 1);
            const Date last(year, month, daysInMonth(year, month));
            cn.Execute(
                sql("INSERT INTO dbo.PERIODS (Period, PD_Start, PD_END, Description) VALUES ('{}', '{}', '{}', '{}')")
                    .text(Format(first, "yyyyMM"))
                    .date(first)
                    .date(last)
                    .text(UCase(Format(first, "MMMM yyyy"))));
        }
    }
}

}  // namespace

void loadDemoHospital(Connection& connection, const std::string& dataFolder) {
    if (!connection.Open("SELECT TOP (1) A.Code FROM dbo.AcctCode AS A").empty()) {
        throw Error(kErrExists, "DemoHospital", "The database holds a hospital already.");
    }
    Transaction transaction(connection);
    for (const TableFile& one : kTables) loadTable(connection, dataFolder, one);
    for (const auto& [code, name] : kDepartments) {
        connection.Execute(call("sp_Update_Departments").text(code).text(name));
    }
    loadEmployees(connection, dataFolder);
    loadSettings(connection, dataFolder);
    loadPeriods(connection);
    transaction.commit();
}

}  // namespace kv
