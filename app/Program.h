#pragma once
// Program: one workstation: signs the user in, builds the session and shows the main shell.

#include <functional>
#include <memory>
#include <string>

#include "core/Screens.h"
#include "core/Session.h"
#include "platform/login/clsCurrentUser.h"

namespace kv {

class Program {
public:
    struct Options {
        std::string dataFile = "var/hospital.db";       ///< the database of "This computer"
        std::string settingsFile = defaultLoginFile();  ///< where the sign-in remembers its source; empty: nowhere
        bool makeDemo = true;                           ///< fills a missing file with the demo hospital
    };

    explicit Program(Options options);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    /// Signs in and shows the shell. False when the user gave up.
    bool Main();

    Form* shell() const { return shell_; }
    Session& session() const { return *session_; }
    Connection& connection() const { return *connection_; }
    /// Called with the connection as soon as there is one, before the program sends its first statement.
    std::function<void(Connection&)> onConnected;

private:
    void takeConnection();

    Options options_;
    Screens screens_;
    std::unique_ptr<clsCurrentUser> user_;
    std::shared_ptr<Connection> connection_;
    std::unique_ptr<Session> session_;
    Form* shell_ = nullptr;
};

/// Every screen of the house, one line each.
void registerScreens(Screens& screens);

/// Makes a database file with the scripts and the demo hospital. `progress` hears percents.
void makeHospital(const std::string& file, const std::function<void(int percent)>& progress);

}  // namespace kv
