#pragma once
// LoginSettings: where this workstation finds the books; a small TOML file, in which no password stands.

#include <string>
#include <vector>

namespace kv {

/// A place where the books are: this computer's own file, or a SQL Server.
struct DataSource {
    std::string name;
    std::string server;   ///< empty: this computer
    std::string user;     ///< the SQL logon used last
    std::string driver;   ///< empty: the best one installed
    std::string options;  ///< more settings of the driver

    bool embedded() const { return server.empty(); }
    bool operator==(const DataSource&) const = default;
};

constexpr const char* kThisComputer = "This computer";

struct LoginSettings {
    std::string chosen = kThisComputer;  ///< name of the source used last
    std::string employee;                ///< code that signed in last
    std::vector<DataSource> servers;

    /// The source of a name; this computer where no server has it.
    DataSource source(const std::string& name) const;
    /// Puts a server in, in the place of the one of the same name.
    void keep(const DataSource& server);
    bool operator==(const LoginSettings&) const = default;
};

/// "~/.config/korvane/login.toml", or below XDG_CONFIG_HOME where the desktop sets it.
std::string defaultLoginFile();

/// A missing file gives the defaults. Raises Error 321 with the line of what cannot be read, 53 for a file that cannot
/// be opened.
LoginSettings loadLoginSettings(const std::string& path);
/// Makes the folder when needed; the file is readable by its owner only. What stands there and cannot be read is first
/// copied beside it ("login.toml.damaged-20240331-173000"). Raises Error 75, and then the old file stands.
void saveLoginSettings(const std::string& path, const LoginSettings& settings);

}  // namespace kv
