// What a template gets wrong is named by file and line, all of it at once.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/base/Paths.h"
#include "tests/print/Samples.h"

namespace kv {
namespace {

std::vector<std::string> mistakesOf(const std::string& text) {
    try {
        (void)readTemplate(readTemplateText(text, "bad.rpt", "Reports/"), "bad.rpt", "Reports/");
    } catch (const TemplateError& e) {
        std::vector<std::string> lines;
        for (const Mistake& m : e.mistakes) lines.push_back(m.line());
        return lines;
    }
    return {};
}

const std::string kSource = "[source]\nstatement = \"x\"\ncolumns = [\"Code\", \"Debit currency\", \"Day date\"]\n";

TEST(Template, NamesEachMistakeByItsLine) {
    const std::pair<std::string, const char*> rows[] = {
        {"title = \"x", "bad.rpt:1: "},
        {"title = 5\n" + kSource, "bad.rpt:1: 'title' of the template is a text, not a whole number"},
        {"colour = \"red\"\n" + kSource, "bad.rpt:1: the template has no 'colour'"},
        {"title = \"x\"", "bad.rpt:1: the template has no [source]"},
        {"include = [\"nosuch.toml\"]\n", "bad.rpt:1: the included file 'nosuch.toml' does not exist"},
        {kSource + "[[column]]\nname = \"Debt\"",
         "bad.rpt:4: there is no field 'Debt'; is 'Debit' meant? (in \"[Debt]\")"},
        {kSource + "[[column]]\nname = \"A\"\nvalue = \"Code +\"",
         "bad.rpt:6: the expression ends too early (character 7 of \"Code +\")"},
        {kSource + "[[column]]\nname = \"A\"\nvalue = \"sum(Debit, 'Nobody')\"",
         "bad.rpt:6: there is no group 'Nobody' (in \"sum(Debit, 'Nobody')\")"},
        {kSource + "[[column]]\nname = \"A\"\nvalue = \"sum(sum(Debit))\"",
         "bad.rpt:6: a total cannot be totalled again (in \"sum(sum(Debit))\")"},
        {kSource + "[[column]]\nname = \"A\"\nvalue = \"pages()\"",
         "bad.rpt:6: pages() can stand only in the text or the 'when' of an item without 'wrap' (in \"pages()\")"},
        {kSource + "[[column]]\nname = \"Code\"\nwidth = 500",
         "bad.rpt:4: the columns are 320.0 mm wider than the page (180.0 mm)"},
        {kSource + "[[column]]\nname = \"Code\"\nformat = \"abc\"",
         "bad.rpt:6: 'abc' is neither a number format nor a date format"},
        {kSource + "[[column]]\nname = \"Code\"\nstyle = \"fancy\"", "bad.rpt:6: there is no style 'fancy'"},
        {kSource + "[[column]]\nname = \"Code\"\n[[column]]\nname = \"code\"",
         "bad.rpt:6: two columns are named 'code'"},
        {kSource + "[page]\nsize = \"A9\"",
         "bad.rpt:5: 'A9' is no paper; use A3, A4, A5, Letter, Legal, Folio or \"203x89\" in millimetres"},
        {kSource + "[page]\nmargins = [150, 10, 100, 10]", "bad.rpt:4: the margins leave no room on the page"},
        {kSource + "[style.loud]\ncolor = \"red\"", "bad.rpt:5: 'red' is no colour; write it like \"#1a1a1a\""},
        {kSource + "[detail]\nheadings = \"Dept\"", "bad.rpt:4: 'headings' is page, none or the name of a group"},
        {kSource + "[pageHeader]\ntext = [{ value = \"Code\", colunm = \"A\" }]", "bad.rpt:5: a text has no 'colunm'"},
        {kSource + "[pageHeader]\ntext = [{ value = \"sum(Debit, 'page')\" }]",
         "bad.rpt:5: totals of a page are known only in the page footer (in \"sum(Debit, 'page')\")"},
        {kSource + "[formula]\na = \"b\"\nb = \"a\"\n[pageHeader]\ntext = [{ value = \"a\" }]",
         "bad.rpt:8: the formula 'a' uses itself (in \"a\")"},
        {kSource + "[[group]]\nby = \"left(Code, 1)\"", "bad.rpt:4: a group by an expression needs a 'name'"},
        {kSource + "where = \"sum(Debit) > 0\"", "bad.rpt:4: a source has no 'where'"},
        {"[source]\nstatement = \"p :Period\"", "bad.rpt:1: the statement asks for ':Period', which is no parameter"},
        {kSource + "[crosstab]\nrows = [\"Code\"]", "bad.rpt:4: a cross-tab needs 'rows', 'columns' and 'value'"},
        {kSource + "[detail]\nsubreport = [{ name = \"Lines\" }]", "bad.rpt:5: there is no [subreport.Lines]"},
        {kSource + "[subreport.Lines]\ntitle = \"no source\"", "bad.rpt:4: the template has no [source]"},
        {kSource + "[detail]\nbarcode = [{ value = \"Code\" }]",
         "bad.rpt:5: a box, image or barcode needs 'width' and 'height'"},
    };
    for (const auto& [text, expected] : rows) {
        const std::vector<std::string> found = mistakesOf(text);
        ASSERT_FALSE(found.empty()) << text << "\nwas taken";
        EXPECT_EQ(found[0].substr(0, std::string(expected).size()), expected) << text;
    }
}

TEST(Template, NamesAllMistakesInOrder) {
    const std::vector<std::string> found =
        mistakesOf(kSource + "[[column]]\nname = \"Cod\"\n[[column]]\nname = \"Debt\"\n[[group]]\nby = \"Days\"\n");
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].substr(0, 10), "bad.rpt:4:");
    EXPECT_EQ(found[1].substr(0, 10), "bad.rpt:6:");
    EXPECT_EQ(found[2].substr(0, 10), "bad.rpt:9:");
    // names and keys are told together
    EXPECT_EQ(mistakesOf(kSource + "[[column]]\nname = \"Cod\"\nstyle = \"fancy\"\nwidth = \"x\"\n").size(), 3U);
    EXPECT_EQ(mistakesOf(kSource + "[subreport.Lines]\n[subreport.Lines.source]\nstatement = \"x\"\n"
                                   "columns = [\"No\"]\n[[subreport.Lines.column]]\nname = \"Account\"\n"),
              std::vector<std::string>{"bad.rpt:8: there is no field 'Account' (in \"[Account]\")"});
    // an accented letter where a text lost its quotes
    for (const char* line : {"title = PE\xC3\x91"
                             "A\n",
                             "ti\xC3\x91tle = \"x\"\n"}) {
        const std::vector<std::string> broken = mistakesOf("\n" + std::string(line) + kSource);
        ASSERT_EQ(broken.size(), 1U);
        EXPECT_EQ(broken[0].substr(0, 10), "bad.rpt:2:") << broken[0];
    }
}

