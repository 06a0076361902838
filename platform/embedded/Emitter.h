#pragma once
// Emitter: T-SQL trees to SQLite text. One bottom-up pass gives each expression its SQL and its static type together.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/embedded/Ast.h"
#include "platform/embedded/Catalog.h"
#include "platform/embedded/Functions.h"
#include "platform/embedded/Plan.h"
#include "platform/embedded/Routines.h"
#include "platform/embedded/Scope.h"

namespace kv::tsql {

/// What the emitter asks of the session that it works for.
class EmitHost {
public:
    virtual ~EmitHost() = default;
    virtual const Catalog& catalog() const = 0;
    /// The table behind #name, @name, inserted or deleted in the running frame; null when there is none.
    virtual ObjectPtr localTable(std::string_view name) = 0;
    /// SQLite's name of a user function, registered when it was not.
    virtual std::string scalarFunction(const ObjectPtr& function) = 0;
    virtual std::string tableFunction(const ObjectPtr& function) = 0;
    /// The parsed source of a view, routine or trigger.
    virtual const Module& moduleOf(const Object& object) = 0;
    /// A parsed DEFAULT, CHECK or filter of the catalogue.
    virtual const Expr& expressionOf(const std::string& text, bool condition) = 0;
    /// The value that a literal of the running batch has now, and the order to keep to it.
    virtual std::string literalText(int index) = 0;
    virtual void pin(int index) = 0;
};

/// An emitted expression.
struct Em {
    std::string sql;
    Type type;
    int slot = -1;         ///< its own slot, which may still be given another type
    bool column = false;   ///< a plain column
    bool collated = true;  ///< of text: SQLite compares it by CI without being told
    bool dirty = false;    ///< an exact sum that is not yet rounded
    bool nullable = true;
    bool identity = false;
    std::optional<Datum> constant;  ///< of an inline literal
    const LiteralExpr* literal = nullptr;
};

/// What a query is wanted for.
struct Wish {
    const std::vector<Type>* types = nullptr;  ///< types that the columns must get
    const std::vector<std::string>* where = nullptr;
    ConvertMode mode = ConvertMode::Cast;
    bool exists = false;     ///< only whether there is a row
    bool subquery = false;   ///< ORDER BY needs TOP
    bool mayAssign = false;  ///< @variable = expression is taken
};

struct QueryOut {
    std::string sql;
    std::vector<OutColumn> columns;
    bool oneRow = false;  ///< it cannot give more
    std::vector<std::string> variables;
    bool callsUser = false;
};

/// INSERT, UPDATE, DELETE in SQLite's words.
struct DmlPlan : Attachment {
    Plan main;
    Plan before;  ///< reads the values of `beforeVariables`; empty when there are none
    std::vector<int> beforeVariables;
    std::vector<int> returnVariables;  ///< variables that RETURNING fills
    std::vector<OutColumn> output;     ///< of OUTPUT: columns of RETURNING
    ObjectPtr target;
    bool explicitIdentity = false;
};

/// The operator as Functions.h's emitArithmetic takes it.
char operatorChar(BinaryOp op);

class Emitter {
public:
    /// `variables` may be null (views, constraints): then a variable is an error.
    Emitter(EmitHost& host, std::string database, const VariableScope* variables, Plan& plan);

    // Statements: each fills the plan given to the constructor.
    QueryOut query(const Query& query, const Wish& wish);
    /// SELECT <expression> AS the type (of a variable), or by its own type.
    Type value(const Expr& expr, const Type* type);
    void condition(const Expr& expr);
    void insert(const InsertStmt& statement, DmlPlan& out);
    /// INSERT target(columns) VALUES(?1, ...) for the rows of INSERT .. EXEC.
    void insertRows(const InsertStmt& statement, std::size_t columns, DmlPlan& out);
    void update(const UpdateStmt& statement, DmlPlan& out);
    void remove(const DeleteStmt& statement, DmlPlan& out);
    /// SQL of an expression over one table's columns, with its literals in the text (CHECK, DEFAULT, filters).
    std::string tableCondition(const Expr& expr, const Object& table);
    Em constantValue(const Expr& expr, const Type& type);

