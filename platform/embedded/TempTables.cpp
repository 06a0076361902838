#include "platform/embedded/TempTables.h"

#include <algorithm>

#include "platform/embedded/TableSql.h"

namespace kv::tsql {

LocalTable* TempTables::acquire(const Object& definition, const std::string& key, bool variable) {
    for (LocalTable& table : tables_) {
        if (table.used || table.altered || table.variable != variable || table.key != key) continue;
        table.used = true;
        return &table;
    }
    auto object = std::make_shared<Object>(definition);
    object->id = --lastId_;
    object->temporary = true;
    object->physical = lowered(definition.name) + "$" + std::to_string(-object->id);
    create(*object);
    tables_.push_back({object, key, true, variable, false});
    return &tables_.back();
}

void TempTables::create(const Object& object) {
    for (const std::string& sql : tableSql(object)) execSql(db_, sql);
}

void TempTables::empty(const LocalTable& table) {
    execSql(db_, "DELETE FROM temp." + quoted(table.object->physical));
    const ColumnInfo* identity = table.object->identityColumn();
    if (!identity) return;
    if (identity->plainIdentity()) {
        execSql(db_, "UPDATE temp.sqlite_sequence SET seq = " + std::to_string(identity->seed - 1) +
                         " WHERE name = " + quotedText(table.object->physical));
    }
    identities_.erase(table.object->id);
}

void TempTables::release(LocalTable* table) {
    empty(*table);
    table->used = false;
}

std::vector<std::pair<LocalTable*, TempTables::Rows>> TempTables::saveVariables() {
    std::vector<std::pair<LocalTable*, Rows>> saved;
    for (LocalTable& table : tables_) {
        if (!table.used || !table.variable) continue;
        Rows rows;
        Statement read(db_, "SELECT * FROM temp." + quoted(table.object->physical), false);
        const int count = static_cast<int>(table.object->columns.size());
        while (read.step()) {
            std::vector<Datum> row;
            for (int i = 0; i < count; ++i) row.push_back(columnDatum(read.get(), i));
            rows.push_back(std::move(row));
        }
        saved.emplace_back(&table, std::move(rows));
    }
    return saved;
}

std::vector<LocalTable*> TempTables::afterRollback(const std::vector<std::pair<LocalTable*, Rows>>& saved) {
    std::vector<LocalTable*> gone;
    for (LocalTable& table : tables_) {
        Statement look(db_, "SELECT 1 FROM temp.sqlite_schema WHERE name = ?1", false);
        look.bind(1, table.object->physical);
        const bool there = look.step();
        look.reset();
        if (there) {
            if (!table.used) empty(table);
        } else if (table.variable || !table.used) {
            create(*table.object);
        } else {
            // A #table made inside the transaction is gone with it; its place in the pool is filled anew.
            create(*table.object);
            table.used = false;
            gone.push_back(&table);
        }
    }
    for (const auto& [table, rows] : saved) {
        execSql(db_, "DELETE FROM temp." + quoted(table->object->physical));
        std::string marks;
        for (std::size_t i = 0; i < table->object->columns.size(); ++i) marks += i ? ", ?" : "?";
        Statement write(db_, "INSERT INTO temp." + quoted(table->object->physical) + " VALUES (" + marks + ")", false);
        for (const auto& row : rows) {
            for (std::size_t i = 0; i < row.size(); ++i) bindDatum(write.get(), static_cast<int>(i + 1), row[i]);
            write.run();
        }
    }
    return gone;
}

std::int64_t TempTables::nextIdentity(const Object& table) {
    const ColumnInfo& column = *table.identityColumn();
    const auto at = identities_.find(table.id);
    const std::int64_t next = at == identities_.end() ? column.seed : at->second + column.increment;
    identities_[table.id] = next;
    return next;
}

ObjectPtr TempTables::byId(std::int64_t id) const {
    const auto at =
        std::find_if(tables_.begin(), tables_.end(), [id](const LocalTable& table) { return table.object->id == id; });
    return at == tables_.end() ? nullptr : at->object;
}

}  // namespace kv::tsql
