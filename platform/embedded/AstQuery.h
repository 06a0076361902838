#pragma once
// AstQuery: the half of the syntax tree that stands inside statements: names, types, expressions, table sources,
// queries.
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
    bool isUpdateTest() const;  ///< UPDATE(column) of a trigger, the one call that is a condition; `name` is "UPDATE"
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
    Pos clausePos;          ///< of the FOR clause

    /// The leftmost SELECT, which names the columns.
    const SelectBody& first() const;
};

}  // namespace kv::tsql
