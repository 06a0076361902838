#pragma once
// TempTables: the temporary tables and table variables of a session, kept for reuse instead of being dropped.

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/embedded/Catalog.h"

namespace kv::tsql {

/// One table in SQLite's temp schema. In use it belongs to a frame; free it is empty and waits for the same definition.
struct LocalTable {
    ObjectPtr object;
    std::string key;  ///< its definition
    bool used = false;
    bool variable = false;  ///< a table variable: its rows survive a rollback
    bool altered = false;   ///< no longer as its key says: not used again
};

class TempTables {
public:
    explicit TempTables(sqlite3* db) : db_(db) {}

    /// A table of this definition (its physical name is given here), empty and marked as used.
    LocalTable* acquire(const Object& definition, const std::string& key, bool variable);
    /// Empties a table and keeps it for later.
    void release(LocalTable* table);
    void markAltered(LocalTable* table) { table->altered = true; }

    /// Rows of the table variables in use, to be put back after a rollback.
    using Rows = std::vector<std::vector<Datum>>;
    std::vector<std::pair<LocalTable*, Rows>> saveVariables();
    /// After ROLLBACK: tables made inside the transaction are gone, rows of free ones may be back. Gives the tables
    /// that a frame used and that are gone.
    std::vector<LocalTable*> afterRollback(const std::vector<std::pair<LocalTable*, Rows>>& saved);

    std::int64_t nextIdentity(const Object& table);
    void setIdentity(const Object& table, std::int64_t last) { identities_[table.id] = last; }
    ObjectPtr byId(std::int64_t id) const;

private:
    void create(const Object& object);
    void empty(const LocalTable& table);

    sqlite3* db_;
    std::deque<LocalTable> tables_;
    std::int64_t lastId_ = 0;  ///< counts down: ids of permanent objects are positive
    std::unordered_map<std::int64_t, std::int64_t> identities_;
};

}  // namespace kv::tsql
