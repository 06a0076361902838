#pragma once
// Desk: a small hospital in memory for tests of the sign-in: two employees, one of them without this system.

#include <map>
#include <memory>
#include <string>

#include "platform/base/Paths.h"
#include "platform/data/Statement.h"
#include "platform/embedded/Embedded.h"
#include "platform/login/Passwords.h"

namespace kv::test {

/// Hashes take their time by intent; the same desk is laid many times.
inline const std::string& hashOf(const std::string& password) {
    static std::map<std::string, std::string> known;
    std::string& hash = known[password];
    if (hash.empty()) hash = hashPassword(password);
    return hash;
}

/// Makes the tables of the sign-in, by the server's own script, and the people.
inline void fillDesk(Connection& connection) {
    connection.Execute("CREATE DATABASE PASSWORD");
    connection.setDefaultDatabase("PASSWORD");
    connection.Execute(readTextFile("server/PASSWORD/tables/tbPasswordMain.sql"));
    connection.setDefaultDatabase("ACCOUNTING");
    connection.Execute(
        "CREATE PROCEDURE sp_CheckUser @UserID varchar(15) AS SELECT LastName, FirstName, MiddleName "
        "FROM PASSWORD..tbPasswordMain WHERE EmployeeID = @UserID AND DeptCode LIKE '%55%'");
    struct Person {
        const char *code, *last, *first, *middle, *password, *rights, *systems;
    };
    constexpr Person kPeople[] = {
        {"E001", "SANTOS", "MARIA", "LUNA", "ledger-2024", "SA", "10;55"},
        {"E002", "DE LA PEÑA", "JOSE", "", "payable-2024", "", "55"},
        {"E009", "CRUZ", "ANA", "REY", "ward-2024", "", "10"},
    };
    for (const Person& p : kPeople) {
        connection.Execute(sql("INSERT INTO PASSWORD..tbPasswordMain (EmployeeID, LastName, FirstName, MiddleName, "
                               "PasswordHash, UserRights, DeptCode) VALUES ('{}', '{}', '{}', '{}', '{}', '{}', '{}')")
                               .text(p.code)
                               .text(p.last)
                               .text(p.first)
                               .text(p.middle)
                               .text(hashOf(p.password))
                               .text(p.rights)
                               .text(p.systems));
    }
}

inline std::unique_ptr<Connection> openDesk(const std::string& file = ":memory:") {
    EmbeddedOptions options;
    options.file = file;
    auto connection = openEmbedded(options);
    fillDesk(*connection);
    return connection;
}

}  // namespace kv::test
