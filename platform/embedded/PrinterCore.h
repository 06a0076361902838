#pragma once
// PrinterCore: writes a syntax tree as text; operands stand in parentheses, so that no precedence is needed.

#include <string>

#include "platform/embedded/Ast.h"

namespace kv::tsql {

class TreePrinter {
public:
    std::string take() { return std::move(out_); }

    void statements(const StmtList& list);
    void statement(const Stmt& stmt);
    void expr(const Expr& e);
    void query(const Query& query);
    void type(const TypeName& type);

private:
    void add(std::string_view text) { out_ += text; }
    void name(std::string_view text);
    void object(const ObjectName& object);
    void names(const std::vector<std::string>& list);
    void words(const std::vector<std::string>& list);
    template <class List, class Print>
    void commas(const List& list, Print&& print) {
        bool first = true;
        for (const auto& item : list) {
            if (!first) add(", ");
            first = false;
            print(item);
        }
    }

    // Expressions and queries (PrinterQuery.cpp)
    void operand(const Expr& e);
    void exprs(const ExprList& list);
    void literal(const LiteralExpr& e);
    void condition(const Expr& e);
    void caseExpr(const CaseExpr& e);
    void cast(const CastExpr& e);
    void call(const CallExpr& e);
    void window(const Window& window);
    void bound(FrameBound bound, const ExprPtr& count);
    void order(const std::vector<OrderItem>& items);
    void ctes(const std::vector<Cte>& with);
    void body(const QueryBody& body);
    void arm(const QueryBody& body);
    void select(const SelectBody& body);
    void top(const Top& top);
    void item(const SelectItem& item);
    void from(const std::vector<TableRefPtr>& list);
    void ref(const TableRef& ref);
    void alias(const AliasedRef& ref);
    void join(const JoinRef& ref);
    void rows(const std::vector<ExprList>& rows);

    // Statements (Printer.cpp)
    bool control(const Stmt& stmt);
    bool data(const Stmt& stmt);
    bool definition(const Stmt& stmt);
    bool simple(const Stmt& stmt);
    bool transaction(const Stmt& stmt);
    bool cursor(const Stmt& stmt);
    void block(const StmtList& list);
    void insert(const InsertStmt& stmt);
    void update(const UpdateStmt& stmt);
    void deletion(const DeleteStmt& stmt);
    void assignment(const Assignment& a);
    void output(const OutputClause* clause);
    void where(const ExprPtr& where, const std::string& cursorName);
    void declaration(const Declaration& item);
    void exec(const ExecStmt& stmt);
    void table(const TableDef& def);
    void column(const ColumnDef& def);
    void constraint(const Constraint& def, bool ofColumn);
    void indexColumns(const std::vector<IndexColumn>& columns);
    void alterTable(const AlterTableStmt& stmt);
    void createIndex(const CreateIndexStmt& stmt);
    void moduleHead(const ModuleStmt& stmt, std::string_view kind);
    void moduleOptions(const ModuleStmt& stmt);
    void parameters(const std::vector<Parameter>& list);
    void function(const CreateFunctionStmt& stmt);
    void trigger(const CreateTriggerStmt& stmt);
    void drop(const DropStmt& stmt);

    std::string out_;
};

std::string_view symbolOf(BinaryOp op);

}  // namespace kv::tsql
