// Triggers of the engine: the rows they see, what their errors undo, and statements inside them.

#include "tests/embedded/core_support.h"

namespace kv {
namespace {

class Triggers : public ::testing::Test {
protected:
    void SetUp() override {
        db.run("CREATE TABLE t (id int IDENTITY PRIMARY KEY, period varchar(6), amount money)");
        db.run("CREATE TABLE closed (period varchar(6))");
        db.run("CREATE TABLE seen (what varchar(10), rows int, amount money)");
        db.run("INSERT closed VALUES ('202403')");
    }
    void guard() {
        db.run(
            "CREATE TRIGGER tr ON t AFTER INSERT, UPDATE, DELETE AS BEGIN SET NOCOUNT ON "
            "IF EXISTS (SELECT 1 FROM closed c WHERE c.period IN (SELECT period FROM inserted UNION SELECT period FROM "
            "deleted)) THROW 50010, 'closed', 1 END");
    }
    std::string rows() { return db.ask("SELECT period, amount FROM t ORDER BY id"); }
    Engine db;
};

TEST_F(Triggers, SeeTheRowsBeforeAndAfter) {
    db.run(
        "CREATE TRIGGER tr ON t FOR INSERT, UPDATE, DELETE AS "
        "INSERT seen SELECT 'in', COUNT(*), SUM(amount) FROM inserted "
        "INSERT seen SELECT 'out', COUNT(*), SUM(amount) FROM deleted");
    const std::string ask = " SELECT what, rows, amount FROM seen DELETE seen";
    EXPECT_EQ(db.ask("INSERT t(period, amount) VALUES ('1', 10), ('2', 20)" + ask), "in|2|30.00,out|0|NULL");
    EXPECT_EQ(db.ask("UPDATE t SET amount = amount * 2 WHERE period = '2'" + ask), "in|1|40.00,out|1|20.00");
    EXPECT_EQ(db.ask("UPDATE t SET amount = 1 WHERE period = 'x'" + ask), "in|0|NULL,out|0|NULL");
    EXPECT_EQ(db.ask("DELETE t" + ask), "in|0|NULL,out|2|50.00");
}

TEST_F(Triggers, RefuseAndUndoTheStatementAndItsTransaction) {
    guard();
    db.run("INSERT t(period, amount) VALUES ('202404', 1)");
    const char* refused[] = {
        "INSERT t(period, amount) VALUES ('202405', 2), ('202403', 3)",
        "UPDATE t SET period = '202403'",
        "BEGIN TRAN INSERT t(period, amount) VALUES ('202405', 2) UPDATE t SET period = '202403' COMMIT",
    };
    for (const char* batch : refused) {
        EXPECT_EQ(db.errors(batch), "50010") << batch;
        EXPECT_EQ(db.connection().transactionDepth(), 0) << batch;
        EXPECT_EQ(rows(), "202404|1.00") << batch;
    }
    // What stood in the batch before is committed, what follows is not reached.
    EXPECT_EQ(db.errors("UPDATE t SET amount = 7 UPDATE t SET period = '202403' UPDATE t SET amount = 9"), "50010");
    EXPECT_EQ(rows(), "202404|7.00");
    // Rows of a closed month cannot leave either.
    db.run(
        "ALTER TABLE t DISABLE TRIGGER tr INSERT t(period, amount) VALUES ('202403', 5) ALTER TABLE t ENABLE TRIGGER "
        "tr");
    EXPECT_EQ(db.errors("DELETE t WHERE period = '202403'"), "50010");
    EXPECT_EQ(db.errors("UPDATE t SET amount = 0"), "50010");
    EXPECT_EQ(rows(), "202404|7.00,202403|5.00");
}

TEST_F(Triggers, ErrorsReachTheCatchOfTheCaller) {
    guard();
    EXPECT_EQ(db.ask("BEGIN TRY INSERT t(period) VALUES ('202403') END TRY BEGIN CATCH SELECT ERROR_NUMBER(), "
                     "ERROR_PROCEDURE(), ERROR_MESSAGE() END CATCH"),
              "50010|tr|closed");
    EXPECT_EQ(db.ask("BEGIN TRY BEGIN TRAN INSERT t(period) VALUES ('202403') COMMIT END TRY BEGIN CATCH SELECT "
                     "XACT_STATE() ROLLBACK SELECT @@TRANCOUNT END CATCH"),
              "-1;0");
    EXPECT_EQ(rows(), "");
}

TEST_F(Triggers, RollbackInATriggerEndsTheBatch) {
    db.run("CREATE TRIGGER tr ON t AFTER INSERT AS BEGIN ROLLBACK RAISERROR('not today', 16, 1) END");
    EXPECT_EQ(db.errors("BEGIN TRAN INSERT seen VALUES ('x', 1, 1) INSERT t(period) VALUES ('1') INSERT seen VALUES "
                        "('y', 1, 1)"),
              "50000 3609");
    EXPECT_EQ(db.ask("SELECT COUNT(*) FROM t SELECT COUNT(*) FROM seen SELECT @@TRANCOUNT"), "0;0;0");
}

TEST_F(Triggers, DoNotFireThemselvesAndKeepIdentityAndRowCount) {
    db.run("CREATE TABLE log (id int IDENTITY(100, 1), x int)");
    db.run(
        "CREATE TRIGGER tr ON t AFTER INSERT AS BEGIN INSERT log(x) SELECT id FROM inserted "
        "IF (SELECT COUNT(*) FROM t) < 5 INSERT t(period) VALUES ('own') UPDATE t SET amount = 1 END");
    EXPECT_EQ(db.ask("INSERT t(period) VALUES ('a') SELECT @@ROWCOUNT, SCOPE_IDENTITY()"), "1|1");
    EXPECT_EQ(db.ask("SELECT period, amount FROM t ORDER BY id SELECT id, x FROM log"), "a|1.00,own|1.00;100|1");
}

TEST_F(Triggers, TheirTemporaryTablesSurviveAFailure) {
    db.run(
        "CREATE TRIGGER tr ON t AFTER INSERT AS BEGIN DECLARE @v TABLE (p varchar(6)) CREATE TABLE #w (p varchar(6)) "
        "INSERT @v SELECT period FROM inserted INSERT #w SELECT p FROM @v "
        "IF EXISTS (SELECT 1 FROM #w WHERE p = 'bad') THROW 50010, 'bad', 1 INSERT seen SELECT p, 1, 0 FROM #w END");
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(db.errors("INSERT t(period) VALUES ('bad')"), "50010");
        EXPECT_EQ(db.errors("BEGIN TRAN INSERT t(period) VALUES ('good') INSERT t(period) VALUES ('bad') COMMIT"),
                  "50010");
        EXPECT_EQ(db.ask("INSERT t(period) VALUES ('good') SELECT what FROM seen DELETE seen"), "good");
    }
}

TEST_F(Triggers, GoWithTheirTable) {
    guard();
    db.run("DROP TABLE t");
    EXPECT_EQ(db.ask("SELECT COUNT(*) FROM sys.triggers"), "0");
    db.run("CREATE TABLE t (period varchar(6)) INSERT t VALUES ('202403')");
    EXPECT_EQ(db.errors("CREATE TRIGGER x ON nowhere AFTER INSERT AS SELECT 1"), "8197");
}

}  // namespace
}  // namespace kv
