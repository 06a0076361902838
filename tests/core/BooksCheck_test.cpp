// The checks of the books as the screen reads them: heads, and the document behind a row.

#include "core/BooksCheck.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

TEST(BooksCheck, EveryCheckTellsWhatItMeans) {
    const std::vector<BooksCheck> checks = booksChecks();
    EXPECT_GE(checks.size(), 16u);
    for (const BooksCheck& check : checks) {
        EXPECT_FALSE(check.title.empty()) << check.name;
        EXPECT_GT(check.explanation.size(), 40u) << check.name;
        EXPECT_EQ(check.explanation.find("SELECT"), std::string::npos) << check.name;
    }
    const BooksCheck check =
        readCheck("x", "-- Title: One\n-- Explanation: First\n--   second.\nSELECT 1 -- Title: no\n");
    EXPECT_EQ(check.title, "One");
    EXPECT_EQ(check.explanation, "First second.");
}

RowDocument documentOfRow(const std::vector<std::string>& fields, const std::vector<std::string>& cells) {
    ResultSet result;
    Row row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        result.fields.push_back({fields[i]});
        row.emplace_back(cells[i]);
    }
    result.rows.push_back(row);
    const Recordset rows(result);
    return documentOf(rows, rows.rows().front());
}

TEST(BooksCheck, ARowLeadsToItsDocument) {
    const RowDocument batch = documentOfRow({"Book", "Period", "Batch", "Code"}, {"AR", "202403", "12", "1101"});
    EXPECT_EQ(batch.screen + " / " + batch.key, "frmJournEntry / AR 12");
    const RowDocument voucher = documentOfRow({"Book", "Batch"}, {"AP", "77"});
    EXPECT_EQ(voucher.screen + " / " + voucher.key, "frmAPVEntry / AP 77");
    const RowDocument account = documentOfRow({"Period", "Code"}, {"202403", "1101"});
    EXPECT_EQ(account.screen + " / " + account.key, "frmBuildAcct_2 / 1101");
    EXPECT_EQ(documentOfRow({"Period", "Movement"}, {"202403", "1.00"}).screen, "");
    EXPECT_EQ(documentOfRow({"Book", "Batch"}, {"XX", "1"}).screen, "");
}

}  // namespace
}  // namespace kv
