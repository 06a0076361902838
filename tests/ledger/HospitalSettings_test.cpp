// The program settings as data: tax numbers, samples of printed numbers, what counts as a change.

#include "ledger/HospitalSettings.h"

#include <gtest/gtest.h>

#include <set>

namespace kv {
namespace {

using Store = Setting::Store;

TEST(TaxNumber, IsWrittenWithItsDashesOrRefused) {
    const std::pair<const char*, const char*> rows[] = {
        {"123456789", "123-456-789"},
        {" 123-456-789 ", "123-456-789"},
        {"123456789000", "123-456-789-000"},
        {"12-34-56-78-90-00", "123-456-789-000"},
        {"123-456-789-00001", "123-456-789-00001"},
        {"12345678", ""},
        {"1234567890", ""},
        {"123456789000001", ""},
        {"123-456-78X", ""},
        {"", ""},
    };
    for (const auto& [typed, written] : rows) EXPECT_EQ(taxNumber(typed), written) << typed;
}

TEST(NumberSample, ShowsTheNumberAndWhatIsWrongWithTheMask) {
    struct {
        const char* mask;
        const char* text;
        const char* warning;
    } rows[] = {
        {"JVDMM-###-YY", "JVD03-007-24", ""},
        {"YYYYMM####", "2024030007", ""},
        {"JVMM-YY", "JV03-24", "no ###: one number for the whole month"},
        {"##-MM-YY", "##-03-24", "no ###: one number for the whole month"},
        {"JV###-YY", "JV007-24", "no MM: comes again each month"},
        {"JVMM-###", "JV03-007", "no YY: comes again each year"},
    };
    for (const auto& row : rows) {
        const NumberSample sample = maskSample(row.mask, true, Date(2024, 3, 15));
        EXPECT_EQ(sample.text, row.text);
        EXPECT_EQ(sample.warning, row.warning) << row.mask;
        EXPECT_FALSE(sample.tooLong);
    }
    EXPECT_EQ(maskSample("YYMM####", false, Date(2024, 3, 15)).text, "2403007#");
    EXPECT_TRUE(maskSample("JOURNAL-VOUCHER-OF-YYYYYYYY-###", true, Date(2024, 3, 15)).tooLong);
    EXPECT_EQ(formSample("APV", "-YY-0000", Date(2024, 3, 15)).text, "APV-24-0012");
    EXPECT_EQ(formSample("APV", "", Date(2024, 3, 15)).warning, "no 0: one number for all");
}

TEST(Changes, AreTheSettingsThatDifferInTheWordsOfTheScreen) {
    SettingValues before(hospitalSettings().size());
    SettingValues after = before;
    EXPECT_TRUE(ChangesOf(before, after).empty());
    after[settingAt(Store::Sys, "Address1")] = "1 STREET";
    before[settingAt(Store::Registration, "Address1")] = "2 STREET";
    before[settingAt(Store::Sys, "sw_Compare")] = "0";
    after[settingAt(Store::Sys, "sw_Compare")] = "1";
    std::string all;
    for (const Change& change : ChangesOf(before, after)) {
        all += change.What + ": " + change.Before + " > " + change.After + "; ";
    }
    EXPECT_EQ(all,
              "Address:  > 1 STREET; Statements compare with: same month of last year > last month; "
              "Registered address: 2 STREET > ; ");
}

TEST(Options, ThatWereNeverChosenCountAsTheRestOfTheSystemReadsThem) {
    EXPECT_TRUE(kVoucherKeyPair.isFirst("0"));
    EXPECT_FALSE(kVoucherKeyPair.isFirst("")) << "vouchers have one running series unless told otherwise";
    EXPECT_FALSE(kVoucherKeyPair.isFirst("7"));
    EXPECT_TRUE(kYearPair.isFirst(""));
    EXPECT_FALSE(kYearPair.isFirst("fiscal"));
}

TEST(Settings, EachStandsOnceAndEachCodeOfTheGridIsOne) {
    std::set<std::pair<Store, std::string>> seen;
    std::set<std::string> labels;
    for (const Setting& setting : hospitalSettings()) {
        EXPECT_TRUE(seen.insert({setting.store, setting.key}).second) << setting.key;
        EXPECT_TRUE(labels.insert(setting.label).second) << "two settings are called " << setting.label;
        EXPECT_EQ(setting.store == Store::Parameter, *setting.description != '\0') << setting.key;
    }
    std::set<std::size_t> codes;
    for (const CodeSetting& code : codeSettings()) EXPECT_TRUE(codes.insert(settingAt(code.store, code.key)).second);
    EXPECT_EQ(codes.size(), 32U);
}

}  // namespace
}  // namespace kv
