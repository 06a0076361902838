#pragma once
// Player: plays screenplays on the real windows, as a clerk would work them.
//
// A play is one straight script. When a line opens a modal form or a box, the lines that follow are played inside it,
// in the hooks of the dialogs, until it closes; so nothing sleeps and no event loop waits.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms/player/PlayedProgram.h"

namespace kv {

class Performance;
class PlayLine;

struct PlayerOptions {
    std::string outFolder = ".";  ///< pictures, reports, files
    int hang_s = 30;              ///< a line that takes longer ends the process
    /// The command that starts another workstation on the same database; it must call serve().
    std::function<std::vector<std::string>(const std::string& name)> stationCommand;
};

class Player {
public:
    Player(PlayedProgram& program, PlayerOptions options);
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player();

    /// True when every line held. What did not is on standard error: "FILE.play:LINE: expected ..., found ...".
    bool play(const std::string& file);
    /// Plays the lines that the player of the first workstation hands over.
    bool serve();

private:
    struct Running;
    std::unique_ptr<Running> running_;
};

}  // namespace kv
