#pragma once
// Ast: the syntax tree of T-SQL, one struct per kind of expression, table source and statement.
//
// The tree holds what was written, unresolved: names are as typed (without brackets), types are names with their
// numbers, literals keep their text and their place in the batch's literal vector. Trees are owned by unique_ptr and
// never change after parsing, except for `attachment`, which belongs to whoever executes the node.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kv::tsql {

/// A place in the batch text: line and column count from 1 (column in bytes), offset in bytes from 0.
struct Pos {
    std::uint32_t line = 1;
    std::uint32_t column = 1;
    std::uint32_t offset = 0;
};

/// What an executor keeps at a node (a plan, a prepared expression). Freed with the tree.
struct Attachment {
    virtual ~Attachment() = default;
};

/// Base of everything that has a place and may carry an attachment.
struct Node {
    Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node() = default;

    Pos pos;
    mutable std::unique_ptr<Attachment> attachment;
};

struct Expr;
struct Query;
struct TableRef;
struct Stmt;
using ExprPtr = std::unique_ptr<Expr>;
using QueryPtr = std::unique_ptr<Query>;
using TableRefPtr = std::unique_ptr<TableRef>;
using StmtPtr = std::unique_ptr<Stmt>;
using ExprList = std::vector<ExprPtr>;
using StmtList = std::vector<StmtPtr>;

/// [server.][database.][schema.]name; parts not written are empty ("DB..T" has an empty schema).
/// `name` keeps the # of a temporary table and the @ of a table variable.
struct ObjectName {
    Pos pos;
    std::string server;
    std::string database;
    std::string schema;
    std::string name;

    bool empty() const { return name.empty(); }
    bool isTemporary() const { return !name.empty() && name[0] == '#'; }
    bool isVariable() const { return !name.empty() && name[0] == '@'; }
    /// The parts that were written, joined with dots as an error message shows them.
    std::string text() const;
};

/// A type as written: lower-case name, numbers in parentheses or kNone; varchar(max) has length kMax.
/// "decimal(9,6)" has length 9 and scale 6. `userSchema` is set for "dbo.TypeName".
struct TypeName {
    static constexpr int kNone = -1;
    static constexpr int kMax = -2;

    Pos pos;
    std::string name;
    std::string userSchema;
    int length = kNone;
    int scale = kNone;

    bool empty() const { return name.empty(); }
};

// ---------------------------------------------------------------------------------------------- expressions

enum class ExprKind {
    Literal,
    Column,
    Variable,
    SystemVariable,
    Unary,
    Binary,
    Comparison,
    Quantified,
    Logical,
    Not,
    Like,
    In,
    Between,
    IsNull,
    Exists,
    Case,
    Cast,
    Call,
    DatePart,
    Collate,
    Subquery,
    Star,
    Default,
};

/// A value (or, for the predicate kinds, a condition).
struct Expr : Node {
    explicit Expr(ExprKind k) : kind(k) {}
    const ExprKind kind;

    /// Comparison, Quantified, Logical, Not, Like, In, Between, IsNull and Exists yield true, false or unknown.
    bool isCondition() const;
};

/// The node as its struct, or null when it is of another kind: `if (auto* c = as<ColumnExpr>(e))`.
template <class T, class Base>
T* as(Base* node) {
    return node && node->kind == T::kKind ? static_cast<T*>(node) : nullptr;
}
template <class T, class Base>
const T* as(const Base* node) {
    return node && node->kind == T::kKind ? static_cast<const T*>(node) : nullptr;
}
template <class T, class Base>
T* as(const std::unique_ptr<Base>& node) {
    return as<T>(node.get());
}

enum class LiteralKind { Null, String, NString, Int, BigInt, Decimal, Float, Money, Binary };

/// A constant. `text` is the value: strings unquoted and unescaped, numbers as written without a sign,
/// money without its currency sign, binary with its 0x.
struct LiteralExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Literal;
    LiteralExpr() : Expr(kKind) {}
    LiteralKind literal = LiteralKind::Null;
    std::string text;
    int index = -1;       ///< place in the literal vector of the batch; -1 for NULL and for literals inside a module
    bool pinned = false;  ///< its value is part of the compiled form: never send it as a parameter
    int precision = 0;    ///< digits of a Decimal literal
    int scale = 0;        ///< digits after the point of a Decimal literal
};

/// [[[database.]schema.]table.]column
struct ColumnExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Column;
    ColumnExpr() : Expr(kKind) {}
    ObjectName qualifier;  ///< empty when the column stands alone
    std::string column;
    std::string text() const;  ///< as an error message shows it
};

/// @name
struct VariableExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Variable;
    VariableExpr() : Expr(kKind) {}
    std::string name;  ///< with its @, as written
};

/// @@ROWCOUNT and the like.
struct SystemVariableExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::SystemVariable;
    SystemVariableExpr() : Expr(kKind) {}
    std::string name;  ///< lower case with its @@
};

