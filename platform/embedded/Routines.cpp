#include "platform/embedded/Routines.h"

#include "platform/embedded/Parser.h"
#include "platform/embedded/Refusals.h"

namespace kv::tsql {
namespace {

class EffectFinder : public Walker {
public:
    Effects found;

protected:
    bool enter(const Stmt& statement) override {
        switch (statement.kind) {
            case StmtKind::Insert: {
                const auto& insert = static_cast<const InsertStmt&>(statement);
                write(insert.target);
                return true;
            }
            case StmtKind::Update:
                write(static_cast<const UpdateStmt&>(statement).target);
                return true;
            case StmtKind::Delete:
                write(static_cast<const DeleteStmt&>(statement).target);
                return true;
            case StmtKind::Truncate:
                write(static_cast<const TruncateStmt&>(statement).target);
                return true;
            case StmtKind::BeginTransaction:
                found.writes = true;
                return true;
            case StmtKind::Exec:
            case StmtKind::ExecString:
                found.calls = true;
                return true;
            case StmtKind::CreateTable:
                if (!static_cast<const CreateTableStmt&>(statement).name.isTemporary()) define();
                return false;
            case StmtKind::AlterTable:
                if (!static_cast<const AlterTableStmt&>(statement).table.isTemporary()) define();
                return false;
            case StmtKind::CreateView:
            case StmtKind::CreateProcedure:
            case StmtKind::CreateFunction:
            case StmtKind::CreateTrigger:
            case StmtKind::CreateDatabase:
            case StmtKind::CreateIndex:
                define();
                return false;
            case StmtKind::Drop: {
                const auto& drop = static_cast<const DropStmt&>(statement);
                for (const ObjectName& name : drop.names) {
                    if (!name.isTemporary()) define();
                }
                return false;
            }
            case StmtKind::Dbcc:
                found.writes = true;
                return true;
            default:
                return true;
        }
    }
    bool enter(const SelectBody& body) override {
        if (!body.into.empty() && !body.into.isTemporary()) define();
        return true;
    }

private:
    void write(const ObjectName& target) {
        if (target.isTemporary() || target.isVariable()) {
            found.locals = true;
        } else {
            found.writes = true;
        }
    }
    void define() { found.writes = found.definitions = true; }
};

void addParameters(const std::vector<Parameter>& parameters, VariableScope& scope) {
    int position = 0;
    for (const Parameter& p : parameters) {
        VariableInfo info;
        info.name = p.name;
        info.type = resolveType(p.type, TypePlace::Declaration, ++position);
        scope.add(std::move(info));
    }
}

void fill(Module& module, const Stmt& statement) {
    module.view = as<CreateViewStmt>(&statement);
    module.procedure = as<CreateProcedureStmt>(&statement);
    module.function = as<CreateFunctionStmt>(&statement);
    module.trigger = as<CreateTriggerStmt>(&statement);
    if (module.procedure) module.parameters = &module.procedure->parameters;
    if (module.function) module.parameters = &module.function->parameters;
    if (module.parameters) addParameters(*module.parameters, module.variables);
    if (module.function && module.function->form == FunctionForm::Scalar) {
        module.returns = resolveType(module.function->returns, TypePlace::Declaration);
    }
    if (module.function && module.function->form == FunctionForm::Table) {
        VariableInfo result;
        result.name = module.function->returnVariable;
        result.table = module.function->table.get();
        module.variables.add(std::move(result));
    }
    if (module.view || (module.function && module.function->form == FunctionForm::Inline)) return;
    declareVariables(module.body(), module.variables);
    checkVariables(module.body(), module.variables);
    const Effects effects = effectsOf(module.body());
    module.writes = effects.writes;
    module.calls = effects.calls;
}

}  // namespace

const StmtList& Module::body() const {
    static const StmtList none;
    if (procedure) return procedure->body;
    if (function) return function->body;
    if (trigger) return trigger->body;
    return none;
}

std::shared_ptr<Module> parseModule(const std::string& source) {
    auto module = std::make_shared<Module>();
    module->batch = parseBatch(source);
    fill(*module, *module->batch.statements.front());
    return module;
}

void checkModule(const ModuleStmt& statement) {
    Module module;
    fill(module, statement);
}

Effects effectsOf(const StmtList& statements) {
    EffectFinder finder;
    finder.walk(statements);
    return finder.found;
}

}  // namespace kv::tsql
