#pragma once
// Expression: what a template computes from fields, parameters and totals. Read once, bound to names, evaluated per
// row.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Value.h"
#include "platform/print/TemplateText.h"

namespace kv {

/// A mistake in the text of an expression; `at` counts characters from 0.
struct ExpressionError {
    std::size_t at = 0;
    std::string text;
};

enum class TotalKind { Sum, Count, CountDistinct, Average, Min, Max, Running, First, Last };

/// Facts of the run and the page that an expression may ask for.
enum class Fact { PageNumber, Pages, RowNumber, GroupRow, ReportTitle, Description, FileName, Now, Today, Rows };

/// The reach of a total.
constexpr int kScopeOwn = -3;  ///< that of the band in which the total stands
constexpr int kScopePage = -2;
constexpr int kScopeReport = -1;  // groups count from 0

struct ExprFunction;

struct ExprNode {
    enum class Op {
        Constant,
        Name,
        Parameter,
        Field,
        Call,
        Total,
        FactOf,
        If,
        Case,
        Negate,
        Not,
        Add,
        Subtract,
        Multiply,
        Divide,
        Remainder,
        Join,
        Equal,
        Unequal,
        Less,
        LessEqual,
        Greater,
        GreaterEqual,
        And,
        Or,
        In
    };
    Op op = Op::Constant;
    std::size_t at = 0;  ///< character in the text, for messages
    Value constant;
    std::string name;  ///< of a field, parameter or function; the scope's name of a total
    int source = 0;    ///< Field: number of the source
    int slot = -1;     ///< Field, Parameter, Total: index after binding
    const ExprFunction* function = nullptr;
    TotalKind total = TotalKind::Sum;
    Fact fact = Fact::PageNumber;
    std::vector<ExprNode> args;
};

/// What stands behind the names while a bound expression is evaluated.
class EvalContext {
public:
    EvalContext() = default;
    EvalContext(const EvalContext&) = default;
    EvalContext& operator=(const EvalContext&) = default;
    virtual ~EvalContext() = default;
    virtual Value field(int source, int column) const = 0;
    virtual Value parameter(int index) const = 0;
    virtual Value total(int slot) const = 0;
    virtual Value fact(Fact fact) const = 0;
};

/// What names mean at one place of a template; errors are thrown as ExpressionError.
class NameScope {
public:
    NameScope() = default;
    NameScope(const NameScope&) = default;
    NameScope& operator=(const NameScope&) = default;
    virtual ~NameScope() = default;
    /// Turns a Name node into a Field node, or into the formula it stands for.
    virtual void bindName(ExprNode& node) = 0;
    virtual int bindParameter(const ExprNode& node) = 0;
    /// Gives the slot of a total whose argument has been bound.
    virtual int bindTotal(const ExprNode& node) = 0;
    virtual void checkFact(const ExprNode& node) = 0;
};

class Expression {
public:
    Expression() = default;
    /// Operators by rising strength: or, and, not, comparisons and in (...), &, + -, * / %, sign.
    /// Names are fields or formulas ([any name] in brackets, source.field for other sources), :Name is a parameter.
    /// Raises ExpressionError.
    static Expression parse(std::string_view text);
    /// A text with parts in braces: "Page {pageNumber()} of {pages()}", "{BatchDate|MMMM d, yyyy}"; "{{" is a brace.
    static Expression parseText(std::string_view text);
    static Expression constant(Value value);
    static Expression ofNode(ExprNode node);

    bool empty() const { return !root_; }
    const std::string& text() const { return text_; }
    void bind(NameScope& scope);
    /// Binds a part of an expression, e.g. the copy of a formula that a name stands for.
    static void bindTree(ExprNode& node, NameScope& scope);
    Value evaluate(const EvalContext& context) const;
    /// The name when the expression is a single field name, else empty.
    std::string soleName() const;
    bool uses(Fact fact) const;
    const ExprNode* root() const { return root_ ? &*root_ : nullptr; }

    TextPlace place;  ///< where it stands in a template

private:
    std::string text_;
    std::optional<ExprNode> root_;
};

/// A function of the language without side effects: table in Functions.cpp.
struct ExprFunction {
    const char* name;
    int least;
    int most;  ///< -1: any number
    Value (*call)(const std::vector<Value>& args);
    const char* help;  ///< "left(text, n): the first n characters"
};
const std::vector<ExprFunction>& expressionFunctions();
const ExprFunction* findFunction(std::string_view name);

/// Arithmetic of the language: whole numbers and amounts stay exact, null counts as zero.
Value addValues(const Value& a, const Value& b);
Value subtractValues(const Value& a, const Value& b);
Value multiplyValues(const Value& a, const Value& b);
Value divideValues(const Value& a, const Value& b);
/// -1, 0, 1. Texts without letter case; null is the empty text, zero, or before every date.
int compareValues(const Value& a, const Value& b);
bool truthOf(const Value& value);

}  // namespace kv
