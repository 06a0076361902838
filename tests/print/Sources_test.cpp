// Reports of the house on the server's own tables and procedures: the figures they show.
#include <gtest/gtest.h>

#include "core/DemoHospital.h"
#include "core/Installer.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "tests/print/Samples.h"

namespace kv {
namespace {

class Sources : public testing::Test {
protected:
    static void SetUpTestSuite() {
        connection_ = openEmbedded({.file = ":memory:"});
        installDatabase(*connection_, "server");
        loadDemoHospital(*connection_, "demo/data");
        connection_->Execute(
            "INSERT INTO dbo.PreparedPeriod (Period, PreparedAt, PreparedBy) VALUES ('202403', '20240403', '1001');"
            "INSERT INTO dbo.PeriodBalance (Period, Code, Dept, Beginning, Debit, Credit, Ending) "
            "VALUES ('202403', '1101', '', 100, 50, 25, 125), ('202403', '3101', '', -100, 25, 50, -125);"
            "INSERT INTO dbo.GL (Period, BatchType, Batch, SeqNo, Code, BatchDate, Description, Debit, Credit) VALUES "
            "('202403', 'JV', '1', 1, '1101', '20240305', 'One', 50, 0), ('202403', 'JV', '1', 2, '3101', '20240305', "
            "'Two', 0, 50);"
            "INSERT INTO dbo.UserLog (LogDate, UserID, SystemName, LogText, SessionID) "
            "VALUES ('20240302', '1001', 'ACCOUNTING', 'Open JV', 1), ('20240303', '1001', 'ACCOUNTING', 'Open JV', "
            "1)");
    }
    static void TearDownTestSuite() { connection_.reset(); }
    static std::unique_ptr<Connection> connection_;
};

std::unique_ptr<Connection> Sources::connection_;

TEST_F(Sources, TrialBalanceShowsThePreparedBalances) {
    auto report = samples::report("TrialBalance.rpt");
    report->run(*connection_);
    const std::string text = report->text();
    EXPECT_NE(text.find("1101"), std::string::npos);
    EXPECT_NE(text.find("As of the last preparation on April 3, 2024"), std::string::npos) << text;
    EXPECT_TRUE(report->find("Out of balance").empty());
    EXPECT_EQ(report->data().rowCount(), 2U);
}

TEST_F(Sources, LedgerRunsFromTheBeginningBalanceToTheEnd) {
    auto report = samples::report("ReportGLDetailed_Ver2.rpt");
    report->setValue("@Code", "1101");
    report->run(*connection_);
    report->layout();
    EXPECT_EQ(report->data().rowCount(), 2U);
    EXPECT_FALSE(report->find("100.00").empty());
    EXPECT_FALSE(report->find("150.00").empty());
}

TEST_F(Sources, UserLogsTakeWholeDays) {
    auto report = samples::report("UserLogs.rpt");
    report->run(*connection_);
    EXPECT_EQ(report->data().rowCount(), 1U);  // March 1 to 2
    report->setValue("User", "o'brien");
    report->run(*connection_);
    EXPECT_EQ(report->data().rowCount(), 0U);
}

}  // namespace
}  // namespace kv
