// A workstation that dies between two statements of a save leaves the whole document or nothing of it.

#include <gtest/gtest.h>

#include "ledger/Balances.h"
#include "ledger/HospitalSettings.h"
#include "ledger/PeriodTasks.h"
#include "tests/desk/Desk.h"
#include "tests/desk/Killed.h"

namespace kv {
namespace {

constexpr int kLines = 20;

/// What stands of AR batches: lines, daily rows and headers, as one text.
std::string traces(Desk& desk) {
    return desk.ask("SELECT COUNT(*) FROM ARDT") + " " + desk.ask("SELECT COUNT(*) FROM tbDailyCharges") + " " +
           desk.ask("SELECT COUNT(*) FROM AR");
}

TEST(KilledSave, OfANewBatchLeavesAllOrNothing) {
    const std::string file = freshHospital(scratchFolder());
    int died = 0;
    int stored = 0;
    for (int point = 1; point <= 60; ++point) {
        const bool killed = diesAt(
            file, point, [](Desk& desk) { desk.openBook("AR"); },
            [](Desk& desk) {
                JournalBatch batch = balancedBatch("AR", kLines);
                SaveJournalBatch(desk.session(), batch);
            });
        died += killed ? 1 : 0;
        stored += killed ? 0 : 1;
        Desk after(file);
        ASSERT_EQ(traces(after), std::to_string(stored * kLines) + " " + std::to_string(stored * kLines) + " " +
                                     std::to_string(stored))
            << "killed before statement " << point;
    }
    EXPECT_GE(died, 50);
    // the file is sound, and the next save gets a number of its own
    Desk next(file);
    next.openBook("AR");
    JournalBatch batch = balancedBatch("AR", kLines);
    SaveJournalBatch(next.session(), batch);
    EXPECT_EQ(next.ask("SELECT COUNT(*) FROM AR WHERE Batch = '" + batch.Batch + "'"), "1");
}

TEST(KilledSave, OfAnEditedBatchLeavesTheOldOneOrTheNewOne) {
    const std::string file = freshHospital(scratchFolder(), "edited.db");
    std::string number;
    {
        Desk desk(file);
        desk.openBook("JV");
        JournalBatch batch = balancedBatch("JV", kLines);
        SaveJournalBatch(desk.session(), batch);
        number = batch.Batch;
    }
    bool changed = false;
    for (int point = 1; !changed && point < 100; ++point) {
        changed = !diesAt(
            file, point, [](Desk& desk) { desk.openBook("JV"); },
            [&](Desk& desk) {
                JournalBatch batch = balancedBatch("JV", 4);
                batch.FormMode = number;
                batch.Batch = number;
                batch.Particular = "Changed";
                SaveJournalBatch(desk.session(), batch);
            });
        Desk after(file);
        const std::string lines = after.ask("SELECT COUNT(*) FROM JVDT WHERE Batch = '" + number + "'");
        const std::string text = after.ask("SELECT Particular FROM JV WHERE Batch = '" + number + "'");
        ASSERT_EQ(lines + " " + text, changed ? "4 Changed" : "20 Lines of a test")
            << "killed before statement " << point;
    }
    EXPECT_TRUE(changed);
}

/// The three tables that the settings live in, and the log of their changes, as one text.
std::string settings(Desk& desk) {
    return desk.ask("SELECT Address1 FROM SYS") + " " +
           desk.ask("SELECT ParamValue FROM PARAMETERS WHERE Code = 'PurchaseDiscountCode'") + " " +
           desk.ask("SELECT RDOCode FROM tbBIRRegistration") + " " + desk.ask("SELECT COUNT(*) FROM AuditLog");
}

TEST(KilledSave, OfTheProgramSettingsLeavesTheOldOnesOrTheNewOnes) {
    const std::string file = freshHospital(scratchFolder(), "settings.db");
    int died = 0;
    bool changed = false;
    for (int point = 1; !changed && point < 100; ++point) {
        changed = !diesAt(
            file, point, [](Desk&) {},
            [](Desk& desk) {
                SettingValues values = StoredSettings(desk.session());
                values[settingAt(Setting::Store::Sys, "Address1")] = "NEW STREET";
                values[settingAt(Setting::Store::Parameter, "PurchaseDiscountCode")] = "4503";
                values[settingAt(Setting::Store::Registration, "RDOCode")] = "25A";
                SaveSettings(desk.session(), values);
            });
        died += changed ? 0 : 1;
        Desk after(file);
        ASSERT_EQ(settings(after), changed || after.ask("SELECT RDOCode FROM tbBIRRegistration") == "25A"
                                       ? "NEW STREET 4503 25A 3"
                                       : "1 SAMPLE STREET, SAMPLE CITY 4502 001 0")
            << "killed before statement " << point;
    }
    EXPECT_TRUE(changed);
    EXPECT_GE(died, 45) << "a statement for each of the parameters alone";
}

/// The opening balances as text, one account a line.
std::vector<std::string> balances(Desk& desk) {
    std::vector<std::string> found;
    Recordset rows = desk.cn().Open("SELECT Acct, Debit, Credit FROM BegBalance ORDER BY Acct");
    for (; !rows.eof(); rows.moveNext()) {
        found.push_back(rows["Acct"].text() + "|" + rows["Debit"].text() + "|" + rows["Credit"].text());
    }
    return found;
}

TEST(KilledSave, OfAYearsBalancesLeavesTheOldOnesOrTheNewOnes) {
    const std::string file = freshHospital(scratchFolder(), "balances.db");
    const auto save = [](Desk& desk, int pesos) {
        const Money amount = Money::whole(pesos);
        SaveYearBalances(desk.session(), "2024",
                         {{"1101", "", amount, Money()}, {"", "", Money(), Money()}, {"3101", "", Money(), amount}});
    };
    {
        Desk desk(file);
        save(desk, 100);
    }
    bool changed = false;
    int died = 0;
    for (int point = 1; !changed && point < 30; ++point) {
        changed = !diesAt(
            file, point, [](Desk&) {}, [&](Desk& desk) { save(desk, 250); });
        died += changed ? 0 : 1;
        Desk after(file);
        const auto rows = balances(after);
        const bool done = rows.front() == "1101|250.00|0.00";
        EXPECT_EQ(rows, (done ? std::vector<std::string>{"1101|250.00|0.00", "3101|0.00|250.00"}
                              : std::vector<std::string>{"1101|100.00|0.00", "3101|0.00|100.00"}))
            << "killed before statement " << point;
        EXPECT_EQ(after.ask("SELECT COUNT(*) FROM AuditLog"), done ? "2" : "1");
    }
    EXPECT_TRUE(changed);
    EXPECT_GE(died, 5);
}

}  // namespace
}  // namespace kv
