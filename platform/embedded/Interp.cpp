#include "platform/embedded/Interp.h"

#include <algorithm>

#include "platform/base/Error.h"
#include "platform/base/Text.h"
#include "platform/embedded/ClientSink.h"
#include "platform/embedded/Ddl.h"
#include "platform/embedded/Errors.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/Refusals.h"
#include "platform/embedded/SessionFunctions.h"

namespace kv::tsql {
namespace {

constexpr int kSeverityErrorMin = 11;

/// Errors after which SQL Server gives the batch up and rolls the transaction back: conversions that fail, deadlocks.
bool endsTransaction(int number) {
    static constexpr int kNumbers[] = {235, 241, 242, 244, 245, 248, 295, 1205, 8114, 8169, 1105, 823, 824};
    return std::find(std::begin(kNumbers), std::end(kNumbers), number) != std::end(kNumbers);
}

/// Errors that end the batch but leave the transaction: what is found when a statement is compiled, THROW, nesting.
bool endsBatch(const SqlError& error) {
    static constexpr int kNumbers[] = {207, 208, 209, 213, 217, 3609, 3930, 4104, 911, 50001};
    return error.severity == 15 || (error.number >= 40000 && error.number < 50000) ||
           std::find(std::begin(kNumbers), std::end(kNumbers), error.number) != std::end(kNumbers);
}

/// A statement that makes a module is the only one of its batch, and what it holds is not compiled with it.
bool isModule(const Stmt& stmt) {
    return stmt.kind == StmtKind::CreateView || stmt.kind == StmtKind::CreateProcedure ||
           stmt.kind == StmtKind::CreateFunction || stmt.kind == StmtKind::CreateTrigger;
}

DbError shown(const SqlError& error) {
    DbError out;
    out.number = error.number;
    out.severity = error.severity;
    out.state = error.state;
    out.line = error.line;
    out.procedure = error.procedure;
    out.source = "Embedded";
    out.description = error.text;
    return out;
}

}  // namespace

Interp::Interp(Session& session) : session_(session) {
    frame_ = &root_;
    registerSessionFunctions(session.db(), *this);
    knowFunctions();
}
Interp::~Interp() = default;

bool Interp::runBatch(std::string_view text, std::vector<ResultSet>& results, std::vector<DbError>& messages) {
    ClientSink sink(results);
    sink_ = &sink;
    messages_ = &messages;
    anyError_ = false;
    affected_ = -1;
    tryDepth_ = 0;
    depth_ = 0;
    caught_.clear();
    now_.clear();
    try {
        runCompiled(text);
    } catch (const BatchAborted&) {
        // Told already.
    } catch (SqlError& error) {
        if (error.line == 0) error.line = 1;
        message(error);
    } catch (const Error& error) {
        message(SqlError(static_cast<int>(error.number), error.description));
    }
    try {
        if (!session_.endBatch()) message(sqlError(3998));
    } catch (const SqlError& error) {
        message(error);
        session_.noteLostTransaction();
    }
    sink_ = nullptr;
    messages_ = nullptr;
    return !anyError_;
}

std::shared_ptr<CompiledBatch> Interp::compiled(LexedBatch& lexed) {
    // Names mean something else in another database.
    lexed.addToKey("\n");
    lexed.addToKey(session_.database);
    std::shared_ptr<CompiledBatch> found;
    if (session_.options().statementCache) found = session_.cache.find(lexed.key(), lexed.literals);
    // Inside a transaction nobody else can have changed what it sees; one that begins looks for itself.
    const bool begins = found && found->begins;
    if (!begins && sqlite3_get_autocommit(session_.db()) && session_.refreshCatalog()) return nullptr;
    if (found) ++session_.counts.reused;
    return found;
}

std::shared_ptr<CompiledBatch> Interp::compile(std::string_view text, LexedBatch& lexed) {
    ++session_.counts.compiled;
    const std::string key(lexed.key());
    lex(text, lexed);
    auto batch = std::make_shared<CompiledBatch>();
    batch->batch = parseBatch(lexed);
    refuseUnsupported(batch->batch.statements);
    batch->pins = batch->batch.pins;
    const StmtList& list = batch->batch.statements;
    const bool module = list.size() == 1 && isModule(*list.front());
    if (!module) {
        declareVariables(list, batch->variables);
        checkVariables(list, batch->variables);
        const Effects effects = effectsOf(list);
        batch->writes = effects.writes || effects.calls;
        const bool dml =
            list.size() == 1 && (list.front()->kind == StmtKind::Insert || list.front()->kind == StmtKind::Update ||
                                 list.front()->kind == StmtKind::Delete);
        batch->simple = dml && !effects.calls;
        batch->begins = !list.empty() && list.front()->kind == StmtKind::BeginTransaction;
        if (session_.options().statementCache && !effects.definitions) session_.cache.put(key, batch);
    }
    return batch;
}

bool Interp::runCompiled(std::string_view text) {
    LexedBatch& lexed = lexed_;
    lexKey(text, lexed);
    std::shared_ptr<CompiledBatch> batch = compiled(lexed);
    if (!batch) batch = compile(text, lexed);
    Frame frame;
    frame.scope = &batch->variables;
    frame.variables.resize(batch->variables.size());
    frame.database = session_.database;
    frame.literals = &lexed.literals;
    frame.batch = batch.get();
    simpleBatch_ = batch->simple;
    struct Leave {
        Interp& interp;
        Frame& frame;
        ~Leave() { interp.leave(frame); }
    };
    enter(frame);
    const Leave guard{*this, frame};
    statements(batch->batch.statements);
    return true;
}

Flow Interp::statements(const StmtList& list) {
    for (const StmtPtr& stmt : list) {
        const Flow flow = statement(*stmt);
        if (flow != Flow::Normal) return flow;
    }
    return Flow::Normal;
}

Flow Interp::statement(const Stmt& stmt) {
    now_.clear();
    session_.functions.statementNow.clear();
    try {
        const Flow flow = dispatch(stmt);
        const bool keepsError = stmt.kind == StmtKind::If || stmt.kind == StmtKind::While ||
                                stmt.kind == StmtKind::Block || stmt.kind == StmtKind::TryCatch ||
                                stmt.kind == StmtKind::RaisError || stmt.kind == StmtKind::Exec;
        if (!keepsError) lastError_ = 0;
        return flow;
    } catch (SqlError& error) {
        // A function of the engine failed inside a statement that was run without a plan (ALTER TABLE, TRUNCATE).
        if (std::optional<SqlError> inner = std::exchange(session_.functions.pending, std::nullopt)) {
            return failed(stmt, std::move(*inner));
        }
        return failed(stmt, std::move(error));
    }
}

/// An error of a statement: to the next CATCH when there is one, else the statement or the whole batch ends.
Flow Interp::failed(const Stmt& stmt, SqlError error) {
    if (error.line == 0) error.line = static_cast<int>(stmt.pos.line);
    if (error.procedure.empty() && frame_) error.procedure = frame_->procedure;
    lastError_ = error.number;
    rowCount_ = 0;
    bool inFunction = false;
    bool inTrigger = false;
    for (const Frame* frame = frame_; frame; frame = frame->caller) {
        inFunction = inFunction || frame->function;
        inTrigger = inTrigger || frame->trigger;
    }
    if (inFunction || insertingExec_) throw error;
    session_.noteLostTransaction();
    const bool thrown = stmt.kind == StmtKind::Throw;
    const bool raised = stmt.kind == StmtKind::RaisError;
    const bool fatal = endsTransaction(error.number) || std::exchange(triggerFailed_, false);
    if (insideTry() || inTrigger) {
        if (raised && !insideTry()) {
            message(error);
            return Flow::Normal;
        }
        if (session_.xactAbort || fatal || inTrigger) session_.doom();
        throw error;
    }
    message(error);
    if (raised) return Flow::Normal;
    const bool aborts = session_.xactAbort || thrown || fatal || endsBatch(error);
    if (!aborts) return Flow::Normal;
    if ((session_.xactAbort || fatal) && session_.tranCount() > 0) session_.rollbackAll();
    throw BatchAborted();
}

void Interp::message(const SqlError& error) {
    if (error.severity >= kSeverityErrorMin) anyError_ = true;
    if (messages_) messages_->push_back(shown(error));
}

Flow Interp::dispatch(const Stmt& stmt) {
    switch (stmt.kind) {
        case StmtKind::Select:
            select(static_cast<const SelectStmt&>(stmt));
            break;
        case StmtKind::Insert:
            insert(static_cast<const InsertStmt&>(stmt));
            break;
        case StmtKind::Update:
        case StmtKind::Delete:
            change(stmt);
            break;
        case StmtKind::Truncate:
            truncate(static_cast<const TruncateStmt&>(stmt));
            break;
        case StmtKind::Declare:
            declare(static_cast<const DeclareStmt&>(stmt));
            break;
        case StmtKind::SetVariable:
            setVariable(static_cast<const SetVariableStmt&>(stmt));
            break;
        case StmtKind::SetOption:
            setOption(static_cast<const SetOptionStmt&>(stmt));
            break;
        case StmtKind::If: {
            const auto& branch = static_cast<const IfStmt&>(stmt);
            if (test(*branch.condition)) return statement(*branch.then);
            return branch.otherwise ? statement(*branch.otherwise) : Flow::Normal;
        }
        case StmtKind::While:
            return whileLoop(static_cast<const WhileStmt&>(stmt));
        case StmtKind::Break:
            return Flow::Break;
        case StmtKind::Continue:
            return Flow::Continue;
        case StmtKind::Block:
            return statements(static_cast<const BlockStmt&>(stmt).body);
        case StmtKind::Return:
            return returnFrom(static_cast<const ReturnStmt&>(stmt));
        case StmtKind::Print:
            print(static_cast<const PrintStmt&>(stmt));
            break;
        case StmtKind::RaisError:
            raiseError(static_cast<const RaisErrorStmt&>(stmt));
            break;
        case StmtKind::Throw:
            throwError(static_cast<const ThrowStmt&>(stmt));
        case StmtKind::TryCatch:
            return tryCatch(static_cast<const TryCatchStmt&>(stmt));
        case StmtKind::BeginTransaction:
        case StmtKind::Commit:
        case StmtKind::Rollback:
        case StmtKind::SaveTransaction:
            transaction(stmt);
            break;
        case StmtKind::Exec:
            exec(static_cast<const ExecStmt&>(stmt));
            break;
        case StmtKind::ExecString:
            execString(static_cast<const ExecStringStmt&>(stmt));
            break;
        case StmtKind::Use:
            use(static_cast<const UseStmt&>(stmt));
            break;
        case StmtKind::DeclareCursor:
        case StmtKind::OpenCursor:
        case StmtKind::FetchCursor:
        case StmtKind::CloseCursor:
        case StmtKind::DeallocateCursor:
            cursorStatement(stmt);
            break;
        case StmtKind::Ignored:
            break;
        default:
            Ddl(*this).run(stmt);
            break;
    }
    return Flow::Normal;
}

Flow Interp::whileLoop(const WhileStmt& loop) {
    while (test(*loop.condition)) {
        const Flow flow = statement(*loop.body);
        if (flow == Flow::Break) break;
        if (flow == Flow::Return) return flow;
    }
    return Flow::Normal;
}

Flow Interp::tryCatch(const TryCatchStmt& block) {
    Frame* frame = frame_;
    const int depth = depth_;
    const int tries = tryDepth_;
    std::optional<SqlError> error;
    ++tryDepth_;
    try {
        const Flow flow = statements(block.body);
        tryDepth_ = tries;
        return flow;
    } catch (SqlError& raised) {
        tryDepth_ = tries;
        frame_ = frame;
        depth_ = depth;
        error = std::move(raised);
    } catch (...) {
        tryDepth_ = tries;
        throw;
    }
    caught_.push_back(*error);
    struct Pop {
        std::vector<CaughtError>& list;
        ~Pop() { list.pop_back(); }
    };
    const Pop guard{caught_};
    return statements(block.handler);
}

Flow Interp::returnFrom(const ReturnStmt& stmt) {
    if (stmt.value) frame_->returned = evaluate(*stmt.value, frame_->returnType);
    return Flow::Return;
}

void Interp::declare(const DeclareStmt& stmt) {
    for (std::size_t i = 0; i < stmt.items.size(); ++i) {
        const Declaration& item = stmt.items[i];
        if (item.table) {
            if (!findLocal(item.name)) Ddl(*this).declareTable(stmt, i);
        } else if (item.value) {
            const int index = frame_->scope->find(item.name);
            frame_->variables[static_cast<std::size_t>(index)] = evaluate(*item.value, frame_->scope->at(index).type);
        }
    }
}

void Interp::setVariable(const SetVariableStmt& stmt) {
    const int index = frame_->scope->find(stmt.name);
    const Type& type = frame_->scope->at(index).type;
    Datum value = evaluate(*stmt.value, stmt.op ? Type() : type);
    if (!stmt.op) {
        frame_->variables[static_cast<std::size_t>(index)] = std::move(value);
        return;
    }
    // @v += e is @v = @v + e: the tree of that is made once and kept at the statement.
    struct Sum : Attachment {
        BinaryExpr tree;
    };
    auto* sum = dynamic_cast<Sum*>(stmt.attachment.get());
    if (!sum) {
        auto made = std::make_unique<Sum>();
        auto variable = std::make_unique<VariableExpr>();
        variable->name = stmt.name;
        made->tree.op = *stmt.op;
        made->tree.left = std::move(variable);
        made->tree.right = parseExpression(kv::tsql::print(*stmt.value));
        sum = made.get();
        stmt.attachment = std::move(made);
    }
    frame_->variables[static_cast<std::size_t>(index)] = evaluate(sum->tree, type);
}

void Interp::setOption(const SetOptionStmt& stmt) {
    for (const std::string& option : stmt.options) {
        if (option == "XACT_ABORT") session_.xactAbort = stmt.value == "ON";
        if (option == "DATEFORMAT" && stmt.value != "MDY") {
            throw notSupported("SET DATEFORMAT " + stmt.value, static_cast<int>(stmt.pos.line),
                               static_cast<int>(stmt.pos.column));
        }
        if (option == "ROWCOUNT" && stmt.value != "0") {
            throw notSupported("SET ROWCOUNT", static_cast<int>(stmt.pos.line), static_cast<int>(stmt.pos.column));
        }
    }
}

void Interp::print(const PrintStmt& stmt) {
    const Datum text = evaluate(*stmt.value, Type::nvarchar(4000));
    message(SqlError(0, text.text, 0, 1));
}

void Interp::raiseError(const RaisErrorStmt& stmt) {
    SqlError error;
    const auto whole = [&](const ExprPtr& expr, std::int64_t otherwise) {
        return expr ? evaluate(*expr, Type::integer()).integer : otherwise;
    };
    const auto* number = as<LiteralExpr>(stmt.message);
    std::string format;
    if (number && number->literal == LiteralKind::Int) {
        error.number = static_cast<int>(evaluate(*stmt.message, Type::integer()).integer);
        format = "Message " + std::to_string(error.number);
    } else {
        format = evaluate(*stmt.message, Type::nvarchar(2047)).text;
    }
    error.severity = static_cast<int>(std::clamp<std::int64_t>(whole(stmt.severity, 16), 0, 25));
    error.state = static_cast<int>(std::clamp<std::int64_t>(whole(stmt.state, 1), 0, 255));
    std::vector<Datum> arguments;
    for (const ExprPtr& argument : stmt.args) arguments.push_back(evaluate(*argument, Type()));
    error.text = formatMessage(format, arguments);
    error.line = static_cast<int>(stmt.pos.line);
    error.procedure = frame_->procedure;
    if (error.severity < kSeverityErrorMin) {
        lastError_ = 0;
        message(error);
        return;
    }
    throw error;
}

void Interp::throwError(const ThrowStmt& stmt) {
    if (!stmt.number) {
        if (caught_.empty()) throw sqlErrorAt(static_cast<int>(stmt.pos.line), 10704);
        throw SqlError(caught_.back());
    }
    SqlError error;
    error.number = static_cast<int>(evaluate(*stmt.number, Type::integer()).integer);
    if (error.number < 50000) throw sqlErrorAt(static_cast<int>(stmt.pos.line), 35100, {error.number});
    error.text = evaluate(*stmt.message, Type::nvarchar(2048)).text;
    error.state = static_cast<int>(evaluate(*stmt.state, Type::integer()).integer);
    error.line = static_cast<int>(stmt.pos.line);
    error.procedure = frame_->procedure;
    throw error;
}

void Interp::transaction(const Stmt& stmt) {
    std::string name = static_cast<const TransactionStmt&>(stmt).name;
    if (!name.empty() && name[0] == '@') {
        const int index = frame_->scope->find(name);
        if (index < 0) throw sqlError(137, {name});
        name = frame_->variables[static_cast<std::size_t>(index)].text;
    }
    switch (stmt.kind) {
        case StmtKind::BeginTransaction:
            session_.begin(name);
            break;
        case StmtKind::Commit:
            session_.commit();
            break;
        case StmtKind::Rollback:
            if (insertingExec_) throw sqlError(3915);
            session_.rollback(name);
            break;
        default:
            session_.save(name);
            break;
    }
}

void Interp::use(const UseStmt& stmt) {
    const std::string* name = catalog().databaseName(stmt.database);
    if (!name) throw sqlErrorAt(static_cast<int>(stmt.pos.line), 911, {stmt.database});
    session_.database = *name;
    frame_->database = *name;
}

ObjectPtr Interp::localTable(std::string_view name) {
    const bool marked = !name.empty() && (name[0] == '#' || name[0] == '@');
    if (!marked) {
        if (inserted_ && equalsNoCase(name, "inserted")) return inserted_;
        if (deleted_ && equalsNoCase(name, "deleted")) return deleted_;
        return nullptr;
    }
    LocalTable* table = findLocal(name);
    return table ? table->object : nullptr;
}

LocalTable* Interp::findLocal(std::string_view name) const {
    const std::string wanted = lowered(name);
    for (const Frame* frame = frame_; frame; frame = frame->caller) {
        for (auto at = frame->locals.rbegin(); at != frame->locals.rend(); ++at) {
            if (at->first == wanted) return at->second;
        }
        // Table variables belong to their own batch or routine; functions see nothing of their callers.
        if (frame->barrier || wanted[0] == '@') break;
    }
    return nullptr;
}

void Interp::addLocal(const std::string& name, LocalTable* table) {
    // A batch's #tables live on after it: they belong to the session's frame below it.
    Frame* owner = frame_;
    if (name[0] == '#' && owner->caller && !owner->caller->caller && owner->procedure.empty()) owner = owner->caller;
    owner->locals.emplace_back(lowered(name), table);
}

void Interp::dropLocal(LocalTable* table) {
    for (Frame* frame = frame_; frame; frame = frame->caller) {
        std::erase_if(frame->locals, [table](const auto& entry) { return entry.second == table; });
    }
    session_.temps.release(table);
}

void Interp::forgetLocals(const std::vector<LocalTable*>& gone) {
    for (Frame* frame = frame_; frame; frame = frame->caller) {
        std::erase_if(frame->locals, [&gone](const auto& entry) {
            return std::find(gone.begin(), gone.end(), entry.second) != gone.end();
        });
    }
}

const Module& Interp::moduleOf(const Object& object) {
    if (!object.compiled) object.compiled = parseModule(object.source);
    return static_cast<const Module&>(*object.compiled);
}

const Expr& Interp::expressionOf(const std::string& text, bool condition) {
    ExprPtr& expr = session_.expressions[(condition ? "c" : "v") + text];
    if (!expr) expr = condition ? parseCondition(text) : parseExpression(text);
    return *expr;
}

std::string Interp::literalText(int index) {
    return std::string((*frame_->literals)[static_cast<std::size_t>(index)].text);
}

void Interp::pin(int index) {
    if (!frame_->batch) return;
    auto& pins = frame_->batch->pins;
    const bool known = std::any_of(pins.begin(), pins.end(), [index](const Pin& pin) { return pin.index == index; });
    if (!known) pins.push_back({index, literalText(index)});
}

}  // namespace kv::tsql