enum class UnaryOp { Minus, Plus, BitNot };
struct UnaryExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Unary;
    UnaryExpr() : Expr(kKind) {}
    UnaryOp op = UnaryOp::Minus;
    ExprPtr operand;
};

enum class BinaryOp { Add, Subtract, Multiply, Divide, Modulo, BitAnd, BitOr, BitXor };
struct BinaryExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Binary;
    BinaryExpr() : Expr(kKind) {}
    BinaryOp op = BinaryOp::Add;
    ExprPtr left, right;
};

enum class CompareOp { Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };
struct ComparisonExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Comparison;
    ComparisonExpr() : Expr(kKind) {}
    CompareOp op = CompareOp::Equal;
    ExprPtr left, right;
};

/// left op ANY|ALL (query)
struct QuantifiedExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Quantified;
    QuantifiedExpr() : Expr(kKind) {}
    CompareOp op = CompareOp::Equal;
    bool all = false;  ///< ALL; otherwise ANY or SOME
    ExprPtr left;
    QueryPtr query;
};

/// left AND right, left OR right
struct LogicalExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Logical;
    LogicalExpr() : Expr(kKind) {}
    bool isAnd = true;
    ExprPtr left, right;
};

struct NotExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Not;
    NotExpr() : Expr(kKind) {}
    ExprPtr operand;
};

struct LikeExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Like;
    LikeExpr() : Expr(kKind) {}
    bool negated = false;
    ExprPtr value, pattern, escape;  ///< escape may be null
};

/// value [NOT] IN (list) or (query): exactly one of the two is there.
struct InExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::In;
    InExpr() : Expr(kKind) {}
    bool negated = false;
    ExprPtr value;
    ExprList list;
    QueryPtr query;
};

struct BetweenExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Between;
    BetweenExpr() : Expr(kKind) {}
    bool negated = false;
    ExprPtr value, low, high;
};

struct IsNullExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::IsNull;
    IsNullExpr() : Expr(kKind) {}
    bool negated = false;
    ExprPtr operand;
};

struct ExistsExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Exists;
    ExistsExpr() : Expr(kKind) {}
    QueryPtr query;
};

/// CASE [operand] WHEN when THEN then ... [ELSE otherwise] END; without an operand each `when` is a condition.
struct CaseExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Case;
    CaseExpr() : Expr(kKind) {}
    struct Arm {
        ExprPtr when, then;
    };
    ExprPtr operand;
    std::vector<Arm> arms;
    ExprPtr otherwise;
};

/// CAST, CONVERT, TRY_CAST, TRY_CONVERT. Only CONVERT and TRY_CONVERT may have a style.
struct CastExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Cast;
    CastExpr() : Expr(kKind) {}
    bool isConvert = false;
    bool isTry = false;
    TypeName type;
    ExprPtr value;
    ExprPtr style;  ///< may be null; a literal style is pinned
};

struct OrderItem {
    ExprPtr expr;  ///< a pinned Int literal is a column number
    bool descending = false;
};

enum class FrameBound { UnboundedPreceding, Preceding, CurrentRow, Following, UnboundedFollowing };

/// OVER (PARTITION BY ... ORDER BY ... [ROWS|RANGE BETWEEN from AND to])
struct Window {
    Pos pos;
    ExprList partition;
    std::vector<OrderItem> order;
    bool hasFrame = false;
    bool isRange = false;  ///< RANGE; otherwise ROWS
    FrameBound from = FrameBound::UnboundedPreceding;
    FrameBound to = FrameBound::CurrentRow;
    ExprPtr fromCount, toCount;  ///< of Preceding and Following
};

/// name(args): built-in (no schema, or sys) or user function (with schema). Also the functions without parentheses
/// (CURRENT_TIMESTAMP, SYSTEM_USER, ...), aggregates with DISTINCT or *, and calls with OVER.
struct CallExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Call;
    CallExpr() : Expr(kKind) {}
    ObjectName name;  ///< as written; compare without letter case
    ExprList args;    ///< may hold DatePartExpr first (DATEADD, ...), DefaultExpr for user functions
    bool distinct = false;
    bool star = false;  ///< COUNT(*)
    bool noParentheses = false;
    std::unique_ptr<Window> over;
    std::vector<OrderItem> withinGroup;
};

/// The unit of DATEADD, DATEDIFF, DATEPART, DATENAME: a bare word, lower case.
struct DatePartExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::DatePart;
    DatePartExpr() : Expr(kKind) {}
    std::string part;
};

struct CollateExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Collate;
    CollateExpr() : Expr(kKind) {}
    ExprPtr operand;
    std::string collation;
};

/// A query in parentheses where a value is wanted.
struct SubqueryExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Subquery;
    SubqueryExpr() : Expr(kKind) {}
    QueryPtr query;
};

/// * or name.* in a select list or an OUTPUT clause.
struct StarExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Star;
    StarExpr() : Expr(kKind) {}
    ObjectName qualifier;
};

