// The interpreter's calls: procedures, EXEC of text, scalar and table functions.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Ddl.h"
#include "platform/embedded/Interp.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/Refusals.h"

namespace kv::tsql {
namespace {

constexpr int kNestingMax = 32;

class FrameScope {
public:
    FrameScope(Interp& interp, Frame& frame, void (Interp::*enter)(Frame&), void (Interp::*leave)(Frame&))
        : interp_(interp), frame_(frame), leave_(leave) {
        (interp.*enter)(frame);
    }
    FrameScope(const FrameScope&) = delete;
    FrameScope& operator=(const FrameScope&) = delete;
    ~FrameScope() { (interp_.*leave_)(frame_); }

private:
    Interp& interp_;
    Frame& frame_;
    void (Interp::*leave_)(Frame&);
};

}  // namespace

void Interp::enter(Frame& frame) {
    if (depth_ >= kNestingMax) throw sqlError(217);
    frame.caller = frame_;
    frame_ = &frame;
    ++depth_;
}

void Interp::leave(Frame& frame) {
    for (const auto& [name, table] : frame.locals) {
        try {
            session_.temps.release(table);
        } catch (const SqlError&) {
            // A table that cannot be emptied now is not used again.
            session_.temps.markAltered(table);
        }
    }
    frame_ = frame.caller;
    --depth_;
}

Datum Interp::parameterDefault(const Parameter& parameter, const Type& type) {
    if (parameter.defaultValue->kind == ExprKind::Literal) return evaluate(*parameter.defaultValue, type);
    // Defaults are constants of the module: no variables of the caller.
    Plan plan;
    Emitter emitter(*this, frame_->database, nullptr, plan);
    const Em em = emitter.constantValue(*parameter.defaultValue, type);
    if (em.constant) return *em.constant;
    Statement statement(session_.db(), "SELECT " + em.sql, false);
    return statement.step() ? columnDatum(statement.get(), 0) : Datum::null();
}

/// A value for a parameter; what does not convert is told in the words for arguments.
Datum Interp::argumentValue(const Expr& expr, const Type& type) {
    try {
        return evaluate(expr, type);
    } catch (const SqlError& error) {
        const auto* text = as<LiteralExpr>(&expr);
        const bool converted = error.number == 245 && text && !type.isText();
        if (!converted) throw;
        const std::string_view from = text->literal == LiteralKind::NString ? "nvarchar" : "varchar";
        throw sqlErrorAt(error.line, 8114, {from, kindName(type.kind)});
    }
}

void Interp::bindArguments(const ExecStmt& stmt, const Module& module, const std::string& name, Frame& frame,
                           std::vector<std::pair<int, std::size_t>>& outputs) {
    const std::size_t count = module.parameterCount();
    std::vector<bool> given(count, false);
    std::size_t position = 0;
    bool named = false;
    for (const ExecArg& arg : stmt.args) {
        std::size_t index = position;
        if (!arg.name.empty()) {
            named = true;
            const int found = module.variables.find(arg.name);
            if (count == 0) throw sqlError(8146, {name});
            if (found < 0 || static_cast<std::size_t>(found) >= count) throw sqlError(8145, {arg.name, name});
            index = static_cast<std::size_t>(found);
            if (given[index]) throw sqlError(8143, {arg.name});
        } else {
            if (named) throw sqlErrorAt(static_cast<int>(arg.pos.line), 119, {static_cast<int>(position + 1)});
            if (count == 0) throw sqlError(8146, {name});
            if (index >= count) throw sqlError(8144, {name});
        }
        ++position;
        given[index] = true;
        const Parameter& parameter = (*module.parameters)[index];
        const Type& type = module.variables.at(static_cast<int>(index)).type;
        if (arg.value->kind == ExprKind::Default) {
            if (!parameter.defaultValue) throw sqlError(201, {name, parameter.name});
            frame.variables[index] = parameterDefault(parameter, type);
            continue;
        }
        frame.variables[index] = argumentValue(*arg.value, type);
        if (!arg.output) continue;
        if (!parameter.output) throw sqlError(8162, {parameter.name});
        const auto* variable = as<VariableExpr>(arg.value);
        if (!variable) throw sqlErrorAt(static_cast<int>(arg.pos.line), 179);
        outputs.emplace_back(frame_->scope->find(variable->name), index);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (given[i]) continue;
        const Parameter& parameter = (*module.parameters)[i];
        if (!parameter.defaultValue) throw sqlError(201, {name, parameter.name});
        frame.variables[i] = parameterDefault(parameter, module.variables.at(static_cast<int>(i)).type);
    }
}

/// The procedure of a call, looked up again when the catalogue or the database has changed.
ObjectPtr Interp::procedureOf(const ExecStmt& stmt, const ObjectName& name) {
    struct Found : Attachment {
        std::int64_t version = -1;
        std::string database;
        std::weak_ptr<ObjectPtr::element_type> procedure;
    };
    const std::string& database = name.database.empty() ? frame_->database : name.database;
    if (!stmt.procedureVariable.empty()) return catalog().find(database, name.name);
    auto& found = kept<Found>(stmt);
    if (found.version == catalog().version() && found.database == database) {
        if (ObjectPtr procedure = found.procedure.lock()) return procedure;
    }
    ObjectPtr procedure = catalog().find(database, name.name);
    found.version = catalog().version();
    found.database = database;
    found.procedure = procedure;
    return procedure;
}

void Interp::exec(const ExecStmt& stmt) {
    ObjectName variableName;
    if (!stmt.procedureVariable.empty()) {
        const int index = frame_->scope->find(stmt.procedureVariable);
        if (index < 0) throw sqlError(137, {stmt.procedureVariable});
        const std::vector<std::string> parts = split(frame_->variables[static_cast<std::size_t>(index)].text, '.');
        variableName.name = unquoteName(parts.back());
        if (parts.size() > 2) variableName.database = unquoteName(parts[parts.size() - 3]);
    }
    const ObjectName& name = stmt.procedureVariable.empty() ? stmt.procedure : variableName;
    const ObjectPtr procedure = procedureOf(stmt, name);
    if (!procedure || procedure->type != ObjectType::Procedure) {
        if (systemProcedure(stmt, lowered(name.name))) return;
        throw sqlError(2812, {name.text()});
    }
    for (const Frame* frame = frame_; frame; frame = frame->caller) {
        if (frame->function) throw sqlError(557);
    }
    const Module& module = moduleOf(*procedure);
    Frame frame;
    frame.scope = &module.variables;
    frame.variables.resize(module.variables.size());
    frame.database = procedure->database;
    frame.procedure = procedure->name;
    frame.objectId = procedure->id;
    std::vector<std::pair<int, std::size_t>> outputs;
    bindArguments(stmt, module, procedure->name, frame, outputs);
    // A procedure's own changes are one transaction with the batch's; it begins before the first read, so that what a
    // procedure reads to decide what it writes cannot change between.
    if (module.writes && !session_.doomed()) session_.beforeWrite(false);
    const int tranBefore = session_.tranCount();
    const bool xactAbort = session_.xactAbort;
    {
        const FrameScope guard(*this, frame, &Interp::enter, &Interp::leave);
        // SET options of a procedure end with it, also when it fails: until then they decide what the failure does.
        struct Restore {
            Session& session;
            bool xactAbort;
            int uncaught = std::uncaught_exceptions();
            ~Restore() { session.xactAbort = xactAbort; }
        };
        const Restore restore{session_, xactAbort};
        statements(module.body());
    }
    for (const auto& [variable, parameter] : outputs) {
        const Type& to = frame_->scope->at(variable).type;
        const Type& from = module.variables.at(static_cast<int>(parameter)).type;
        const Datum& value = frame.variables[parameter];
        frame_->variables[static_cast<std::size_t>(variable)] =
            value.isNull() ? value : convertDatum(value, from, to, ConvertMode::Variable);
    }
    if (!stmt.resultVariable.empty()) {
        const int index = frame_->scope->find(stmt.resultVariable);
        const Datum status = frame.returned ? *frame.returned : Datum::of(std::int64_t{0});
        frame_->variables[static_cast<std::size_t>(index)] =
            status.isNull()
                ? Datum::of(std::int64_t{0})
                : convertDatum(status, Type::integer(), frame_->scope->at(index).type, ConvertMode::Variable);
    }
    if (session_.tranCount() != tranBefore) throw sqlError(266, {tranBefore, session_.tranCount()});
}

bool Interp::systemProcedure(const ExecStmt& stmt, const std::string& name) {
    if (name == "sp_executesql") {
        executeSql(stmt);
        return true;
    }
    if (name == "sp_refreshview" || name == "sp_recompile" || name == "sp_updatestats") return true;
    return false;
}

void Interp::runNested(const std::string& text, const std::vector<VariableInfo>& parameters,
                       std::vector<Datum>& values) {
    LexedBatch lexed = lex(text);
    CompiledBatch batch;
    batch.batch = parseBatch(lexed);
    refuseUnsupported(batch.batch.statements);
    for (const VariableInfo& parameter : parameters) batch.variables.add(parameter);
    const StmtList& list = batch.batch.statements;
    const bool module = list.size() == 1 && dynamic_cast<const ModuleStmt*>(list.front().get());
    if (!module) {
        declareVariables(list, batch.variables);
        checkVariables(list, batch.variables);
    }
    Frame frame;
    frame.scope = &batch.variables;
    frame.variables.resize(batch.variables.size());
    std::copy(values.begin(), values.end(), frame.variables.begin());
    frame.database = frame_->database;
    frame.literals = &lexed.literals;
    frame.batch = &batch;
    const std::string database = session_.database;
    {
        const FrameScope guard(*this, frame, &Interp::enter, &Interp::leave);
        statements(list);
    }
    session_.database = database;
    std::copy(frame.variables.begin(), frame.variables.begin() + static_cast<long>(values.size()), values.begin());
}

void Interp::execString(const ExecStringStmt& stmt) {
    const Datum text = evaluate(*stmt.text, Type::nvarchar(kMaxLength));
    if (text.isNull() || trimBlanks(text.text).empty()) return;
    std::vector<Datum> none;
    runNested(text.text, {}, none);
}

void Interp::executeSql(const ExecStmt& stmt) {
    if (stmt.args.empty()) throw sqlError(214, {"@statement", "ntext/nchar/nvarchar"});
    const Datum text = evaluate(*stmt.args[0].value, Type::nvarchar(kMaxLength));
    std::vector<VariableInfo> parameters;
    std::vector<Datum> values;
    std::vector<std::pair<int, std::size_t>> outputs;
    if (stmt.args.size() > 1) {
        const Datum list = evaluate(*stmt.args[1].value, Type::nvarchar(kMaxLength));
        // The parameter list has the form of a procedure's.
        const Batch declared = parseBatch("CREATE PROCEDURE p " + list.text + " AS RETURN");
        const auto& procedure = static_cast<const CreateProcedureStmt&>(*declared.statements.front());
        for (const Parameter& parameter : procedure.parameters) {
            VariableInfo info;
            info.name = parameter.name;
            info.type = resolveType(parameter.type, TypePlace::Declaration);
            parameters.push_back(std::move(info));
        }
        values.resize(parameters.size());
        for (std::size_t i = 2; i < stmt.args.size(); ++i) {
            const ExecArg& arg = stmt.args[i];
            std::size_t index = i - 2;
            for (std::size_t p = 0; !arg.name.empty() && p < parameters.size(); ++p) {
                if (equalsNoCase(parameters[p].name, arg.name)) index = p;
            }
            if (index >= parameters.size()) throw sqlError(8144, {"sp_executesql"});
            values[index] = evaluate(*arg.value, parameters[index].type);
            const auto* variable = as<VariableExpr>(arg.value);
            if (arg.output && variable) outputs.emplace_back(frame_->scope->find(variable->name), index);
        }
    }
    runNested(text.text, parameters, values);
    for (const auto& [variable, index] : outputs) {
        const Type& to = frame_->scope->at(variable).type;
        frame_->variables[static_cast<std::size_t>(variable)] =
            values[index].isNull() ? values[index]
                                   : convertDatum(values[index], parameters[index].type, to, ConvertMode::Variable);
    }
}

Datum Interp::callFunction(const ObjectPtr& function, std::vector<Datum> arguments) {
    const Module& module = moduleOf(*function);
    Frame frame;
    frame.scope = &module.variables;
    frame.variables = std::move(arguments);
    frame.variables.resize(module.variables.size());
    frame.database = function->database;
    frame.procedure = function->name;
    frame.objectId = function->id;
    frame.function = true;
    frame.barrier = true;
    frame.returnType = module.returns;
    const int rowCount = rowCount_;
    const std::string now = now_;
    const FrameScope guard(*this, frame, &Interp::enter, &Interp::leave);
    statements(module.body());
    rowCount_ = rowCount;
    now_ = now;
    session_.functions.statementNow = now;
    return frame.returned ? *frame.returned : Datum::null();
}

std::vector<std::vector<Datum>> Interp::callTableFunction(const std::string& key, std::vector<Datum> arguments) {
    const std::size_t dot = key.find('.');
    const ObjectPtr function = catalog().find(key.substr(0, dot), key.substr(dot + 1));
    if (!function) throw sqlError(208, {key});
    const Module& module = moduleOf(*function);
    Frame frame;
    frame.scope = &module.variables;
    frame.variables = std::move(arguments);
    frame.variables.resize(module.variables.size());
    frame.database = function->database;
    frame.procedure = function->name;
    frame.objectId = function->id;
    frame.function = true;
    frame.barrier = true;
    const int rowCount = rowCount_;
    const std::string now = now_;
    std::vector<std::vector<Datum>> rows;
    const FrameScope guard(*this, frame, &Interp::enter, &Interp::leave);
    const auto collect = [&](sqlite3_stmt* stmt, int count) {
        while (step(stmt)) {
            std::vector<Datum> row;
            for (int i = 0; i < count; ++i) row.push_back(columnDatum(stmt, i));
            rows.push_back(std::move(row));
        }
    };
    const int columns = static_cast<int>(function->columns.size());
    if (module.function->form == FunctionForm::Inline) {
        Plan plan;
        Emitter emitter(*this, frame.database, frame.scope, plan);
        emitter.query(*module.function->query, {});
        Running running(plan, session_.db());
        bind(running.get(), plan, true);
        collect(running.get(), columns);
    } else {
        Ddl(*this).declareResult(*function, module);
        statements(module.body());
        const LocalTable* result = findLocal(module.function->returnVariable);
        Statement read(session_.db(), "SELECT * FROM temp." + quoted(result->object->physical), false);
        collect(read.get(), columns);
    }
    rowCount_ = rowCount;
    now_ = now;
    session_.functions.statementNow = now;
    return rows;
}

}  // namespace kv::tsql
