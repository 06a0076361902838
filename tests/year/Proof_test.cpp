// The proof of the figures: the lines of a demo year of 5,000 documents go out as a plain text journal, another
// accounting program adds them up, and its balances of each month must be the prepared ones to the centavo.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <memory>

#include "YearDesk.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"

namespace kv {

namespace {

/// Balance by account and department, debit positive.
using Balances = std::map<std::string, Money>;

/// The lines as they stand in the tables of the books, not in the ledger that closing makes.
constexpr const char* kLines =
    "SELECT 'JV' AS Book, D.Batch, H.BatchDate, D.SeqNo, D.Code, D.Dept, D.Debit - D.Credit AS Amount FROM JVDT AS D "
    "INNER JOIN JV AS H ON H.Batch = D.Batch WHERE H.Cancelled = 0 "
    "UNION ALL SELECT 'AR', D.Batch, H.BatchDate, D.SeqNo, D.Code, D.Dept, D.Debit - D.Credit FROM ARDT AS D "
    "INNER JOIN AR AS H ON H.Batch = D.Batch "
    "UNION ALL SELECT 'CR', D.Batch, H.BatchDate, D.SeqNo, D.Code, D.Dept, D.Debit - D.Credit FROM CRBDT AS D "
    "INNER JOIN CRB AS H ON H.Batch = D.Batch "
    "UNION ALL SELECT 'AP', D.Voucher, H.VoucherDate, D.SeqNo, D.Code, D.Dept, D.Debit - D.Credit FROM APDT AS D "
    "INNER JOIN AP AS H ON H.Voucher = D.Voucher WHERE H.Cancelled = 0 "
    "UNION ALL SELECT 'CD', D.CVNo, H.CVDate, D.SeqNo, D.Code, D.Dept, D.Debit - D.Credit FROM CDBDT AS D "
    "INNER JOIN CDB AS H ON H.CVNo = D.CVNo WHERE H.Cancelled = 0 "
    "ORDER BY Book, Batch, SeqNo";

std::string accountName(const std::string& code, const std::string& dept) {
    return dept.empty() ? code : code + "_" + dept;
}

std::string posting(const std::string& account, const Money& amount) {
    return "  " + account + "  " + Format(amount, "0.00##") + "\n";
}

/// The year as a journal of plain text: the opening balances, then one entry a document.
std::string journalOf(Desk& desk, const std::string& year) {
    std::string text = year + "-01-01 * OPENING\n";
    Recordset opening = desk.cn().Open(
        "SELECT B.Acct, B.Debit - B.Credit AS Amount FROM BegBalance AS B WHERE B.Year = '" + year + "'");
    for (; !opening.eof(); opening.moveNext()) text += posting(opening["Acct"].text(), opening["Amount"].money());
    std::string document;
    Recordset lines = desk.cn().Open(kLines);
    for (; !lines.eof(); lines.moveNext()) {
        const std::string name = lines["Book"].text() + " " + lines["Batch"].text();
        if (name != document) text += "\n" + Format(lines["BatchDate"].date(), "yyyy-MM-dd") + " * " + name + "\n";
        document = name;
        text += posting(accountName(lines["Code"].text(), lines["Dept"].text()), lines["Amount"].money());
    }
    return text;
}

/// What the other program says that the accounts hold before a day; nothing when it refuses the journal.
Balances balancesBefore(const std::string& file, const std::string& day) {
    const std::string command = "ledger --file '" + file + "' --no-pager --args-only balance --flat --no-total --end " +
                                day + " --format '%(account) %(quantity(scrub(display_total)))\\n' 2>/dev/null";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    Balances out;
    std::array<char, 256> line{};
    while (pipe && std::fgets(line.data(), line.size(), pipe.get())) {
        const std::string text(line.data());
        const std::size_t blank = text.find(' ');
        const auto amount = Money::parse(text.substr(blank + 1, text.find('\n') - blank - 1));
        if (amount) out[text.substr(0, blank)] = *amount;
    }
    return out;
}

Balances preparedOf(Desk& desk, const std::string& period) {
    Balances out;
    Recordset rows = desk.cn().Open(
        "SELECT P.Code, P.Dept, P.Ending FROM PeriodBalance AS P WHERE P.Ending <> 0 AND "
        "P.Period = '" +
        period + "'");
    for (; !rows.eof(); rows.moveNext()) {
        out[accountName(rows["Code"].text(), rows["Dept"].text())] = rows["Ending"].money();
    }
    return out;
}

/// Accounts on which the two differ, with both amounts.
std::vector<std::string> differences(const Balances& ours, const Balances& theirs) {
    std::map<std::string, std::pair<Money, Money>> both;
    for (const auto& [account, amount] : ours) both[account].first = amount;
    for (const auto& [account, amount] : theirs) both[account].second = amount;
    std::vector<std::string> out;
    for (const auto& [account, pair] : both) {
        if (pair.first == pair.second) continue;
        out.push_back(account + ": prepared " + Format(pair.first, "0.00##") + ", added up " +
                      Format(pair.second, "0.00##"));
    }
    return out;
}

std::string save(const std::string& name, const std::string& text) {
    std::string file = scratchFolder() + "/" + name;
    writeTextFile(file, text);
    return file;
}

/// Puts another amount into a posting of the journal.
std::string changed(const std::string& journal, std::size_t from, const std::string& before, const std::string& after) {
    std::string text = journal;
    return text.replace(text.find(before, from), before.size(), after);
}

}  // namespace

TEST(Proof, EveryMonthEqualsWhatAnotherProgramAddsUp) {
    const auto desk = deskOfYear("proof.db", {});
    const std::string journal = journalOf(*desk, "2024");
    const std::string file = save("proof.dat", journal);
    for (int month = 1; month <= 12; ++month) {
        const Date next = Date(2024, month, 1).addMonths(1);
        const Balances ours = preparedOf(*desk, Format(Date(2024, month, 1), "yyyyMM"));
        ASSERT_GT(ours.size(), 150U);
        EXPECT_EQ(differences(ours, balancesBefore(file, Format(next, "yyyy-MM-dd"))), std::vector<std::string>{})
            << "in month " << month;
    }

    // The proof of the proof: a centavo that moves to another account in one document shows on both accounts, one that
    // is added makes the journal unreadable, and one in the prepared figures shows as well.
    const std::size_t document = journal.find("\n2024-07");
    const std::size_t first = journal.find("\n  ", document) + 3;
    const std::size_t second = journal.find("\n  ", first) + 3;
    const auto amountAt = [&](std::size_t at) {
        const std::size_t blanks = journal.find("  ", at);
        return journal.substr(blanks, journal.find('\n', blanks) - blanks);
    };
    const auto plus = [](const std::string& amount, int centavos) {
        return "  " + Format(*Money::parse(amount.substr(2)) + Money::fromUnits(centavos * 100), "0.00##");
    };
    const std::string one = amountAt(first);
    const std::string moved =
        changed(changed(journal, second, amountAt(second), plus(amountAt(second), -1)), first, one, plus(one, 1));
    const Balances december = preparedOf(*desk, "202412");
    EXPECT_EQ(differences(december, balancesBefore(save("moved.dat", moved), "2025-01-01")).size(), 2U);
    EXPECT_EQ(balancesBefore(save("added.dat", changed(journal, first, one, plus(one, 1))), "2025-01-01").size(), 0U);
    desk->cn().Execute("UPDATE PeriodBalance SET Ending = Ending + 0.01 WHERE Period = '202412' AND Code = '1101'");
    EXPECT_EQ(differences(preparedOf(*desk, "202412"), balancesBefore(file, "2025-01-01")).size(), 1U);
}

}  // namespace kv
