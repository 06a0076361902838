// The shared frame of all reports: where a template is found, what each open routine binds, reads, logs and forgets.

#include "reporting/ReportFrame.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/module1.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/QuietDialogs.h"
#include "platform/print/Report.h"
#include "reporting/ReportExport.h"
#include "reporting/frmReportViewer.h"
#include "tests/desk/Desk.h"

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

/// A template whose parameters have every type, and a sub-report.
constexpr const char* kTyped = R"(
title = "Typed"
[[parameter]]
name = "N"
type = "number"
[[parameter]]
name = "C"
type = "currency"
[[parameter]]
name = "B"
type = "boolean"
[[parameter]]
name = "T"
[source]
statement = "SELECT COUNT(*) AS N FROM dbo.tbPasswordMain"
columns = ["N integer"]
[detail]
text = [{ text = "{N}" }]
subreport = [{ name = "Documents" }]
[subreport.Documents]
[[subreport.Documents.parameter]]
name = "First"
type = "number"
[[subreport.Documents.parameter]]
name = "Second"
[subreport.Documents.source]
statement = "SELECT COUNT(*) AS Accounts FROM dbo.AcctCode"
columns = ["Accounts integer"]
[subreport.Documents.detail]
text = [{ text = "accounts {Accounts} {:First} {:Second}" }]
)";

class Frame : public testing::Test {
protected:
    static Desk& desk() {
        static Desk only(freshHospital(scratchFolder(), "frame.db"));
        return only;
    }
    Frame() {
        writeTextFile(path_, kTyped);
        session().CurrentReport.reset();
        session().ReportFlag = true;
    }
    static Session& session() { return desk().session(); }
    const std::string& path() const { return path_; }
    static Report& report() { return *session().CurrentReport; }
    static std::string lastLog() { return desk().ask("SELECT TOP 1 LogText FROM UserLog ORDER BY LogID DESC"); }
    static void forgetLog() { session().cn().Execute("ACCOUNTING..sp_SaveUserLogs 'E001', 'ACCOUNTING', 'before'"); }
    /// The values bound, "-" for a parameter without one.
    static std::string bound(Report& of) {
        std::string out;
        for (std::size_t i = 0; i < of.parameters().size(); ++i) {
            out += (out.empty() ? "" : "|") + (of.hasValue(i) ? of.value(i).text() : std::string("-"));
        }
        return out;
    }

private:
    std::string path_ = scratchFolder() + "/Typed.rpt";
};

TEST_F(Frame, PositionalValuesFollowTheTemplatesOrderAndTypes) {
    const std::pair<ReportParams, const char*> rows[] = {
        {{}, "-|-|-|-"},
        {{"1,250.5"}, "1250.5|-|-|-"},
        {{" 12 ", "1,250.50", 1}, "12|1250.50|True|-"},
        {{-1, Value(), "True", 7}, "-1|0.00|True|7"},
        {{3, 4, 0, "text", "one too many", 6}, "3|4.00|False|text"},
        {{Money::whole(2), 2.5, false, Date(2024, 3, 1)}, "2|2.50|False|3/1/2024"},
    };
    for (const auto& [params, expected] : rows) {
        ASSERT_TRUE(module1::OpenMainReport(session(), path(), params));
        EXPECT_EQ(bound(report()), expected);
        EXPECT_NE(report().description().find("Printed by: "), std::string::npos);
    }
    EXPECT_THROW(module1::OpenMainReport(session(), path(), {"12 apples"}), Error);
}

TEST_F(Frame, NamedValuesAreLookedUpAsFarAsTheDictionaryIsLong) {
    const std::pair<ReportParamsDictionary, const char*> rows[] = {
        {{}, "-|-|-|-"},
        {{{"C", "1,250.50"}, {"N", "many"}}, "0|1250.50|-|-"},
        {{{"T", "far"}, {"N", 1}}, "1|-|-|-"},  // T is the fourth field, the dictionary has two entries
        {{{"T", "near"}, {"x", 1}, {"y", 1}, {"z", 1}}, "-|-|-|near"},
        {{{"B", true}, {"n", 5}, {"x", 0}}, "-|-|True|-"},  // names are exact
    };
    for (const auto& [params, expected] : rows) {
        ASSERT_TRUE(module1::OpenMainReport2(session(), path(), params));
        EXPECT_EQ(bound(report()), expected);
    }
}

