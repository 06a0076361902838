#pragma once
// Desk: a workstation without windows on a demo hospital of its own, for tests and benchmarks of saves and closings.

#include <memory>
#include <string>

#include "core/MainMenu.h"
#include "core/Session.h"
#include "ledger/JournalBatch.h"

namespace kv {

/// A fresh copy of the demo hospital in a file of the folder given; the original is made once per build folder.
std::string freshHospital(const std::string& folder, const std::string& name = "hospital.db");
/// A folder of this process that goes with it.
const std::string& scratchFolder();

class Desk {
public:
    explicit Desk(const std::string& file, const std::string& employee = "E001");
    ~Desk();

    void openBook(const std::string& code);
    Session& session() { return *session_; }
    Connection& cn() { return *connection_; }
    /// First column of the first row as text; "none" without a row.
    std::string ask(const std::string& statement);

private:
    clsCurrentUser user_;
    Screens screens_;
    std::unique_ptr<Connection> connection_;
    std::unique_ptr<Session> session_;
};

/// A balanced batch of `lines` lines in March 2024.
JournalBatch balancedBatch(const std::string& book, int lines, const Date& day = Date(2024, 3, 15));

}  // namespace kv
