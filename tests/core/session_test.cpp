// What the session takes from the database and the file system at start-up.

#include "core/Session.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/MainMenu.h"
#include "platform/base/Error.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

/// A connection that answers nothing; properties alone are tried on it.
class SilentConnection : public Connection {
public:
    int transactionDepth() const override { return 0; }
    std::string connectionString() const override { return {}; }
    void setDefaultDatabase(const std::string&) override {}
    std::string defaultDatabase() const override { return {}; }
    void setCommandTimeout(int) override {}
    bool isOpen() const override { return true; }
    void close() override {}

protected:
    bool run(std::string_view, std::vector<ResultSet>&, std::vector<DbError>&) override { return true; }
};

TEST(GetServerName, TakesTheTextBehindTheKey) {
    EXPECT_EQ(GetServerName("Provider=X;Server=HIS-SQL1;Database=ACCOUNTING;"), "HIS-SQL1");
    EXPECT_EQ(GetServerName("SERVER=a b;"), "a b");
    EXPECT_EQ(GetServerName("server=;x=y;"), "");
    EXPECT_THROW(GetServerName("Provider=X;Server=HIS-SQL1"), Error);
}

TEST(ResourcesFolder, PrefersTheClientsOwn) {
    const fs::path home = fs::temp_directory_path() / ("kv_resources_" + std::to_string(::getpid()));
    fs::create_directories(home);
    EXPECT_EQ(ResourcesFolder(home.string(), "DEMO"), home.string());
    fs::create_directory(home / "Resources");
    EXPECT_EQ(ResourcesFolder(home.string(), "DEMO"), (home / "Resources").string());
    fs::create_directory(home / "Resources_DEMO");
    EXPECT_EQ(ResourcesFolder(home.string(), "DEMO"), (home / "Resources_DEMO").string());
    EXPECT_EQ(ResourcesFolder(home.string(), "OTHER"), (home / "Resources").string());
    fs::remove_all(home);
}

TEST(Parameters, ReadFlagsNumbersAndFormatsByTheirRules) {
    SilentConnection connection;
    clsParameters p(connection);
    EXPECT_TRUE(p.EnableDebitMemo());
    p.take("enabledebitmemo", "N");
    EXPECT_FALSE(p.EnableDebitMemo());
    p.take("USEPRINTJVBATCH", "y");
    EXPECT_FALSE(p.UsePrintJVBatch());
    p.take("UsePrintJVBatch", "Y");
    EXPECT_TRUE(p.UsePrintJVBatch());
    p.take("REPORTARDETAILEDPAGES", "3.7");
    EXPECT_EQ(p.ReportARDetailedPages(), 3);
    p.take("CHECKFORMAT", "");
    EXPECT_EQ(p.CheckFormat(), "000000");
    p.take("CHKVOUCHERVERSION", "4");
    p.take("CHKVOUCHERVERSION", "");
    EXPECT_EQ(p.ChkVoucherVersion(), "");
    p.take("PRINTJVBATCHFORMAT", "J#");
    p.take("PRINTJVBATCHFORMAT", "K#");  // the later row wins
    EXPECT_EQ(p.PrintJVBatchFormat(), "K#");
    p.take("NOSUCHKEY", "Y");
    p.take("COSTOFSERVICECODE", "5302");  // a key of mixed case is never met
    EXPECT_EQ(p.CostOfServiceCode(), "");
    EXPECT_TRUE(p.Enable_GL_ATL());
    EXPECT_TRUE(p.AlwaysShowPrintDialog("RDPT"));
    EXPECT_FALSE(p.AlwaysShowPrintDialog("DEMO"));
    EXPECT_TRUE(p.EnableHospitalBatchUpload("BYQ"));
    p.reset();
    EXPECT_TRUE(p.EnableDebitMemo());
    EXPECT_EQ(p.PrintJVBatchFormat(), "JVDMM-###-YY");
}

}  // namespace
}  // namespace kv
