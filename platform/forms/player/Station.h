#pragma once
// Station: another workstation of a play: a process of its own that plays the lines it is handed.
//
// A second clerk's program shares nothing with the first but the database, so it is one: a modal form may be open on
// each, and each goes on where it was. Lines go over the other's standard input, its asking for the next one comes
// back over its standard output.

#include <QProcess>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms/player/Play.h"

namespace kv {

class Station {
public:
    /// Starts the process. Raises Failure.
    Station(std::string name, const std::vector<std::string>& command, int wait_s);
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;
    ~Station();

    const std::string& name() const { return name_; }
    /// Returns when the line has been played. False: it failed, and the other has said so itself.
    bool play(const PlayLine& line);
    /// No more lines. False when something did not hold at the end.
    bool finish();

private:
    bool waitForReady();
    std::string name_;
    int wait_s_;
    QProcess process_;
};

/// The other side: where a station's lines come from.
class HandedLines {
public:
    /// Asks for a line and waits for it; nothing when there are no more.
    std::optional<PlayLine> next();
    void failed();
};

}  // namespace kv
