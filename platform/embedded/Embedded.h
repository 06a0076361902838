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

    /// Puts a backup in the place of everything that the file holds, in one transaction, while other connections are
    /// open: each of them finds the old books or the restored ones. The backup is checked before, and the file as it
    /// stood is copied beside it under the name that comes back. Raises kv::Error 53 and 824 (the backup is missing or
    /// damaged: nothing was changed), 3201 (cannot write), 1222 (others hold the file), 226 (inside a transaction).
    virtual std::string restoreFrom(const std::string& backup) = 0;

    virtual const std::string& file() const = 0;

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

/// Looks at a database file without changing it. Raises kv::Error 53 (missing) or 824, naming the file and what is
/// wrong with it: empty, cut off, no database, of another program, or damaged inside.
void examineEmbedded(const std::string& file);

/// Puts a checked backup where nobody has the file open, e.g. because it is damaged or missing. A file that stood there
/// is kept under the name that comes back; empty when there was none. Raises what examineEmbedded and backupTo raise.
std::string replaceEmbedded(const std::string& file, const std::string& backup);

/// A free name beside a file for its state before a restore.
std::string nameBeforeRestore(const std::string& file);

}  // namespace kv
