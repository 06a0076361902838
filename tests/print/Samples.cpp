#include "tests/print/Samples.h"

namespace kv::samples {
namespace {

std::vector<Field> fields(std::initializer_list<std::pair<const char*, DataType>> list) {
    std::vector<Field> out;
    for (const auto& [name, type] : list) out.push_back({name, type, 0, 0});
    return out;
}

constexpr DataType kText = DataType::VarChar, kMoney = DataType::Currency, kDate = DataType::DateTime;

struct Account {
    const char* code;
    const char* title;
    const char* beginning;
    const char* debit;
    const char* credit;
};
constexpr Account kAccounts[] = {
    {"1101", "Cash on hand", "152340.25", "1204550.75", "1198230.10"},
    {"1102", "Cash in bank, current account", "4820115.40", "2310450.00", "1875320.55"},
    {"1201", "Accounts receivable, in-patients", "2675300.00", "1530200.40", "1204550.75"},
    {"1301", "Inventory of medicines and medical supplies for the pharmacy and the wards", "980450.30", "312000",
     "287120.15"},
    {"1501", "Hospital equipment", "12450000", "0", "0"},
    {"1502", "Accumulated depreciation, hospital equipment", "-4312500", "0", "103750"},
    {"2101", "Accounts payable, trade", "-1345200.15", "845200.15", "912340.25"},
    {"2304", "Withholding tax payable", "-45120.80", "45120.80", "38211.09"},
    {"3101", "Capital stock", "-10000000", "0", "0"},
    {"3201", "Retained earnings", "-5375385", "0", "0"},
    {"4101", "Room and board revenue", "0", "0", "980450.40"},
    {"4102", "Laboratory and radiology revenue", "0", "12500", "549750"},
    {"5101", "Cost of medicines", "0", "287120.15", "0"},
    {"5201", "Salaries and wages", "0", "498830.89", "0"},
    {"5301", "Depreciation expense", "0", "103750", "0"},
};

}  // namespace

Money money(const char* text) { return *Money::parse(text); }

ResultSet trialBalance() {
    ResultSet set;
    set.fields = fields({{"Code", kText},
                         {"Description", kText},
                         {"Type", kText},
                         {"GLGroup", kText},
                         {"GLDescription", kText},
                         {"BegDebit", kMoney},
                         {"BegCredit", kMoney},
                         {"Debit", kMoney},
                         {"Credit", kMoney},
                         {"EndDebit", kMoney},
                         {"EndCredit", kMoney},
                         {"Beginning", kMoney},
                         {"Ending", kMoney},
                         {"PreparedAt", kDate},
                         {"PreparedBy", kText},
                         {"Stale", kText},
                         {"StaleText", kText}});
    const auto plus = [](Money m) { return m > Money() ? m : Money(); };
    for (const Account& a : kAccounts) {
        const Money beginning = money(a.beginning), debit = money(a.debit), credit = money(a.credit);
        const Money ending = beginning + debit - credit;
        const std::string group(1, a.code[0]);
        set.rows.push_back({a.code, a.title, group, group, "Group " + group, plus(beginning), plus(-beginning), debit,
                            credit, plus(ending), plus(-ending), beginning, ending, Date(2024, 4, 3, 9, 15), "Ana Cruz",
                            "", ""});
    }
    return set;
}

ResultSet batchJournal(int batches) {
    ResultSet set;
    set.fields = fields({{"Batch", kText},
                         {"DisplayBatch", kText},
                         {"BatchDate", kDate},
                         {"BatchType", kText},
                         {"Particular", kText},
                         {"Encoder", kText},
                         {"Status", kText},
                         {"SeqNo", DataType::Integer},
                         {"Code", kText},
                         {"Title", kText},
                         {"Dept", kText},
                         {"Description", kText},
                         {"Debit", kMoney},
                         {"Credit", kMoney}});
    for (int b = 1; b <= batches; ++b) {
        const int lines = 2 + b % 4;
        const std::string number = "2024-0000" + std::to_string(b);
        const Money each = Money::whole(1000 * b) + money("0.25");
        Money sum;
        for (int n = 1; n <= lines; ++n) {
            const bool last = n == lines;
            const Account& account = kAccounts[(b + n) % 15];
            const Value debit = last ? Money() : each, credit = last ? sum : Money();
            sum += each;
            set.rows.push_back({std::to_string(b), number, Date(2024, 3, 1 + b % 28), "JV",
                                "To record the adjustments of the month, batch " + std::to_string(b), "Ana Cruz",
                                b == 3 ? "Cancelled" : "", n, account.code, account.title, n % 2 == 0 ? "PHA" : "",
                                last ? "" : "Charge slip " + std::to_string(b * 10 + n), debit, credit});
        }
    }
    return set;
}

ResultSet userLogs() {
    ResultSet set;
    set.fields =
        fields({{"LogDate", kDate}, {"UserID", kText}, {"UserName", kText}, {"SystemName", kText}, {"LogText", kText}});
    set.rows = {
        {Date(2024, 3, 1, 8, 0, 5), "1001", "Ana Cruz", "ACCOUNTING", "Open JV"},
        {Date(2024, 3, 1, 8, 12, 0), "1001", "Ana Cruz", "ACCOUNTING", "Printed report : GLBatchJrnl.rpt"},
        {Date(2024, 3, 2, 17, 30, 59), "1002", "Ben Peña", "ACCOUNTING",
         "Posted GL to GL : 202402 | BatchType : JV and a text that is so long that it cannot stand on one line "
         "of this report and goes on in the next"}};
    return set;
}

ResultSet generalLedger(int accounts, int lines) {
    ResultSet set;
    set.fields = fields({{"Code", kText},
                         {"Title", kText},
                         {"Kind", DataType::Integer},
                         {"Period", kText},
                         {"BatchDate", kDate},
                         {"BatchType", kText},
                         {"Batch", kText},
                         {"Dept", kText},
                         {"Description", kText},
                         {"Opening", kMoney},
                         {"Debit", kMoney},
                         {"Credit", kMoney}});
    for (int a = 0; a < accounts; ++a) {
        const Account& account = kAccounts[a % 15];
        const std::string code = std::to_string(1001 + a);
        set.rows.push_back({code, account.title, 0, "202403", Value(), "", "", "", "Beginning balance",
                            money(account.beginning), Money(), Money()});
        for (int n = 1; n <= lines; ++n) {
            const Money amount = Money::fromUnits(10'000LL * n * (a + 1) + 2'500);
            const bool debit = n % 3 != 2;
            set.rows.push_back({code, account.title, 1, "202403", Date(2024, 3, 1 + n % 31), "JV",
                                "2024-" + std::to_string(10'000 + n), n % 4 == 0 ? "PHA" : "",
                                "Entry number " + std::to_string(n) + " of the account", Money(),
                                debit ? amount : Money(), debit ? Money() : amount});
        }
    }
    return set;
}

std::unique_ptr<Report> report(const std::string& file) {
    auto out = Report::load("Reports/" + file);
    const std::pair<const char*, Value> usual[] = {{"Company", "EXAMPLE GENERAL HOSPITAL"},
                                                   {"HospitalName", "EXAMPLE GENERAL HOSPITAL"},
                                                   {"Hospital", "EXAMPLE GENERAL HOSPITAL"},
                                                   {"Address1", "1 SAMPLE STREET, SAMPLE CITY"},
                                                   {"HospAddress", "1 SAMPLE STREET, SAMPLE CITY"},
                                                   {"Address", "1 SAMPLE STREET, SAMPLE CITY"},
                                                   {"@Period", "202403"},
                                                   {"@Period1", "202403"},
                                                   {"@Period2", "202403"},
                                                   {"@LYPeriod", "202303"},
                                                   {"@Compariod", "202402"},
                                                   {"@ReportDate1", Date(2024, 3, 1)},
                                                   {"@ReportDate2", Date(2024, 3, 31)},
                                                   {"PrevPeriod", "202402"},
                                                   {"PdRange", "For the month of March 2024"},
                                                   {"Range", "March 2024"},
                                                   {"StartBatch", "2024-00001"},
                                                   {"EndBatch", "2024-00009"},
                                                   {"Book", "JV"},
                                                   {"StartDate", Date(2024, 3, 1)},
                                                   {"EndDate", Date(2024, 3, 2)}};
    for (const auto& [name, value] : usual) {
        if (out->definition().parameterIndex(name) >= 0) out->setValue(name, value);
    }
    out->setDescription("Printed by: Ana Cruz; Print date: 4/5/2024 10:30:00; HALCYRA 1.0");
    return out;
}

std::unique_ptr<Report> fromText(const std::string& text) {
    return std::make_unique<Report>(
        readTemplate(readTemplateText(text, "sample.rpt", "Reports/"), "sample.rpt", "Reports/"));
}

}  // namespace kv::samples
