#pragma once
// Ast: the syntax tree of T-SQL, one struct per kind of statement; AstQuery.h has expressions and queries.

#include "platform/embedded/AstQuery.h"

namespace kv::tsql {

// ---------------------------------------------------------------------------------------------- statements

enum class StmtKind {
    Select,
    Insert,
    Update,
    Delete,
    Truncate,
    Declare,
    SetVariable,
    SetOption,
    SetIdentityInsert,
    If,
    While,
    Break,
    Continue,
    Block,
    Return,
    Print,
    RaisError,
    Throw,
    TryCatch,
    BeginTransaction,
    Commit,
    Rollback,
    SaveTransaction,
    Exec,
    ExecString,
    Use,
    CreateTable,
    AlterTable,
    CreateIndex,
    CreateView,
    CreateProcedure,
    CreateFunction,
    CreateTrigger,
    CreateDatabase,
    CreateSchema,
    Drop,
    Dbcc,
    DeclareCursor,
    OpenCursor,
    FetchCursor,
    CloseCursor,
    DeallocateCursor,
    Ignored,
    Unsupported,
};

struct Stmt : Node {
    explicit Stmt(StmtKind k) : kind(k) {}
    const StmtKind kind;
    std::uint32_t endOffset = 0;  ///< byte after the statement's last token
};

struct SelectStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Select;
    SelectStmt() : Stmt(kKind) {}
    QueryPtr query;
    bool assigns() const;  ///< its select list sets variables
};

/// OUTPUT items [INTO target [(columns)]]
struct OutputClause {
    Pos pos;
    std::vector<SelectItem> items;
    ObjectName into;
    std::vector<std::string> columns;
};

struct ExecStmt;
struct ExecStringStmt;

/// INSERT [INTO] target [(columns)] VALUES rows | query | EXEC | DEFAULT VALUES: exactly one source.
struct InsertStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Insert;
    InsertStmt() : Stmt(kKind) {}
    std::vector<Cte> with;
    Top top;
    ObjectName target;
    std::vector<std::string> columns;
    std::vector<Pos> columnPos;  ///< beside `columns`
    std::unique_ptr<OutputClause> output;
    std::vector<ExprList> rows;
    QueryPtr query;
    StmtPtr exec;  ///< ExecStmt or ExecStringStmt
    bool defaultValues = false;
};

/// column = value, @variable = value, or @variable = column = value; `op` for += and the like.
struct Assignment {
    Pos pos;
    std::string variable;
    ObjectName qualifier;  ///< of the column; empty when none was written
    std::string column;
    std::optional<BinaryOp> op;
    ExprPtr value;  ///< may be DefaultExpr
};

struct UpdateStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Update;
    UpdateStmt() : Stmt(kKind) {}
    std::vector<Cte> with;
    Top top;
    ObjectName target;  ///< a table, a table variable, or an alias of FROM
    std::vector<Assignment> assignments;
    std::unique_ptr<OutputClause> output;
    std::vector<TableRefPtr> from;
    ExprPtr where;
    std::string currentOf;  ///< cursor of WHERE CURRENT OF
};

struct DeleteStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Delete;
    DeleteStmt() : Stmt(kKind) {}
    std::vector<Cte> with;
    Top top;
    ObjectName target;
    std::unique_ptr<OutputClause> output;
    std::vector<TableRefPtr> from;
    ExprPtr where;
    std::string currentOf;
};

struct TruncateStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Truncate;
    TruncateStmt() : Stmt(kKind) {}
    ObjectName target;
};

struct IndexColumn {
    Pos pos;
    std::string name;
    bool descending = false;
};

enum class ConstraintKind { PrimaryKey, Unique, Check, ForeignKey, Default };
enum class ReferenceAction { NoAction, Cascade, SetNull, SetDefault };

/// A constraint of a column or a table. Of a column: `columns` holds that column alone (empty for Check).
struct Constraint {
    Pos pos;
    ConstraintKind kind = ConstraintKind::Check;
    std::string name;  ///< empty when none was written
    std::vector<IndexColumn> columns;
    bool clustered = false;  ///< CLUSTERED was written
    ExprPtr expr;            ///< of Check and Default
    ObjectName references;
    std::vector<std::string> referenceColumns;
    ReferenceAction onDelete = ReferenceAction::NoAction;
    ReferenceAction onUpdate = ReferenceAction::NoAction;
};

struct ColumnDef {
    Pos pos;
    std::string name;
    TypeName type;                 ///< empty for a computed column
    std::optional<bool> nullable;  ///< NULL or NOT NULL when written
    bool identity = false;
    std::int64_t identitySeed = 1;
    std::int64_t identityIncrement = 1;
    std::string collation;
    ExprPtr computed;
    bool persisted = false;
    std::vector<Constraint> constraints;  ///< written at the column, its DEFAULT among them

