#pragma once
// Backup: copies of a database file, files put back, and the look at a file before it is opened.

#include <sqlite3.h>

#include <string>
#include <vector>

#include "platform/embedded/Functions.h"

namespace kv::tsql {

/// SQLite's handle of a file that is not a session: a copy, a backup, a file to look at. Knows the engine's collations.
class PlainFile {
public:
    /// Raises Error 75 when it cannot be opened.
    PlainFile(const std::string& file, int flags);
    PlainFile(const PlainFile&) = delete;
    PlainFile& operator=(const PlainFile&) = delete;
    ~PlainFile() { sqlite3_close(db_); }
    sqlite3* get() const { return db_; }

private:
    sqlite3* db_ = nullptr;
    FunctionContext context_;
};

/// Problems in an open file, one line each, empty when it is sound. `whole` also holds each index against its table.
std::vector<std::string> problemsOf(sqlite3* db, bool whole = true);

/// Copies a whole database into another one in one transaction of the target; the source may be in use. Gives
/// SQLite's code; waits up to `busyWaitMs` for other writers of the target.
int copyPages(sqlite3* target, sqlite3* source, int busyWaitMs);

/// Copies the open database `source` into the file `target`, reads the copy back, and puts it into place. Raises Error
/// 3201 (cannot be written), 824 (the copy is damaged).
void copyToFile(sqlite3* source, const std::string& target);

/// Raises Error 824 for a file that is empty, cut off, no database, of another program or damaged, and 53 for one that
/// is missing. Changes nothing.
void examineFile(const std::string& file);

}  // namespace kv::tsql
