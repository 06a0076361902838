// What is written: csv, text, spreadsheets, PDF, pictures. Files are whole or not there.
#include <gtest/gtest.h>

#include <QImage>
#include <cstdio>
#include <filesystem>

#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/print/CellFormat.h"
#include "tests/print/Samples.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

class Output : public testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / ("kv_print_" + std::to_string(getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }
    std::string path(const std::string& name) const { return (folder_ / name).string(); }
    /// No half-written file is left beside the wanted ones.
    int files() const { return static_cast<int>(std::distance(fs::directory_iterator(folder_), {})); }

    /// A part of a spreadsheet file, read by an independent reader of archives.
    static std::string part(const std::string& file, const std::string& name) {
        const std::string command = "python3 -c \"import zipfile,sys;sys.stdout.write(zipfile.ZipFile('" + file +
                                    "').read('" + name + "').decode())\"";
        FILE* pipe = popen(command.c_str(), "r");
        std::string out;
        char buffer[4096];
        while (const std::size_t n = fread(buffer, 1, sizeof buffer, pipe)) out.append(buffer, n);
        pclose(pipe);
        return out;
    }
    /// The cell's XML: "<c r="B7" s="4"><v>12</v></c>".
    static std::string cell(const std::string& sheet, const std::string& name) {
        const std::size_t at = sheet.find("<c r=\"" + name + "\"");
        if (at == std::string::npos) return {};
        const std::size_t end = sheet.find("</c>", at);
        return sheet.substr(at, end - at);
    }
    static std::unique_ptr<Report> mixed() {
        auto report = samples::fromText(R"(
title = "Mixed: all [types]"
[source]
statement = "x"
columns = ["Name", "Day date", "Amount currency", "Count integer", "Rate number", "Done boolean"]
[pageHeader]
text = [{ text = "{reportTitle()}" }, { text = "Page {pageNumber()}" }]
[[group]]
name = "Half"
by = "Done"
[group.header]
text = [{ text = "Done: {Done}" }]
[group.footer]
totals = "Sub"
[[column]]
name = "Name"
[[column]]
name = "Day"
format = "MMM d, yyyy"
width = 25
[[column]]
name = "Amount"
format = "#,##0.00;(#,##0.00);nil"
total = "sum"
width = 30
[[column]]
name = "Count"
total = "max"
width = 15
[[column]]
name = "Rate"
format = "0.0%"
width = 15
[[column]]
name = "Done"
width = 12
[reportFooter]
totals = "All"
)");
        ResultSet set;
        for (const char* name : {"Name", "Day", "Amount", "Count", "Rate", "Done"})
            set.fields.push_back({name, DataType::VarChar, 0, 0});
        set.rows = {{"Peña, \"Jo\"\nMD", Date(2024, 2, 29), samples::money("1234.5"), 3, 0.125, true},
                    {"=1+1", Date(2024, 12, 31, 13, 5), samples::money("-0.01"), 12, 0.5, true},
                    {"plain", Value(), Value(), Value(), Value(), false}};
        report->setRows("main", set);
        report->runOnRows();
        return report;
    }

    static int pagesIn(const std::string& pdf) {
        int count = 0;
        for (std::size_t at = pdf.find("/Type /Page\n"); at != std::string::npos;
             at = pdf.find("/Type /Page\n", at + 1))
            ++count;
        return count;
    }

    fs::path folder_;
};

TEST_F(Output, CsvKeepsEachValuePlain) {
    mixed()->saveCsv(path("a.csv"));
    EXPECT_EQ(readTextFile(path("a.csv")),
              "Name,Day,Amount,Count,Rate,Done\r\n"
              "\"Peña, \"\"Jo\"\"\nMD\",2024-02-29,1234.50,3,0.125,True\r\n"
              "=1+1,2024-12-31 13:05:00,-0.01,12,0.5,True\r\n"
              "plain,,,,,False\r\n");
    EXPECT_THROW(mixed()->saveCsv(path("no/such/folder.csv")), Error);
}

TEST_F(Output, TextAlignsColumnsGroupsAndTotals) {
    EXPECT_EQ(mixed()->text(),
              "Mixed: all [types]\n"
              "\n"
              "Name           Day             Amount  Count   Rate  Done\n"
              "-------------  ------------  --------  -----  -----  ----\n"
              "\n"
              "Done: Yes\n"
              "Peña, \"Jo\" MD  Feb 29, 2024  1,234.50      3  12.5%  Yes\n"
              "=1+1           Dec 31, 2024    (0.01)     12  50.0%  Yes\n"
              "                             --------  -----\n"
              "Sub                          1,234.49     12\n"
              "\n"
              "Done: No\n"
              "plain                                                No\n"
              "                             --------\n"
              "Sub                               nil\n"
              "                             --------  -----\n"
              "All                          1,234.49     12\n");
    EXPECT_EQ(samples::fromText("title=\"x\"\n[source]\nstatement=\"x\"\n[detail]\ntext=[{text=\"a\"}]\n")->fileName(),
              "sample.rpt");
}

TEST_F(Output, TextColumnsAreAsWideAsTheirFigures) {
    auto report = samples::fromText(R"(
title = "Long"
[source]
statement = "x"
columns = ["Code", "Amount currency"]
[[column]]
name = "Code"
[[column]]
name = "Amount"
heading = "Movement of the month in pesos"
[detail]
)");
    ResultSet set;
    for (const char* name : {"Code", "Amount"}) set.fields.push_back({name, DataType::VarChar, 0, 0});
    set.rows = {{"1101", samples::money("15857921.43")}};
    report->setRows("main", set);
    report->runOnRows();
    EXPECT_EQ(report->text(),
              "        Movement of\n"
              "       the month in\n"
              "Code          pesos\n"
              "----  -------------\n"
              "1101  15,857,921.43\n");
}