TEST(Template, MistakesInIncludesNameTheInclude) {
    const std::string folder = std::filesystem::temp_directory_path() / "kv_include_test/";
    std::filesystem::create_directories(folder);
    writeTextFile(folder + "part.toml", "[page]\nsize = \"A4\"\nwrong = 1\n");
    writeTextFile(folder + "whole.rpt", "include = [\"part.toml\"]\n" + kSource);
    try {
        (void)readTemplate(folder + "whole.rpt");
        ADD_FAILURE();
    } catch (const TemplateError& e) {
        EXPECT_EQ(e.mistakes[0].line(), "part.toml:3: page has no 'wrong'");
    }
    // what the template says itself replaces the include's, key by key
    writeTextFile(folder + "part.toml", "[page]\nsize = \"A5\"\nmargins = [1, 2, 3, 4]\n");
    writeTextFile(folder + "whole.rpt", "include = [\"part.toml\"]\n[page]\nsize = \"Legal\"\n" + kSource);
    const Template report = readTemplate(folder + "whole.rpt");
    EXPECT_EQ(report.page.height, 355.6);
    EXPECT_EQ(report.page.right, 3);
    // a file that includes itself ends with a message
    writeTextFile(folder + "part.toml", "include = [\"part.toml\"]\n");
    EXPECT_THROW((void)readTemplate(folder + "whole.rpt"), TemplateError);
    std::filesystem::remove_all(folder);
}

