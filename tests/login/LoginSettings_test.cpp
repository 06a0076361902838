#include "platform/login/LoginSettings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

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

TEST_F(Settings, ABrokenFileIsNamedWithItsLine) {
    fs::create_directories(fs::path(file).parent_path());
    writeTextFile(file, "source = \"x\"\nemployee = \n");
    try {
        loadLoginSettings(file);
        FAIL() << "the file is broken";
    } catch (const Error& e) {
        EXPECT_EQ(e.number, 321);
        EXPECT_NE(e.description.find(file + ", line 2"), std::string::npos) << e.description;
    }
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
