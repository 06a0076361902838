#pragma once
// ClientSink: copies the rows of a result to the client's ResultSet, typed by the static types of the columns.

#include <vector>

#include "platform/embedded/Interp.h"

namespace kv::tsql {

class ClientSink : public Sink {
public:
    explicit ClientSink(std::vector<ResultSet>& results) : results_(results) {}
    void begin(const std::vector<OutColumn>& columns, FieldList& shown) override;
    void row(sqlite3_stmt* stmt, const std::vector<OutColumn>& columns) override;

private:
    std::vector<ResultSet>& results_;
};

/// Keeps the rows as the engine's own values (INSERT .. EXEC).
class DatumSink : public Sink {
public:
    struct Set {
        std::vector<OutColumn> columns;
        std::vector<std::vector<Datum>> rows;
    };
    void begin(const std::vector<OutColumn>& columns, FieldList&) override { sets.push_back({columns, {}}); }
    void row(sqlite3_stmt* stmt, const std::vector<OutColumn>& columns) override;
    std::vector<Set> sets;
};

}  // namespace kv::tsql