    /// The table of a name; raises 208. Views are found too when asked for.
    ObjectPtr target(const ObjectName& name, bool views = false);

private:
    struct CteEntry {
        std::string name;
        std::string sqlName;
        std::vector<SourceColumn> columns;
    };
    struct ItemOut {
        Em em;
        std::string name;
        const Expr* expr = nullptr;
    };
    /// A query of APPLY in work: columns from outside of it become its parameters, slots of kCaptured.
    struct Lateral {
        Scope* outside = nullptr;
        std::size_t ctes = 0;  ///< those before belong to the statement around it
    };
    struct InlineCall {
        std::map<std::string, Em> arguments;
    };

    // EmitterExpr.cpp
    Em ex(const Expr& expr);
    Em exNode(const Expr& expr);
    std::string cond(const Expr& expr);
    Em literal(const LiteralExpr& expr);
    Em column(const ColumnExpr& expr);
    Em variable(const VariableExpr& expr);
    Em systemValue(SystemValue value, const Type& type);
    Em systemVariable(const SystemVariableExpr& expr);
    Em unary(const UnaryExpr& expr);
    Em binary(const BinaryExpr& expr);
    Em caseOf(const CaseExpr& expr);
    Em cast(const CastExpr& expr);
    Em subquery(const SubqueryExpr& expr);
    std::string comparison(const ComparisonExpr& expr);
    std::string compare(CompareOp op, Em left, Em right);
    std::string inList(const InExpr& expr);
    std::string inQuery(const Em& value, const Query& query, bool negated);
    std::string between(const BetweenExpr& expr);
    std::string like(const LikeExpr& expr);
    std::string quantified(const QuantifiedExpr& expr);

    // EmitterCall.cpp
    Em call(const CallExpr& expr);
    Em aggregate(const CallExpr& expr);
    Em windowRank(const CallExpr& expr, const std::string& name);
    Em windowValue(const CallExpr& expr, const std::string& name);
    std::string over(const Window& window);
    Em userFunction(const CallExpr& expr, const ObjectPtr& function);
    std::optional<Em> expanded(const CallExpr& expr, const ObjectPtr& function);
    static Em asArgument(Em em);
    std::optional<Em> sessionFunction(const CallExpr& expr, const std::string& name);
    Em iif(const CallExpr& expr);
    std::vector<std::string> userArguments(const ObjectPtr& function, const ExprList& args);
    std::vector<CallArgument> arguments(const ExprList& list, std::vector<Em>& ems);
    CallArgument argumentOf(const Em& em) const;
    ArgumentAs converter(std::vector<Em>& ems);

    // EmitterBase.cpp
    Em to(Em em, const Type& type, ConvertMode mode, const std::string& where = {});
    Em settle(Em em) const;
    std::string collatedSql(const Em& em) const;
    int addSlot(Slot slot);
    std::string newAlias(const char* prefix);
    std::string literalNow(const LiteralExpr& expr, bool pin);
    SqlError refuse(std::string_view construct, const Pos& pos) const;

    // EmitterFrom.cpp
    std::string from(const std::vector<TableRefPtr>& refs, Scope& scope);
    std::string ref(const TableRef& ref, Scope& scope, bool nested);
    std::string joinRef(const JoinRef& join, Scope& scope, bool nested);
    std::string namedRef(const NamedRef& ref, Scope& scope, bool nested);
    std::string tableSource(const ObjectPtr& table, const std::string& alias, const std::string& database, Scope& scope,
                            bool nested);
    std::string viewSource(const ObjectPtr& view, const std::string& alias, const std::string& database, Scope& scope);
    std::string functionRef(const FunctionRef& ref, Scope& scope, bool lateral, bool outerApply);
    std::string inlineFunction(const ObjectPtr& function, const FunctionRef& ref, Scope& scope);
    std::string derivedRef(const DerivedRef& ref, Scope& scope);
    std::string lateralRef(const DerivedRef& ref, Scope& scope, bool outerApply);
    static constexpr int kCaptured = -1;  ///< index of a slot whose `where` is a column outside of APPLY
    Em captured(const ColumnExpr& expr, Em em);
    std::string valuesRef(const ValuesRef& ref, Scope& scope);
    std::string systemView(const ObjectName& name, const std::string& alias, Scope& scope);
    void addDerived(Scope& scope, const AliasedRef& ref, const std::string& sqlAlias,
                    const std::vector<OutColumn>& columns);
    Source tableSourceColumns(const ObjectPtr& table) const;

