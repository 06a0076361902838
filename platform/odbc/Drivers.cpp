#include <algorithm>
#include <array>
#include <filesystem>

#include "platform/base/Text.h"
#include "platform/odbc/Handles.h"
#include "platform/odbc/Odbc.h"
#include "platform/odbc/Wide.h"

namespace kv {
namespace {

constexpr const char* kFreeTdsName = "FreeTDS";
constexpr const char* kFreeTdsFile = "libtdsodbc.so";

/// A value of a connection string; braces keep what would end it.
std::string settingValue(std::string_view value) {
    const bool plain = value.find_first_of("[]{}(),;?*=!@ '\"") == std::string_view::npos;
    return plain ? std::string(value) : "{" + replaceAll(value, "}", "}}") + "}";
}

std::string setting(std::string_view key, std::string_view value) {
    return std::string(key) + "=" + settingValue(value) + ";";
}

/// FreeTDS where its package did not register it with unixODBC.
std::string freeTdsFile() {
    std::error_code none;
    for (const auto& folder : std::filesystem::directory_iterator("/usr/lib", none)) {
        const auto file = folder.path() / "odbc" / kFreeTdsFile;
        if (std::filesystem::exists(file, none)) return file.string();
    }
    return {};
}

/// "host,port" as its two parts; the port is empty where none is given.
std::pair<std::string, std::string> hostAndPort(std::string_view server) {
    const std::string_view trimmed = trimBlanks(server);
    const std::size_t comma = trimmed.rfind(',');
    if (comma == std::string_view::npos) return {std::string(trimmed), ""};
    return {std::string(trimBlanks(trimmed.substr(0, comma))), std::string(trimBlanks(trimmed.substr(comma + 1)))};
}

}  // namespace

std::vector<std::string> odbcDrivers() {
    odbc::Environment environment(SQL_NULL_HANDLE);
    SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    std::vector<std::string> names;
    std::array<SQLCHAR, 256> name{};
    std::array<SQLCHAR, 1024> attributes{};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT attributesLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDrivers(environment.get(), direction, name.data(), name.size(), &nameLength,
                                    attributes.data(), attributes.size(), &attributesLength))) {
        names.emplace_back(reinterpret_cast<const char*>(name.data()));
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

std::string sqlServerDriver() {
    std::string microsoft;
    bool freeTds = false;
    for (const std::string& name : odbcDrivers()) {
        const bool newer = name.size() > microsoft.size() || (name.size() == microsoft.size() && name > microsoft);
        if (name.starts_with("ODBC Driver ") && name.ends_with(" for SQL Server") && newer) microsoft = name;
        freeTds = freeTds || name == kFreeTdsName;
    }
    if (!microsoft.empty()) return microsoft;
    return freeTds ? kFreeTdsName : freeTdsFile();
}

std::string odbcConnectionString(const SqlServerLogon& logon) {
    const std::string driver = logon.driver.empty() ? sqlServerDriver() : logon.driver;
    const bool freeTds = containsNoCase(driver, "tds");
    const auto [host, port] = hostAndPort(logon.server);
    std::string text = "Driver=" + (driver.starts_with('/') ? driver : "{" + replaceAll(driver, "}", "}}") + "}") + ";";
    if (freeTds) {
        // the oldest protocol with all of SQL Server 2016's types; UTF-8 where the driver would guess a code page
        text += setting("Server", host) + setting("Port", port.empty() ? "1433" : port) + "TDS_Version=7.4;";
        text += "ClientCharset=UTF-8;";
        if (host.find('\\') != std::string::npos) text = replaceAll(text, "Port=1433;", "");  // the browser tells it
    } else {
        text += setting("Server", port.empty() ? host : "tcp:" + host + "," + port);
    }
    text += "APP={Korvane Accounting};";
    if (!logon.database.empty()) text += setting("Database", logon.database);
    if (logon.user.empty()) {
        text += "Trusted_Connection=yes;";
    } else {
        text += setting("UID", logon.user) + setting("PWD", logon.password);
    }
    return text + logon.options;
}

}  // namespace kv
