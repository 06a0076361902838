// The map of screens against the menus that stand on it, and what "find anything" offers by the rights of a user.

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "app/Program.h"
#include "core/FindSources.h"
#include "core/MainMenu.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

TEST(ScreenList, EveryMenuEntryAndItsScreenAskForTheSameRight) {
    Screens screens;
    registerScreens(screens);
    std::vector<MaintenanceEntry> entries = hospitalLinkEntries();
    for (const auto& section : maintenanceSections()) entries.insert(entries.end(), section.begin(), section.end());
    int found = 0;
    for (const MaintenanceEntry& entry : entries) {
        const ScreenEntry* screen = screens.find(entry.screen);
        if (!screen) continue;
        ++found;
        EXPECT_EQ(screen->right, rightOf(entry.menu)) << entry.screen;
        EXPECT_TRUE(screen->menu.starts_with("File Maintenance")) << entry.screen << ": " << screen->menu;
    }
    EXPECT_GE(found, 7);
    std::set<std::string> names;
    for (const ScreenEntry& screen : screens.all()) {
        EXPECT_TRUE(names.insert(screen.name).second) << screen.name << " stands twice";
        EXPECT_FALSE(screen.title.empty()) << screen.name;
    }
}

TEST(ScreenList, ChecksAndSearchesLeadToScreensThatOpenDocuments) {
    Screens screens;
    registerScreens(screens);
    for (const BookEntry& book : bookEntries()) {
        const bool batches = std::string_view(book.screen) == "frmGeneral";
        EXPECT_TRUE(!batches || screens.hasDocuments(book.documents)) << book.code;
    }
    for (const RecordSource& source : recordSources()) {
        EXPECT_FALSE(rightOf(source.control).empty()) << source.kind << " could be found by everyone";
        EXPECT_TRUE(!screens.find(source.screen) || screens.hasDocuments(source.screen)) << source.screen;
    }
}

/// The kinds of records that an employee finds, with how many of each.
std::string kindsOf(const std::string& file, const std::string& employee) {
    Desk desk(file, employee);
    registerScreens(desk.session().screens);
    // screens of other rooms, as a later version registers them
    for (const char* screen : {"frmAPVEntry", "frmBuildVendors", "frmBuildAcct_2"}) {
        if (!desk.session().screens.find(screen)) {
            desk.session().screens.add({screen, "payables", screen, "", "", {}, [](Session&, std::string_view) {}});
        }
    }
    desk.session().UserAccess.LoadSettings(desk.cn(), employee);
    Finder finder;
    fillFinder(desk.session(), {}, finder);
    std::map<std::string, int> counts;
    for (std::size_t i = 0; i < finder.size(); ++i) {
        ++counts[recordSources()[static_cast<std::size_t>(finder.at(i).source - kFirstRecordSource)].kind];
    }
    std::string kinds;
    for (const auto& [kind, count] : counts) kinds += kind + " " + std::to_string(count) + ";";
    return kinds;
}

TEST(FindSources, OfferWhatTheUserMayOpen) {
    const std::string file = freshHospital(scratchFolder(), "find.db");
    std::string vendors;
    std::string accounts;
    {
        Desk desk(file);
        for (const char* book : {"JV", "JV", "AR"}) {
            desk.openBook(book);
            JournalBatch batch = balancedBatch(book, 2);
            SaveJournalBatch(desk.session(), batch);
        }
        vendors = "Vendor " + desk.ask("SELECT COUNT(*) FROM VEND") + ";";
        accounts = "Account " + desk.ask("SELECT COUNT(*) FROM AcctCode") + ";";
    }
    EXPECT_EQ(kindsOf(file, "E001"), "AR batch 1;" + accounts + "JV batch 2;" + vendors);
    EXPECT_EQ(kindsOf(file, "E002"), vendors);
    EXPECT_EQ(kindsOf(file, "E003"), "AR batch 1;JV batch 2;");
    EXPECT_EQ(kindsOf(file, "E005"), "");
}

}  // namespace
}  // namespace kv
