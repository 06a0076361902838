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
    /// As an administrator of the database would, past the guard.
    void behindTheGuard(const std::string& statement) {
        run("DISABLE TRIGGER tr_AuditLog_AppendOnly ON dbo.AuditLog");
        run(statement);
        run("ENABLE TRIGGER tr_AuditLog_AppendOnly ON dbo.AuditLog");
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
    const std::string refusal = "50040 Rows of the audit log are never changed or removed.";
    EXPECT_EQ(refused("UPDATE AuditLog SET LogText = 'x' WHERE LogID = 2"), refusal);
    EXPECT_EQ(refused("DELETE FROM AuditLog WHERE LogID = 5"), refusal);
    EXPECT_EQ(faults(), "");
}

TEST_F(Audit, FindsAChangeAGapAndACutEnd) {
    behindTheGuard("UPDATE AuditLog SET LogText = 'something else' WHERE LogID = 2");
    EXPECT_EQ(faults(), "2 Was changed; ");
    behindTheGuard(
        "UPDATE AuditLog SET Hash = dbo.fn_AuditHash(PrevHash, LogID, LogDate, UserID, Book, Reference, Extra, "
        "LogText) "
        "WHERE LogID = 2");
    EXPECT_EQ(faults(), "3 Does not follow the row before; ");
    behindTheGuard("DELETE FROM AuditLog WHERE LogID = 2");
    EXPECT_EQ(faults(), "3 The row before is missing; ");
    behindTheGuard("DELETE FROM AuditLog WHERE LogID >= 3");
    EXPECT_EQ(faults(), "5 Rows at the end are missing; ");
}

}  // namespace kv::server_test