    const Constraint* defaultConstraint() const;
};

/// INDEX name (columns) inside CREATE TABLE.
struct InlineIndex {
    Pos pos;
    std::string name;
    bool unique = false;
    std::vector<IndexColumn> columns;
};

struct TableDef {
    std::vector<ColumnDef> columns;
    std::vector<Constraint> constraints;
    std::vector<InlineIndex> indexes;
};

/// One declared variable: a scalar with type and optional value, or a table.
struct Declaration {
    Pos pos;
    std::string name;  ///< with its @
    TypeName type;     ///< empty for a table variable; "cursor" for a cursor variable
    ExprPtr value;
    std::unique_ptr<TableDef> table;
};

struct DeclareStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Declare;
    DeclareStmt() : Stmt(kKind) {}
    std::vector<Declaration> items;
};

struct SetVariableStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::SetVariable;
    SetVariableStmt() : Stmt(kKind) {}
    std::string name;
    std::optional<BinaryOp> op;
    ExprPtr value;
};

/// SET NOCOUNT ON, SET DATEFORMAT mdy, SET TRANSACTION ISOLATION LEVEL ..., all options upper case.
/// Several options of one SET (ANSI_NULLS, QUOTED_IDENTIFIER ON) stand in `options`.
struct SetOptionStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::SetOption;
    SetOptionStmt() : Stmt(kKind) {}
    std::vector<std::string> options;
    std::string value;  ///< "ON", "OFF" or the rest of the statement, upper case; "@v" for a variable
};

struct SetIdentityInsertStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::SetIdentityInsert;
    SetIdentityInsertStmt() : Stmt(kKind) {}
    ObjectName table;
    bool on = true;
};

struct IfStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::If;
    IfStmt() : Stmt(kKind) {}
    ExprPtr condition;
    StmtPtr then, otherwise;
};

struct WhileStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::While;
    WhileStmt() : Stmt(kKind) {}
    ExprPtr condition;
    StmtPtr body;
};

struct BreakStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Break;
    BreakStmt() : Stmt(kKind) {}
};

struct ContinueStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Continue;
    ContinueStmt() : Stmt(kKind) {}
};

struct BlockStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Block;
    BlockStmt() : Stmt(kKind) {}
    StmtList body;
};

struct ReturnStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Return;
    ReturnStmt() : Stmt(kKind) {}
    ExprPtr value;  ///< may be null
};

struct PrintStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Print;
    PrintStmt() : Stmt(kKind) {}
    ExprPtr value;
};

/// RAISERROR (message, severity, state [, args]) [WITH options]
struct RaisErrorStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::RaisError;
    RaisErrorStmt() : Stmt(kKind) {}
    ExprPtr message, severity, state;
    ExprList args;
    std::vector<std::string> options;  ///< upper case
};

/// THROW [number, message, state]; all null to throw again.
struct ThrowStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Throw;
    ThrowStmt() : Stmt(kKind) {}
    ExprPtr number, message, state;
};

struct TryCatchStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::TryCatch;
    TryCatchStmt() : Stmt(kKind) {}
    StmtList body, handler;
};

/// BEGIN, COMMIT, ROLLBACK, SAVE TRANSACTION share a name: a word, or a variable with its @, or empty.
struct TransactionStmt : Stmt {
    using Stmt::Stmt;
    std::string name;
};
struct BeginTransactionStmt : TransactionStmt {
    static constexpr StmtKind kKind = StmtKind::BeginTransaction;
    BeginTransactionStmt() : TransactionStmt(kKind) {}
};
struct CommitStmt : TransactionStmt {
    static constexpr StmtKind kKind = StmtKind::Commit;
    CommitStmt() : TransactionStmt(kKind) {}
};
struct RollbackStmt : TransactionStmt {
    static constexpr StmtKind kKind = StmtKind::Rollback;
    RollbackStmt() : TransactionStmt(kKind) {}
};
struct SaveTransactionStmt : TransactionStmt {
    static constexpr StmtKind kKind = StmtKind::SaveTransaction;
    SaveTransactionStmt() : TransactionStmt(kKind) {}
};

/// An argument of EXEC: [@name =] value [OUTPUT]. A value is a literal, a variable, or DEFAULT;
/// a bare word is a String literal that is pinned.
struct ExecArg {
    Pos pos;
    std::string name;
    ExprPtr value;
    bool output = false;
};

/// [EXEC] [@result =] procedure args
struct ExecStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Exec;
    ExecStmt() : Stmt(kKind) {}
    std::string resultVariable;
    ObjectName procedure;
    std::string procedureVariable;  ///< EXEC @name: the name stands in a variable
    std::vector<ExecArg> args;
};

