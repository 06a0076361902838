// The installer: order, running again, changed scripts, failures; and the demo hospital.

#include <ctime>
#include <filesystem>
#include <map>

#include "Books.h"
#include "core/DemoHospital.h"
#include "core/Installer.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Embedded.h"
#include "platform/login/Passwords.h"

namespace kv::server_test {

namespace fs = std::filesystem;

class Installing : public Books {
protected:
    Installing() : folder_(fs::path(file()).replace_extension("scripts")) { fs::create_directories(folder_); }
    ~Installing() override { fs::remove_all(folder_); }

    void script(const std::string& path, const std::string& text) {
        fs::create_directories((folder_ / path).parent_path());
        writeTextFile((folder_ / path).string(), text);
    }
    std::unique_ptr<Connection> empty() const {
        EmbeddedOptions options;
        options.file = ":memory:";
        return openEmbedded(options);
    }
    std::string folder() const { return folder_.string(); }
    void ledgerOfScripts() {
        script("ACCOUNTING/tables/SchemaObject.sql", readTextFile("server/ACCOUNTING/tables/SchemaObject.sql"));
    }

private:
    fs::path folder_;
};

TEST_F(Installing, PutsEveryScriptBehindWhatItNeeds) {
    std::map<std::string, std::size_t> at;
    const auto steps = serverScripts("server");
    for (std::size_t i = 0; i < steps.size(); ++i) at[steps[i].object] = i;
    EXPECT_EQ(steps[0].object, "SchemaObject");
    EXPECT_LT(at.at("GLGROUP"), at.at("AcctCode"));
    EXPECT_LT(at.at("0001-access-types"), at.at("0002-one-row-tables"));
    EXPECT_LT(at.at("tbPasswordMain"), at.at("0001-access-types"));
    EXPECT_LT(at.at("vwBookBatch"), at.at("vwBookPeriod"));
    EXPECT_LT(at.at("Private_NumberFor"), at.at("fn_NewJVNum"));
    EXPECT_LT(at.at("Private_CloseBook"), at.at("sp_PostGLtoGL"));
    EXPECT_LT(at.at("sp_PostGLtoGL"), at.at("tr_JVDT_Closed"));
    EXPECT_EQ(steps.at(at.at("tbPasswordMain")).database, "PASSWORD");
}

TEST_F(Installing, ASecondRunHasNothingToDo) {
    EXPECT_TRUE(planInstall(*cn, "server").empty());
    EXPECT_EQ(installDatabase(*cn, "server"), 0U);
}

TEST_F(Installing, ReplacesChangedCodeAndRunsChangesOnce) {
    const auto fresh = empty();
    ledgerOfScripts();
    script("ACCOUNTING/tables/T.sql", "IF OBJECT_ID('dbo.T', 'U') IS NULL\nCREATE TABLE dbo.T (N int NOT NULL);");
    script("ACCOUNTING/procedures/P.sql",
           "CREATE OR ALTER PROCEDURE dbo.P AS BEGIN SET NOCOUNT ON; SELECT 1 AS N; END;");
    script("changes/0001-first.sql", "INSERT INTO dbo.T (N) VALUES (1);");
    std::string heard;
    EXPECT_EQ(
        installDatabase(*fresh, folder(),
                        [&](int done, int of) { heard += std::to_string(done) + "/" + std::to_string(of) + " "; }),
        4U);
    EXPECT_EQ(heard, "1/4 2/4 3/4 4/4 ");
    script("ACCOUNTING/procedures/P.sql",
           "CREATE OR ALTER PROCEDURE dbo.P AS BEGIN SET NOCOUNT ON; SELECT 2 AS N; END;");
    script("changes/0001-first.sql", "INSERT INTO dbo.T (N) VALUES (100);");
    script("changes/0002-second.sql", "INSERT INTO dbo.T (N) VALUES (10);");
    const auto plan = planInstall(*fresh, folder());
    ASSERT_EQ(plan.size(), 2U);
    EXPECT_EQ(plan[0].object, "0002-second");
    EXPECT_TRUE(plan[1].known);
    installDatabase(*fresh, folder());
    EXPECT_EQ(fresh->Open("EXEC P").at(0).text(), "2");
    EXPECT_EQ(fresh->Open("SELECT SUM(N) AS N FROM T").at(0).text(), "11");
}

TEST_F(Installing, AFailingScriptIsNamedAndLeavesNothing) {
    const auto fresh = empty();
    ledgerOfScripts();
    script("ACCOUNTING/tables/T.sql", "IF OBJECT_ID('dbo.T', 'U') IS NULL\nCREATE TABLE dbo.T (N int NOT NULL);");
    script("changes/0001-broken.sql", "INSERT INTO dbo.T (N) VALUES (NULL);");
    try {
        installDatabase(*fresh, folder());
        FAIL() << "a NULL went into a column that has none";
    } catch (const Error& failure) {
        EXPECT_EQ(failure.number, 515);
        EXPECT_NE(failure.description.find("(in server/changes/0001-broken.sql)"), std::string::npos)
            << failure.description;
    }
    EXPECT_EQ(
        fresh->Open("SELECT COUNT(*) AS N FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME IN ('T', 'SchemaObject')")
            .at(0)
            .text(),
        "0");
    EXPECT_THROW(serverScripts(folder() + "/none"), Error);
    script("ACCOUNTING/oddments/X.sql", "SELECT 1;");
    EXPECT_THROW(serverScripts(folder()), Error);
}

TEST_F(Installing, TheDemoHospitalStandsWithinFiveSeconds) {
    // Time of the processor, since the tests of other rooms may run beside this one.
    const std::clock_t start = std::clock();
    const std::string path = file() + ".fresh";
    {
        EmbeddedOptions options;
        options.file = path;
        const auto fresh = openEmbedded(options);
        installDatabase(*fresh, "server");
        loadDemoHospital(*fresh, "demo/data");
        fresh->close();
    }
    const double took_s = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    for (const char* ending : {"", "-wal", "-shm"}) fs::remove(path + ending);
    EXPECT_LT(took_s, 5.0);
}

TEST_F(Installing, TheDemoHospitalIsWhatItsFilesSay) {
    EXPECT_EQ(rows("SELECT Company, Client, YearType, APPERIOD, glperiod, CDBPERIOD, APAcct, RetainedEarning FROM SYS"),
              (std::vector<std::string>{"EXAMPLE GENERAL HOSPITAL|DEMO|CALENDAR|202403|202403|202403|2101|3201"}));
    EXPECT_EQ(rows("SELECT MIN(Period) AS A, MAX(Period) AS B, COUNT(*) AS N FROM PERIODS"),
              (std::vector<std::string>{"202301|202612|48"}));
    EXPECT_EQ(one("SELECT CONVERT(varchar(10), PD_END, 120) AS D FROM Periods WHERE Period = '202402'"), "2024-02-29");
    EXPECT_EQ(one("SELECT ParamValue FROM PARAMETERS WHERE Code = 'DRPAYABLECODE'"), "2201");
    EXPECT_EQ(rows("SELECT GLCode, COUNT(*) AS N FROM WTaxCode GROUP BY GLCode ORDER BY GLCode"),
              (std::vector<std::string>{"2304|109", "2305|2"}));
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM AcctCode WHERE IsBankAcct = 1"), "5");
    EXPECT_EQ(one("SELECT Class FROM AcctCode WHERE Code = '1604'"), "O") << "that of its group";
    EXPECT_EQ(one("SELECT WTXRate FROM VEND WHERE VendorID = 'V0003'"), "0.5");
    EXPECT_EQ(one("SELECT Active FROM VEND WHERE VendorID = 'V0035'"), "False");
    EXPECT_EQ(one("select getdate() [ServerDate] from patient_data..tbhospitalinfo").empty(), false);
    EXPECT_TRUE(verifyPassword(one("select top 1 PasswordHash from PASSWORD..tbPasswordMain where EmployeeID = 'E001'"),
                               "ledger-2024"));
    EXPECT_THROW(loadDemoHospital(*cn, "demo/data"), Error) << "never over a hospital that stands";
}

}  // namespace kv::server_test
