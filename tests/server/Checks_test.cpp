// The checks of the books: silent while the books are sound, each finding its own fault.

#include <algorithm>

#include "Books.h"

namespace kv::server_test {

class Checks : public Books {
protected:
    void SetUp() override {
        enter("JV", "1", "2024-03-15", {{"6101", "80.00", "0", "1010"}, {"2101", "0", "80.00", ""}});
        run("sp_Insert_APCDB 'JV1', '1', -80.00, '2101', 'JV', 2");
        run("sp_Insert_Vouchers 'JV1', 'JV', '1', '', '2024-03-15'");
        run("sp_Insert_JV2 '1', 'JVD03-001-24', '', '2024', '03', '001' ");
        enter("JV", "2", "2024-03-20", simple("5.00"));
        run("UPDATE JV SET Cancelled = 1 WHERE Batch = '2'");
        enter("AR", "1", "2024-03-15", simple("55.00"));
        run("INSERT INTO tbDailyCharges (Batch, Period, Code, Side, DRCR, Amount) VALUES ('1', '202403', '1101', 'D', "
            "'D', 55)");
        run("INSERT INTO tbDailyCharges (Batch, Period, Code, Side, DRCR, Amount) VALUES ('1', '202403', '1201', 'C', "
            "'C', 55)");
        run("sp_SaveAuditLog 'E001', 'JV', '1', '', 'Added'");
        run("sp_PostGLtoGL '202403','JV'");
        run("sp_PrepareFinance '202403'");
        run("sp_PrepareFinance '202412'");
        run("sp_PostForwardedBal '2025'");
    }
    /// Names of the checks that find something.
    std::vector<std::string> findings() {
        std::vector<std::string> out;
        for (const auto& [name, query] : checkQueries())
            if (cn->Open(query).recordCount() > 0) out.push_back(name);
        return out;
    }
};

TEST_F(Checks, AreSilentOnSoundBooks) { EXPECT_EQ(findings(), std::vector<std::string>{}); }

TEST_F(Checks, EachFindsItsFault) {
    struct Fault {
        const char* check;
        const char* guard;  ///< the table whose guard the damage goes around
        const char* damage;
    };
    const Fault faults[] = {
        {"accounts-in-chart", "", "UPDATE ARDT SET Code = '1100' WHERE SeqNo = 1"},
        {"audit-chain", "tr_AuditLog_AppendOnly ON dbo.AuditLog", "UPDATE AuditLog SET UserID = 'E002'"},
        {"batch-balances", "", "UPDATE ARDT SET Debit = 54 WHERE SeqNo = 1"},
        {"daily-tables", "", "DELETE FROM tbDailyCharges WHERE Code = '1101'"},
        {"departments-named", "tr_JVDT_Closed ON dbo.JVDT", "UPDATE JVDT SET Dept = '' WHERE Code = '6101'"},
        {"header-totals", "", "UPDATE AR SET Debits = 1"},
        {"ledger-balances", "", "UPDATE GL SET Debit = 81 WHERE Code = '6101'"},
        {"ledger-equals-books", "tr_JVDT_Closed ON dbo.JVDT", "UPDATE JVDT SET Debit = 81 WHERE Code = '6101'"},
        {"line-period", "", "UPDATE ARDT SET Period = '202404'"},
        {"lines-without-header", "", "DELETE FROM AR"},
        {"number-behind-series", "", "UPDATE NumberSeries SET LastNo = 0 WHERE Series = 'JV' AND Year = ''"},
        {"opening-continues", "", "UPDATE Batchdet SET Credit = Credit + 1 WHERE Code = '6101'"},
        {"opening-in-ledger", "", "UPDATE BegBalance SET Credit = Credit + 1 WHERE Acct = '2101'"},
        {"payable-control", "", "DELETE FROM APCDB"},
        {"prepared-adds-up", "", "UPDATE PeriodBalance SET Ending = Ending + 1"},
        {"prepared-equals-ledger", "",
         "UPDATE PeriodBalance SET Debit = Debit + 1, Ending = Ending + 1 WHERE Code = '6101'"},
        {"printed-number-twice", "", "sp_Insert_JV2 '2', 'JVD03-001-24', '', '2024', '03', '001' "},
        {"trial-balance-zero", "", "DELETE FROM PeriodBalance WHERE Code = '6101'"},
    };
    std::vector<std::string> tried;
    for (const Fault& fault : faults) {
        tried.emplace_back(fault.check);
        cn->BeginTrans();
        if (*fault.guard) run("DISABLE TRIGGER " + std::string(fault.guard));
        run(fault.damage);
        const std::vector<std::string> found = findings();
        EXPECT_NE(std::find(found.begin(), found.end(), fault.check), found.end())
            << fault.check << " missed " << fault.damage;
        cn->RollbackTrans();
    }
    std::vector<std::string> all;
    for (const auto& [name, query] : checkQueries()) all.push_back(name);
    EXPECT_EQ(tried, all) << "every check needs its fault here";
    EXPECT_EQ(findings(), std::vector<std::string>{});
}

}  // namespace kv::server_test