TEST_F(Frame, EachRoutineReadsItsDatabaseLogsAndDescribesInItsOwnWay) {
    enum Routine { Main, Main1, Main2, Imported };
    struct Case {
        Routine routine;
        bool described, logged, flagLeft;
        const char* database;
    };
    const Case cases[] = {
        {Main, true, true, false, "ACCOUNTING"},
        {Main1, true, true, true, "PASSWORD"},
        {Main2, true, true, false, "ACCOUNTING"},
        {Imported, false, false, false, "PASSWORD"},
    };
    const ReportParams params = {1, 1, 1, "t"};
    const ReportParamsDictionary named = {{"N", 1}, {"C", 1}, {"B", true}, {"T", "t"}};
    for (const Case& c : cases) {
        forgetLog();
        session().ReportFlag = true;
        switch (c.routine) {
            case Main:
                module1::OpenMainReport(session(), path(), params);
                break;
            case Main1:
                module1::OpenMainReport1(session(), "PASSWORD", path(), params);
                break;
            case Main2:
                module1::OpenMainReport2(session(), path(), named);
                break;
            case Imported:
                module1::OpenImportedReport(session(), path(), "PASSWORD", params);
                break;
        }
        EXPECT_EQ(session().ReportFlag, c.flagLeft) << c.routine;
        EXPECT_EQ(lastLog(), c.logged ? "Printed report : Typed.rpt" : "before") << c.routine;
        if (c.described) {
            EXPECT_TRUE(report().description().starts_with(
                "Printed by: " + module1::GetEmployeeName(session().cn(), "E001") + "; Print date: "));
            EXPECT_TRUE(report().description().ends_with("; HALCYRA 1.0"));
        } else {
            EXPECT_EQ(report().description(), "");
        }
        // the table of users stands in the database of passwords only
        module1::OpenSubReport(session(), "documents", {"7", "seven", "more"});
        if (std::string_view(c.database) == "PASSWORD") {
            report().run(session().cn());
            report().layout();
            // the sub-report reads from the accounts all the same
            EXPECT_EQ(report().find("accounts 0").size(), 0U) << c.routine;
            EXPECT_EQ(report().find("7 seven").size(), 1U) << c.routine;
        } else {
            EXPECT_THROW(report().run(session().cn()), Error) << c.routine;
        }
    }
}

TEST_F(Frame, MissingTemplatesAreNamedInTheRoutinesOwnWords) {
    const std::string gone = scratchFolder() + "/Gone.rpt";
    const auto failure = [&](const std::function<void()>& body) {
        try {
            body();
        } catch (const Error& e) {
            // without the path of the failure, which stands below
            return Error(e.number, e.source, e.description.substr(0, e.description.find("\r\n")));
        }
        return Error(0, "", "no error");
    };
    const Error main = failure([&] { module1::OpenMainReport(session(), gone, {}); });
    EXPECT_EQ(main.description, "File not found. " + gone);
    EXPECT_EQ(static_cast<std::uint32_t>(main.number), 0x80040000U);
    EXPECT_EQ(failure([&] { module1::OpenMainReport2(session(), gone, {}); }).description,
              "File not found: " + gone + ". Contact EDP/IT/Helpdesk to install this file.");
    EXPECT_EQ(failure([&] { module1::OpenImportedReport(session(), gone, "INVENTORY", {}); }).description,
              "File not found. " + gone);
    // no look before the opening: the engine says it
    EXPECT_EQ(failure([&] { module1::OpenMainReport1(session(), "REPORTS", gone, {}); }).number, 53);
    EXPECT_EQ(session().CurrentReport, nullptr);
}

TEST_F(Frame, SubReportsAreBoundByPlaceAndByName) {
    EXPECT_THROW(module1::OpenSubReport(session(), "Documents", {}), Error);  // no report is open
    module1::OpenMainReport(session(), path(), {});
    EXPECT_THROW(module1::OpenSubReport(session(), "Nobody", {}), Error);
    Report& sub = report().openSubreport("Documents");
    module1::OpenSubReport(session(), "Documents", {});
    EXPECT_EQ(bound(sub), "-|-");
    module1::OpenSubReport2(session(), "Documents", {{"Second", "two"}, {"First", "1"}});
    EXPECT_EQ(bound(sub), "1|two");
    module1::OpenSubReport(session(), "Documents", {"2"});
    EXPECT_EQ(bound(sub), "2|two");
}

TEST_F(Frame, WithoutAPrinterTheRunEnds) {
    session().cn().Execute("sp_Update_Parameters 'ALWAYSSHOWPRINTDIALOG', 'Y', ''");
    session().Parameters.LoadParameters(session().ClientCode());
    ASSERT_TRUE(session().Parameters.AlwaysShowPrintDialog(session().ClientCode()));
    forgetLog();
    const QuietDialogs quiet;
    EXPECT_FALSE(module1::OpenMainReport(session(), path(), {}));
    EXPECT_FALSE(module1::OpenMainReport2(session(), path(), {}));
    EXPECT_FALSE(module1::OpenImportedReport(session(), path(), "INVENTORY", {}));
    EXPECT_EQ(quiet.texts(), std::vector<std::string>(3, "No printer selected."));
    EXPECT_EQ(session().CurrentReport, nullptr);
    EXPECT_EQ(lastLog(), "before");
    EXPECT_TRUE(module1::OpenMainReport1(session(), "REPORTS", path(), {}));  // asks for none
    session().cn().Execute("sp_Update_Parameters 'ALWAYSSHOWPRINTDIALOG', 'N', ''");
    session().Parameters.LoadParameters(session().ClientCode());
}

