#pragma once
// Ddl: CREATE, ALTER and DROP: definitions go into the catalogue and into SQLite in one transaction.

#include <string>
#include <vector>

#include "platform/embedded/Interp.h"

namespace kv::tsql {

class Ddl {
public:
    explicit Ddl(Interp& interp) : interp_(interp), session_(interp.session()) {}

    void run(const Stmt& stmt);
    /// The table variable that a DECLARE makes.
    void declareTable(const DeclareStmt& stmt, std::size_t item);
    /// The result variable of a table function.
    void declareResult(const Object& function, const Module& module);
    /// The new table of SELECT .. INTO.
    ObjectPtr tableOfQuery(const ObjectName& name, const std::vector<OutColumn>& columns);
    /// Columns, keys and constraints of a definition. Raises 2705, 2744, 8147, 1779, 1767 and others.
    Object build(const TableDef& def, const std::string& database, const std::string& name, bool temporary);

private:
    // Ddl.cpp
    void createModule(const ModuleStmt& stmt);
    void fillModule(const ModuleStmt& stmt, Object& object);
    void drop(const DropStmt& stmt);
    void dropOne(const DropStmt& stmt, const ObjectName& name);
    void dropIndex(const DropStmt& stmt, std::size_t item);
    void createDatabase(const CreateDatabaseStmt& stmt);
    void identityInsert(const SetIdentityInsertStmt& stmt);
    void dbcc(const DbccStmt& stmt);

    // DdlTable.cpp
    void createTable(const CreateTableStmt& stmt);
    void createIndex(const CreateIndexStmt& stmt);
    ObjectPtr makeTable(Object object);
    void addColumn(const ColumnDef& def, Object& object);
    void addConstraint(const Constraint& constraint, const std::string& column, Object& object);
    void addForeignKey(const Constraint& constraint, Object& object);
    void addIndex(IndexInfo index, Object& object, const Pos& pos);
    void translate(Object& object);
    bool constraintExists(const std::string& database, const std::string& name, const Object& fresh) const;
    std::string madeName(const char* prefix, const Object& object, const std::string& rest) const;

    // DdlAlter.cpp
    void alterTable(const AlterTableStmt& stmt);
    void alterLocal(const AlterTableStmt& stmt);
    void alterAdd(const AlterTableStmt& stmt, Object& object);
    void alterColumn(const AlterTableStmt& stmt, Object& object);
    void dropColumns(const AlterTableStmt& stmt, Object& object);
    void dropConstraints(const AlterTableStmt& stmt, Object& object);
    void enable(const AlterTableStmt& stmt, Object& object);
    void addSqlColumn(const Object& object, const ColumnInfo& column);
    void rewriteTable(Object& object);
    void checkRows(const Object& object, const CheckInfo& check);
    void checkRows(const Object& object, const ForeignKeyInfo& key);

    void changed() { session_.definitionsChanged(); }
    std::string databaseOf(const ObjectName& name) const;

    Interp& interp_;
    Session& session_;
};

/// A constraint error of SQLite in SQL Server's words: 2627, 2601, 515, 547. `verb` is INSERT, UPDATE or DELETE.
SqlError constraintError(const Catalog& catalog, const Object& table, const char* verb, int code,
                         const std::string& message);

}  // namespace kv::tsql
