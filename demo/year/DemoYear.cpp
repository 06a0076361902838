#include "demo/year/DemoYear.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/data/Statement.h"

namespace kv {

namespace {

constexpr long kErrExists = 58;
constexpr int kFirstMonthSize = 1000;
/// Patient revenue of the month that everything is measured by.
constexpr Centavos kRevenue = pesos(42'000'000);

struct Opening {
    const char* code;
    std::int64_t pesos;
    int spread_percent = 2;
};
/// What the hospital owns and owes when its first year opens; retained earnings are the rest.
constexpr auto kOpening = std::to_array<Opening>({
    {"1101", 850'000},        {"1103", 50'000, 0},   {"1104", 30'000, 0},       {"1105", 120'000, 0},
    {"1111", 38'450'000},     {"1112", 31'320'000},  {"1113", 9'870'000},       {"1114", 9'415'000},
    {"1115", 9'205'000},      {"1118", 1'140'000},   {"1121", 25'000'000, 0},   {"1201", 4'840'000},
    {"1202", 5'215'000},      {"1203", 615'000},     {"1204", 2'105'000},       {"1205", 14'520'000},
    {"1206", 22'330'000},     {"1207", 4'915'000},   {"1208", 2'820'000},       {"1209", 2'710'000},
    {"1219", -4'800'000},     {"1221", 910'000},     {"1222", 615'000},         {"1224", 352'000},
    {"1226", 808'000},        {"1301", 6'440'000},   {"1302", 3'615'000},       {"1303", 2'102'000},
    {"1304", 1'204'000},      {"1305", 1'218'000},   {"1306", 602'000},         {"1307", 455'000},
    {"1308", 905'000},        {"1319", -500'000},    {"1401", 1'620'000},       {"1402", 900'000},
    {"1403", 720'000},        {"1451", 1'110'000},   {"1452", 815'000},         {"1455", 3'410'000},
    {"1601", 60'000'000, 0},  {"1603", 185'000'000}, {"1604", 96'300'000},      {"1605", 31'250'000},
    {"1606", 74'800'000},     {"1607", 12'400'000},  {"1608", 18'150'000},      {"1609", 7'300'000},
    {"1610", 4'200'000},      {"1703", -62'000'000}, {"1704", -41'700'000},     {"1705", -13'900'000},
    {"1706", -30'400'000},    {"1707", -5'600'000},  {"1708", -8'200'000},      {"1709", -3'100'000},
    {"1901", 1'500'000},      {"2102", -5'220'000},  {"2104", -215'000},        {"2106", -915'000},
    {"2201", -4'810'000},     {"2202", -2'920'000},  {"2203", -515'000},        {"2301", -310'000},
    {"2303", -1'520'000},     {"2304", -615'000},    {"2305", -820'000},        {"2307", -6'040'000},
    {"2401", -1'030'000},     {"2402", -260'000},    {"2403", -390'000},        {"2404", -120'000},
    {"2405", -95'000},        {"2501", -4'410'000},  {"2601", -15'000'000, 0},  {"2602", -8'000'000, 0},
    {"2701", -96'000'000, 0}, {"2702", -14'300'000}, {"3101", -120'000'000, 0},
});

struct Close {
    const char* statement;
    const char* header;
};
constexpr auto kCloses = std::to_array<Close>({
    {"sp_PostAPtoGL '{}'", "AP"},
    {"sp_PostCDBtoGL '{}'", "CDB"},
    {"sp_PostGLtoGL '{}','AR'", "AR"},
    {"sp_PostGLtoGL '{}','CR'", "CRB"},
    {"sp_PostGLtoGL '{}','JV'", "JV"},
});

constexpr int kMorning = 9;
constexpr int kAfternoon = 16;
constexpr int kDaysToClose = 4;

/// The workstation's clock goes through the year while it lives, so that logs and headers tell believable days.
class WorkdayClock {
public:
    WorkdayClock() = default;
    WorkdayClock(const WorkdayClock&) = delete;
    WorkdayClock& operator=(const WorkdayClock&) = delete;
    ~WorkdayClock() { releaseClock(); }
    static void at(const Date& day, int hour) { fixClock(Date(day.year(), day.month(), day.day(), hour)); }
};

std::string periodOf(int year, int month) { return module1::GetPeriod(Date(year, month, 1)); }

Centavos centavosOf(Money amount) { return amount.units() / (Money::kUnitsPerOne / 100); }
Money amountOf(Centavos amount) { return Money::fromUnits(amount * (Money::kUnitsPerOne / 100)); }

}  // namespace

DemoYear::DemoYear(Session& session, const DemoYearPlan& plan)
    : session_(session),
      plan_(plan),
      dice_(plan.seed * 1'000'003 + static_cast<unsigned>(plan.year)),
      books_(session) {}

DemoYearTally DemoYear::write(const std::function<void(int month)>& progress) {
    const std::string year = std::to_string(plan_.year);
    const auto any = sql("SELECT TOP (1) B.Batch FROM dbo.vwBookBatch AS B WHERE B.Period LIKE '{}%'").text(year);
    if (!session_.cn().Open(any).empty()) {
        throw Error(kErrExists, "DemoYear", "The books of " + year + " hold documents already.");
    }
    const WorkdayClock clock;
    WorkdayClock::at(Date(plan_.year, 1, 2), kMorning);
    open();
    for (int month = 1; month <= plan_.months; ++month) {
        writeMonth(month);
        if (progress) progress(month);
    }
    return {books_.documents(), books_.lines()};
}

void DemoYear::open() {
    const auto before =
        sql("SELECT P.Period FROM dbo.PreparedPeriod AS P WHERE P.Period = '{}' AND P.StaleSince IS NULL")
            .text(periodOf(plan_.year - 1, 12));
    Transaction opening(session_.cn());
    if (session_.cn().Open(before).empty()) {
        openFirst();
    } else {
        openFromBefore();
    }
    session_.cn().Execute(sql("sp_PostForwardedBal '{}'").number(plan_.year));
    opening.commit();
    learnOpening();
}

void DemoYear::openFirst() {
    session_.cn().Execute(sql("sp_Init_BegBalance '{}',''").number(plan_.year));
    Centavos sum = 0;
    const auto insert = [&](const char* code, Centavos amount) {
        session_.cn().Execute(sql("sp_Insert_BegBalance '{}','{}',{},{},''")
                                  .number(plan_.year)
                                  .text(code)
                                  .amount(amountOf(std::max<Centavos>(amount, 0)))
                                  .amount(amountOf(std::max<Centavos>(-amount, 0))));
        sum += amount;
    };
    for (const Opening& one : kOpening) insert(one.code, dice_.around(pesos(one.pesos), one.spread_percent));
    insert(session_.Sys.RetainedEarning.c_str(), -sum);
}

void DemoYear::openFromBefore() {
    session_.cn().Execute(sql("sp_YearEndClose '{}','{}'").text(session_.Sys.RetainedEarning).number(plan_.year));
}

void DemoYear::learnOpening() {
    Recordset rows = session_.cn().Open(
        sql("SELECT B.Acct, B.Debit - B.Credit AS Balance FROM dbo.BegBalance AS B WHERE B.Year = '{}'")
            .number(plan_.year));
    for (; !rows.eof(); rows.moveNext()) books_.know(rows["Acct"].text(), centavosOf(rows["Balance"].money()));
    books_.learnOwed();
}

Centavos DemoYear::revenue(int month) const { return kRevenue * monthSize(plan_.year, month) / kFirstMonthSize; }

void DemoYear::writeMonth(int month) {
    Transaction whole(session_.cn());
    for (const Event& event : eventsOf(month)) {
        const Date day(plan_.year, month, event.day);
        WorkdayClock::at(day, kAfternoon);
        if (event.daily) {
            (this->*event.daily->write)(day, event.amount);
        } else {
            (this->*event.monthly->write)(day);
        }
    }
    const std::string period = periodOf(plan_.year, month);
    if (month <= plan_.closed) {
        WorkdayClock::at(Date::serial(plan_.year, month + 1, 1).addDays(kDaysToClose), kMorning);
        close(period);
    }
    whole.commit();
}

/// So many documents of a kind in a month, that all kinds together make the year's number.
int DemoYear::countOf(const Daily& kind, int month) const {
    int shares = 0;
    for (const Daily& one : dailyKinds()) shares += one.share;
    int sizes = 0;
    for (int m = 1; m <= 12; ++m) sizes += monthSize(plan_.year, m);
    const auto daily = std::max<std::int64_t>(plan_.batches - 12 * static_cast<int>(monthlyKinds().size()), 0);
    const std::int64_t weight = daily * kind.share * monthSize(plan_.year, month);
    return std::max(1, static_cast<int>((weight + std::int64_t{shares} * sizes / 2) / (std::int64_t{shares} * sizes)));
}

Date DemoYear::workingDay(const char* book, int month, int day) const {
    const Date wanted(plan_.year, month, day);
    const bool everyDay = std::string_view(book) == "AR" || std::string_view(book) == "CR";
    if (everyDay || wanted.weekday() != 0) return wanted;
    return wanted.addDays(day > 1 ? -1 : 1);
}

std::vector<DemoYear::Event> DemoYear::eventsOf(int month) {
    const int days = daysInMonth(plan_.year, month);
    std::vector<Event> events;
    for (const Daily& kind : dailyKinds()) {
        const int count = countOf(kind, month);
        for (int i = 0; i < count; ++i) {
            const int day = 1 + static_cast<int>((std::int64_t{i} * days + dice_.below(days)) / count);
            const Centavos each = permille(revenue(month), kind.money_permille) / count;
            events.push_back(
                {workingDay(kind.book, month, std::min(day, days)).day(), &kind, nullptr, dice_.around(each, 25)});
        }
    }
    for (const Monthly& kind : monthlyKinds()) {
        events.push_back({kind.day > 0 ? kind.day : days + kind.day, nullptr, &kind, 0});
    }
    std::stable_sort(events.begin(), events.end(), [](const Event& a, const Event& b) { return a.day < b.day; });
    return events;
}

void DemoYear::close(const std::string& period) {
    Connection& cn = session_.cn();
    for (const Close& one : kCloses) {
        cn.Execute(sql("UPDATE {} SET POSTED = 1, POSTEDBY = '{}', POSTEDDATE = GETDATE() WHERE PERIOD = '{}'")
                       .name(one.header)
                       .text(session_.EmployeeCode)
                       .text(period));
        cn.Execute(sql(one.statement).text(period));
    }
    cn.Execute(sql("sp_PrepareFinance '{}'").text(period));
    const std::string open = module1::GetPeriod(Date::serial(plan_.year, std::stoi(period.substr(4)) + 1, 1));
    cn.Execute(sql("UPDATE SYS SET rptpdStart = '{}', rptpdEnd = '{}', glperiod = '{}', APPERIOD = '{}', "
                   "CDBPERIOD = '{}'")
                   .text(period)
                   .text(period)
                   .text(open)
                   .text(open)
                   .text(open));
}

/// What of an account's balance moves on a day: the more, the longer nothing did.
Centavos DemoYear::settle(const std::string& code, const Date& day, int halfDays) {
    const auto [last, first] = settled_.try_emplace(code, day.addDays(-1));
    const std::int64_t days = std::max<std::int64_t>(1, (day.msSince1900() - last->second.msSince1900()) / 86'400'000);
    last->second = day;
    const Centavos balance = std::abs(books_.balance(code));
    return std::min(dice_.around(settled(balance, days, halfDays), 10), balance);
}

std::vector<DemoLine> DemoYear::spread(const std::string& code, Centavos amount,
                                       const std::vector<const char*>& departments) {
    const std::vector<Centavos> parts = splitAmount(amount, std::vector<int>(departments.size(), 1), dice_);
    std::vector<DemoLine> lines;
    for (std::size_t i = 0; i < parts.size(); ++i) lines.push_back({code, departments[i], parts[i]});
    return lines;
}

}  // namespace kv
