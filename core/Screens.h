#pragma once
// Screens: the map of the house. Every screen has one line here: name, room, title, menu path, right and how it is
// made; app/ fills it. One instance of a modeless screen exists at a time.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/Form.h"

namespace kv {

class Session;

struct ScreenEntry {
    std::string name;   ///< "frmGeneral"
    std::string room;   ///< "ledger"
    std::string title;  ///< for people
    std::string menu;   ///< where it is reached, "Books > Journal Vouchers"
    std::string right;  ///< access code that opens it; empty: no right of its own
    std::function<std::unique_ptr<Form>(Session&)> make;
    /// Shows one document of this screen, to change or to look at, and returns when it has closed. The key is what its
    /// reports and lists call it, e.g. "JV 2024-10002". It asks for the user's right and tells what it cannot open.
    /// Empty: the screen has no documents.
    std::function<void(Session&, std::string_view key)> openDocument = {};
};

class Screens {
public:
    void add(ScreenEntry entry);
    /// A named action of a room above the shell, e.g. a report of the File menu.
    void addCommand(std::string name, std::function<void(Session&)> run);
    const std::vector<ScreenEntry>& all() const { return entries_; }
    const ScreenEntry* find(std::string_view name) const;

    /// Makes the screen, shows it over the others and returns when it has closed.
    void showModal(Session& session, std::string_view name);
    /// Shows the one modeless instance, made when there is none.
    void show(Session& session, std::string_view name);
    /// Opens the document of a screen by its key, from a figure of a report, a row of a check, a search. Raises
    /// kErrObjectMissing for a screen that is not there or has no documents.
    void openDocument(Session& session, std::string_view screen, std::string_view key) const;
    bool hasDocuments(std::string_view screen) const;
    void runCommand(Session& session, std::string_view name) const;
    bool hasCommand(std::string_view name) const;
    /// The open modeless instance; nullptr when there is none.
    Form* open(std::string_view name) const;
    /// Drops instances that the user has closed.
    void sweep();
    /// Unloads every open form of this name.
    void unload(std::string_view name);
    /// Unloads every modeless form but these two.
    void unloadOthers(std::string_view first, std::string_view second);
    void unloadAll();

private:
    struct Command {
        std::string name;
        std::function<void(Session&)> run;
    };
    const ScreenEntry& needed(std::string_view name) const;
    std::vector<ScreenEntry> entries_;
    std::vector<Command> commands_;
    std::vector<std::unique_ptr<Form>> modeless_;
};

/// Unloads every open form whose name is the argument, exactly.
void ManualUnloadForm(Session& session, std::string_view FormName);

}  // namespace kv
