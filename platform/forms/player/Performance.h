#pragma once
// Performance: what the commands of a play work with: the stage, the program, the statements sent, the folder of files.

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/forms/player/Play.h"
#include "platform/forms/player/PlayedProgram.h"
#include "platform/forms/player/Stage.h"

namespace kv {

class Grid;
class ListView;

/// The statements that the workstation sent since the record began.
class StatementRecord {
public:
    void add(std::string_view statement) { statements_.emplace_back(statement); }
    void forget();
    /// Looks behind the one found before; finding moves on.
    bool findNext(std::string_view pattern);
    bool hasAny(std::string_view pattern) const;
    /// The last few, for a failure.
    std::string tail() const;

private:
    std::vector<std::string> statements_;
    std::size_t next_ = 0;
};

/// A sign-in that a line of the play has asked for and the dialog has not answered yet.
struct SignInTry {
    PlayLine line;
    std::string user;
    std::string password;
    bool refused = false;  ///< what the line expects
    bool filled = false;
    bool ended = false;  ///< the dialog closed on this try
};

class Performance {
public:
    Performance(PlayedProgram& played, std::string folder) : program(played), outFolder(std::move(folder)) {}

    PlayedProgram& program;
    Stage stage;
    StatementRecord record;
    std::optional<SignInTry> signing;
    /// What the dialog that the play opened last gave; nothing when it was cancelled.
    std::optional<std::vector<std::string>> answer;

    /// The player's own connection, opened at first use.
    Connection& connection();
    void closeConnection() { own_.reset(); }
    /// The path of a file in DIR; its folder is made.
    std::string outPath(const std::string& name) const;

private:
    std::string outFolder;
    std::unique_ptr<Connection> own_;
};

using CommandBody = void (*)(Performance& show, const PlayLine& line);
struct CommandEntry {
    std::string_view name;
    CommandBody body;
};

// each source of commands has its table
std::span<const CommandEntry> actionCommands();  ///< on controls
std::span<const CommandEntry> answerCommands();  ///< on boxes, dialogs and windows
std::span<const CommandEntry> recordCommands();  ///< data, reports, files, pictures
void expect(Performance& show, const PlayLine& line);

/// Fills and accepts the sign-in dialog that has appeared. Raises Failure when the outcome is not the expected one.
void fillSignIn(Performance& show, Form& dialog);
/// The row of a list, from 0, by its text in any column or by "#n"; -1 without.
int findListRow(const ListView& list, const PlayLine& line, std::size_t word);
/// The row of a grid, from 1, and the column of the text (the first one for "#n"); nothing without.
std::optional<std::pair<int, int>> findGridRow(const Grid& grid, const PlayLine& line, std::size_t word);

}  // namespace kv
