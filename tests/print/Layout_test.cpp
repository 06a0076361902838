// Pages as lists of what stands where, one small data set for each kind of template.
// KV_GOLDEN=write writes the lists anew; look at the pages before you commit them. KV_PICTURES=FOLDER writes a picture
// of each first page there, as docs/pictures has them.
#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "tests/print/Samples.h"

namespace kv {
namespace {

void savePicture(const Report& report, const std::string& name) {
    const char* folder = std::getenv("KV_PICTURES");
    if (folder == nullptr) return;
    Document first = report.document();
    first.pages.resize(1);
    constexpr double kDotsPerInch = 96;
    writePng(first, buildPath(folder, name), kDotsPerInch);
}

void expectPages(Report& report, const std::string& name) {
    report.layout();
    savePicture(report, name);
    const std::string list = pageList(report.document());
    const std::string path = "tests/print/golden/" + name + ".txt";
    if (const char* mode = std::getenv("KV_GOLDEN"); mode != nullptr && std::string(mode) == "write") {
        writeTextFile(path, list);
    }
    const std::vector<std::string> expected = split(readTextFile(path), '\n'), found = split(list, '\n');
    for (std::size_t i = 0; i < std::max(expected.size(), found.size()); ++i) {
        const std::string want = i < expected.size() ? expected[i] : "(end)";
        const std::string have = i < found.size() ? found[i] : "(end)";
        ASSERT_EQ(have, want) << path << ":" << i + 1;
    }
}

std::unique_ptr<Report> withRows(const std::string& file, ResultSet rows) {
    auto report = samples::report(file);
    report->setRows("main", std::move(rows));
    report->runOnRows();
    return report;
}

std::unique_ptr<Report> sample(const std::string& file) { return Report::load("tests/print/templates/" + file); }

ResultSet rows(std::vector<std::string> names, std::vector<Row> values) {
    ResultSet set;
    for (std::string& name : names) set.fields.push_back({std::move(name), DataType::VarChar, 0, 0});
    set.rows = std::move(values);
    return set;
}

/// The texts of one band on a page, joined.
std::string bandText(const Report& report, int page, const std::string& band) {
    std::string out;
    const Document& document = report.document();
    for (const TextRun& run : document.pages[static_cast<std::size_t>(page)].runs) {
        if (document.bands[static_cast<std::size_t>(run.band)] == band && !run.hidden)
            out += (out.empty() ? "" : " | ") + run.text;
    }
    return out;
}

TEST(Layout, TrialBalance) { expectPages(*withRows("TrialBalance.rpt", samples::trialBalance()), "TrialBalance"); }

TEST(Layout, BatchJournal) { expectPages(*withRows("GLBatchJrnl.rpt", samples::batchJournal(9)), "GLBatchJrnl"); }

TEST(Layout, JournalVoucher) {
    expectPages(*withRows("GLBatchJrnl_Ver2_JV.rpt", samples::batchJournal(3)), "GLBatchJrnl_Ver2_JV");
}

TEST(Layout, UserLogs) { expectPages(*withRows("UserLogs.rpt", samples::userLogs()), "UserLogs"); }

TEST(Layout, LedgerCarriesItsSumsOverPages) {
    auto report = withRows("ReportGLDetailed_Ver2.rpt", samples::generalLedger(2, 55));
    expectPages(*report, "ReportGLDetailed_Ver2");
    // what is carried from one page is brought to the next
    for (int p = 0; p + 1 < report->pages(); ++p) {
        const std::string foot = bandText(*report, p, "carried"), head = bandText(*report, p + 1, "carried");
        if (foot.find("Carried") == std::string::npos) continue;
        EXPECT_EQ(foot.substr(foot.rfind("Carried forward") + 15),
                  head.substr(15, foot.size() - foot.rfind("Carried forward") - 15));
    }
}

/// A template of the tests, with the hospital that every head names.
std::unique_ptr<Report> headed(const std::string& file, ResultSet rows) {
    auto report = sample(file);
    report->setValue("HospitalName", "EXAMPLE GENERAL HOSPITAL");
    report->setValue("HospAddress", "1 SAMPLE STREET, SAMPLE CITY");
    report->setDescription("Printed by: Ana Cruz; Print date: 4/5/2024 10:30:00; HALCYRA 1.0");
    report->setRows("main", std::move(rows));
    report->runOnRows();
    return report;
}

TEST(Layout, StatementWhoseRowsSayWhatTheyAre) {
    const auto line = [](const char* kind, int level, const char* title, const char* note, const char* now,
                         const char* before) {
        return Row{kind, level, title, note, samples::money(now), samples::money(before)};
    };
    auto report = headed("Statement.rpt",
                         rows({"Kind", "Level", "Title", "Note", "ThisYear", "LastYear"},
                              {line("H", 0, "ASSETS", "", "0", "0"), line("D", 1, "Cash", "1", "1500000.25", "1200000"),
                               line("D", 1, "Receivables", "2", "2500000", "2600000.50"),
                               line("D", 2, "Allowance for doubtful accounts", "", "-125000", "0"),
                               line("S", 1, "Current assets", "", "3875000.25", "3800000.50"),
                               line("D", 1, "Property and equipment", "3", "9000000", "9500000"),
                               line("T", 0, "TOTAL ASSETS", "", "12875000.25", "13300000.50"),
                               line("H", 0, "LIABILITIES AND EQUITY", "", "0", "0"),
                               line("D", 1, "Payables", "4", "3875000.25", "4300000.50"),
                               line("D", 1, "Equity", "5", "9000000", "9000000"),
                               line("T", 0, "TOTAL LIABILITIES AND EQUITY", "", "12875000.25", "13300000.50")}));
    expectPages(*report, "Statement");
}

TEST(Layout, LandscapeLedgerWithSumsCarriedForward) {
    ResultSet set = rows({"Code", "Title", "Day", "Reference", "Particulars", "Debit", "Credit"}, {});
    for (int n = 1; n <= 45; ++n) {
        set.rows.push_back({"2101", "ACCOUNTS PAYABLE", Date(2024, 3, 1 + n % 28), "AP " + std::to_string(2400 + n),
                            "Supplier " + std::to_string(n), n % 5 == 0 ? Money::whole(n * 50) : Money(),
                            n % 5 == 0 ? Money() : Money::whole(n * 10)});
    }
    set.rows.push_back({"2102", "ACCRUED EXPENSES", Date(2024, 3, 31), "JV 7", "Accrual", Money(), Money::whole(99)});
    auto report = headed("LedgerLandscape.rpt", std::move(set));
    expectPages(*report, "LedgerLandscape");
    ASSERT_EQ(report->pages(), 2);
    // lines 1 to 31 stand on page 1: debits 50 x (5 + ... + 30), credits 10 x (1 + ... + 31 without those)
    EXPECT_EQ(bandText(*report, 1, "carried"), "5,250.00 | 3,910.00 | 1,340.00 | Brought forward");
}

TEST(Layout, CrossTabTooWideGoesOnOnFurtherPages) {
    ResultSet set = rows({"Code", "Title", "Period", "Ending"}, {});
    for (int account = 1; account <= 3; ++account) {
        for (int month = 12; month >= 1; --month) {
            if (account == 2 && month % 2 == 0) continue;  // no row: an empty cell
            set.rows.push_back({std::to_string(account), "Account " + std::to_string(account),
                                "2024" + std::string(month < 10 ? "0" : "") + std::to_string(month),
                                Money::whole((account == 3 ? -1 : 1) * account * month * 100)});
        }
    }
    auto report = samples::report("ReportTrialBalancePeriodsCrossTab.rpt");
    report->setValue("@Period1", "202401");
    report->setValue("@Period2", "202412");
    report->setRows("main", std::move(set));
    report->runOnRows();
    expectPages(*report, "ReportTrialBalancePeriodsCrossTab");
    EXPECT_EQ(report->pages(), 2);
    EXPECT_EQ(report->data().rowCount(), 3U);
}

TEST(Layout, CheckOnPreprintedPaper) {
    auto report = sample("Check.rpt");
    report->setRows("main", rows({"CheckNo", "CheckDate", "Payee", "Amount"},
                                 {{"0001234", Date(2024, 3, 15), "ACME MEDICAL SUPPLY", samples::money("12345.67")},
                                  {"0001235", Date(2024, 3, 16), "JOSÉ PEÑA", samples::money("1000000")}}));
    report->runOnRows();
    expectPages(*report, "Check");
}

TEST(Layout, SubreportsAndPagesThatRestart) {
    auto report = sample("Voucher.rpt");
    report->setRows("main", rows({"No", "Payee", "Amount"},
                                 {{"V1", "First payee", Money::whole(150)}, {"V2", "Second payee", Money::whole(50)}}));
    std::vector<Row> lines = {{"V2", "5101", Money::whole(50)}};
    for (int n = 0; n < 60; ++n) lines.push_back({"V1", std::to_string(1000 + n), Money::whole(n)});
    report->openSubreport("lines").setRows("main", rows({"No", "Account", "Debit"}, lines));
    report->openSubreport("Documents").setRows("main", rows({"Document"}, {{"Invoice 7"}, {"Receipt 8"}}));
    report->runOnRows();
    expectPages(*report, "Voucher");
    ASSERT_EQ(report->pages(), 3);
    EXPECT_EQ(bandText(*report, 1, "pageFooter"), "Page 2 of 2");
    EXPECT_EQ(bandText(*report, 2, "pageFooter"), "Page 1 of 1");
}

const std::string kHead = "title = \"T\"\n[page]\nsize = \"100x60\"\nmargins = [5, 5, 5, 5]\n";
const std::string kSource = "[source]\nstatement = \"x\"\ncolumns = [\"G\", \"N integer\", \"A currency\"]\n";

std::unique_ptr<Report> small(const std::string& text, int count) {
    auto report = samples::fromText(kHead + text);
    std::vector<Row> values;
    for (int n = 1; n <= count; ++n) values.push_back({n <= count / 2 ? "a" : "b", n, Money::whole(n)});
    report->setRows("main", rows({"G", "N", "A"}, values));
    report->runOnRows();
    report->layout();
    return report;
}

TEST(Layout, TotalsReachAsFarAsTheyStand) {
    const std::string text =
        kSource +
        "[[column]]\nname = \"N\"\n[[column]]\nname = \"R\"\nvalue = \"running(A) & '/' & running(A, "
        "'G') & '/' & sum(A, 'G') & '/' & sum(A)\"\n[[group]]\nby = \"G\"\n[group.footer]\ntext = [{ text "
        "= \"{G} {sum(A)} {count()} {average(N)} {min(N)} {max(N)} {first(N)} {last(N)}\" }]\n"
        "[pageFooter]\ntext = [{ text = \"{sum(A)} of {sum(A, 'report')}\" }]\n";
    auto report = small(text, 20);
    EXPECT_EQ(bandText(*report, 0, "footer of G"), "");
    std::string groups, pages;
    Money ofPages;
    for (int p = 0; p < report->pages(); ++p) {
        groups += bandText(*report, p, "footer of G") + ";";
        const std::string foot = bandText(*report, p, "pageFooter");
        ofPages += Money::fromDouble(numberOf(foot.substr(0, foot.find(' '))));
    }
    EXPECT_NE(groups.find("a 55.00 10 5.5 1 10 1 10"), std::string::npos) << groups;
    EXPECT_NE(groups.find("b 155.00 10 15.5 11 20 11 20"), std::string::npos) << groups;
    EXPECT_EQ(ofPages, Money::whole(210));  // the pages' sums are the report's
    EXPECT_FALSE(report->find("66.00/11.00/155.00/210.00").empty());
}

TEST(Layout, KeepsTogetherWhatBelongsTogether) {
    const std::string columns = "[[column]]\nname = \"N\"\n[[group]]\nby = \"G\"\n";
    const std::string bands =
        "[group.header]\ntext = [{ value = \"G\" }]\n[group.footer]\ntext = [{ text = \"end {G}\" }]\n";
    auto loose = small(kSource + columns + bands, 10);
    auto kept = small(kSource + columns + "keepTogether = true\n" + bands, 10);
    EXPECT_NE(bandText(*loose, 0, "header of G"), "a");  // b begins on the first page
    EXPECT_EQ(bandText(*kept, 0, "header of G"), "a");
    // no page begins with a footer, no page ends with a header
    for (const auto& report : {std::cref(loose), std::cref(kept)}) {
        const Document& document = report.get()->document();
        for (const PaperPage& page : document.pages) {
            std::vector<std::string> bandsInOrder;
            for (const TextRun& run : page.runs)
                bandsInOrder.push_back(document.bands[static_cast<std::size_t>(run.band)]);
            EXPECT_NE(bandsInOrder.back(), "header of G");
            EXPECT_EQ(std::find(bandsInOrder.begin(), bandsInOrder.end(), "footer of G") ==
                          std::find(bandsInOrder.begin(), bandsInOrder.end(), "detail"),
                      false);
        }
    }
}

TEST(Layout, NothingIsPlacedBelowThePage) {
    for (int count = 0; count < 60; ++count) {
        auto report =
            small(kSource +
                      "[[column]]\nname = \"N\"\ntotal = \"sum\"\n[[group]]\nby = \"G\"\n[group.footer]\ntotals = "
                      "\"s\"\n[pageFooter]\ntext = [{ text = \"{pageNumber()}\" }]\n[detail]\ncarriedTo = "
                      "\"to\"\ncarriedFrom = \"from\"\n[reportFooter]\ntotals = \"all\"\nheight = 15\n",
                  count);
        int details = 0;
        for (int p = 0; p < report->pages(); ++p) {
            const Document& document = report->document();
            float footer = 1000, lowest = 0;
            for (const TextRun& run : document.pages[static_cast<std::size_t>(p)].runs) {
                const std::string& band = document.bands[static_cast<std::size_t>(run.band)];
                if (band == "pageFooter") footer = run.y;
                if (band != "pageFooter") lowest = std::max(lowest, run.y + run.height);
                details += band == "detail" ? 1 : 0;
            }
            EXPECT_LE(lowest, footer + 0.01F) << count << " rows, page " << p + 1;
        }
        EXPECT_EQ(details, count);  // each row once
    }
}

TEST(Layout, FitsTextsAndFigures) {
    auto report = samples::fromText(kHead + kSource +
                                    "[[column]]\nname = \"G\"\nwidth = 20\n[[column]]\nname = \"A\"\nwidth = 14\n" +
                                    "[[column]]\nname = \"H\"\nvalue = \"G\"\nhideRepeated = true\nwidth = 20\n");
    report->setRows("main",
                    rows({"G", "N", "A"}, {{"A text far too long for its column", 1, samples::money("12345.67")},
                                           {"short", 2, samples::money("-1234567.89")},
                                           {"short", 3, samples::money("99999999999.99")}}));
    report->runOnRows();
    report->layout();
    const std::string cells = bandText(*report, 0, "detail");
    EXPECT_NE(cells.find("…"), std::string::npos);
    EXPECT_NE(cells.find("-1,234,567.89"), std::string::npos);  // shrunk, never cut
    EXPECT_EQ(cells.find("99,999,999,999.99"), std::string::npos);
    EXPECT_NE(cells.find("###"), std::string::npos);
    EXPECT_EQ(report->find("short").size(), 3U);  // the repeated one is hidden in the third column
}

TEST(Layout, StopsAndGoesOn) {
    auto report = withRows("ReportGLDetailed_Ver2.rpt", samples::generalLedger(200, 60));
    while (report->pages() == 0) ASSERT_TRUE(report->layoutFor(0));
    EXPECT_LT(report->progress(), 0.05);  // page 1 does not wait for the rest
    const std::string first = bandText(*report, 0, "detail");
    EXPECT_FALSE(report->layout([](int, int) { return false; }));
    EXPECT_FALSE(report->complete());
    EXPECT_TRUE(report->layout());
    EXPECT_GT(report->pages(), 200);
    EXPECT_EQ(bandText(*report, 0, "detail"), first);
}

TEST(Layout, RowsThatDoNotFitTheTemplateAreNamed) {
    auto report = samples::fromText(kHead + "[source]\nstatement = \"x\"\n[[column]]\nname = \"Missing\"\n");
    report->setRows("main", rows({"Other"}, {{"1"}}));
    try {
        report->runOnRows();
        ADD_FAILURE();
    } catch (const TemplateError& e) {
        EXPECT_EQ(e.mistakes[0].line(), "sample.rpt:7: there is no field 'Missing' (in \"[Missing]\")");
    }
}

TEST(Layout, GroupsWithoutALabelStandNotInTheTree) {
    auto report = samples::fromText(
        "title = 'T'\n[source]\nstatement = 'x'\ncolumns = ['Division', 'Section', 'Code']\n"
        "[[column]]\nname = 'Code'\n[[group]]\nby = 'Division'\n[[group]]\nby = 'Section'\n"
        "[[group]]\nby = 'Code'\nlabel = \"{if(Code = '2', '', Code)}\"\n");
    report->setRows("main",
                    rows({"Division", "Section", "Code"},
                         {{"", "Assets", "1"}, {"", "Assets", "2"}, {"", "Equity", "3"}, {"North", "Assets", "4"}}));
    report->runOnRows();
    report->layout();
    std::string tree;
    for (const TreeEntry& entry : report->document().tree) tree += std::to_string(entry.level) + entry.label + " ";
    EXPECT_EQ(tree, "0Assets 11 0Equity 13 0North 1Assets 24 ");
}

}  // namespace
}  // namespace kv