TEST_F(Frame, DirectPrintGoesToThePaperAndReleasesTheReport) {
    const DialogHooks before = dialogHooks();
    std::vector<PaperJob> jobs;
    dialogHooks().paper = [&](const PaperJob& job) { jobs.push_back(job); };
    dialogHooks().printer = [] { return PrinterChoice{"", 1, 1, 3}; };
    bool shown = false;
    dialogHooks().modal = [&](Form& form) {
        shown = form.isVisible();
        form.Hide();
    };
    ASSERT_TRUE(askPrinter());
    module1::OpenMainReport1(session(), "PASSWORD", path(), {1, 1, 1, "t"});
    module1::OpenSubReport(session(), "Documents", {1, "x"});
    module1::ShowReportViewer(session(), {.ReportCaption = "Check", .DirectPrint = true});
    dialogHooks() = before;
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0].title, "Typed");
    EXPECT_EQ(jobs[0].choice.copies, 3);
    EXPECT_NE(jobs[0].text.find("accounts"), std::string::npos);
    EXPECT_FALSE(shown);
    EXPECT_EQ(session().CurrentReport, nullptr);
    EXPECT_EQ(takePrinterChoice().copies, 1);  // the next print asks anew
}

TEST_F(Frame, TheCsvMenuRunsTheStatementBehindTheReport) {
    const DialogHooks before = dialogHooks();
    const std::string file = scratchFolder() + "/export.csv";
    const std::string users = desk().ask("SELECT COUNT(*) AS N FROM PASSWORD.dbo.tbPasswordMain");
    std::vector<std::string> seen, boxes;
    dialogHooks().message = [&](const MessageBox& box) {
        boxes.push_back(box.text);
        return Answer::Ok;
    };
    dialogHooks().file = [&](const std::string&, const std::string& proposed, bool) {
        seen.push_back(proposed);
        return std::optional(file);
    };
    dialogHooks().modal = [&](Form& form) {
        auto& viewer = dynamic_cast<frmReportViewer&>(form);
        seen.push_back(viewer.mnuCSV.visible() ? "csv" : "no csv");
        viewer.mnuCSV.onClick.callUnguarded();
        viewer.Unload();
    };
    for (const bool fromStatement : {true, false}) {
        module1::OpenMainReport1(session(), "PASSWORD", path(), {1, 1, 1, "t"});
        module1::OpenSubReport(session(), "Documents", {1, "x"});
        module1::ShowReportViewer(session(), {.ReportCaption = "Users",
                                              .ExportFileReport = fromStatement,
                                              .ExportQuery = "SELECT 'a \"b\"' AS Name, 1 AS N FROM SYS"});
        EXPECT_EQ(readTextFile(file),
                  fromStatement ? "\"Name\",\"N\"\r\n\"a b\",1\r\n\"a b\",1\r\n" : "N\r\n" + users + "\r\n");
        EXPECT_EQ(session().CurrentReport, nullptr);
    }
    dialogHooks() = before;
    EXPECT_EQ(seen, (std::vector<std::string>{"csv", "Users.csv", "no csv", "Users.csv"}));
    EXPECT_EQ(boxes, std::vector<std::string>{"File saved as " + file + "."});
}

TEST(ExportText, QuotesCharacterFieldsAndRepeatsTheLastRow) {
    ResultSet set;
    set.fields = {{"Name", DataType::VarChar},
                  {"Amount", DataType::Currency},
                  {"Day", DataType::DateTime},
                  {"Kind", DataType::Char}};
    const std::string head = "\"Name\",\"Amount\",\"Day\",\"Kind\"\r\n";
    EXPECT_EQ(exportText(Recordset(set)), head + "\r\n");
    set.rows = {{Value("A \"B\", C"), Value(Money::whole(5)), Value(), Value("x")},
                {Value(), Value(), Value(Date(2024, 3, 1)), Value("a,b")}};
    EXPECT_EQ(exportText(Recordset(set)), head + "\"A B, C\",5.00,,x\r\n,,3/1/2024,a,b\r\n,,3/1/2024,a,b\r\n");
}

}  // namespace
}  // namespace kv
