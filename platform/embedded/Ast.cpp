#include "platform/embedded/Ast.h"

#include <algorithm>

namespace kv::tsql {

std::string ObjectName::text() const {
    std::string out;
    bool started = false;
    for (const std::string* part : {&server, &database, &schema}) {
        started = started || !part->empty();
        if (started) out += *part + ".";
    }
    return out + name;
}

std::string ColumnExpr::text() const { return qualifier.empty() ? column : qualifier.text() + "." + column; }

bool Expr::isCondition() const {
    switch (kind) {
        case ExprKind::Comparison:
        case ExprKind::Quantified:
        case ExprKind::Logical:
        case ExprKind::Not:
        case ExprKind::Like:
        case ExprKind::In:
        case ExprKind::Between:
        case ExprKind::IsNull:
        case ExprKind::Exists:
            return true;
        case ExprKind::Call:
            return static_cast<const CallExpr*>(this)->isUpdateTest();
        default:
            return false;
    }
}

bool CallExpr::isUpdateTest() const { return name.schema.empty() && name.name == "UPDATE"; }

const SelectBody& Query::first() const {
    const QueryBody* at = body.get();
    while (const auto* set = as<SetBody>(at)) at = set->left.get();
    return *as<SelectBody>(at);
}

bool SelectStmt::assigns() const {
    const std::vector<SelectItem>& items = query->first().items;
    return !items.empty() && !items.front().variable.empty();
}

const Constraint* ColumnDef::defaultConstraint() const {
    for (const Constraint& c : constraints)
        if (c.kind == ConstraintKind::Default) return &c;
    return nullptr;
}

void Batch::pin(const LiteralExpr& literal) const {
    if (literal.index < 0) return;
    const bool known = std::any_of(pins.begin(), pins.end(), [&](const Pin& p) { return p.index == literal.index; });
    if (!known) pins.push_back({literal.index, literal.text});
}

// ------------------------------------------------------------------------------------------------ walking

void Walker::walk(const StmtList& statements) {
    for (const StmtPtr& s : statements) walk(*s);
}

void Walker::expr(const ExprPtr& e) {
    if (e) walk(*e);
}

void Walker::exprs(const ExprList& list) {
    for (const ExprPtr& e : list) expr(e);
}

void Walker::order(const std::vector<OrderItem>& list) {
    for (const OrderItem& item : list) expr(item.expr);
}

void Walker::ctes(const std::vector<Cte>& with) {
    for (const Cte& cte : with) walk(*cte.query);
}

void Walker::items(const std::vector<SelectItem>& list) {
    for (const SelectItem& item : list) expr(item.expr);
}

void Walker::refs(const std::vector<TableRefPtr>& list) {
    for (const TableRefPtr& ref : list) walk(*ref);
}

void Walker::output(const OutputClause* clause) {
    if (clause) items(clause->items);
}

void Walker::parameters(const std::vector<Parameter>& list) {
    for (const Parameter& p : list) {
        type(p.type);
        expr(p.defaultValue);
    }
}

void Walker::columnDef(const ColumnDef& def) {
    column(def);
    if (!def.type.empty()) type(def.type);
    expr(def.computed);
    for (const Constraint& c : def.constraints) constraintDef(c);
}

void Walker::constraintDef(const Constraint& def) {
    constraint(def);
    expr(def.expr);
}

void Walker::walk(const TableDef& def) {
    for (const ColumnDef& c : def.columns) columnDef(c);
    for (const Constraint& c : def.constraints) constraintDef(c);
}

void Walker::walk(const Expr& e) {
    if (!enter(e)) return;
    switch (e.kind) {
        case ExprKind::Literal:
        case ExprKind::Column:
        case ExprKind::Variable:
        case ExprKind::SystemVariable:
        case ExprKind::DatePart:
        case ExprKind::Star:
        case ExprKind::Default:
            return;
        case ExprKind::Unary:
            return expr(as<UnaryExpr>(&e)->operand);
        case ExprKind::Not:
            return expr(as<NotExpr>(&e)->operand);
        case ExprKind::IsNull:
            return expr(as<IsNullExpr>(&e)->operand);
        case ExprKind::Collate:
            return expr(as<CollateExpr>(&e)->operand);
        case ExprKind::Subquery:
            return walk(*as<SubqueryExpr>(&e)->query);
        case ExprKind::Exists:
            return walk(*as<ExistsExpr>(&e)->query);
        case ExprKind::Binary: {
            const auto& b = *as<BinaryExpr>(&e);
            expr(b.left);
            return expr(b.right);
        }
        case ExprKind::Comparison: {
            const auto& c = *as<ComparisonExpr>(&e);
            expr(c.left);
            return expr(c.right);
        }
        case ExprKind::Logical: {
            const auto& l = *as<LogicalExpr>(&e);
            expr(l.left);
            return expr(l.right);
        }
        case ExprKind::Quantified: {
            const auto& q = *as<QuantifiedExpr>(&e);
            expr(q.left);
            return walk(*q.query);
        }
        default:
            return compound(e);
    }
}

void Walker::compound(const Expr& e) {
    if (const auto* like = as<LikeExpr>(&e)) {
        expr(like->value);
        expr(like->pattern);
        expr(like->escape);
    } else if (const auto* in = as<InExpr>(&e)) {
        expr(in->value);
        exprs(in->list);
        if (in->query) walk(*in->query);
    } else if (const auto* between = as<BetweenExpr>(&e)) {
        expr(between->value);
        expr(between->low);
        expr(between->high);
    } else if (const auto* choice = as<CaseExpr>(&e)) {
        expr(choice->operand);
        for (const CaseExpr::Arm& arm : choice->arms) {
            expr(arm.when);
            expr(arm.then);
        }
        expr(choice->otherwise);
    } else if (const auto* cast = as<CastExpr>(&e)) {
        type(cast->type);
        expr(cast->value);
        expr(cast->style);
    } else if (const auto* call = as<CallExpr>(&e)) {
        exprs(call->args);
        order(call->withinGroup);
        if (!call->over) return;
        exprs(call->over->partition);
        order(call->over->order);
        expr(call->over->fromCount);
        expr(call->over->toCount);
    }
}

void Walker::walk(const Query& query) {
    if (!enter(query)) return;
    ctes(query.with);
    body(*query.body);
    order(query.orderBy);
    expr(query.offset);
    expr(query.fetch);
}

void Walker::body(const QueryBody& queryBody) {
    if (const auto* set = as<SetBody>(&queryBody)) {
        body(*set->left);
        body(*set->right);
        return;
    }
    const auto& select = *as<SelectBody>(&queryBody);
    if (!enter(select)) return;
    expr(select.top.count);
    items(select.items);
    refs(select.from);
    expr(select.where);
    exprs(select.groupBy);
    expr(select.having);
}

void Walker::walk(const TableRef& ref) {
    if (!enter(ref)) return;
    if (const auto* function = as<FunctionRef>(&ref)) {
        exprs(function->args);
    } else if (const auto* derived = as<DerivedRef>(&ref)) {
        walk(*derived->query);
    } else if (const auto* values = as<ValuesRef>(&ref)) {
        for (const ExprList& row : values->rows) exprs(row);
    } else if (const auto* join = as<JoinRef>(&ref)) {
        walk(*join->left);
        walk(*join->right);
        expr(join->on);
    }
}

void Walker::walk(const Stmt& statement) {
    if (!enter(statement)) return;
    switch (statement.kind) {
        case StmtKind::Select:
            return walk(*as<SelectStmt>(&statement)->query);
        case StmtKind::Insert:
        case StmtKind::Update:
        case StmtKind::Delete:
            return dml(statement);
        case StmtKind::CreateTable:
            return walk(as<CreateTableStmt>(&statement)->def);
        case StmtKind::AlterTable: {
            const auto& alter = *as<AlterTableStmt>(&statement);
            walk(alter.added);
            if (alter.action == AlterAction::AlterColumn) columnDef(alter.column);
            return;
        }
        case StmtKind::CreateIndex:
            return expr(as<CreateIndexStmt>(&statement)->where);
        case StmtKind::CreateView:
        case StmtKind::CreateProcedure:
        case StmtKind::CreateFunction:
        case StmtKind::CreateTrigger:
            return module(statement);
        default:
            return control(statement);
    }
}

void Walker::dml(const Stmt& statement) {
    if (const auto* insert = as<InsertStmt>(&statement)) {
        ctes(insert->with);
        expr(insert->top.count);
        output(insert->output.get());
        for (const ExprList& row : insert->rows) exprs(row);
        if (insert->query) walk(*insert->query);
        if (insert->exec) walk(*insert->exec);
    } else if (const auto* update = as<UpdateStmt>(&statement)) {
        ctes(update->with);
        expr(update->top.count);
        for (const Assignment& a : update->assignments) expr(a.value);
        output(update->output.get());
        refs(update->from);
        expr(update->where);
    } else if (const auto* deletion = as<DeleteStmt>(&statement)) {
        ctes(deletion->with);
        expr(deletion->top.count);
        output(deletion->output.get());
        refs(deletion->from);
        expr(deletion->where);
    }
}

void Walker::module(const Stmt& statement) {
    if (const auto* view = as<CreateViewStmt>(&statement)) {
        walk(*view->query);
    } else if (const auto* procedure = as<CreateProcedureStmt>(&statement)) {
        parameters(procedure->parameters);
        walk(procedure->body);
    } else if (const auto* trigger = as<CreateTriggerStmt>(&statement)) {
        walk(trigger->body);
    } else if (const auto* function = as<CreateFunctionStmt>(&statement)) {
        parameters(function->parameters);
        if (!function->returns.empty()) type(function->returns);
        if (function->table) walk(*function->table);
        if (function->query) walk(*function->query);
        walk(function->body);
    }
}

void Walker::control(const Stmt& statement) {
    if (const auto* choice = as<IfStmt>(&statement)) {
        expr(choice->condition);
        walk(*choice->then);
        if (choice->otherwise) walk(*choice->otherwise);
    } else if (const auto* loop = as<WhileStmt>(&statement)) {
        expr(loop->condition);
        walk(*loop->body);
    } else if (const auto* block = as<BlockStmt>(&statement)) {
        walk(block->body);
    } else if (const auto* tried = as<TryCatchStmt>(&statement)) {
        walk(tried->body);
        walk(tried->handler);
    } else if (const auto* declare = as<DeclareStmt>(&statement)) {
        for (const Declaration& item : declare->items) {
            if (!item.type.empty()) type(item.type);
            expr(item.value);
            if (item.table) walk(*item.table);
        }
    } else if (const auto* exec = as<ExecStmt>(&statement)) {
        for (const ExecArg& arg : exec->args) expr(arg.value);
    } else if (const auto* cursor = as<DeclareCursorStmt>(&statement)) {
        walk(*cursor->query);
    } else if (const auto* fetch = as<FetchCursorStmt>(&statement)) {
        expr(fetch->count);
    } else {
        simple(statement);
    }
}

void Walker::simple(const Stmt& statement) {
    if (const auto* set = as<SetVariableStmt>(&statement)) {
        expr(set->value);
    } else if (const auto* back = as<ReturnStmt>(&statement)) {
        expr(back->value);
    } else if (const auto* shown = as<PrintStmt>(&statement)) {
        expr(shown->value);
    } else if (const auto* text = as<ExecStringStmt>(&statement)) {
        expr(text->text);
    } else if (const auto* dbcc = as<DbccStmt>(&statement)) {
        exprs(dbcc->args);
    } else if (const auto* raised = as<RaisErrorStmt>(&statement)) {
        expr(raised->message);
        expr(raised->severity);
        expr(raised->state);
        exprs(raised->args);
    } else if (const auto* thrown = as<ThrowStmt>(&statement)) {
        expr(thrown->number);
        expr(thrown->message);
        expr(thrown->state);
    }
}

}  // namespace kv::tsql
