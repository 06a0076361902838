// Where a report's template is found.

#include "reporting/ReportFrame.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "platform/base/Paths.h"
#include "reporting/ReportExport.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

TEST(ReportPath, TheClientsFolderShadowsTheCommonOne) {
    const fs::path home = fs::temp_directory_path() / ("kv_reports_" + std::to_string(::getpid()));
    fs::create_directories(home / "Reports_DEMO");
    fs::create_directories(home / "Reports");
    writeTextFile((home / "Reports" / "A.rpt").string(), "common");
    writeTextFile((home / "Reports" / "B.rpt").string(), "common");
    writeTextFile((home / "Reports_DEMO" / "A.rpt").string(), "own");
    EXPECT_EQ(module1::ReportPathIn(home.string(), "DEMO", "A.rpt"), (home / "Reports_DEMO" / "A.rpt").string());
    EXPECT_EQ(module1::ReportPathIn(home.string(), "DEMO", "B.rpt"), (home / "Reports" / "B.rpt").string());
    EXPECT_EQ(module1::ReportPathIn(home.string(), "OTHER", "A.rpt"), (home / "Reports" / "A.rpt").string());
    EXPECT_EQ(module1::ReportPathIn(home.string(), "DEMO", "C.rpt"), (home / "C.rpt").string());
    fs::remove_all(home);
}

TEST(ExportText, QuotesCharacterFieldsAndRepeatsTheLastRow) {
    ResultSet set;
    set.fields = {{"Name", DataType::VarChar}, {"Amount", DataType::Currency}, {"Day", DataType::DateTime}};
    EXPECT_EQ(exportText(Recordset(set)), "\"Name\",\"Amount\",\"Day\"\r\n\r\n");
    set.rows = {{Value("A \"B\", C"), Value(Money::whole(5)), Value()}, {Value(), Value(), Value(Date(2024, 3, 1))}};
    EXPECT_EQ(exportText(Recordset(set)),
              "\"Name\",\"Amount\",\"Day\"\r\n\"A B, C\",5.00,\r\n,,3/1/2024\r\n,,3/1/2024\r\n");
}

}  // namespace
}  // namespace kv
