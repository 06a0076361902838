#pragma once
// SqliteDesk: a throwaway database in memory behind SQLite's ODBC driver, for tests that need an engine not ours.

#include <filesystem>
#include <memory>
#include <string>

#include "platform/odbc/Odbc.h"

namespace kv::test {

/// The file of an ODBC driver, or empty where its package is missing.
inline std::string odbcDriverFile(const std::string& name) {
    std::error_code none;
    for (const auto& folder : std::filesystem::directory_iterator("/usr/lib", none)) {
        const auto file = folder.path() / "odbc" / name;
        if (std::filesystem::exists(file, none)) return file.string();
    }
    return {};
}

/// Nothing where the package libsqliteodbc is missing.
inline std::unique_ptr<Connection> openSqliteDesk(const std::string& file = ":memory:") {
    const std::string driver = odbcDriverFile("libsqlite3odbc.so");
    if (driver.empty()) return nullptr;
    OdbcOptions options;
    options.connectionString = "Driver=" + driver + ";Database=" + file + ";Server=desk;UID=clerk;PWD=hidden;";
    return openOdbc(options);
}

constexpr const char* kNoSqliteOdbc = "install libsqliteodbc to run this test";

}  // namespace kv::test