TEST_F(Output, SpreadsheetsKeepTypesAndFormats) {
    mixed()->saveXlsx(path("a.xlsx"));
    const std::string sheet = part(path("a.xlsx"), "xl/worksheets/sheet1.xml");
    EXPECT_NE(cell(sheet, "A1").find("Mixed: all [types]"), std::string::npos);
    EXPECT_NE(cell(sheet, "C3").find("Amount"), std::string::npos);
    EXPECT_NE(cell(sheet, "A4").find("Done: Yes"), std::string::npos);
    EXPECT_NE(cell(sheet, "A5").find("Peña, \"Jo\""), std::string::npos) << cell(sheet, "A5");
    EXPECT_NE(cell(sheet, "B5").find("<v>45351</v>"), std::string::npos);  // a serial day, not a text
    EXPECT_NE(cell(sheet, "C5").find("<v>1234.5</v>"), std::string::npos);
    EXPECT_NE(cell(sheet, "C6").find("<v>-0.01</v>"), std::string::npos);
    EXPECT_NE(cell(sheet, "A6").find("=1+1"), std::string::npos);  // stays a text, is no formula
    EXPECT_EQ(cell(sheet, "A6").find("<f>"), std::string::npos);
    EXPECT_NE(cell(sheet, "F5").find("t=\"b\""), std::string::npos);
    EXPECT_EQ(cell(sheet, "C9").find("<v>"), std::string::npos);  // null stays empty
    EXPECT_NE(cell(sheet, "C7").find("<v>1234.49</v>"), std::string::npos);
    EXPECT_NE(cell(sheet, "A11").find("All"), std::string::npos);
    EXPECT_NE(sheet.find("<pane ySplit=\"3\""), std::string::npos);
    const std::string styles = part(path("a.xlsx"), "xl/styles.xml");
    EXPECT_NE(styles.find("#,##0.00;(#,##0.00);&quot;nil&quot;"), std::string::npos);
    EXPECT_NE(styles.find("mmm d, yyyy"), std::string::npos);
    EXPECT_NE(part(path("a.xlsx"), "xl/workbook.xml").find("name=\"Mixed  all  types\""), std::string::npos);

    mixed()->saveXlsx(path("b.xlsx"), XlsxKind::Tabular);
    const std::string rows = part(path("b.xlsx"), "xl/worksheets/sheet1.xml");
    EXPECT_NE(cell(rows, "A1").find("Name"), std::string::npos);
    EXPECT_NE(cell(rows, "C3").find("<v>-0.01</v>"), std::string::npos);
    EXPECT_NE(rows.find("<autoFilter ref=\"A1:F4\"/>"), std::string::npos);
    EXPECT_THROW(mixed()->saveXlsx(path("no/such.xlsx")), Error);
    EXPECT_EQ(files(), 2);
}

TEST_F(Output, PdfHoldsAllPagesOrIsNotThere) {
    auto report = samples::report("GLBatchJrnl.rpt");
    report->setRows("main", samples::batchJournal(9));
    report->runOnRows();
    ASSERT_TRUE(report->savePdf(path("a.pdf")));
    const std::string pdf = readTextFile(path("a.pdf"));
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    EXPECT_EQ(pagesIn(pdf), 2);
    EXPECT_NE(pdf.find("NotoSans"), std::string::npos);  // its own font goes along
    EXPECT_FALSE(report->savePdf(path("b.pdf"), [](int done, int) { return done < 1; }));
    EXPECT_THROW((void)report->savePdf(path("no/such.pdf")), Error);
    EXPECT_EQ(files(), 1);

    EXPECT_TRUE(report->print({.fromPage = 2, .outputFile = path("p.pdf")}));
    EXPECT_EQ(pagesIn(readTextFile(path("p.pdf"))), 1);
    EXPECT_THROW((void)report->print({.fromPage = 3, .outputFile = path("q.pdf")}), Error);
    EXPECT_THROW((void)report->print({.printer = "no such printer"}), Error);
}

TEST_F(Output, PicturesShowWhatStandsOnThePage) {
    auto report = samples::fromText(
        "title = \"x\"\n[page]\nsize = \"100x50\"\nmargins = [10, 10, 10, 10]\n[source]\nstatement = \"x\"\n[detail]\n"
        "box = [{ x = 0, y = 0, width = 20, height = 10, fill = \"#ff0000\", weight = 0 }]\n");
    ResultSet one;
    one.rows = {{}};
    report->setRows("main", one);
    report->runOnRows();
    EXPECT_EQ(report->savePng(path("p"), 254), std::vector<std::string>{path("p.png")});
    const QImage image(QString::fromStdString(path("p.png")));
    ASSERT_EQ(image.size(), QSize(1000, 500));
    EXPECT_EQ(image.pixel(150, 150), qRgb(255, 0, 0));  // 15 mm from the left and the top
    EXPECT_EQ(image.pixel(350, 150), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(150, 250), qRgb(255, 255, 255));
}

TEST(CellFormat, SpeaksTheSpreadsheetsLanguage) {
    const std::tuple<Value, const char*, const char*> rows[] = {
        {Date(2024, 1, 2), "MMMM d, yyyy h:nn", "mmmm d, yyyy h:mm"},
        {Date(2024, 1, 2), "", "mm/dd/yyyy"},
        {Money::whole(1), "", "#,##0.00"},
        {Money::whole(1), "#,##0.00;(#,##0.00);", "#,##0.00;(#,##0.00);"},
        {1, "", ""},
        {"text", "#,##0.00", ""},
    };
    for (const auto& [value, pattern, expected] : rows)
        EXPECT_EQ(spreadsheetFormat(value, pattern), expected) << pattern;
}

}  // namespace
}  // namespace kv
