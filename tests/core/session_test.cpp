// What the session takes from the database and the file system at start-up.

#include "core/Session.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/MainMenu.h"
#include "platform/base/Error.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

TEST(GetServerName, TakesTheTextBehindTheKey) {
    EXPECT_EQ(GetServerName("Provider=X;Server=HIS-SQL1;Database=ACCOUNTING;"), "HIS-SQL1");
    EXPECT_EQ(GetServerName("SERVER=a b;"), "a b");
    EXPECT_EQ(GetServerName("server=;x=y;"), "");
    EXPECT_THROW(GetServerName("Provider=X;Server=HIS-SQL1"), Error);
}

TEST(ResourcesFolder, PrefersTheClientsOwn) {
    const fs::path home = fs::temp_directory_path() / ("kv_resources_" + std::to_string(::getpid()));
    fs::create_directories(home);
    EXPECT_EQ(ResourcesFolder(home.string(), "DEMO"), home.string());
    fs::create_directory(home / "Resources");
    EXPECT_EQ(ResourcesFolder(home.string(), "DEMO"), (home / "Resources").string());
    fs::create_directory(home / "Resources_DEMO");
    EXPECT_EQ(ResourcesFolder(home.string(), "DEMO"), (home / "Resources_DEMO").string());
    EXPECT_EQ(ResourcesFolder(home.string(), "OTHER"), (home / "Resources").string());
    fs::remove_all(home);
}

}  // namespace
}  // namespace kv