    // EmitterQuery.cpp
    QueryOut queryIn(const Query& query, Scope* outer, const Wish& wish);
    std::string ctes(const std::vector<Cte>& list);
    std::string cte(const Cte& entry);
    QueryOut body(const QueryBody& body, const Query* whole, Scope* outer, const Wish& wish);
    QueryOut setBody(const SetBody& body, const Query* whole, Scope* outer, const Wish& wish);
    QueryOut selectBody(const SelectBody& body, const Query* whole, Scope* outer, const Wish& wish);
    std::vector<ItemOut> items(const SelectBody& body, Scope& scope, const Wish& wish);
    void star(const StarExpr& expr, Scope& scope, std::vector<ItemOut>& out);
    std::string orderBy(const Query& query, const SelectBody* select, const std::vector<ItemOut>& list, Scope* scope);
    std::string limit(const Top& top, const Query* whole);
    std::string sortedFirst(const SelectBody& select, const Query& whole, Scope& scope, const std::string& tail);
    void groupKeys(const SelectBody& body, Scope& scope, std::string& sql);
    void checkLoose(Scope& scope, int error);
    Em compound(const SelectItem& item, int index, Em value);
    void pinLiterals(const Expr& expr);

    // EmitterDml.cpp
    struct Target {
        ObjectPtr table;
        std::vector<int> columns;
        bool listed = false;
    };
    Target insertTarget(const InsertStmt& statement, DmlPlan& out);
    std::string insertValues(const InsertStmt& statement, const Target& target);
    std::string insertQuery(const InsertStmt& statement, const Target& target);
    void finishInsert(const InsertStmt& statement, DmlPlan& out);
    static std::string columnNames(const std::vector<std::pair<std::string, Em>>& list);
    ObjectPtr baseOfView(const Object& view, const ObjectName& name);
    Em columnValue(const Expr& expr, const Object& table, const ColumnInfo& column);
    Em defaultOf(const ColumnInfo& column, const Object& table);
    std::vector<std::pair<std::string, Em>> missing(const Target& target);
    int findTarget(const ObjectName& name, Scope& scope);
    std::string fullTarget(const ObjectName& name, const std::vector<TableRefPtr>& refs, Scope& scope, int& at);
    void updateVariables(const UpdateStmt& statement, Scope& scope, const std::string& from, const std::string& with,
                         DmlPlan& out);
    std::string outputClause(const OutputClause& clause, const ObjectPtr& table, const std::string& image,
                             DmlPlan& out);
    Em assigned(const Assignment& assignment, const Source& source, const ColumnInfo& column);
    static std::string columnWhere(const Object& table, const ColumnInfo& column);

    EmitHost& host_;
    std::string database_;
    const VariableScope* variables_;
    Plan& plan_;
    Scope* scope_ = nullptr;  ///< where the expression in work stands
    std::vector<CteEntry> ctes_;
    std::vector<InlineCall> inlineCalls_;
    std::vector<Lateral> laterals_;
    std::vector<std::string> liveVariables_;  ///< variables that the running SELECT sets while it reads them
    int inline_ = 0;                          ///< above 0: literals stand in the text
    int conditional_ = 0;                     ///< inside CASE: nothing may fail before its branch is chosen
    int aliases_ = 0;
    int viewDepth_ = 0;
    bool expansion_ = true;  ///< calls may become queries: not in a CHECK
    bool callsUser_ = false;
    bool usesColumns_ = false;
    bool readsLive_ = false;  ///< an expression reads a live variable
};

}  // namespace kv::tsql
