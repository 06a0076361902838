// What the demo hospital buys, pays and books at the end of a month.

#include <algorithm>
#include <array>

#include "core/Session.h"
#include "demo/year/DemoYear.h"

namespace kv {

namespace {

struct Service {
    const char* code;
    const char* name;
    int weight;
    std::vector<const char*> departments;
};
const std::vector<Service> kServices{
    {"6301", "ELECTRICITY", 30, {"1010", "1030", "1050", "1090", "1130", "2140", "2160", "3020", "3060", "3080"}},
    {"6302", "WATER", 6, {"1090", "2140", "2150", "3020", "3060"}},
    {"6303", "TELEPHONE AND INTERNET", 4, {"2020", "2030", "2040", "2110", "2130"}},
    {"6304", "MEDICAL WASTE", 5, {"1010", "1130", "2150"}},
    {"6402", "REPAIR OF MEDICAL EQUIPMENT", 10, {"1010", "1030", "1050", "1130"}},
    {"6401", "REPAIR OF THE BUILDING", 6, {"2160", "3020", "3060"}},
    {"6501", "SECURITY", 9, {"2170"}},
    {"6502", "JANITORS", 8, {"2150", "3020", "3060"}},
    {"6505", "SOFTWARE AND MAINTENANCE", 5, {"2110"}},
    {"6503", "LEGAL AND AUDIT FEES", 3, {"2010"}},
    {"6601", "RENT OF STORAGE", 4, {"2100"}},
    {"6202", "MEDICAL SUPPLIES FOR THE WARDS", 7, {"3020", "3030", "3040", "3050", "3080"}},
    {"6203", "LINEN AND CLEANING SUPPLIES", 3, {"2150"}},
};

struct Stock {
    const char* inventory;
    const char* cost;
    const char* dept;
};
constexpr auto kStocks = std::to_array<Stock>({
    {"1301", "5201", "1110"},
    {"1302", "5202", "1120"},
    {"1303", "5205", "1010"},
    {"1304", "5206", "1030"},
    {"1305", "5207", "1090"},
    {"1306", "5203", "1120"},
    {"1307", "5204", "2140"},
    {"1308", "6201", "2100"},
});

struct Payroll {
    const char* dept;
    int weight;
    bool shifts;  ///< works nights
};
constexpr auto kPayroll = std::to_array<Payroll>({
    {"1010", 34, true},  {"1030", 22, true},  {"1050", 9, false},  {"1060", 6, false},  {"1070", 9, true},
    {"1080", 7, false},  {"1090", 16, false}, {"1110", 26, true},  {"1120", 12, true},  {"1130", 34, true},
    {"1140", 16, true},  {"1150", 30, true},  {"1160", 12, false}, {"2010", 14, false}, {"2020", 18, false},
    {"2030", 20, false}, {"2040", 22, true},  {"2050", 14, false}, {"2060", 16, true},  {"2070", 12, false},
    {"2080", 10, false}, {"2090", 9, false},  {"2100", 10, false}, {"2110", 14, false}, {"2120", 14, false},
    {"2130", 15, true},  {"2140", 20, true},  {"2150", 18, true},  {"2160", 16, true},  {"2190", 6, false},
    {"3010", 14, false}, {"3020", 48, true},  {"3030", 44, true},  {"3040", 34, true},  {"3050", 32, true},
    {"3060", 42, true},  {"3070", 42, true},  {"3080", 38, true},  {"3090", 24, true},  {"3100", 14, true},
});
constexpr int kPayroll_permille = 235;  ///< of a month's revenue

struct Asset {
    const char* cost;
    const char* depreciation;
    int year_permille;
    std::vector<const char*> departments;
};
const std::vector<Asset> kAssets{
    {"1603", "1703", 33, {"2160", "3020", "3060", "3070"}},
    {"1604", "1704", 100, {"1130", "1150", "1090", "3080"}},
    {"1605", "1705", 125, {"1010", "1020"}},
    {"1606", "1706", 100, {"1030", "1040", "1050"}},
    {"1607", "1707", 150, {"2020", "3060", "3070"}},
    {"1608", "1708", 180, {"2030", "2040", "2110"}},
    {"1609", "1709", 140, {"1170"}},
};

struct Contribution {
    const char* expense;
    const char* payable;
    int permille;
};
constexpr auto kContributions = std::to_array<Contribution>({
    {"6104", "2401", 85},
    {"6105", "2403", 25},
    {"6106", "2404", 8},
});

std::string monthText(const Date& day) { return Format(day, "MMMM yyyy"); }

}  // namespace

void DemoYear::goodsVoucher(const Date& day, Centavos amount) {
    const DemoVendor& vendor = dice_.oneOf(books_.suppliers());
    static constexpr std::array kGoods{"1301", "1301", "1301", "1302", "1302", "1303", "1304", "1305", "1306", "1307"};
    const std::string goods = vendor.goodsAccount.empty() ? kGoods[static_cast<std::size_t>(dice_.below(kGoods.size()))]
                                                          : vendor.goodsAccount;
    const Centavos net = amount * 100 / 112;
    books_.voucher(day, vendor, session_.Sys.APAcct, "PURCHASES, DELIVERY OF " + Format(day, "MM/dd/yyyy"),
                   {{goods, "", net}, {"1451", "", amount - net}, {"2304", "", -permille(net, 10)}});
}

void DemoYear::servicesVoucher(const Date& day, Centavos amount) {
    std::int64_t at = dice_.below(100);
    const Service* service = &kServices.front();
    for (const Service& one : kServices) {
        service = &one;
        at -= one.weight;
        if (at < 0) break;
    }
    const Centavos net = amount * 100 / 112;
    std::vector<DemoLine> lines = spread(service->code, net, service->departments);
    lines.push_back({"1451", "", amount - net});
    lines.push_back({"2304", "", -permille(net, 20)});
    books_.voucher(day, dice_.oneOf(books_.suppliers()), "2102", std::string(service->name) + ", " + monthText(day),
                   std::move(lines));
}

void DemoYear::doctorsVoucher(const Date& day, Centavos) {
    const Centavos fees = settle("2201", day, 20);
    const Centavos shares = settle("2202", day, 30);
    books_.voucher(day, dice_.oneOf(books_.doctors()), "2102", "PROFESSIONAL FEES, " + monthText(day),
                   {{"2201", "", fees},
                    {"2202", "", shares},
                    {"2305", "", -permille(fees + shares, 100)},
                    {"4403", "2020", -permille(fees, 5)}});
}

void DemoYear::equipmentVoucher(const Date& day, Centavos amount) {
    static constexpr std::array kEquipment{"1604", "1605", "1606", "1608", "1607"};
    const Centavos net = amount * 100 / 112;
    const char* asset = kEquipment[static_cast<std::size_t>(dice_.below(kEquipment.size()))];
    books_.voucher(day, dice_.oneOf(books_.suppliers()), "2103", "EQUIPMENT, " + monthText(day),
                   {{asset, "", net}, {"1452", "", amount - net}, {"2304", "", -permille(net, 10)}});
}

/// Pays what is due to the vendor that waits longest; where nothing is due yet, the oldest voucher.
void DemoYear::payVouchers(const Date& day, Centavos) {
    std::deque<OwedVoucher>& owed = books_.owed();
    if (owed.empty()) return;
    const auto oldest = std::min_element(owed.begin(), owed.end(),
                                         [](const OwedVoucher& a, const OwedVoucher& b) { return a.due < b.due; });
    const OwedVoucher first = *oldest;
    std::vector<OwedVoucher> paid;
    for (const OwedVoucher& one : owed) {
        const bool same = one.vendor == first.vendor && one.account == first.account;
        if (same && (one.due <= day || one.number == first.number) && paid.size() < 8) paid.push_back(one);
    }
    std::erase_if(owed, [&](const OwedVoucher& one) {
        return std::any_of(paid.begin(), paid.end(), [&](const OwedVoucher& p) { return p.number == one.number; });
    });
    Centavos due = 0;
    for (const OwedVoucher& one : paid) due += one.amount;
    const char* richer = books_.balance("1111") > books_.balance("1112") ? "1111" : "1112";
    const char* bank = first.vendor->doctor && books_.balance("1114") >= due ? "1114" : richer;
    books_.payVouchers(day, bank, paid);
}

void DemoYear::pettyCash(const Date& day, Centavos amount) {
    const std::vector<Centavos> parts = splitAmount(amount, {40, 35, 25}, dice_);
    books_.check(day, "1112", "PETTY CASH CUSTODIAN", "REPLENISHMENT OF PETTY CASH",
                 {{"6610", "2020", parts[0]}, {"6604", "2020", parts[1]}, {"6201", "2030", parts[2]}});
}

void DemoYear::payrollChecks(const Date& day) {
    books_.check(day, "1113", "EMPLOYEES", "NET PAY OF " + Format(day, "MM/dd/yyyy"), {{"2406", "", owing("2406")}});
}

void DemoYear::contributionChecks(const Date& day) {
    std::vector<DemoLine> lines;
    for (const char* code : {"2401", "2402", "2403", "2404", "2405"}) lines.push_back({code, "", owing(code)});
    books_.check(day, "1112", "GOVERNMENT AGENCIES", "CONTRIBUTIONS AND LOANS OF THE MONTH BEFORE", lines);
}

void DemoYear::taxChecks(const Date& day) {
    std::vector<DemoLine> lines;
    for (const char* code : {"2303", "2304", "2305"}) lines.push_back({code, "", owing(code)});
    if (day.month() == 4) lines.push_back({"2307", "", owing("2307")});
    books_.check(day, "1111", "COLLECTOR OF TAXES", "TAXES WITHHELD IN THE MONTH BEFORE", lines);
}

void DemoYear::loanChecks(const Date& day) {
    const Centavos due = owing("2602") / 8;
    const Centavos debt = owing("2701") + owing("2602") + owing("2601");
    books_.check(day, "1111", "EXAMPLE BANK NORTH", "LOAN INSTALMENT AND INTEREST",
                 {{"2602", "", due}, {"6801", "", permille(debt, 6)}});
    books_.journal("JV", day, "CURRENT PORTION OF LONG-TERM LOANS", {{"2701", "", due}, {"2602", "", -due}});
}

/// What was owed before the books began, in the first quarter; what is accrued, as it falls due.
void DemoYear::oldPayables(const Date& day) {
    Centavos vouchers = 0;
    for (const OwedVoucher& one : books_.owed()) vouchers += one.account == "2102" ? one.amount : 0;
    const Centavos old = std::max<Centavos>(owing("2102") - vouchers, 0);
    books_.check(
        day, "1112", "VARIOUS SUPPLIERS", "PAYABLES OF THE YEAR BEFORE",
        {{"2102", "", day.month() < 3 ? permille(old, 500) : old}, {"2501", "", permille(owing("2501"), 300)}});
}

void DemoYear::inventoryIssues(const Date& day, Centavos) {
    std::vector<DemoLine> lines;
    for (const Stock& stock : kStocks) {
        const Centavos used = settle(stock.inventory, day, 42);
        lines.push_back({stock.cost, stock.dept, used});
        lines.push_back({stock.inventory, "", -used});
    }
    books_.journal("JV", day, "ISSUES OF SUPPLIES, " + Format(day, "MM/dd/yyyy"), lines);
}

/// Fills the accounts that pay salaries and doctors from the two that collect.
void DemoYear::fundTransfers(const Date& day) {
    const Centavos thirteenth = day.month() == 12 ? owing("2503") * 12 / 11 : 0;
    const Centavos payrollNeed =
        permille(revenue(day.month()), kPayroll_permille * 6 / 10) + thirteenth - books_.balance("1113");
    const Centavos doctorsNeed = permille(revenue(day.month()), 110) - books_.balance("1114");
    const Centavos payroll = std::max<Centavos>(payrollNeed, 0);
    const Centavos doctors = std::max<Centavos>(doctorsNeed, 0);
    const char* richer = books_.balance("1111") > books_.balance("1112") ? "1111" : "1112";
    books_.journal("JV", day, "TRANSFER OF FUNDS BETWEEN BANKS",
                   {{"1113", "", payroll}, {"1114", "", doctors}, {richer, "", -payroll - doctors}});
}

void DemoYear::payroll(const Date& day) {
    const Centavos raise = day.month() >= 7 ? 30 : 0;
    const Centavos gross = permille(permille(revenue(1) * 98 / 100, kPayroll_permille), 1000 + raise) / 2;
    int weights = 0;
    for (const Payroll& one : kPayroll) weights += one.weight;
    std::vector<DemoLine> lines;
    Centavos earnings = 0;
    for (const Payroll& one : kPayroll) {
        const Centavos salary = dice_.around(gross * one.weight / weights, 3);
        const Centavos overtime = one.shifts ? permille(salary, dice_.between(30, 110)) : 0;
        lines.push_back({"6101", one.dept, salary});
        lines.push_back({"6102", one.dept, overtime});
        earnings += salary + overtime;
    }
    const Centavos tax = permille(earnings, dice_.between(72, 84));
    const Centavos sss = permille(earnings, 42);
    const Centavos health = permille(earnings, 25);
    const Centavos housing = permille(earnings, 8);
    const Centavos loans = permille(earnings, dice_.between(20, 28));
    for (const auto& [code, amount] : std::initializer_list<std::pair<const char*, Centavos>>{
             {"2303", tax},
             {"2401", sss},
             {"2403", health},
             {"2404", housing},
             {"2402", loans},
             {"2405", loans / 2},
             {"2406", earnings - tax - sss - health - housing - loans - loans / 2}}) {
        lines.push_back({code, "", -amount});
    }
    books_.journal("JV", day, "PAYROLL OF " + Format(day, "MM/dd/yyyy"), lines);
}

/// The employer's part, and a twelfth of the thirteenth month's pay.
void DemoYear::contributions(const Date& day) {
    const Centavos gross = permille(revenue(1), kPayroll_permille);
    int weights = 0;
    for (const Payroll& one : kPayroll) weights += one.weight;
    std::vector<DemoLine> lines;
    for (const Contribution& one : kContributions) {
        Centavos sum = 0;
        for (const Payroll& dept : kPayroll) {
            const Centavos part = permille(gross * dept.weight / weights, one.permille);
            lines.push_back({one.expense, dept.dept, part});
            sum += part;
        }
        lines.push_back({one.payable, "", -sum});
    }
    Centavos sum = 0;
    for (const Payroll& dept : kPayroll) {
        const Centavos part = gross * dept.weight / weights / 12;
        lines.push_back({"6103", dept.dept, part});
        sum += part;
    }
    lines.push_back({"2503", "", -sum});
    books_.journal("JV", day, "CONTRIBUTIONS OF THE EMPLOYER, " + monthText(day), lines);
    if (day.month() == 12) {
        books_.check(day, "1113", "EMPLOYEES", "THIRTEENTH MONTH PAY", {{"2503", "", owing("2503")}});
    }
}

void DemoYear::depreciation(const Date& day) {
    std::vector<DemoLine> lines;
    for (const Asset& asset : kAssets) {
        const Centavos month = permille(books_.balance(asset.cost), asset.year_permille) / 12;
        for (DemoLine& line : spread("6701", month, asset.departments)) lines.push_back(std::move(line));
        lines.push_back({asset.depreciation, "", -month});
    }
    books_.journal("JV", day, "DEPRECIATION, " + monthText(day), lines);
}

/// Prepaid costs run off until the year's last month, in which they are paid anew.
void DemoYear::amortization(const Date& day) {
    const int left = 13 - day.month();
    const Centavos insurance = books_.balance("1401") / left;
    const Centavos rent = books_.balance("1402") / left;
    const Centavos licenses = books_.balance("1403") / left;
    books_.journal("JV", day, "AMORTIZATION OF PREPAYMENTS, " + monthText(day),
                   {{"6602", "2020", insurance},
                    {"6601", "2100", rent},
                    {"6603", "2020", licenses},
                    {"1401", "", -insurance},
                    {"1402", "", -rent},
                    {"1403", "", -licenses}});
    if (day.month() == 12) {
        books_.check(day, "1112", "VARIOUS", "INSURANCE, RENT AND LICENSES OF THE COMING YEAR",
                     {{"1401", "", pesos(1'680'000)}, {"1402", "", pesos(936'000)}, {"1403", "", pesos(742'500)}});
    }
}

void DemoYear::provisions(const Date& day) {
    const Centavos doubtful = permille(books_.balance("1202") + books_.balance("1204"), 8);
    const Centavos accrued = permille(revenue(day.month()), 30);
    const Centavos retirement = permille(revenue(1), 4);
    books_.journal("JV", day, "PROVISIONS AND ACCRUALS, " + monthText(day),
                   {{"6607", "2050", doubtful},
                    {"1219", "", -doubtful},
                    {"6504", "2200", accrued / 3},
                    {"5302", "2200", accrued - accrued / 3},
                    {"2501", "", -accrued},
                    {"6107", "2080", retirement},
                    {"2702", "", -retirement}});
}

void DemoYear::bankEntries(const Date& day) {
    const Centavos interest = permille(books_.balance("1121"), 4) + permille(books_.balance("1115"), 1);
    const Centavos charges = pesos(dice_.between(9'000, 21'000)) + dice_.below(100);
    books_.journal("JV", day, "INTEREST EARNED AND BANK CHARGES, " + monthText(day),
                   {{"1115", "", interest - charges}, {"6802", "", charges}, {"4501", "", -interest}});
}

/// Most of what a hospital sells bears no tax, so most input tax is a cost.
void DemoYear::inputTax(const Date& day) {
    const Centavos input = books_.balance("1451");
    const Centavos output = std::min(owing("2301"), input);
    const Centavos cost = permille(input - output, 900);
    books_.journal("JV", day, "INPUT TAX, " + monthText(day),
                   {{"2301", "", output}, {"6609", "2030", cost}, {"1451", "", -output - cost}});
}

/// The auditor's entries of December, and the income tax of the year.
void DemoYear::yearEndEntries(const Date& day) {
    if (day.month() != 12) return;
    const Centavos shortage = permille(books_.balance("1301"), dice_.between(4, 9));
    books_.journal("JV", day, "PHYSICAL COUNT OF INVENTORIES", {{"5201", "1110", shortage}, {"1301", "", -shortage}},
                   "YE");
    const Centavos surplus = permille(books_.balance("1319"), 100);
    books_.journal("JV", day, "ALLOWANCE FOR INVENTORY LOSSES", {{"5202", "1120", -surplus}, {"1319", "", surplus}},
                   "YE");
    const Centavos profit = books_.profit();
    const Centavos tax = profit > 0 ? permille(profit, 250) : 0;
    const Centavos credits = std::min(books_.balance("1455"), tax);
    books_.journal("JV", day, "INCOME TAX OF THE YEAR",
                   {{"6901", "", tax}, {"1455", "", -credits}, {"2307", "", credits - tax}}, "YE");
}

}  // namespace kv
