// What "find anything" makes of a typed text: what is found, and what stands first.

#include "core/Finder.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

constexpr int kScreens = 0;
constexpr int kAccounts = 1;
constexpr int kBatches = 2;

class FinderTest : public testing::Test {
protected:
    void SetUp() override {
        finder.beginSource(kScreens, 80, true);
        finder.add({"0", "", "Chart of Accounts", "File Maintenance"});
        finder.add({"1", "", "Cost Centers", "File Maintenance"});
        finder.add({"2", "", "Close Period", "Journal Vouchers Book > Batch Entries"});
        finder.add({"3", "", "Trial Balance", "General Ledger > Reports"});
        finder.beginSource(kAccounts, 0);
        finder.add({"1101", "1101", "CASH ON HAND", "AS"});
        finder.add({"1111", "1111", "CASH IN BANK - PEÑAFRANCIA", "AS"});
        finder.add({"4105", "4105", "TRIAL FEES", "IN"});
        finder.beginSource(kBatches, 0);
        finder.add({"JV 15", "JVD03-015-24", "Cash advances of the wards", "03/20/2024  48,250.75"});
        finder.add({"JV 14", "JVD03-014-24", "Depreciation of March", "03/19/2024  1,250.00"});
        finder.add({"AR 000015", "000015", "Charges of March 15", "03/15/2024  350.00"});
    }
    /// The keys that a text finds, the best first.
    std::string found(const char* text) {
        std::string keys;
        for (const std::size_t entry : finder.search(text, 10)) {
            keys += (keys.empty() ? "" : ", ") + std::string(finder.at(entry).key);
        }
        return keys;
    }
    Finder finder;
};

TEST_F(FinderTest, RanksWhatWasMeant) {
    const struct {
        const char* typed;
        const char* found;
    } cases[] = {
        {"", ""},
        {"   ", ""},
        {"zzz", ""},
        // a whole number before numbers and names that only hold it; zeros in front do not count
        {"1101", "1101"},
        {"15", "AR 000015, JV 15"},
        {"jvd03-014", "JV 14"},
        {"014", "JV 14"},
        // names: the beginning, then a word's beginning, then anywhere; screens before records
        {"trial", "3, 4105"},
        {"cash", "1101, 1111, JV 15"},
        {"cash on hand", "1101"},
        {"ash", "1101, 1111, JV 15"},
        // words in any order, all of them
        {"march depreciation", "JV 14"},
        {"march 1101", ""},
        // initials and their beginning, of screens only
        {"coa", "0"},
        {"cp", "2"},
        {"coh", ""},
        // amounts with and without commas, dates, menu paths, letters beyond ASCII
        {"48250.75", "JV 15"},
        {"48,250", "JV 15"},
        {"03/19/2024", "JV 14"},
        {"batch entries", "2"},
        {"peñafr", "1111"},
    };
    for (const auto& one : cases) EXPECT_EQ(found(one.typed), one.found) << "typed: " << one.typed;
}

TEST_F(FinderTest, FindsTheSameWhetherTypedAtOnceOrLetterByLetter) {
    for (const std::string text : {"march 15", "cash ad", "1,250.0", "jvd03-01", "coa"}) {
        finder.search("", 1);
        const std::string atOnce = found(text.c_str());
        EXPECT_NE(atOnce, "") << text;
        finder.search("", 1);
        for (std::size_t length = 1; length < text.size(); ++length) finder.search(text.substr(0, length), 2);
        EXPECT_EQ(found(text.c_str()), atOnce) << text;
        // going back widens again
        EXPECT_EQ(found("cash"), "1101, 1111, JV 15");
    }
    EXPECT_EQ(finder.search("cash", 2).size(), 2u);
    EXPECT_EQ(finder.found(), 3u);
}

TEST_F(FinderTest, KeepsWhatItWasGivenAndCutsWhatIsEndless) {
    const std::string endless(5000, 'x');
    finder.add({"JV 99", "99", endless, endless});
    const std::size_t entry = finder.search("99", 1).at(0);
    EXPECT_EQ(finder.at(entry).title.size(), 400u);
    EXPECT_EQ(finder.at(entry).key, "JV 99");
    EXPECT_EQ(finder.at(0).title, "Chart of Accounts");
    EXPECT_EQ(finder.at(0).detail, "File Maintenance");
}

}  // namespace
}  // namespace kv
