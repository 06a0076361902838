// Parts of the engine by themselves: totals of series, cross-tabs, conditions, several sources, barcodes.
#include <gtest/gtest.h>

#include <numeric>

#include "platform/base/Paths.h"
#include "tests/print/Samples.h"

namespace kv {
namespace {

ResultSet rows(std::vector<std::string> names, std::vector<Row> values) {
    ResultSet set;
    for (std::string& name : names) set.fields.push_back({std::move(name), DataType::VarChar, 0, 0});
    set.rows = std::move(values);
    return set;
}

const std::string kHead = "title = \"T\"\n[page]\nsize = \"100x60\"\nmargins = [5, 5, 5, 5]\n";

std::unique_ptr<Report> laid(const std::string& text, ResultSet set) {
    auto report = samples::fromText(kHead + text);
    report->setRows("main", std::move(set));
    report->runOnRows();
    report->layout();
    return report;
}

std::string pageText(const Report& report, std::size_t page = 0) {
    const PaperPage& shown = report.document().pages[page];
    return joinedText(shown, textLines(shown));
}

TEST(Series, StaysExactAcrossTypesAndNulls) {
    Series amounts;
    const Value given[] = {2, Value(), samples::money("0.10"), samples::money("0.20"), samples::money("-5")};
    for (const Value& v : given) amounts.add(v);
    EXPECT_EQ(amounts.total(TotalKind::Sum, 0, 5), Value(samples::money("-2.70")));
    EXPECT_EQ(amounts.total(TotalKind::Sum, 2, 4), Value(samples::money("0.30")));
    EXPECT_EQ(amounts.total(TotalKind::Count, 0, 3), Value(2));
    EXPECT_EQ(amounts.total(TotalKind::Average, 0, 4), Value(samples::money("0.7667")));  // 2.30 / 3
    EXPECT_EQ(amounts.total(TotalKind::Min, 0, 5), Value(samples::money("-5")));
    EXPECT_EQ(amounts.total(TotalKind::Max, 0, 5), Value(2));
    EXPECT_TRUE(amounts.total(TotalKind::Average, 1, 2).isNull());
    EXPECT_EQ(amounts.total(TotalKind::Sum, 3, 3), Value(samples::money("0")));
    // one number with a fraction beyond money makes the whole series floating
    amounts.add(0.00001);
    EXPECT_NEAR(amounts.total(TotalKind::Sum, 0, 6).number(), -2.69999, 1e-9);

    Series whole;
    for (const std::int64_t v : {INT64_MAX / 2, INT64_MAX / 2}) whole.add(v);
    EXPECT_EQ(whole.total(TotalKind::Sum, 0, 2), Value(INT64_MAX - 1));
    EXPECT_THROW(whole.add(std::int64_t{100}), Error);
    Series texts;
    for (const char* v : {"b", "B", "a"}) texts.add(v);
    EXPECT_EQ(texts.total(TotalKind::CountDistinct, 0, 3), Value(2));
    EXPECT_EQ(texts.total(TotalKind::Min, 0, 3), Value("a"));
}

TEST(CrossTabs, PivotWithTotalsOnBothSides) {
    const std::string text =
        "[source]\nstatement = \"x\"\ncolumns = [\"Code\", \"Book\", \"Amount currency\"]\n"
        "[crosstab]\nrows = [\"Code\"]\ncolumns = \"Book\"\nvalue = \"Amount\"\nwidth = 18\nrowTotal = "
        "\"Total\"\n[[column]]\nname = \"Code\"\nwidth = 15\n[reportFooter]\ntotals = \"All\"\n";
    const auto m = [](int n) { return Value(Money::whole(n)); };
    auto report = laid(
        text,
        rows({"Code", "Book", "Amount"},
             {{"1", "JV", m(1)}, {"2", "CR", m(10)}, {"1", "CR", m(100)}, {"1", "jv", m(1000)}, {"2", "AP", Value()}}));
    EXPECT_EQ(pageText(*report),
              "Code\tAP\tCR\tJV\tTotal\n"
              "1\t100.00\t1,001.00\t1,101.00\n"
              "2\t10.00\t10.00\n"
              "All\t0\t110.00\t1,001.00\t1,111.00");
}

const std::string kRows = "[source]\nstatement = \"x\"\ncolumns = [\"Kind\", \"Amount currency\"]\n";

ResultSet kinds() {
    const auto m = [](int n) { return Value(Money::whole(n)); };
    return rows({"Kind", "Amount"}, {{"b", m(3)}, {"a", m(0)}, {"b", m(-1)}, {"c", m(2)}, {"a", m(7)}});
}

TEST(Bands, FilterSortAndStyleByConditions) {
    auto report =
        samples::fromText("title = \"T\"\nwhere = \"Amount <> 0\"\nsort = [\"Kind desc\", \"Amount\"]\n" + kRows +
                          "[detail]\nheadings = \"none\"\nconditions = [{ when = \"Kind = 'c'\", style = \"bold\" }]\n"
                          "[[column]]\nname = \"Kind\"\n[[column]]\nname = \"Amount\"\n"
                          "conditions = [{ when = \"Amount < 0\", style = \"alert\" }]\n");
    report->setRows("main", kinds());
    report->runOnRows();
    report->layout();
    EXPECT_EQ(pageText(*report), "c\t2.00\nb\t-1.00\nb\t3.00\na\t7.00");
    const Document& document = report->document();
    const auto look = [&](std::size_t run) {
        const TextRun& r = document.pages[0].runs[run];
        return std::pair(document.fonts[static_cast<std::size_t>(r.font)].bold, r.color == 0xb00020);
    };
    EXPECT_EQ(look(0), std::pair(true, false));
    EXPECT_EQ(look(1), std::pair(true, false));
    EXPECT_EQ(look(3), std::pair(false, true));
    EXPECT_EQ(look(5), std::pair(false, false));
}

TEST(Bands, HeaderOnceFooterAtTheBottom) {
    auto report = laid(
        kRows +
            "[reportHeader]\ntext = [{ text = \"cover\" }]\n[pageHeader]\ntext = [{ text = \"head {pageNumber()}\" }]\n"
            "[detail]\nheight = 12\ntext = [{ text = \"{Kind}\" }]\n[reportFooter]\natBottom = true\nheight = "
            "8\ntext = [{ text = \"end\" }]\n",
        kinds());
    ASSERT_EQ(report->pages(), 2);
    EXPECT_EQ(pageText(*report, 0).substr(0, 12), "cover\nhead 1");
    EXPECT_EQ(pageText(*report, 1).substr(0, 6), "head 2");
    const TextRun& end = report->document().pages[1].runs.back();
    EXPECT_EQ(end.text, "end");
    EXPECT_NEAR(end.y, 60 - 5 - 8, 0.01);
}

TEST(Bands, LabelsRunDownColumnsOfThePage) {
    auto report =
        samples::fromText("title = \"T\"\n[page]\nsize = \"100x60\"\nmargins = [5, 5, 5, 5]\ncolumns = 2\ngap = 10\n" +
                          kRows + "[detail]\nheight = 20\ntext = [{ text = \"{Kind}{rowNumber()}\" }]\n");
    report->setRows("main", kinds());
    report->runOnRows();
    report->layout();
    ASSERT_EQ(report->pages(), 2);
    EXPECT_EQ(pageText(*report, 0), "b1\tb3\na2\tc4");
    EXPECT_EQ(pageText(*report, 1), "a5");
    EXPECT_NEAR(report->document().pages[0].runs[2].x, 55, 0.01);
}

TEST(Bands, OtherSourcesGiveTheirFirstRow) {
    auto report = samples::fromText(
        "title = \"T\"\n[[source]]\nstatement = \"x\"\ncolumns = [\"Kind\", \"Amount currency\"]\n"
        "[[source]]\nname = \"Head\"\nstatement = \"y\"\ncolumns = [\"Name\", \"Kind\"]\n"
        "[pageHeader]\ntext = [{ text = \"{Head.Name} {Head.Kind} {Kind}\" }]\n"
        "[pageFooter]\ntext = [{ text = \"last\", when = \"pageNumber() = pages()\" }]\n"
        "[detail]\nheight = 200\n");
    report->setRows("main", kinds());
    report->setRows("Head", rows({"Name", "Kind"}, {{"EXAMPLE", "x"}, {"other", "y"}}));
    report->runOnRows();
    report->layout();
    EXPECT_EQ(pageText(*report, 0), "EXAMPLE x b");
    EXPECT_EQ(pageText(*report, 4), "EXAMPLE x a\nlast");
}

TEST(Bands, ImagesLieBesideTheTemplate) {
    auto report =
        laid(kRows + "[pageHeader]\nimage = [{ file = \"logo-{Kind}.png\", x = 2, y = 3, width = 20, height = 10 }]\n",
             kinds());
    const PageImage& image = report->document().pages[0].pictures.at(0);
    EXPECT_EQ(image.path, "Reports/logo-b.png");
    EXPECT_NEAR(image.x, 7, 0.01);
    EXPECT_NEAR(image.y, 8, 0.01);
    // a missing image leaves its place empty; the page is drawn all the same
    EXPECT_EQ(report->savePng("/tmp/kv_image_test", 72).size(), 1U);
    std::remove("/tmp/kv_image_test.png");
}

TEST(Barcodes, FollowTheirTables) {
    // the check symbol of "PJJ123C" in set B is 55
    const Barcode code = encodeBarcode(BarcodeKind::Code128, "PJJ123C");
    EXPECT_EQ(code.modules(), 11 * 9 + 13);
    const std::vector<int> check(code.widths.begin() + 6 * 8, code.widths.begin() + 6 * 9);
    EXPECT_EQ(check, (std::vector<int>{3, 1, 1, 3, 2, 1}));
    // pairs of digits halve the length
    EXPECT_EQ(encodeBarcode(BarcodeKind::Code128, "0123456789").modules(), 11 * 7 + 13);
    // every letter of Code 39 has nine elements, three of them wide, and a gap after it
    for (const char letter : std::string("0AZ-. $/+%")) {
        const Barcode one = encodeBarcode(BarcodeKind::Code39, std::string(1, letter));
        EXPECT_EQ(one.widths.size(), 29U) << letter;
        EXPECT_EQ(one.modules(), 3 * 12 + 2) << letter;
    }
    EXPECT_THROW((void)encodeBarcode(BarcodeKind::Code39, "a"), Error);
    EXPECT_THROW((void)encodeBarcode(BarcodeKind::Code128, "ñ"), Error);
}

}  // namespace
}  // namespace kv
