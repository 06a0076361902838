// The audit log: a chain of rows that nobody changes unnoticed.

#include "Books.h"

namespace kv::server_test {

class Audit : public Books {
protected:
    void SetUp() override {
        for (int i = 1; i <= 5; ++i)
            run("ACCOUNTING..sp_SaveAuditLog 'E001', 'JV', '" + std::to_string(i) + "', '', 'Added on JV No. : ñ'");
        for (const auto& [name, query] : checkQueries())
            if (name == "audit-chain") chain_ = query;
        ASSERT_FALSE(chain_.empty());
    }
    /// "number fault" of the rows that the check finds.
    std::string faults() {
        std::string out;
        for (const Row& row : all(chain_)) out += row[0].text() + " " + row.back().text() + "; ";
        return out;
    }
    /// As an administrator of the database would, past the guards; the log is whole again afterwards.
    std::string afterDamage(const std::string& damage) {
        cn->BeginTrans();
        run("DISABLE TRIGGER tr_AuditLog_AppendOnly ON dbo.AuditLog");
        run("DISABLE TRIGGER tr_AuditHead_Forward ON dbo.AuditHead");
        run(damage);
        std::string found = faults();
        cn->RollbackTrans();
        return found;
    }

private:
    std::string chain_;
};

TEST_F(Audit, RowsCountWithoutGapsAndFollowEachOther) {
    EXPECT_EQ(faults(), "");
    EXPECT_EQ(
        one("SELECT COUNT(*) AS N FROM AuditLog A JOIN AuditLog B ON B.LogID = A.LogID - 1 AND B.Hash = A.PrevHash"),
        "4");
    EXPECT_EQ(one("SELECT MIN(LEN(Hash)) AS L FROM AuditLog"), "64");
    cn->BeginTrans();
    run("ACCOUNTING..sp_SaveAuditLog 'E001', 'JV', '6', '', 'undone'");
    cn->RollbackTrans();
    run("ACCOUNTING..sp_SaveAuditLog 'E001', NULL, '6', '', 'kept'");
    EXPECT_EQ(one("SELECT MAX(LogID) AS N FROM AuditLog"), "6");
    EXPECT_EQ(faults(), "");
}

TEST_F(Audit, RefusesChangeAndRemoval) {
    const std::string log = "50040 Rows of the audit log are never changed or removed.";
    EXPECT_EQ(refused("UPDATE AuditLog SET LogText = 'x' WHERE LogID = 2"), log);
    EXPECT_EQ(refused("DELETE FROM AuditLog WHERE LogID = 5"), log);
    const std::string end = "50040 The end of the audit log is never set back.";
    EXPECT_EQ(refused("UPDATE AuditHead SET LastID = LastID - 1"), end);
    EXPECT_EQ(refused("UPDATE AuditHead SET LastHash = ''"), end);
    EXPECT_EQ(refused("DELETE FROM AuditHead"), end);
    EXPECT_EQ(faults(), "");
}

TEST_F(Audit, FindsEachKindOfDamageAtTheBeginningTheMiddleAndTheEnd) {
    const std::string own = "dbo.fn_AuditHash(PrevHash, LogID, LogDate, UserID, Book, Reference, Extra, LogText)";
    const std::pair<std::string, const char*> table[] = {
        // a changed row
        {"UPDATE AuditLog SET LogText = 'something else' WHERE LogID = 1", "1 Was changed; "},
        {"UPDATE AuditLog SET UserID = 'E002' WHERE LogID = 3", "3 Was changed; "},
        {"UPDATE AuditLog SET LogDate = DATEADD(minute, 1, LogDate) WHERE LogID = 5", "5 Was changed; "},
        // a changed hash
        {"UPDATE AuditLog SET Hash = PrevHash WHERE LogID = 3", "3 Was changed; 4 Does not follow the row before; "},
        {"UPDATE AuditLog SET PrevHash = '' WHERE LogID = 3", "3 Does not follow the row before; "},
        {"UPDATE AuditLog SET Hash = PrevHash WHERE LogID = 5",
         "5 Was changed; 5 Is not the row that was written last; "},
        // a changed row with its hash made anew
        {"UPDATE AuditLog SET LogText = 'x' WHERE LogID = 3; UPDATE AuditLog SET Hash = " + own + " WHERE LogID = 3",
         "4 Does not follow the row before; "},
        {"UPDATE AuditLog SET LogText = 'x' WHERE LogID = 5; UPDATE AuditLog SET Hash = " + own + " WHERE LogID = 5",
         "5 Is not the row that was written last; "},
        // a removed row
        {"DELETE FROM AuditLog WHERE LogID = 1", "2 The row before is missing; "},
        {"DELETE FROM AuditLog WHERE LogID = 3", "4 The row before is missing; "},
        {"DELETE FROM AuditLog WHERE LogID = 5", "5 Rows at the end are missing; "},
        {"DELETE FROM AuditLog WHERE LogID >= 3", "5 Rows at the end are missing; "},
        {"DELETE FROM AuditLog", "5 Rows at the end are missing; "},
        // a removed row whose neighbours close the gap
        {"DELETE FROM AuditLog WHERE LogID = 3; UPDATE AuditLog SET LogID = LogID - 1 WHERE LogID > 3",
         "3 Does not follow the row before; 4 Was changed; 5 Rows at the end are missing; "},
        // the end of the log
        {"UPDATE AuditHead SET LastID = 4, LastHash = (SELECT Hash FROM AuditLog WHERE LogID = 4)",
         "5 Stands behind the end of the log; "},
    };
    for (const auto& [damage, found] : table) EXPECT_EQ(afterDamage(damage), found) << damage;
    EXPECT_EQ(faults(), "");
}

}  // namespace kv::server_test