/// EXEC (text + text ...)
struct ExecStringStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::ExecString;
    ExecStringStmt() : Stmt(kKind) {}
    ExprPtr text;
};

struct UseStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Use;
    UseStmt() : Stmt(kKind) {}
    std::string database;
};

struct CreateTableStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::CreateTable;
    CreateTableStmt() : Stmt(kKind) {}
    ObjectName name;
    TableDef def;
};

enum class AlterAction {
    Add,
    DropColumn,
    DropConstraint,
    AlterColumn,
    EnableConstraint,
    DisableConstraint,
    EnableTrigger,
    DisableTrigger
};

/// ALTER TABLE table ADD def | DROP names | ALTER COLUMN | [NO]CHECK CONSTRAINT names | ENABLE, DISABLE TRIGGER names.
struct AlterTableStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::AlterTable;
    AlterTableStmt() : Stmt(kKind) {}
    ObjectName table;
    AlterAction action = AlterAction::Add;
    TableDef added;        ///< of Add; a DEFAULT ... FOR column is a Constraint of kind Default with that column
    bool noCheck = false;  ///< WITH NOCHECK ADD
    bool ifExists = false;
    std::vector<std::string> names;  ///< of the drops, constraints and triggers; "ALL" for all
    ColumnDef column;                ///< of AlterColumn
};

struct CreateIndexStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::CreateIndex;
    CreateIndexStmt() : Stmt(kKind) {}
    std::string name;
    bool unique = false;
    bool clustered = false;
    ObjectName table;
    std::vector<IndexColumn> columns;
    std::vector<std::string> include;
    ExprPtr where;
};

enum class ModuleMode { Create, Alter, CreateOrAlter };

/// What all stored modules share. `source` is the whole batch, with the comments before CREATE; positions inside the
/// module count from its start. A module keeps no literal indices: its literals are compiled with their values.
struct ModuleStmt : Stmt {
    using Stmt::Stmt;
    ModuleMode mode = ModuleMode::Create;
    ObjectName name;
    std::string source;
    std::vector<std::string> options;  ///< of WITH (ENCRYPTION, SCHEMABINDING, ...), upper case
};

struct Parameter {
    Pos pos;
    std::string name;  ///< with its @
    TypeName type;
    ExprPtr defaultValue;
    bool output = false;
    bool readOnly = false;  ///< a table-valued parameter
};

struct CreateViewStmt : ModuleStmt {
    static constexpr StmtKind kKind = StmtKind::CreateView;
    CreateViewStmt() : ModuleStmt(kKind) {}
    std::vector<std::string> columns;
    QueryPtr query;
    bool checkOption = false;
};

struct CreateProcedureStmt : ModuleStmt {
    static constexpr StmtKind kKind = StmtKind::CreateProcedure;
    CreateProcedureStmt() : ModuleStmt(kKind) {}
    std::vector<Parameter> parameters;
    StmtList body;
};

enum class FunctionForm { Scalar, Inline, Table };

struct CreateFunctionStmt : ModuleStmt {
    static constexpr StmtKind kKind = StmtKind::CreateFunction;
    CreateFunctionStmt() : ModuleStmt(kKind) {}
    FunctionForm form = FunctionForm::Scalar;
    std::vector<Parameter> parameters;
    TypeName returns;                 ///< of Scalar
    std::string returnVariable;       ///< of Table, with its @
    std::unique_ptr<TableDef> table;  ///< of Table
    QueryPtr query;                   ///< of Inline
    StmtList body;                    ///< of Scalar and Table
};

struct CreateTriggerStmt : ModuleStmt {
    static constexpr StmtKind kKind = StmtKind::CreateTrigger;
    CreateTriggerStmt() : ModuleStmt(kKind) {}
    ObjectName table;
    bool insteadOf = false;  ///< otherwise AFTER (or FOR)
    bool onInsert = false, onUpdate = false, onDelete = false;
    StmtList body;
};

struct CreateDatabaseStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::CreateDatabase;
    CreateDatabaseStmt() : Stmt(kKind) {}
    std::string name;
};

struct CreateSchemaStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::CreateSchema;
    CreateSchemaStmt() : Stmt(kKind) {}
    std::string name;
};

enum class ObjectKind { Table, View, Procedure, Function, Trigger, Index, Database, Schema, Type, Sequence };

struct DropStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Drop;
    DropStmt() : Stmt(kKind) {}
    ObjectKind object = ObjectKind::Table;
    bool ifExists = false;
    std::vector<ObjectName> names;
    std::vector<ObjectName> tables;  ///< of Index, beside `names`
};