/// A copy of a common template works in a client's folder as it stands, and takes parts of that folder's own first.
TEST(Template, ACopyInTheClientsFolderLoads) {
    const std::string home = std::filesystem::temp_directory_path() / "kv_client_test/";
    std::filesystem::create_directories(home + "Reports/common");
    std::filesystem::create_directories(home + "Reports_DEMO/common");
    writeTextFile(home + "Reports/common/page.toml", "[page]\nsize = \"A5\"\n");
    writeTextFile(home + "Reports/common/head.toml", "[formula]\nhead = \"'common'\"\n");
    writeTextFile(home + "Reports_DEMO/common/head.toml", "[formula]\nhead = \"'own'\"\n");
    const std::string text = "include = [\"common/page.toml\", \"common/head.toml\"]\n" + kSource;
    writeTextFile(home + "Reports_DEMO/A.rpt", text);
    const Template report = readTemplate(home + "Reports_DEMO/A.rpt");
    EXPECT_EQ(report.page.width, 148);
    EXPECT_EQ(report.formulas.at("head").text(), "'own'");
    std::filesystem::remove_all(home);
}

/// The walk-through of the page for administrators works as it is written, and says the mistakes as they come.
TEST(Template, TheWalkThroughLoads) {
    const std::string page = readTextFile("docs/report-templates.md");
    std::string text;
    std::size_t at = 0;
    for (int block = 0; block < 2; ++block) {
        at = page.find("```toml\n", at) + 8;
        const std::size_t end = page.find("```", at);
        text += page.substr(at, end - at);
        at = end + 3;
    }
    const auto read = [](const std::string& chart) {
        return readTemplate(readTemplateText(chart, "ChartList.rpt", "docs/"), "ChartList.rpt", "docs/");
    };
    const Template report = read(text);
    EXPECT_EQ(report.columns.size(), 2U);
    EXPECT_EQ(report.groups.size(), 1U);
    text.replace(text.find("name = \"Code\""), 13, "name = \"Cod\"");
    text.replace(text.find("style = \"group\""), 15, "style = \"grup\"");
    try {
        (void)read(text);
        ADD_FAILURE() << "was taken";
    } catch (const TemplateError& e) {
        EXPECT_NE(page.find("```\n" + e.description + "\n```"), std::string::npos) << e.description;
    }
    // and names every function there is
    for (const ExprFunction& f : expressionFunctions()) {
        EXPECT_NE(page.find("| `" + std::string(f.name) + "("), std::string::npos) << f.name;
    }
}

TEST(Template, FillsStatements) {
    Template report;
    for (const char* name : {"Period", "@Code", "Day", "Flag", "Amount"}) report.parameters.push_back({.name = name});
    SourceDef source;
    source.statement = "p :Period, :@Code -- not :Period here\n, ':Period', [a:Day], :day, :Flag, :Amount /* :Day */";
    EXPECT_EQ(composeStatement(source, report, {"2024'03", Value(), Date(2024, 3, 1), true, samples::money("-12.50")}),
              "p '2024''03', NULL -- not :Period here\n, ':Period', [a:Day], '20240301', 1, -12.50 /* :Day */");
    EXPECT_EQ(statementParameters(source.statement),
              (std::vector<std::string>{"Period", "@Code", "day", "Flag", "Amount"}));
}

TEST(Template, TakesParametersAsTheyAreGiven) {
    auto report = samples::fromText(kSource +
                                    "[[parameter]]\nname = \"N\"\ntype = \"number\"\n[[parameter]]\nname = \"C\"\n"
                                    "type = \"currency\"\n[[parameter]]\nname = \"D\"\ntype = \"date\"\n"
                                    "[[parameter]]\nname = \"T\"\ndefault = \"usual\"\n");
    EXPECT_EQ(static_cast<int>(report->parameters()[0].type), 7);
    EXPECT_EQ(static_cast<int>(report->parameters()[1].type), 8);
    EXPECT_THROW(report->runOnRows(), Error);  // three values are missing
    report->setValue(0, 202403.0);
    report->setValue("c", "1,250.50");
    report->setValue(2, "2024-03-31");
    report->runOnRows();
    EXPECT_EQ(report->data().parameters(),
              (std::vector<Value>{202403, samples::money("1250.50"), Date(2024, 3, 31), "usual"}));
    EXPECT_THROW(report->setValue(0, "many"), Error);
    EXPECT_THROW(report->setValue(4, 1), Error);
    EXPECT_THROW(report->setValue("Nobody", 1), Error);
    EXPECT_THROW(report->openSubreport("Nobody"), Error);
}

}  // namespace
}  // namespace kv
