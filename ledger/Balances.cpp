#include "ledger/Balances.h"

#include <algorithm>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

bool allDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool yearHasBalances(Session& session, std::string_view Year) {
    const auto count = sql("SELECT COUNT(*) AS BegBalCount FROM BEGBALANCE WHERE YEAR = '{}'").text(Year);
    return session.cn().Open(count)["BegBalCount"].integer() > 0;
}

bool periodHasBalances(Session& session, std::string_view Period) {
    const auto count = sql("SELECT COUNT(*) AS BegBalCount FROM BEGBALDT WHERE Period = '{}'").text(Period);
    return session.cn().Open(count)["BegBalCount"].integer() > 0;
}

void logBalances(Session& session, bool edited, const std::string& reference, const std::string& behind) {
    const std::string text = (edited ? "Edited Beginning Balance : " : "Created Beginning Balance : ") + reference;
    module1::Save_AuditLog_Err(session, "GL", reference, "", text + behind);
}

}  // namespace

bool isYear(std::string_view text) {
    return text.size() == 4 && allDigits(text) && (text.front() == '1' || text.front() == '2');
}

bool isPeriod(std::string_view text) {
    return text.size() == 6 && allDigits(text) && text.substr(4) >= "01" && text.substr(4) <= "12";
}

bool YearMayBeEdited(Session& session, std::string_view Year, const Date& today) {
    if (session.ClientCode() != "FTOXG" || !isYear(Year)) return true;
    const std::string current = Format(today, "yyyy");
    return Year > current || (Year == current && !yearHasBalances(session, Year));
}

bool PeriodMayBeEdited(Session& session, std::string_view Period, const Date& today) {
    if (session.ClientCode() != "RDPT") return true;
    const std::string current = module1::GetPeriod(today);
    return Period > current || (Period == current && !periodHasBalances(session, Period));
}

void SaveYearBalances(Session& session, std::string_view Year, const std::vector<BalanceLine>& lines, BalancePlace at) {
    traced("Balances.SaveYear", at, [&] {
        Transaction save(session.cn());
        logBalances(session, yearHasBalances(session, Year), std::string(Year), "");
        session.cn().Execute(sql("sp_Init_BegBalance '{}',''").text(Year));
        for (const BalanceLine& line : lines) {
            if (line.Code.empty()) continue;
            session.cn().Execute(sql("sp_Insert_BegBalance '{}','{}',{},{},''")
                                     .text(Year)
                                     .text(line.Code)
                                     .amount(line.Debit)
                                     .amount(line.Credit));
        }
        save.commit();
    });
}

void SavePeriodBalances(Session& session, std::string_view Period, std::string_view Book,
                        const std::vector<BalanceLine>& lines, BalancePlace at) {
    traced("Balances.SavePeriod", at, [&] {
        Transaction save(session.cn());
        logBalances(session, periodHasBalances(session, Period), std::string(Period),
                    " | For Book : " + std::string(Book));
        session.cn().Execute(sql("delete BEGBALDT where Period = '{}' and BatchType = '{}'").text(Period).text(Book));
        for (const BalanceLine& line : lines) {
            if (line.Code.empty()) continue;
            session.cn().Execute(sql("insert into BEGBALDT (Year, Period, BatchType, Acct, Dept, Debit, Credit) values "
                                     "('{}','{}','{}','{}','{}',{},{})")
                                     .text(Period.substr(0, 4))
                                     .text(Period)
                                     .text(Book)
                                     .text(line.Code)
                                     .text(line.Dept)
                                     .amount(line.Debit)
                                     .amount(line.Credit));
        }
        save.commit();
    });
}

void SaveAccountBalance(Session& session, std::string_view Year, const BalanceLine& opening,
                        const std::vector<AccountBalanceLine>& lines, BalancePlace at) {
    traced("Balances.SaveAccount", at, [&] {
        Connection& cn = session.cn();
        Transaction save(cn);
        const auto stands =
            sql("select Acct from BegBalance where Year = '{}' and Acct = '{}'").text(Year).text(opening.Code);
        logBalances(session, !cn.Open(stands).empty(), std::string(Year), " | Account : " + opening.Code);
        cn.Execute(sql("delete BegBalance where Year = '{}' and Acct = '{}'").text(Year).text(opening.Code));
        cn.Execute(sql("insert into BegBalance (Year, Acct, Code, Debit, Credit) values ('{}', '{}', '{}', {}, {} )")
                       .text(Year)
                       .text(opening.Code)
                       .text(opening.Code)
                       .amount(opening.Debit)
                       .amount(opening.Credit));
        cn.Execute(sql("Delete BegBalDT where Year = '{}' and Acct = '{}'").text(Year).text(opening.Code));
        for (const AccountBalanceLine& line : lines) {
            if (line.Period.empty()) continue;
            // a department that the month's screen gave stays with its line
            const bool dept = !line.Dept.empty();
            Statement insert = sql(dept ? "insert into BegBalDT ( Year, Acct, Period, BatchType, Debit, Credit, Dept ) "
                                          "values ( '{}', '{}', '{}', '{}', {}, {}"
                                        : "insert into BegBalDT ( Year, Acct, Period, BatchType, Debit, Credit ) "
                                          "values ( '{}', '{}', '{}', '{}', {}, {}");
            insert.text(Year).text(opening.Code).text(line.Period).text(line.BatchType);
            insert.amount(line.Debit).amount(line.Credit);
            if (dept) insert.more(", '{}'").text(line.Dept);
            cn.Execute(insert.more(") "));
        }
        save.commit();
    });
}

}  // namespace kv
