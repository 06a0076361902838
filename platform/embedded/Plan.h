#pragma once
// Plan: one SQLite statement made from T-SQL, with the slots that fill its parameters and the columns that it gives.

#include <cstdint>
#include <memory>
#include <string>
#include <typeinfo>
#include <unordered_map>
#include <vector>

#include "platform/data/Recordset.h"
#include "platform/embedded/Ast.h"
#include "platform/embedded/Conversions.h"
#include "platform/embedded/Lexer.h"
#include "platform/embedded/Sqlite.h"

namespace kv::tsql {

/// What a session answers without looking into tables.
enum class SystemValue : std::uint8_t {
    Now,
    RowCount,
    Error,
    TranCount,
    Identity,
    ScopeIdentity,
    FetchStatus,
    NestLevel,
    XactState,
    ErrorNumber,
    ErrorMessage,
    ErrorSeverity,
    ErrorState,
    ErrorLine,
    ErrorProcedure,
    ProcId,
    DatabaseName,
    DatabaseId,
};

/// One parameter of the SQLite statement.
struct Slot {
    enum class From : std::uint8_t { Literal, Variable, System };
    From from = From::Literal;
    bool convert = false;
    ConvertMode mode = ConvertMode::Cast;
    int index = 0;  ///< of the literal or variable; the SystemValue
    Type is;
    Type want;
    std::string where;  ///< "table.column" for 2628
};

struct OutColumn {
    std::string name;
    Type type;
    bool nullable = true;
    bool identity = false;
};

/// A temporary table, table variable or trigger table that a plan was made for.
struct LocalUse {
    std::string name;
    std::string physical;
    std::int64_t id = 0;  ///< of its definition
};

struct Plan {
    std::string sql;
    std::vector<Slot> slots;
    std::vector<OutColumn> columns;
    FieldList shown;  ///< the client's description of the columns, made at the first run
    std::vector<LocalUse> locals;
    std::int64_t version = -1;  ///< of the catalogue
    std::string database;       ///< the one that names without a database meant

    /// A statement that is not running: from the pool, or prepared.
    Statement acquire(sqlite3* db);
    void release(Statement&& statement);

private:
    std::vector<Statement> pool_;
};

/// A statement of a plan for the time of its run; it goes back to the pool reset.
class Running {
public:
    Running(Plan& plan, sqlite3* db) : plan_(plan), statement_(plan.acquire(db)) {}
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { plan_.release(std::move(statement_)); }
    sqlite3_stmt* get() const { return statement_.get(); }

private:
    Plan& plan_;
    Statement statement_;
};

/// A declared variable of a batch or routine.
struct VariableInfo {
    std::string name;
    Type type;
    const TableDef* table = nullptr;  ///< of a table variable
    bool cursor = false;
};

/// The variables of one batch or routine: T-SQL knows no inner scopes.
class VariableScope {
public:
    /// The place of a variable, -1 when it is not declared.
    int find(std::string_view name) const;
    int add(VariableInfo info);  ///< raises 134 when the name is taken
    const VariableInfo& at(int index) const { return list_[static_cast<std::size_t>(index)]; }
    std::size_t size() const { return list_.size(); }

private:
    std::vector<VariableInfo> list_;
    std::unordered_map<std::string, int> byName_;
};

/// Collects the DECLAREs of the statements. Raises 134 and 2715.
void declareVariables(const StmtList& statements, VariableScope& scope);
/// Raises 137 or 1087 for a variable that is used but not declared.
void checkVariables(const StmtList& statements, const VariableScope& scope);
/// The type that a name in the text means; raises 2715 (`position` counts parameters or columns from 1).
Type resolveType(const TypeName& name, TypePlace place, int position = 1);

/// A parsed batch with its variables, ready to run, and what its plans depend on.
struct CompiledBatch {
    Batch batch;
    VariableScope variables;
    std::vector<Pin> pins;  ///< the parser's and those that the emitter added
    bool writes = false;    ///< it may change a permanent table
    bool simple = false;    ///< one statement that is atomic by itself
    bool begins = false;    ///< its first statement begins a transaction
};

/// The value of a literal, and its static type.
Datum literalDatum(LiteralKind kind, std::string_view text);
Type literalType(LiteralKind kind, std::string_view text);

/// What is kept at a node, of the kind wanted; made empty when there is none.
template <class T>
T& kept(const Node& node) {
    Attachment* there = node.attachment.get();
    if (!there || typeid(*there) != typeid(T)) {
        node.attachment = std::make_unique<T>();
        there = node.attachment.get();
    }
    return static_cast<T&>(*there);
}

/// Batches by their normalised text. Least recently used ones go first.
class BatchCache {
public:
    explicit BatchCache(std::size_t capacity = 1000) : capacity_(capacity) {}
    /// The batch for a key whose pinned literals have the same values, or null.
    std::shared_ptr<CompiledBatch> find(std::string_view key, const std::vector<Literal>& literals);
    void put(const std::string& key, std::shared_ptr<CompiledBatch> batch);
    void clear() { entries_.clear(); }

private:
    struct Entry {
        std::vector<std::shared_ptr<CompiledBatch>> variants;
        std::uint64_t used = 0;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
    };
    std::size_t capacity_;
    std::uint64_t clock_ = 0;
    std::unordered_map<std::string, Entry, Hash, std::equal_to<>> entries_;
};

}  // namespace kv::tsql
