// The interpreter as host of the emitter's functions, and the compiling of batches that are not run.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Ddl.h"
#include "platform/embedded/Interp.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/Refusals.h"
#include "platform/embedded/SessionFunctions.h"

namespace kv::tsql {

std::string Interp::scalarFunction(const ObjectPtr& function) {
    const std::string key = function->database + "." + function->name;
    std::string name = "fn$" + lowered(key);
    if (session_.registered.insert(name).second) registerScalarFunction(session_.db(), *this, name, key);
    return name;
}

void Interp::knowFunctions() {
    for (const ObjectPtr& object : catalog().all()) {
        if (object->type == ObjectType::ScalarFunction) scalarFunction(object);
    }
}

std::string Interp::tableFunction(const ObjectPtr& function) {
    const int arguments = static_cast<int>(moduleOf(*function).parameterCount());
    // A module's columns are fixed when it is registered: another shape is another module.
    std::string name = "tf$" + lowered(function->database + "." + function->name) + "$" + std::to_string(arguments) +
                       "$" + std::to_string(function->columns.size());
    if (session_.registered.insert(name).second) {
        registerTableFunction(session_.db(), *this, name, *function, arguments);
    }
    return name;
}

std::vector<DbError> Interp::compileOnly(std::string_view text) {
    std::vector<DbError> errors;
    messages_ = &errors;
    depth_ = 0;
    tryDepth_ = 0;
    session_.refreshCatalog();
    // Tables that the batch makes are made, compiled against, and undone.
    execSql(session_.db(), "SAVEPOINT kv_lint");
    Frame frame;
    LexedBatch lexed;
    CompiledBatch batch;
    try {
        lex(text, lexed);
        batch.batch = parseBatch(lexed);
        refuseUnsupported(batch.batch.statements);
        const StmtList& list = batch.batch.statements;
        frame.scope = &batch.variables;
        frame.database = session_.database;
        frame.literals = &lexed.literals;
        frame.batch = &batch;
        enter(frame);
        try {
            const auto* module = list.size() == 1 ? dynamic_cast<const ModuleStmt*>(list.front().get()) : nullptr;
            if (!module) {
                declareVariables(list, batch.variables);
                checkVariables(list, batch.variables);
            }
            frame.variables.resize(batch.variables.size());
            compileList(list);
        } catch (const SqlError& error) {
            message(error);
        }
        leave(frame);
    } catch (const SqlError& error) {
        message(error);
    }
    session_.undoTo("kv_lint");
    session_.afterLint();
    messages_ = nullptr;
    return errors;
}

void Interp::compileList(const StmtList& list) {
    for (const StmtPtr& stmt : list) compileOne(*stmt);
}

void Interp::compileOne(const Stmt& stmt) {
    try {
        compileStatement(stmt);
    } catch (SqlError& error) {
        // A #table that is not made here is the caller's: only its run can tell.
        if (error.number == 208 && error.text.find("'#") != std::string::npos && !frame_->procedure.empty()) return;
        if (error.line == 0) error.line = static_cast<int>(stmt.pos.line);
        if (error.procedure.empty()) error.procedure = frame_->procedure;
        message(error);
    }
}

void Interp::compileExpr(const Expr& expr, bool condition) {
    if (condition || expr.isCondition()) {
        prepareOnly(valuePlan(expr, nullptr, true));
    } else if (expr.kind != ExprKind::Default) {
        prepareOnly(valuePlan(expr, nullptr, false));
    }
}

void Interp::prepareOnly(Plan& plan) { plan.release(plan.acquire(session_.db())); }

void Interp::compileSelect(const SelectStmt& select) {
    Plan plan;
    Emitter emitter(*this, frame_->database, frame_->scope, plan);
    const ObjectName& into = select.query->first().into;
    Wish wish;
    wish.mayAssign = true;
    emitter.query(*select.query, wish);
    prepareOnly(plan);
    if (!into.empty() && !(into.isTemporary() && findLocal(into.name))) Ddl(*this).tableOfQuery(into, plan.columns);
}

void Interp::compileDml(const Stmt& stmt) {
    DmlPlan dml;
    Emitter emitter(*this, frame_->database, frame_->scope, dml.main);
    if (const auto* insert = as<InsertStmt>(&stmt)) {
        if (insert->exec) {
            emitter.target(insert->target);
            return compileOne(*insert->exec);
        }
        emitter.insert(*insert, dml);
    } else if (const auto* update = as<UpdateStmt>(&stmt)) {
        emitter.update(*update, dml);
        if (!dml.beforeVariables.empty()) prepareOnly(dml.before);
    } else {
        emitter.remove(static_cast<const DeleteStmt&>(stmt), dml);
    }
    prepareOnly(dml.main);
}

/// Tables that the text makes must be there for what follows.
void Interp::compileTable(const Stmt& stmt) {
    if (const auto* declare = as<DeclareStmt>(&stmt)) {
        for (std::size_t i = 0; i < declare->items.size(); ++i) {
            if (declare->items[i].table) Ddl(*this).declareTable(*declare, i);
            if (declare->items[i].value) compileExpr(*declare->items[i].value, false);
        }
        return;
    }
    const ObjectName& name = static_cast<const CreateTableStmt&>(stmt).name;
    const std::string& database = name.database.empty() ? frame_->database : name.database;
    const bool known =
        name.isTemporary() ? findLocal(name.name) != nullptr : catalog().find(database, name.name) != nullptr;
    if (!known) Ddl(*this).run(stmt);
}

void Interp::compileControl(const Stmt& stmt) {
    switch (stmt.kind) {
        case StmtKind::If: {
            const auto& branch = static_cast<const IfStmt&>(stmt);
            compileExpr(*branch.condition, true);
            compileOne(*branch.then);
            if (branch.otherwise) compileOne(*branch.otherwise);
            break;
        }
        case StmtKind::While: {
            const auto& loop = static_cast<const WhileStmt&>(stmt);
            compileExpr(*loop.condition, true);
            compileOne(*loop.body);
            break;
        }
        case StmtKind::TryCatch: {
            const auto& block = static_cast<const TryCatchStmt&>(stmt);
            compileList(block.body);
            compileList(block.handler);
            break;
        }
        case StmtKind::Throw: {
            const auto& raised = static_cast<const ThrowStmt&>(stmt);
            for (const ExprPtr* part : {&raised.number, &raised.message, &raised.state}) {
                if (*part) compileExpr(**part, false);
            }
            break;
        }
        case StmtKind::RaisError: {
            const auto& raised = static_cast<const RaisErrorStmt&>(stmt);
            compileExpr(*raised.message, false);
            for (const ExprPtr& argument : raised.args) compileExpr(*argument, false);
            break;
        }
        default:
            break;
    }
}

void Interp::compileStatement(const Stmt& stmt) {
    switch (stmt.kind) {
        case StmtKind::Select:
            return compileSelect(static_cast<const SelectStmt&>(stmt));
        case StmtKind::Insert:
        case StmtKind::Update:
        case StmtKind::Delete:
            return compileDml(stmt);
        case StmtKind::Declare:
        case StmtKind::CreateTable:
            return compileTable(stmt);
        case StmtKind::SetVariable:
            return compileExpr(*static_cast<const SetVariableStmt&>(stmt).value, false);
        case StmtKind::Print:
            return compileExpr(*static_cast<const PrintStmt&>(stmt).value, false);
        case StmtKind::Block:
            return compileList(static_cast<const BlockStmt&>(stmt).body);
        case StmtKind::Exec:
            return compileExec(static_cast<const ExecStmt&>(stmt));
        case StmtKind::CreateView:
        case StmtKind::CreateProcedure:
        case StmtKind::CreateFunction:
        case StmtKind::CreateTrigger:
            return compileModule(static_cast<const ModuleStmt&>(stmt));
        case StmtKind::DeclareCursor: {
            Plan plan;
            Emitter(*this, frame_->database, frame_->scope, plan)
                .query(*static_cast<const DeclareCursorStmt&>(stmt).query, {});
            return prepareOnly(plan);
        }
        case StmtKind::Return:
            if (const auto& value = static_cast<const ReturnStmt&>(stmt).value) compileExpr(*value, false);
            return;
        case StmtKind::Truncate: {
            Plan plan;
            Emitter(*this, frame_->database, frame_->scope, plan).target(static_cast<const TruncateStmt&>(stmt).target);
            return;
        }
        default:
            return compileControl(stmt);
    }
}

void Interp::compileExec(const ExecStmt& stmt) {
    for (const ExecArg& arg : stmt.args) {
        if (arg.value->kind != ExprKind::Default) compileExpr(*arg.value, false);
    }
    if (!stmt.procedureVariable.empty()) return;
    const ObjectName& name = stmt.procedure;
    const ObjectPtr procedure = catalog().find(name.database.empty() ? frame_->database : name.database, name.name);
    if (!procedure || procedure->type != ObjectType::Procedure) {
        if (lowered(name.name) == "sp_executesql") return;
        throw sqlErrorAt(static_cast<int>(stmt.pos.line), 2812, {name.text()});
    }
    const Module& module = moduleOf(*procedure);
    std::vector<bool> given(module.parameterCount(), false);
    std::size_t position = 0;
    for (const ExecArg& arg : stmt.args) {
        std::size_t index = position++;
        if (!arg.name.empty()) {
            const int found = module.variables.find(arg.name);
            if (found < 0) throw sqlErrorAt(static_cast<int>(arg.pos.line), 8145, {arg.name, procedure->name});
            index = static_cast<std::size_t>(found);
        }
        if (index >= given.size()) throw sqlErrorAt(static_cast<int>(arg.pos.line), 8144, {procedure->name});
        given[index] = true;
    }
    for (std::size_t i = 0; i < given.size(); ++i) {
        if (!given[i] && !(*module.parameters)[i].defaultValue) {
            throw sqlErrorAt(static_cast<int>(stmt.pos.line), 201, {procedure->name, (*module.parameters)[i].name});
        }
    }
}

void Interp::compileModule(const ModuleStmt& stmt) {
    Ddl(*this).run(stmt);
    const std::string& database = stmt.name.database.empty() ? frame_->database : stmt.name.database;
    const ObjectPtr object = catalog().find(database, stmt.name.name);
    const Module& module = moduleOf(*object);
    if (module.view || (module.function && module.function->form == FunctionForm::Inline)) return;
    Frame frame;
    frame.scope = &module.variables;
    frame.variables.resize(module.variables.size());
    frame.database = object->database;
    frame.procedure = object->name;
    frame.barrier = true;
    enter(frame);
    const ObjectPtr inserted = inserted_;
    const ObjectPtr deleted = deleted_;
    try {
        if (module.trigger) compileTrigger(*object, module);
        if (module.function && module.function->form == FunctionForm::Table) Ddl(*this).declareResult(*object, module);
        if (!module.trigger) compileList(module.body());
    } catch (const SqlError& error) {
        message(error);
    }
    inserted_ = inserted;
    deleted_ = deleted;
    leave(frame);
}

}  // namespace kv::tsql
