#pragma once
// SignIn: decides whether an employee may enter, and makes wrong tries wait; no screen in it.

#include <map>
#include <string>
#include <string_view>

#include "platform/data/Connection.h"

namespace kv {

struct Employee {
    std::string code;
    std::string name;    ///< "First M. Last" as the user administration has it
    std::string rights;  ///< letters, e.g. "SA"
};

struct SignInAnswer {
    enum class What { Welcome, CodeMissing, PasswordMissing, Wrong, Wait, NoAccess };
    What what = What::Wrong;
    std::string message;  ///< for the user; empty for Welcome
    Employee employee;    ///< for Welcome
};

/// Seconds to wait after so many wrong tries in a row: none before the third, then 30, doubled with each further one
/// up to an hour.
int waitAfterTries_s(int tries);

class SignIn {
public:
    /// `deptCode`: the system that the employee wants to enter, "55" for accounting.
    explicit SignIn(std::string deptCode) : deptCode_(std::move(deptCode)) {}

    /// One try. It is counted in PASSWORD..tbPasswordMain before the password is looked at, so that neither a restart
    /// nor a second workstation wins tries. Raises the server's errors.
    SignInAnswer attempt(Connection& connection, std::string_view code, std::string_view password);

private:
    struct Tries {
        int failed = 0;
        Date lockedUntil;
    };
    SignInAnswer attemptUnknown(const std::string& code, std::string_view password);
    bool mayEnter(Connection& connection, const Recordset& row) const;

    std::string deptCode_;
    std::map<std::string, Tries> unknown_;  ///< an unknown code waits as a known one does, or it would be told by that
};

}  // namespace kv
