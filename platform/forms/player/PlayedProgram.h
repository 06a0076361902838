#pragma once
// PlayedProgram: a program as the player of screenplays needs to know it: how it starts, its database, its report.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Date.h"
#include "platform/base/Error.h"
#include "platform/data/Connection.h"

namespace kv {

/// The report that is shown, whatever shows it.
class ShownReport {
public:
    virtual ~ShownReport() = default;
    virtual std::string title() const = 0;
    virtual std::string text() const = 0;
    /// By the ending of the path: pdf, png (page 1), csv, xlsx, txt. Raises Error.
    virtual void save(const std::string& path) = 0;
};

class PlayedProgram {
public:
    /// The controls of the sign-in dialog.
    struct SignIn {
        std::string user = "txtEmployeeCode";
        std::string password = "txtPassword";
        std::string accept = "cmdOK";
    };

    virtual ~PlayedProgram() = default;
    /// Starts as a workstation does: the sign-in dialog appears modally inside. True when the shell stands at the end.
    virtual bool start() = 0;
    /// The opposite: everything unloaded.
    virtual void stop() = 0;
    virtual SignIn signIn() const { return {}; }
    /// Called once, before start: each statement that the workstation sends goes to the listener.
    virtual void observe(std::function<void(std::string_view)> listener) = 0;
    /// A further connection to the same database. Raises Error.
    virtual std::unique_ptr<Connection> connect() = 0;
    /// nullptr while none is shown.
    virtual ShownReport* report() = 0;
    /// Opens a dialog that gives values to its caller, as a screen would, starting with these. Nothing when it was
    /// cancelled. Raises Error for a dialog that there is not.
    virtual std::optional<std::vector<std::string>> ask(const std::string& dialog,
                                                        std::vector<std::string> /*values*/) {
        throw Error(kErrObjectMissing, "screenplay", "This program has no dialog " + dialog + ".");
    }
    /// What is wrong with the data after a play, one line each; a play whose lines all held fails by it.
    virtual std::vector<std::string> unsound() { return {}; }
};

}  // namespace kv
