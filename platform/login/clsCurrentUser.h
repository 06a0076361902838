#pragma once
// clsCurrentUser: the login component: signs the user in and owns the way to the database until the program takes it.

#include <functional>
#include <memory>
#include <string>

#include "platform/login/LoginSettings.h"
#include "platform/login/SignIn.h"

namespace kv {

/// What the sign-in needs of the program around it.
struct LoginOptions {
    using Progress = std::function<void(int percent)>;

    std::string settingsFile = defaultLoginFile();  ///< the workstation's own TOML file; empty: nothing is remembered
    std::string embeddedFile = "var/hospital.db";   ///< what "This computer" means
    /// Makes and fills the embedded file when it is missing, under the name given; it is moved into place afterwards,
    /// so that a broken-off attempt leaves nothing. Must close the file. Empty: a missing file is an error.
    std::function<void(const std::string& file, const Progress& progress)> prepare;
    /// Opens a source; empty: the embedded engine or the driver for SQL Server, by the source.
    std::function<std::unique_ptr<Connection>(const DataSource& source, const std::string& password)> open;
};

/// What a sign-in that succeeded leaves.
struct SignedIn {
    std::shared_ptr<Connection> connection;
    Employee employee;
    std::string serverName;
    std::string userID;    ///< the SQL logon; empty for this computer
    std::string password;  ///< of the SQL logon, in memory only: the report frame passes it on
};

class clsCurrentUser {
public:
    explicit clsCurrentUser(LoginOptions options = {}) : options_(std::move(options)) {}

    std::string PasswordDeptCode;  ///< the system that wants its user: set before ShowMain

    /// Runs the sign-in dialog; returns when the user has signed in or given up.
    void ShowMain();

    bool Connected() const { return signedIn_.connection != nullptr; }
    const std::shared_ptr<Connection>& SQLConnection() const { return signedIn_.connection; }
    const std::string& EmployeeCode() const { return signedIn_.employee.code; }
    const std::string& EmployeeName() const { return signedIn_.employee.name; }
    const std::string& UserRights() const { return signedIn_.employee.rights; }
    const std::string& ServerName() const { return signedIn_.serverName; }
    const std::string& UserID() const { return signedIn_.userID; }
    const std::string& ServerPassword() const { return signedIn_.password; }

private:
    LoginOptions options_;
    SignedIn signedIn_;
};

}  // namespace kv
