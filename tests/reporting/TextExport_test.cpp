// The texts of exports, byte by byte.

#include "reporting/TextExport.h"

#include <gtest/gtest.h>

#include "reporting/frmRefusedCells.h"

namespace kv {
namespace {

TEST(TextExport, CellsOfAFileAndOfTheClipboard) {
    struct {
        const char* cell;
        const char* inFile;
        const char* onClipboard;
    } rows[] = {
        {"A, \"B\"", "\"A, B\"", "A, B"},
        {"two\r\nlines", "two_lines", "two_lines"},
        {"two\nlines\rmore", "two_lines_more", "two_lines_more"},
        {"\"quoted\"", "quoted", "quoted"},
        {"tab\there", "tab\there", "tab here"},
        {"1,250.50", "\"1,250.50\"", "1,250.50"},
        {"", "", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(cellsText({{row.cell, "x"}}, true), std::string(row.inFile) + ",x") << row.cell;
        EXPECT_EQ(cellsText({{row.cell, "x"}}, false), std::string(row.onClipboard) + "\tx") << row.cell;
    }
    EXPECT_EQ(cellsText({{"Code", "Title"}, {"1101", "CASH"}, {"", ""}}, true), "Code,Title\r\n1101,CASH\r\n,");
    EXPECT_EQ(cellsText({}, true), "");
}

TEST(TextExport, GluesTheCellsOfARow) {
    const Recordset rows(
        {{{"A"}, {"B"}, {"C"}}, {{Value("H"), Value(), Value(12)}, {Value(), Value("x,y"), Value(" ")}}});
    EXPECT_EQ(gluedText(rows), "H12\r\nx,y \r\n");
    EXPECT_EQ(gluedText(Recordset({{{"A"}}, {}})), "");
}

TEST(TextExport, NamesEachRefusedCell) {
    EXPECT_EQ(refusalText({{3, "Debit", "abc", "not a number"}, {12, "Code", "9999", "Item does not exists."}}),
              "Line 3, Debit \"abc\": not a number\nLine 12, Code \"9999\": Item does not exists.");
}

}  // namespace
}  // namespace kv
