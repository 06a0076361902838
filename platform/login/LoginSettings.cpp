#include "platform/login/LoginSettings.h"

#include <toml++/toml.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/base/TomlText.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

constexpr long kErrBadFormat = 321;
constexpr long kErrNotWritten = 75;
constexpr const char* kHead =
    "# Where this workstation finds the books. Written at each sign-in; no password is kept here.\n";

std::string textOf(const TextNode& table, std::string_view key, const char* otherwise = "") {
    const TextNode* node = table.find(key);
    return node != nullptr && node->kind == TextNode::Kind::Text ? node->text : otherwise;
}

toml::table tableOf(const DataSource& server) {
    toml::table table;
    table.insert("name", server.name);
    table.insert("server", server.server);
    table.insert("user", server.user);
    if (!server.driver.empty()) table.insert("driver", server.driver);
    if (!server.options.empty()) table.insert("options", server.options);
    return table;
}

/// An administrator's work may be in a file that one slip made unreadable.
void keepWhatCannotBeRead(const std::string& path) {
    try {
        (void)loadLoginSettings(path);
    } catch (const Error&) {
        std::error_code failed;
        fs::copy_file(path, freeNameBeside(path, "damaged"), failed);
        if (failed) throw Error(kErrNotWritten, "LoginSettings", "The file cannot be copied: " + path);
    }
}

}  // namespace

DataSource LoginSettings::source(const std::string& name) const {
    for (const DataSource& server : servers) {
        if (equalsNoCase(server.name, name)) return server;
    }
    DataSource own;
    own.name = kThisComputer;
    return own;
}

void LoginSettings::keep(const DataSource& server) {
    const auto known = std::find_if(servers.begin(), servers.end(),
                                    [&](const DataSource& s) { return equalsNoCase(s.name, server.name); });
    if (known == servers.end()) {
        servers.push_back(server);
    } else {
        *known = server;
    }
}

std::string defaultLoginFile() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const fs::path folder = configured && *configured ? fs::path(configured) : fs::path(home ? home : ".") / ".config";
    return (folder / "korvane" / "login.toml").string();
}

LoginSettings loadLoginSettings(const std::string& path) {
    LoginSettings settings;
    if (!fileExists(path)) return settings;
    TextNode file;
    try {
        file = readToml(readTextFile(path), path);
    } catch (const TomlError& e) {
        throw Error(kErrBadFormat, "LoginSettings",
                    path + ", line " + std::to_string(e.place.line) + ": " + e.description);
    }
    settings.chosen = textOf(file, "source", kThisComputer);
    settings.employee = textOf(file, "employee");
    const TextNode* servers = file.find("server");
    if (servers == nullptr) return settings;
    for (const TextNode& node : servers->items) {
        DataSource server{textOf(node, "name"), textOf(node, "server"), textOf(node, "user"), textOf(node, "driver"),
                          textOf(node, "options")};
        if (server.name.empty()) server.name = server.server;
        if (!server.embedded()) settings.servers.push_back(std::move(server));
    }
    return settings;
}

void saveLoginSettings(const std::string& path, const LoginSettings& settings) {
    toml::table file;
    file.insert("source", settings.chosen);
    file.insert("employee", settings.employee);
    toml::array servers;
    for (const DataSource& server : settings.servers) servers.push_back(tableOf(server));
    if (!servers.empty()) file.insert("server", std::move(servers));
    std::ostringstream text;
    text << kHead << file << "\n";
    std::error_code failed;
    fs::create_directories(fs::path(path).parent_path(), failed);
    keepWhatCannotBeRead(path);
    writeTextFile(path, text.str());
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, failed);
}

}  // namespace kv
