// Transactions of the engine: counts, rollback, what an error undoes and where the batch goes on.

#include "tests/embedded/core_support.h"

namespace kv {
namespace {

class Transactions : public ::testing::Test {
protected:
    void SetUp() override { db.run("CREATE TABLE t (k int PRIMARY KEY, v varchar(5) NOT NULL)"); }
    std::string keys() { return db.ask("SELECT k FROM t ORDER BY k"); }
    Engine db;
};

TEST_F(Transactions, AStatementThatFailsEndsAloneUnlessAbortIsOn) {
    struct Case {
        const char* batch;
        const char* errors;
        const char* left;
    };
    const Case cases[] = {
        {"INSERT t VALUES (1, 'a') INSERT t VALUES (1, 'b') INSERT t VALUES (2, 'c')", "2627", "1,2"},
        {"INSERT t VALUES (1, 'a') INSERT t VALUES (3, NULL) INSERT t VALUES (2, 'c')", "515", "1,2"},
        {"INSERT t VALUES (1, 'a') INSERT t VALUES (3, 'too long') INSERT t VALUES (2, 'c')", "2628", "1,2"},
        {"INSERT t VALUES (1, 'a') INSERT t SELECT 1/0, 'x' INSERT t VALUES (2, 'c')", "8134", "1,2"},
        {"INSERT t VALUES (1, 'a') RAISERROR('no', 16, 1) INSERT t VALUES (2, 'c')", "50000", "1,2"},
        // A failed conversion ends the batch.
        {"INSERT t VALUES (1, 'a') INSERT t VALUES ('x', 'b') INSERT t VALUES (2, 'c')", "245", "1"},
        {"INSERT t VALUES (1, 'a'); THROW 50001, 'no', 1; INSERT t VALUES (2, 'c')", "50001", "1"},
        {"SET XACT_ABORT ON INSERT t VALUES (1, 'a') INSERT t VALUES (1, 'b') INSERT t VALUES (2, 'c')", "2627", "1"},
        {"SET XACT_ABORT ON BEGIN TRAN INSERT t VALUES (1, 'a') INSERT t VALUES (1, 'b') COMMIT", "2627", ""},
        {"BEGIN TRAN INSERT t VALUES (1, 'a') INSERT t VALUES ('x', 'b') COMMIT", "245", ""},
        {"BEGIN TRAN INSERT t VALUES (1, 'a') INSERT t VALUES (1, 'b') COMMIT", "2627", "1"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(db.errors(c.batch), c.errors) << c.batch;
        EXPECT_EQ(db.connection().transactionDepth(), 0) << c.batch;
        EXPECT_EQ(keys(), c.left) << c.batch;
        db.run("SET XACT_ABORT OFF DELETE t");
    }
}

TEST_F(Transactions, ThrowLeavesTheTransactionOpenWithoutAbort) {
    EXPECT_EQ(db.errors("BEGIN TRAN INSERT t VALUES (1, 'a'); THROW 50001, 'no', 1;"), "50001");
    EXPECT_EQ(db.connection().transactionDepth(), 1);
    db.connection().RollbackTrans();
    EXPECT_EQ(keys(), "");
}

TEST_F(Transactions, InACatchTheDoomedTransactionTakesOnlyRollback) {
    const std::string batch =
        "SET XACT_ABORT ON BEGIN TRY BEGIN TRAN INSERT t VALUES (1, 'a') INSERT t VALUES (1, 'b') COMMIT END TRY "
        "BEGIN CATCH SELECT XACT_STATE(), ERROR_NUMBER() ";
    EXPECT_EQ(db.errors(batch + "INSERT t VALUES (9, 'z') END CATCH"), "3930");
    EXPECT_EQ(db.connection().transactionDepth(), 0);
    EXPECT_EQ(db.errors(batch + "COMMIT END CATCH"), "3930");
    EXPECT_EQ(db.errors(batch + "END CATCH"), "3998");
    EXPECT_EQ(db.ask(batch + "ROLLBACK SELECT XACT_STATE(), @@TRANCOUNT END CATCH"), "-1|2627;0|0");
    EXPECT_EQ(keys(), "");
}

TEST_F(Transactions, CountsAndErrorsOfBeginAndCommit) {
    EXPECT_EQ(db.errors("COMMIT"), "3902");
    EXPECT_EQ(db.errors("ROLLBACK"), "3903");
    EXPECT_EQ(db.errors("SAVE TRAN s"), "628");
    EXPECT_EQ(db.errors("BEGIN TRAN a ROLLBACK TRAN b"), "6401");
    db.run("ROLLBACK");
    EXPECT_EQ(db.ask("BEGIN TRAN BEGIN TRAN INSERT t VALUES (1, 'a') COMMIT SELECT @@TRANCOUNT ROLLBACK SELECT "
                     "@@TRANCOUNT"),
              "1;0");
    EXPECT_EQ(keys(), "");
    db.run("CREATE PROCEDURE p AS BEGIN TRAN");
    EXPECT_EQ(db.errors("EXEC p"), "266");
    EXPECT_EQ(db.connection().transactionDepth(), 1);
    db.run("ROLLBACK");
}

TEST_F(Transactions, ASavepointUndoesWhatFollowsIt) {
    EXPECT_EQ(db.ask("BEGIN TRAN INSERT t VALUES (1, 'a') SAVE TRAN s INSERT t VALUES (2, 'b') ROLLBACK TRAN s "
                     "INSERT t VALUES (3, 'c') COMMIT SELECT k FROM t ORDER BY k"),
              "1,3");
}

TEST_F(Transactions, RollbackUndoesDefinitionsAndTemporaryTables) {
    db.run("BEGIN TRAN CREATE TABLE u (a int) INSERT u VALUES (1) ROLLBACK");
    EXPECT_EQ(db.errors("SELECT * FROM u"), "208");
    EXPECT_EQ(db.ask("CREATE TABLE #a (x int) INSERT #a VALUES (1) BEGIN TRAN INSERT #a VALUES (2) CREATE TABLE #b (x "
                     "int) ROLLBACK SELECT x FROM #a"),
              "1");
    EXPECT_EQ(db.errors("SELECT * FROM #b"), "208");
    db.run("CREATE TABLE #b (x int, y int) INSERT #b VALUES (1, 2)");
    EXPECT_EQ(db.ask("SELECT * FROM #b"), "1|2");
}

TEST_F(Transactions, AScopeThatIsLeftRollsBack) {
    {
        Transaction scope(db.connection());
        db.run("INSERT t VALUES (1, 'a')");
    }
    EXPECT_EQ(keys(), "");
    {
        Transaction scope(db.connection());
        db.run("INSERT t VALUES (1, 'a')");
        scope.commit();
    }
    EXPECT_EQ(keys(), "1");
}

TEST_F(Transactions, AFailedStatementOfManyRowsLeavesNone) {
    EXPECT_EQ(db.errors("INSERT t VALUES (1, 'a'), (2, 'b'), (1, 'c')"), "2627");
    EXPECT_EQ(keys(), "");
    db.run("INSERT t VALUES (1, 'a'), (2, 'b'), (3, 'c')");
    EXPECT_EQ(db.errors("UPDATE t SET k = k / (k - 2)"), "8134");
    EXPECT_EQ(keys(), "1,2,3");
    db.run("CREATE PROCEDURE p AS SELECT 7, 'ok' SELECT 8, NULL");
    EXPECT_EQ(db.errors("INSERT t EXEC p"), "515");
    EXPECT_EQ(keys(), "1,2,3");
}

}  // namespace
}  // namespace kv
