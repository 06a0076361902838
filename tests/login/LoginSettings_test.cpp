#include "platform/login/LoginSettings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

class Settings : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "kv_login_XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        file = folder + "/deeper/login.toml";
    }
    void TearDown() override { fs::remove_all(folder); }
    std::string folder;
    std::string file;
};

TEST_F(Settings, AMissingFileMeansThisComputer) {
    const LoginSettings settings = loadLoginSettings(file);
    EXPECT_EQ(settings, LoginSettings());
    EXPECT_TRUE(settings.source(settings.chosen).embedded());
    EXPECT_EQ(settings.source("no such server").name, kThisComputer);
}

TEST_F(Settings, WhatWasSavedComesBack) {
    LoginSettings settings;
    settings.chosen = "Main \"server\"";
    settings.employee = "E001";
    settings.keep({"Main \"server\"", "books\\ACC,1433", "clerk", "", ""});
    settings.keep({"Old = [x]", "10.0.0.5", "", "FreeTDS", "Encryption=require"});
    settings.keep({"MAIN \"SERVER\"", "books\\NEW", "clerk2", "", ""});  // replaces the first
    saveLoginSettings(file, settings);
    EXPECT_EQ(loadLoginSettings(file), settings);
    EXPECT_EQ(settings.servers.size(), 2u);
    EXPECT_EQ(loadLoginSettings(file).source("main \"server\"").server, "books\\NEW");
    struct stat state {};
    ASSERT_EQ(stat(file.c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777u, 0600u);
}

TEST_F(Settings, ADamagedFileIsNamedWithItsLineAndKeptBesideTheNewOne) {
    struct Damage {
        const char* what;
        std::string text;
        int line;
    };
    const std::string good = "source = \"Books\"\n";
    const std::vector<Damage> damages = {
        {"no value", good + "employee = \n", 2},
        {"accented text without quotes",
         good +
             "employee = Pe\xC3\xB1"
             "a\n" +
             good,
         2},
        {"accented text begins without quotes",
         good + "\n[[server]]\nname = \xC3\x91"
                "andu\n",
         4},
        {"accented key", good + "sal\xC3\xB3n = 1\n", 2},
        {"letters of another encoding",
         "employee = \"Pe\xF1"
         "a\"\n",
         1},
        {"cut off within a text", good + "employee = \"E0", 2},
        {"a key twice", good + good, 2},
        {"zeros of a lost block", std::string(512, '\0'), 1},
        {"wide letters", std::string("\xFF\xFEs\0o\0", 6), 1},
        {"nested without end", "a = " + std::string(5000, '['), 1},
    };
    fs::create_directories(fs::path(file).parent_path());
    LoginSettings fresh;
    fresh.employee =
        "DE LA PE\xC3\x91"
        "A";
    std::size_t kept = 0;
    for (const Damage& damage : damages) {
        writeTextFile(file, damage.text);
        try {
            (void)loadLoginSettings(file);
            ADD_FAILURE() << damage.what;
        } catch (const Error& e) {
            EXPECT_EQ(e.number, 321) << damage.what;
            const std::string place = file + ", line " + std::to_string(damage.line) + ": ";
            EXPECT_EQ(e.description.substr(0, place.size()), place) << damage.what;
            EXPECT_GT(e.description.size(), place.size()) << damage.what;
        }
        saveLoginSettings(file, fresh);
        EXPECT_EQ(loadLoginSettings(file), fresh) << damage.what;
        std::vector<std::string> copies;
        for (const auto& entry : fs::directory_iterator(fs::path(file).parent_path())) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with("login.toml.damaged-")) copies.push_back(readTextFile(entry.path().string()));
        }
        EXPECT_EQ(copies.size(), ++kept) << damage.what;
        EXPECT_EQ(std::count(copies.begin(), copies.end(), damage.text), 1) << damage.what;
    }
    saveLoginSettings(file, fresh);  // a sound file is no damage
    const fs::directory_iterator left(fs::path(file).parent_path());
    EXPECT_EQ(static_cast<std::size_t>(std::distance(begin(left), end(left))), kept + 1);
}

TEST_F(Settings, UnknownAndMistypedEntriesDoNoHarm) {
    fs::create_directories(fs::path(file).parent_path());
    writeTextFile(file, "source = 5\nfuture = true\nserver = [1, {name = \"a\"}, {server = \"b\", user = 7}]\n");
    const LoginSettings settings = loadLoginSettings(file);
    EXPECT_EQ(settings.chosen, kThisComputer);
    ASSERT_EQ(settings.servers.size(), 1u);
    EXPECT_EQ(settings.servers[0].name, "b");
    EXPECT_EQ(settings.servers[0].user, "");
}

}  // namespace
}  // namespace kv