/// DEFAULT in VALUES, SET and arguments.
struct DefaultExpr : Expr {
    static constexpr ExprKind kKind = ExprKind::Default;
    DefaultExpr() : Expr(kKind) {}
};

// ---------------------------------------------------------------------------------------------- table sources

enum class TableRefKind { Named, Variable, Function, Derived, Values, Join };

struct TableRef : Node {
    explicit TableRef(TableRefKind k) : kind(k) {}
    const TableRefKind kind;
};

/// A source that a name can stand for: `alias` is empty when none was written.
struct AliasedRef : TableRef {
    using TableRef::TableRef;
    std::string alias;
    std::vector<std::string> columns;  ///< names given after the alias, for Function, Derived and Values
};

struct NamedRef : AliasedRef {
    static constexpr TableRefKind kKind = TableRefKind::Named;
    NamedRef() : AliasedRef(kKind) {}
    ObjectName name;
    std::vector<std::string> hints;  ///< upper case (NOLOCK, INDEX, ...)
};

struct VariableRef : AliasedRef {
    static constexpr TableRefKind kKind = TableRefKind::Variable;
    VariableRef() : AliasedRef(kKind) {}
    std::string name;  ///< with its @
};

struct FunctionRef : AliasedRef {
    static constexpr TableRefKind kKind = TableRefKind::Function;
    FunctionRef() : AliasedRef(kKind) {}
    ObjectName name;
    ExprList args;
};

struct DerivedRef : AliasedRef {
    static constexpr TableRefKind kKind = TableRefKind::Derived;
    DerivedRef() : AliasedRef(kKind) {}
    QueryPtr query;
};

struct ValuesRef : AliasedRef {
    static constexpr TableRefKind kKind = TableRefKind::Values;
    ValuesRef() : AliasedRef(kKind) {}
    std::vector<ExprList> rows;
};

enum class JoinKind { Inner, Left, Right, Full, Cross, CrossApply, OuterApply };

struct JoinRef : TableRef {
    static constexpr TableRefKind kKind = TableRefKind::Join;
    JoinRef() : TableRef(kKind) {}
    JoinKind join = JoinKind::Inner;
    TableRefPtr left, right;
    ExprPtr on;  ///< null for Cross, CrossApply and OuterApply
};

// ---------------------------------------------------------------------------------------------- queries

/// TOP n, TOP (expr) [PERCENT] [WITH TIES]
struct Top {
    Pos pos;
    ExprPtr count;  ///< null when there is no TOP
    bool percent = false;
    bool withTies = false;
    explicit operator bool() const { return count != nullptr; }
};

/// One entry of a select list: `expr AS alias` (all alias forms), or `@variable = expr`.
struct SelectItem {
    Pos pos;
    ExprPtr expr;
    std::string alias;                   ///< empty when none was written
    std::string variable;                ///< with its @; empty for a column
    std::optional<BinaryOp> compoundOp;  ///< of @variable += expr
};

enum class QueryBodyKind { Select, SetOperation };

struct QueryBody : Node {
    explicit QueryBody(QueryBodyKind k) : kind(k) {}
    const QueryBodyKind kind;
};

struct SelectBody : QueryBody {
    static constexpr QueryBodyKind kKind = QueryBodyKind::Select;
    SelectBody() : QueryBody(kKind) {}
    bool distinct = false;
    Top top;
    std::vector<SelectItem> items;
    ObjectName into;  ///< empty without INTO
    std::vector<TableRefPtr> from;
    ExprPtr where;
    ExprList groupBy;
    ExprPtr having;
};

enum class SetOperator { Union, UnionAll, Except, Intersect };

struct SetBody : QueryBody {
    static constexpr QueryBodyKind kKind = QueryBodyKind::SetOperation;
    SetBody() : QueryBody(kKind) {}
    SetOperator op = SetOperator::Union;
    std::unique_ptr<QueryBody> left, right;
};

struct Cte {
    Pos pos;
    std::string name;
    std::vector<std::string> columns;
    QueryPtr query;
};

/// [WITH ctes] body [ORDER BY ...] [OFFSET n ROWS [FETCH NEXT m ROWS ONLY]] [FOR XML|JSON]
struct Query : Node {
    std::vector<Cte> with;
    std::unique_ptr<QueryBody> body;
    std::vector<OrderItem> orderBy;
    ExprPtr offset, fetch;
    std::string forClause;  ///< "XML" or "JSON" (refused); empty otherwise

    /// The leftmost SELECT, which names the columns.
    const SelectBody& first() const;
};

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
    ExprPtr expr;  ///< of Check and Default
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

/// What all stored modules share. `source` is the text from CREATE to the end of the batch; positions inside the
/// module count from there. A module keeps no literal indices: its literals are compiled with their values.
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

/// One parsed batch. `pins` are in ascending order of their index.
struct Batch {
    StmtList statements;
    std::vector<Pin> pins;
    int literalCount = 0;
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
};

}  // namespace kv::tsql
