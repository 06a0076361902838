#include "core/Installer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {

namespace {

constexpr const char* kHome = "ACCOUNTING";
constexpr const char* kLedgerOfScripts = "SchemaObject";
constexpr long kErrPathMissing = 76;

constexpr std::array<std::pair<std::string_view, ScriptKind>, 5> kFolders{{
    {"tables", ScriptKind::Table},
    {"functions", ScriptKind::Function},
    {"views", ScriptKind::View},
    {"procedures", ScriptKind::Procedure},
    {"triggers", ScriptKind::Trigger},
}};

/// FNV-1a of the text with line ends made equal: tells a changed script from an unchanged one.
std::string fingerprintOf(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325ULL;
    for (const char c : text) {
        if (c == '\r') continue;
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
    }
    constexpr std::string_view digits = "0123456789abcdef";
    std::string out;
    for (int shift = 60; shift >= 0; shift -= 4) out += digits[(hash >> shift) & 15];
    return out;
}

/// The words of a script outside of comments, in lower case.
std::set<std::string> wordsOf(std::string_view text) {
    std::set<std::string> words;
    std::string word;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const char c = i < text.size() ? text[i] : ' ';
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_') {
            word += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            continue;
        }
        if (!word.empty()) words.insert(std::exchange(word, {}));
        if (c == '-' && text.substr(i).starts_with("--")) i = std::min(text.find('\n', i), text.size());
    }
    return words;
}

InstallStep readScript(const std::filesystem::path& path, const std::string& relative) {
    const std::vector<std::string> parts = split(relative, '/');
    InstallStep step;
    step.script = relative;
    step.object = path.stem().string();
    step.database = kHome;
    if (parts.size() == 2 && parts[0] == "changes") {
        step.kind = ScriptKind::Change;
    } else {
        step.database = parts[0];
        const auto folder = std::find_if(kFolders.begin(), kFolders.end(),
                                         [&](const auto& one) { return parts.size() == 3 && one.first == parts[1]; });
        if (folder == kFolders.end()) {
            throw Error(kErrPathMissing, "Installer", "The script " + relative + " lies in no folder of its kind.");
        }
        step.kind = folder->second;
    }
    step.text = readTextFile(path.string());
    step.fingerprint = fingerprintOf(step.text);
    return step;
}

/// Puts scripts behind those that they name. Functions and views may use each other, so both are one rank.
class Sorter {
public:
    explicit Sorter(std::vector<InstallStep> steps) : steps_(std::move(steps)), placed_(steps_.size(), false) {
        for (std::size_t i = 0; i < steps_.size(); ++i) byName_[LCase(steps_[i].object)].push_back(i);
    }

    std::vector<InstallStep> sorted() {
        std::vector<std::size_t> order(steps_.size());
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return std::pair(rank(steps_[a]), steps_[a].script) < std::pair(rank(steps_[b]), steps_[b].script);
        });
        for (const std::size_t i : order) place(i);
        return std::move(out_);
    }

private:
    static int rank(const InstallStep& step) {
        if (step.object == kLedgerOfScripts) return -1;
        return static_cast<int>(step.kind == ScriptKind::View ? ScriptKind::Function : step.kind);
    }

    void place(std::size_t i) {
        if (placed_[i]) return;
        placed_[i] = true;
        if (steps_[i].kind != ScriptKind::Change) {
            for (const std::string& word : wordsOf(steps_[i].text)) {
                const auto named = byName_.find(word);
                if (named == byName_.end()) continue;
                for (const std::size_t other : named->second) {
                    if (rank(steps_[other]) == rank(steps_[i])) place(other);
                }
            }
        }
        out_.push_back(steps_[i]);
    }

    std::vector<InstallStep> steps_;
    std::vector<bool> placed_;
    std::map<std::string, std::vector<std::size_t>> byName_;
    std::vector<InstallStep> out_;
};

bool databaseStands(Connection& connection, const std::string& name) {
    return !connection.Open(sql("SELECT 1 AS Found WHERE DB_ID('{}') IS NOT NULL").text(name)).empty();
}

std::map<std::string, std::string> installedScripts(Connection& connection) {
    std::map<std::string, std::string> out;
    if (!databaseStands(connection, kHome)) return out;
    connection.setDefaultDatabase(kHome);
    const auto there =
        sql("SELECT 1 AS Found FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME = '{}'").text(kLedgerOfScripts);
    if (connection.Open(there).empty()) return out;
    Recordset rows = connection.Open("SELECT Script, Fingerprint FROM dbo.SchemaObject ORDER BY Script");
    for (; !rows.eof(); rows.moveNext()) out[rows["Script"].text()] = rows["Fingerprint"].text();
    return out;
}

/// Databases are made outside of the transaction, which SQL Server demands.
void createDatabases(Connection& connection, const std::vector<InstallStep>& plan) {
    std::set<std::string> names{kHome};
    for (const InstallStep& step : plan) names.insert(step.database);
    for (const std::string& name : names) {
        if (!databaseStands(connection, name)) connection.Execute("CREATE DATABASE " + sqlName(name));
    }
}

void runStep(Connection& connection, const InstallStep& step) {
    try {
        connection.setDefaultDatabase(step.database);
        connection.Execute(step.text);
    } catch (Error& failure) {
        failure.description += " (in server/" + step.script + ")";
        throw;
    }
    connection.setDefaultDatabase(kHome);
    connection.Execute(sql("DELETE FROM dbo.SchemaObject WHERE Script = '{}'").text(step.script));
    connection.Execute(sql("INSERT INTO dbo.SchemaObject (Script, Fingerprint) VALUES ('{}', '{}')")
                           .text(step.script)
                           .text(step.fingerprint));
}

}  // namespace

std::vector<InstallStep> serverScripts(const std::string& serverFolder) {
    namespace fs = std::filesystem;
    std::vector<InstallStep> steps;
    if (folderExists(serverFolder)) {
        for (const auto& entry : fs::recursive_directory_iterator(serverFolder)) {
            if (entry.path().extension() != ".sql") continue;
            const std::string relative = fs::relative(entry.path(), serverFolder).generic_string();
            if (!relative.starts_with("checks/")) steps.push_back(readScript(entry.path(), relative));
        }
    }
    if (steps.empty()) {
        throw Error(kErrPathMissing, "Installer", "There are no server scripts in " + serverFolder + ".");
    }
    return Sorter(std::move(steps)).sorted();
}

std::vector<InstallStep> planInstall(Connection& connection, const std::string& serverFolder) {
    const std::map<std::string, std::string> installed = installedScripts(connection);
    std::vector<InstallStep> plan;
    for (InstallStep& step : serverScripts(serverFolder)) {
        const auto there = installed.find(step.script);
        step.known = there != installed.end();
        if (step.known && (step.kind == ScriptKind::Change || there->second == step.fingerprint)) continue;
        plan.push_back(std::move(step));
    }
    return plan;
}

std::size_t installDatabase(Connection& connection, const std::string& serverFolder,
                            const std::function<void(int done, int of)>& progress) {
    const std::vector<InstallStep> plan = planInstall(connection, serverFolder);
    if (plan.empty()) return 0;
    createDatabases(connection, plan);
    connection.setDefaultDatabase(kHome);
    Transaction transaction(connection);
    int done = 0;
    for (const InstallStep& step : plan) {
        runStep(connection, step);
        if (progress) progress(++done, static_cast<int>(plan.size()));
    }
    transaction.commit();
    connection.setDefaultDatabase(kHome);
    return plan.size();
}

}  // namespace kv
