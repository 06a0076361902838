// Backup and restore from the File menu where there is nothing to copy: on a server, over itself, from a bad file.

#include "core/DatabaseTasks.h"

#include <gtest/gtest.h>

#include "platform/base/Paths.h"
#include "platform/forms/Application.h"
#include "platform/forms/Dialogs.h"
#include "tests/core/SilentConnection.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

/// A person who names one file and reads every box; questions are answered with No.
class DatabaseTasks : public testing::Test {
protected:
    void SetUp() override {
        dialogHooks().message = [this](const MessageBox& box) {
            told.push_back(box.text);
            return box.buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
        };
        dialogHooks().file = [this](const std::string&, const std::string&, bool) {
            ++filesAsked;
            return std::optional<std::string>(chosen);
        };
    }
    void TearDown() override { dialogHooks() = {}; }

    std::vector<std::string> told;
    std::string chosen;
    int filesAsked = 0;
};

TEST_F(DatabaseTasks, OnAServerSayThatBackupsAreMadeThere) {
    SilentConnection server;
    clsCurrentUser user;
    Screens screens;
    Session session(user, server, screens);
    session.ServerNameText = "HIS-SQL1";
    BackUpBooks(session);
    EXPECT_FALSE(RestoreBooks(session));
    ASSERT_EQ(told.size(), 2u);
    for (const std::string& text : told) {
        EXPECT_EQ(text,
                  "The books are on the SQL Server HIS-SQL1. Backups are made and restored there, by its "
                  "administrator.");
    }
    EXPECT_EQ(filesAsked, 0);
}

TEST_F(DatabaseTasks, NeverWriteTheBackupOverTheBooks) {
    const std::string file = freshHospital(scratchFolder(), "self.db");
    Desk desk(file);
    chosen = scratchFolder() + "/./self.db";
    BackUpBooks(desk.session());
    ASSERT_EQ(told.size(), 1u);
    EXPECT_NE(told.front().find("cannot take the place of the books"), std::string::npos);
    EXPECT_NE(desk.ask("SELECT COUNT(*) FROM AcctCode"), "0");
}

TEST_F(DatabaseTasks, RefuseABadCopyAndTakeNoForAnAnswer) {
    char name[] = "test";
    char* argv[] = {name, nullptr};
    int argc = 1;
    const Application application(argc, argv);  // the busy pointer needs one
    const std::string file = freshHospital(scratchFolder(), "kept.db");
    Desk desk(file);
    chosen = scratchFolder() + "/bad.db";
    writeTextFile(chosen, "no database");
    EXPECT_FALSE(RestoreBooks(desk.session()));
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told.back(), "The database file " + chosen + " is not a database.\nThe books stay as they are.");
    // a sound one of this program that was never used
    chosen = freshHospital(scratchFolder(), "other.db");
    EXPECT_FALSE(RestoreBooks(desk.session()));
    ASSERT_EQ(told.size(), 2u);
    EXPECT_NE(told.back().find("EXAMPLE GENERAL HOSPITAL\nbatches and vouchers: 0"), std::string::npos) << told.back();
    EXPECT_EQ(desk.ask("SELECT COUNT(*) FROM UserLog WHERE LogText LIKE 'Restore%'"), "0");
}

}  // namespace
}  // namespace kv
