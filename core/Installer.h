#pragma once
// Installer: brings a database of either kind up to the server scripts, and can be run again at any time.

#include <functional>
#include <string>
#include <vector>

#include "platform/data/Connection.h"

namespace kv {

/// What a script makes. The order of the kinds is the order of installing.
enum class ScriptKind { Table, Change, Function, View, Procedure, Trigger };

/// One script that a database lacks or carries in an older state.
struct InstallStep {
    std::string script;    ///< path below the folder of the scripts
    std::string database;  ///< the database it belongs to
    std::string object;    ///< name of what it makes; the number of a change
    ScriptKind kind = ScriptKind::Table;
    bool known = false;       ///< an older state is installed
    std::string fingerprint;  ///< of the text
    std::string text;
};

/// All scripts below a folder, in an order in which each finds what it needs: tables before those that refer to them,
/// functions and views before their users, changes by number once the tables stand. Raises Error 76 when there are
/// none.
std::vector<InstallStep> serverScripts(const std::string& serverFolder);

/// The scripts that the database does not carry in their present state. A change that ran once never runs again.
std::vector<InstallStep> planInstall(Connection& connection, const std::string& serverFolder);

/// Runs the plan in one transaction: all of it stands afterwards, or nothing changed. `progress` hears how many scripts
/// of how many are done. Returns their number. A failure raises the server's error with the script's name.
std::size_t installDatabase(Connection& connection, const std::string& serverFolder,
                            const std::function<void(int done, int of)>& progress = {});

}  // namespace kv
