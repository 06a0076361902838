#pragma once
// The embedded engine's public face: a small strict SQL Server on one SQLite file, behind kv::Connection.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Connection.h"

namespace kv {

struct EmbeddedOptions {
    std::string file;                            ///< path of the database file; ":memory:" for a private one
    bool create = true;                          ///< false: a missing file raises 53
    std::string defaultDatabase = "ACCOUNTING";  ///< the database whose tables need no prefix in the file
    int busyWaitMs = 20'000;                     ///< how long a writer waits for another process before 1222
    bool statementCache = true;                  ///< false: every text is compiled anew (tests)
};

/// Opens a database file. Raises kv::Error: 53 (missing), 75 (cannot be opened), 824 (damaged or no database).
std::unique_ptr<Connection> openEmbedded(const EmbeddedOptions& options);

/// What the engine offers beside statements. A connection of openEmbedded is one: `dynamic_cast` or `embeddedOf`.
class EmbeddedServices {
public:
    virtual ~EmbeddedServices() = default;

    /// Runs a batch and gives what came before an error too: all result sets and all messages, errors among them.
    virtual bool runBatch(std::string_view batch, std::vector<ResultSet>& results, std::vector<DbError>& messages) = 0;

    /// Compiles every statement of a batch without running it: bodies of CREATE PROCEDURE, FUNCTION, VIEW and TRIGGER
    /// too. Gives the errors in order (empty: all compiles). Tables that the batch itself creates are known to it.
    virtual std::vector<DbError> compileOnly(std::string_view batch) = 0;

    /// Copies the database into `target` while it is in use, then opens the copy and checks it. An older file of that
    /// name is replaced only by a verified copy. Raises kv::Error 3201 (cannot write), 824 (the copy is damaged).
    virtual void backupTo(const std::string& target) = 0;

    /// Problems found in the file, one line each, empty when sound.
    virtual std::vector<std::string> checkIntegrity() = 0;

    /// Moves the log into the database file; used before the file is copied by other means.
    virtual void checkpoint() = 0;

    /// Statements that were compiled since opening, and those answered from the cache.
    struct CacheCounts {
        long compiled = 0;
        long reused = 0;
    };
    virtual CacheCounts cacheCounts() const = 0;
};

/// The services behind a connection, or nullptr when it is not the embedded engine.
EmbeddedServices* embeddedOf(Connection& connection);

}  // namespace kv
