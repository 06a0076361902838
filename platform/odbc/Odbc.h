#pragma once
// The driver for SQL Server: kv::Connection over unixODBC, for FreeTDS and for Microsoft's driver.

#include <memory>
#include <string>
#include <vector>

#include "platform/data/Connection.h"

namespace kv {

struct OdbcOptions {
    std::string connectionString;                ///< "Driver=...;Server=...;UID=...;PWD=...;", see odbcConnectionString
    std::string defaultDatabase = "ACCOUNTING";  ///< empty: the logon's own
    int loginTimeout_s = 15;
    int commandTimeout_s = 120;
};

/// Opens a connection. Raises the server's error (18456 wrong logon, 4060 no such database), or kErrServerLost where
/// no server answers.
///
/// A statement that loses the server raises kErrServerLost; the next one outside a transaction signs on again by
/// itself. A statement that takes longer than the command time-out is stopped and raises kErrTimeout.
std::unique_ptr<Connection> openOdbc(const OdbcOptions& options);

constexpr long kErrServerLost = 11;
constexpr long kErrTimeout = -2;

/// What a person says about a SQL Server.
struct SqlServerLogon {
    std::string server;    ///< "host", "host\instance" or "host,port"
    std::string user;      ///< empty: the workstation's own Kerberos identity
    std::string password;  ///< kept by nobody but the open connection
    std::string database = "ACCOUNTING";
    std::string driver;   ///< name or path; empty: the best one that is installed
    std::string options;  ///< more of the driver's own settings, e.g. "Encrypt=yes;TrustServerCertificate=yes"
};

/// The connection string for a logon. No value can bring in another setting.
std::string odbcConnectionString(const SqlServerLogon& logon);

/// Microsoft's newest driver when there is one, else FreeTDS; empty when neither is installed.
std::string sqlServerDriver();

/// Names of the drivers that unixODBC knows.
std::vector<std::string> odbcDrivers();

/// The driver's message without the names of its makers in front: "[FreeTDS][SQL Server]Invalid..." gives "Invalid...".
std::string withoutDriverNames(std::string_view message);

}  // namespace kv