/// DBCC CHECKIDENT ('table', RESEED, n): command upper case, words among the arguments are String literals.
struct DbccStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Dbcc;
    DbccStmt() : Stmt(kKind) {}
    std::string command;
    ExprList args;
};

struct DeclareCursorStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::DeclareCursor;
    DeclareCursorStmt() : Stmt(kKind) {}
    std::string name;                  ///< a variable (SET @c = CURSOR FOR) keeps its @
    std::vector<std::string> options;  ///< upper case (LOCAL, FAST_FORWARD, ...)
    QueryPtr query;
};

/// OPEN, CLOSE, DEALLOCATE share the cursor's name.
struct CursorStmt : Stmt {
    using Stmt::Stmt;
    std::string name;
};
struct OpenCursorStmt : CursorStmt {
    static constexpr StmtKind kKind = StmtKind::OpenCursor;
    OpenCursorStmt() : CursorStmt(kKind) {}
};
struct CloseCursorStmt : CursorStmt {
    static constexpr StmtKind kKind = StmtKind::CloseCursor;
    CloseCursorStmt() : CursorStmt(kKind) {}
};
struct DeallocateCursorStmt : CursorStmt {
    static constexpr StmtKind kKind = StmtKind::DeallocateCursor;
    DeallocateCursorStmt() : CursorStmt(kKind) {}
};

enum class FetchDirection { Next, Prior, First, Last, Absolute, Relative };
struct FetchCursorStmt : CursorStmt {
    static constexpr StmtKind kKind = StmtKind::FetchCursor;
    FetchCursorStmt() : CursorStmt(kKind) {}
    FetchDirection direction = FetchDirection::Next;
    ExprPtr count;  ///< of Absolute and Relative
    std::vector<std::string> into;
};

/// Accepted without effect: GRANT, DENY, REVOKE, UPDATE STATISTICS, ...
struct IgnoredStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Ignored;
    IgnoredStmt() : Stmt(kKind) {}
    std::string what;  ///< first word, upper case
};

/// Recognised and refused as a whole: MERGE, WAITFOR, GOTO, ... Its text is skipped, not understood.
struct UnsupportedStmt : Stmt {
    static constexpr StmtKind kKind = StmtKind::Unsupported;
    UnsupportedStmt() : Stmt(kKind) {}
    std::string construct;  ///< as the refusal names it
};

// ---------------------------------------------------------------------------------------------- batches

/// A literal whose value the tree depends on (a type's length, a style, a column number, an alias).
struct Pin {
    int index = 0;
    std::string text;
    bool operator==(const Pin&) const = default;
};

/// One parsed batch. The parser notes the pins that the grammar asks for; whoever compiles the tree adds those that it
/// depends on (the digits of a divisor, the length of a text). A compiled batch serves another text of the same key
/// only where the pins are equal.
struct Batch {
    StmtList statements;
    mutable std::vector<Pin> pins;
    int literalCount = 0;
    bool cacheable = true;  ///< false: it creates a module, whose literals have no index

    /// Notes that the compiled form depends on this literal's value; once for each literal.
    void pin(const LiteralExpr& literal) const;
};

/// Visits every node below a statement, an expression or a query, each before its children. Override what is of
/// interest; a return of false leaves the children out.
class Walker {
public:
    virtual ~Walker() = default;

    void walk(const StmtList& statements);
    void walk(const Stmt& statement);
    void walk(const Expr& expr);
    void walk(const Query& query);
    void walk(const TableRef& ref);
    void walk(const TableDef& def);

protected:
    virtual bool enter(const Stmt&) { return true; }
    virtual bool enter(const Expr&) { return true; }
    virtual bool enter(const Query&) { return true; }
    virtual bool enter(const SelectBody&) { return true; }
    virtual bool enter(const TableRef&) { return true; }
    virtual void type(const TypeName&) {}
    virtual void column(const ColumnDef&) {}
    virtual void constraint(const Constraint&) {}

private:
    void expr(const ExprPtr& e);
    void exprs(const ExprList& list);
    void order(const std::vector<OrderItem>& items);
    void body(const QueryBody& body);
    void ctes(const std::vector<Cte>& with);
    void items(const std::vector<SelectItem>& list);
    void refs(const std::vector<TableRefPtr>& list);
    void output(const OutputClause* clause);
    void columnDef(const ColumnDef& def);
    void constraintDef(const Constraint& def);
    void parameters(const std::vector<Parameter>& list);
    void dml(const Stmt& statement);
    void module(const Stmt& statement);
    void control(const Stmt& statement);
    void simple(const Stmt& statement);
    void compound(const Expr& e);
};

}  // namespace kv::tsql
