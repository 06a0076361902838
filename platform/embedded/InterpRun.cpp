// The interpreter's queries and changes: plans at the nodes, binding, stepping, and what SQLite's errors mean.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/ClientSink.h"
#include "platform/embedded/Ddl.h"
#include "platform/embedded/Interp.h"

namespace kv::tsql {
namespace {

struct ExprPlan : Attachment {
    Plan plan;
    std::unique_ptr<QuickCondition> quick;
    bool quickTried = false;
};

/// Where a variable stands among those of its routine or batch.
struct VariablePlace : Attachment {
    int index = -1;
};

struct SelectPlan : Attachment {
    Plan plan;
    std::vector<std::size_t> variables;  ///< places of the variables that the list sets
};

}  // namespace

/// The running frame as quick conditions see it.
class Interp::QuickFrame : public QuickValues {
public:
    explicit QuickFrame(Interp& interp) : interp_(interp) {}
    const Datum& variable(int index) const override { return interp_.liveVariable(index); }
    std::string_view literal(int index) const override {
        return (*interp_.frame_->literals)[static_cast<std::size_t>(index)].text;
    }
    std::int64_t system(SystemValue value) const override { return interp_.systemDatum(value).integer; }
    Truth ask(const Expr& condition) const override { return interp_.ask(condition); }

private:
    Interp& interp_;
};

bool Interp::valid(const Plan& plan) {
    if (plan.version != catalog().version() || plan.database != frame_->database) return false;
    return std::all_of(plan.locals.begin(), plan.locals.end(), [this](const LocalUse& use) {
        const ObjectPtr table = localTable(use.name);
        return table && table->id == use.id && table->physical == use.physical;
    });
}

Datum Interp::systemDatum(SystemValue value) {
    const auto number = [](std::int64_t n) { return Datum::of(n); };
    const CaughtError* caught = caught_.empty() ? nullptr : &caught_.back();
    switch (value) {
        case SystemValue::Now:
            if (now_.empty()) {
                now_ = session_.functions.now();
                session_.functions.statementNow = now_;
            }
            return Datum::of(now_);
        case SystemValue::RowCount:
            return number(rowCount_);
        case SystemValue::Error:
            return number(lastError_);
        case SystemValue::TranCount:
            return number(session_.tranCount());
        case SystemValue::Identity:
            return session_.lastIdentity ? number(*session_.lastIdentity) : Datum::null();
        case SystemValue::ScopeIdentity:
            return frame_->scopeIdentity ? number(*frame_->scopeIdentity) : Datum::null();
        case SystemValue::FetchStatus:
            return number(fetchStatus_);
        case SystemValue::NestLevel:
            return number(std::max(0, depth_ - 1));
        case SystemValue::XactState:
            return number(session_.tranCount() == 0 ? 0 : session_.doomed() ? -1 : 1);
        case SystemValue::ErrorNumber:
            return caught ? number(caught->number) : Datum::null();
        case SystemValue::ErrorMessage:
            return caught ? Datum::of(caught->text) : Datum::null();
        case SystemValue::ErrorSeverity:
            return caught ? number(caught->severity) : Datum::null();
        case SystemValue::ErrorState:
            return caught ? number(caught->state) : Datum::null();
        case SystemValue::ErrorLine:
            return caught ? number(caught->line) : Datum::null();
        case SystemValue::ErrorProcedure:
            return caught && !caught->procedure.empty() ? Datum::of(caught->procedure) : Datum::null();
        case SystemValue::ProcId:
            return number(frame_->objectId);
        case SystemValue::DatabaseName:
            return Datum::of(frame_->database);
        case SystemValue::DatabaseId:
            return number(catalog().databaseId(frame_->database));
    }
    return Datum::null();
}

Datum Interp::slotValue(const Slot& slot) {
    const auto index = static_cast<std::size_t>(slot.index);
    Datum value;
    switch (slot.from) {
        case Slot::From::Literal: {
            const Literal& literal = (*frame_->literals)[index];
            value = literalDatum(literal.kind, literal.text);
            break;
        }
        case Slot::From::Variable:
            value = frame_->variables[index];
            break;
        case Slot::From::System:
            value = systemDatum(static_cast<SystemValue>(slot.index));
            break;
    }
    if (!slot.convert || value.isNull()) return value;
    return convertDatum(value, slot.is, slot.want, slot.mode, slot.where);
}

/// `steady`: no variable changes while the statement runs, so that their texts need not be copied.
void Interp::bind(sqlite3_stmt* stmt, const Plan& plan, bool steady) {
    int index = 0;
    for (const Slot& slot : plan.slots) {
        ++index;
        if (slot.from == Slot::From::Literal && !slot.convert) {
            // The client's text outlives the statement: no copy.
            const Literal& literal = (*frame_->literals)[static_cast<std::size_t>(slot.index)];
            if (literal.kind == LiteralKind::String || literal.kind == LiteralKind::NString) {
                sqlite3_bind_text(stmt, index, literal.text.data(), static_cast<int>(literal.text.size()),
                                  SQLITE_STATIC);
                continue;
            }
        }
        if (slot.from == Slot::From::Variable && steady) {
            const Datum& value = frame_->variables[static_cast<std::size_t>(slot.index)];
            const bool same = !slot.convert || value.isNull();
            if (same && value.storage == Storage::Text) {
                sqlite3_bind_text(stmt, index, value.text.data(), static_cast<int>(value.text.size()), SQLITE_STATIC);
                continue;
            }
            if (same) {
                bindDatum(stmt, index, value);
                continue;
            }
        }
        bindDatum(stmt, index, slotValue(slot));
    }
}

SqlError Interp::failure(sqlite3_stmt*, const ObjectPtr& target, const char* verb) {
    if (session_.functions.pending) {
        SqlError error = std::move(*session_.functions.pending);
        session_.functions.pending.reset();
        return error;
    }
    const int code = sqlite3_extended_errcode(session_.db());
    const std::string message = sqlite3_errmsg(session_.db());
    SqlError error = fromSqlite(code, message);
    if ((code & 0xff) == SQLITE_CONSTRAINT && target) return constraintError(catalog(), *target, verb, code, message);
    return error;
}

bool Interp::step(sqlite3_stmt* stmt, const ObjectPtr& target, const char* verb) {
    const int code = sqlite3_step(stmt);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    SqlError error = failure(stmt, target, verb);
    sqlite3_reset(stmt);
    session_.noteLostTransaction();
    throw error;
}

Plan& Interp::valuePlan(const Expr& expr, const Type* type, bool condition) {
    Plan& plan = kept<ExprPlan>(expr).plan;
    if (valid(plan)) return plan;
    Plan fresh;
    Emitter emitter(*this, frame_->database, frame_->scope, fresh);
    if (condition) {
        emitter.condition(expr);
    } else {
        emitter.value(expr, type);
    }
    plan = std::move(fresh);
    return plan;
}

Datum Interp::evaluate(const Expr& expr, const Type& type) {
    if (const auto* literal = as<LiteralExpr>(&expr)) {
        const std::string_view text = literal->index >= 0
                                          ? (*frame_->literals)[static_cast<std::size_t>(literal->index)].text
                                          : std::string_view(literal->text);
        Datum value = literalDatum(literal->literal, text);
        if (type.isNull() || value.isNull()) return value;
        const Type from = literalType(literal->literal, text);
        if (!needsConversion(from, type, ConvertMode::Variable)) return value;
        return convertDatum(value, from, type, ConvertMode::Variable);
    }
    if (const auto* variable = as<VariableExpr>(&expr)) {
        auto& place = kept<VariablePlace>(expr);
        if (place.index < 0) place.index = frame_->scope->find(variable->name);
        const int index = place.index;
        if (index < 0) throw sqlErrorAt(static_cast<int>(expr.pos.line), 137, {variable->name});
        const Datum& value = frame_->variables[static_cast<std::size_t>(index)];
        const Type& from = frame_->scope->at(index).type;
        if (type.isNull() || value.isNull() || !needsConversion(from, type, ConvertMode::Variable)) return value;
        return convertDatum(value, from, type, ConvertMode::Variable);
    }
    Plan& plan = valuePlan(expr, type.isNull() ? nullptr : &type, false);
    Running running(plan, session_.db());
    bind(running.get(), plan, true);
    return step(running.get()) ? columnDatum(running.get(), 0) : Datum::null();
}

bool Interp::test(const Expr& condition) {
    auto& node = kept<ExprPlan>(condition);
    if (!node.quickTried) {
        node.quickTried = true;
        node.quick = quickCondition(condition, *frame_->scope);
    }
    if (node.quick) return node.quick->test(QuickFrame(*this)) == Truth::True;
    return ask(condition) == Truth::True;
}

Truth Interp::ask(const Expr& condition) {
    Plan& plan = valuePlan(condition, nullptr, true);
    Running running(plan, session_.db());
    bind(running.get(), plan, true);
    if (!step(running.get()) || sqlite3_column_type(running.get(), 0) == SQLITE_NULL) return Truth::Unknown;
    return sqlite3_column_int(running.get(), 0) != 0 ? Truth::True : Truth::False;
}

void Interp::select(const SelectStmt& stmt) {
    const SelectBody& first = stmt.query->first();
    if (!first.into.empty()) return selectInto(stmt, first);
    auto& node = kept<SelectPlan>(stmt);
    if (!valid(node.plan)) {
        Plan fresh;
        Emitter emitter(*this, frame_->database, frame_->scope, fresh);
        Wish wish;
        wish.mayAssign = true;
        const QueryOut out = emitter.query(*stmt.query, wish);
        node.variables.clear();
        for (const std::string& name : out.variables) {
            node.variables.push_back(static_cast<std::size_t>(frame_->scope->find(name)));
        }
        node.plan = std::move(fresh);
    }
    if (!node.variables.empty()) return assign(node.plan, node.variables);
    for (const Frame* frame = frame_; frame; frame = frame->caller) {
        if (frame->function) throw sqlError(444);
    }
    Running running(node.plan, session_.db());
    bind(running.get(), node.plan, true);
    int rows = 0;
    // The first row may fail: a failed query gives no empty set before its error.
    const bool any = step(running.get());
    if (sink_) sink_->begin(node.plan.columns, node.plan.shown);
    if (any) {
        do {
            if (sink_) sink_->row(running.get(), node.plan.columns);
            ++rows;
        } while (step(running.get()));
    }
    rowCount_ = rows;
}

void Interp::assign(Plan& plan, const std::vector<std::size_t>& indexes) {
    Running running(plan, session_.db());
    bind(running.get(), plan, false);
    int rows = 0;
    while (step(running.get())) {
        for (std::size_t i = 0; i < indexes.size(); ++i) {
            frame_->variables[indexes[i]] = columnDatum(running.get(), static_cast<int>(i));
        }
        ++rows;
    }
    rowCount_ = rows;
}

void Interp::selectInto(const SelectStmt& stmt, const SelectBody& body) {
    auto& node = kept<SelectPlan>(stmt);
    if (!valid(node.plan)) {
        Plan fresh;
        Emitter emitter(*this, frame_->database, frame_->scope, fresh);
        emitter.query(*stmt.query, {});
        node.plan = std::move(fresh);
    }
    const ObjectPtr table = Ddl(*this).tableOfQuery(body.into, node.plan.columns);
    std::string marks;
    for (std::size_t i = 0; i < node.plan.columns.size(); ++i) marks += i ? ", ?" : "?";
    const std::string name = (table->temporary ? "temp." : "main.") + quoted(table->physical);
    Statement write(session_.db(), "INSERT INTO " + name + " VALUES (" + marks + ")", false);
    Running running(node.plan, session_.db());
    bind(running.get(), node.plan, false);
    int rows = 0;
    const int count = static_cast<int>(node.plan.columns.size());
    while (step(running.get())) {
        for (int i = 0; i < count; ++i) sqlite3_bind_value(write.get(), i + 1, sqlite3_column_value(running.get(), i));
        write.run();
        ++rows;
    }
    rowCount_ = rows;
    affected_ = rows;
}

int Interp::runBefore(DmlPlan& plan) {
    if (plan.beforeVariables.empty()) return 0;
    Running running(plan.before, session_.db());
    bind(running.get(), plan.before, false);
    int rows = 0;
    while (step(running.get())) {
        for (std::size_t i = 0; i < plan.beforeVariables.size(); ++i) {
            frame_->variables[static_cast<std::size_t>(plan.beforeVariables[i])] =
                columnDatum(running.get(), static_cast<int>(i));
        }
        ++rows;
    }
    return rows;
}

void Interp::checkIdentityInsert(const DmlPlan& plan) {
    const ColumnInfo* identity = plan.target->identityColumn();
    if (!identity) return;
    const bool on = session_.identityInsert == plan.target->physical;
    if (plan.explicitIdentity && !on) throw sqlError(544, {plan.target->name});
    if (!plan.explicitIdentity && on) throw sqlError(545, {plan.target->name});
}

void Interp::noteIdentity(const DmlPlan& plan, int rows) {
    const ColumnInfo* identity = plan.target->identityColumn();
    if (!identity || rows == 0) return;
    const std::int64_t last = sqlite3_last_insert_rowid(session_.db());
    session_.lastIdentity = last;
    frame_->scopeIdentity = last;
    if (!plan.explicitIdentity || identity->plainIdentity()) return;
    if (plan.target->temporary) {
        session_.temps.setIdentity(*plan.target, last);
    } else {
        Statement(session_.db(), "INSERT OR REPLACE INTO kv_identity VALUES(?1, ?2)")
            .bind(1, plan.target->id)
            .bind(2, last)
            .run();
    }
}

void Interp::insert(const InsertStmt& stmt) {
    if (stmt.exec) return insertExec(stmt);
    auto& plan = kept<DmlPlan>(stmt);
    if (!valid(plan.main)) {
        DmlPlan fresh;
        Emitter emitter(*this, frame_->database, frame_->scope, fresh.main);
        emitter.insert(stmt, fresh);
        plan = std::move(fresh);
    }
    checkIdentityInsert(plan);
    runDml(plan, "INSERT");
    noteIdentity(plan, rowCount_);
}

void Interp::change(const Stmt& stmt) {
    auto& plan = kept<DmlPlan>(stmt);
    const bool update = stmt.kind == StmtKind::Update;
    if (!valid(plan.main)) {
        DmlPlan fresh;
        Emitter emitter(*this, frame_->database, frame_->scope, fresh.main);
        if (update) {
            emitter.update(static_cast<const UpdateStmt&>(stmt), fresh);
        } else {
            emitter.remove(static_cast<const DeleteStmt&>(stmt), fresh);
        }
        plan = std::move(fresh);
    }
    runDml(plan, update ? "UPDATE" : "DELETE");
}

void Interp::runDml(DmlPlan& plan, const char* verb) {
    const Object& target = *plan.target;
    if (target.temporary) {
        if (session_.doomed()) throw sqlError(3930);
        return runDmlPlain(plan, verb);
    }
    for (const Frame* frame = frame_; frame; frame = frame->caller) {
        if (frame->function) throw sqlError(443, {verb});
    }
    const std::vector<ObjectPtr>& triggers = catalog().triggersOf(target);
    const bool alone = simpleBatch_ && triggers.empty() && plan.beforeVariables.empty() && depth_ == 1;
    session_.beforeWrite(alone);
    if (triggers.empty()) return runDmlPlain(plan, verb);
    runWithTriggers(plan, verb, triggers);
}

void Interp::runDmlPlain(DmlPlan& plan, const char* verb) {
    runBefore(plan);
    Running running(plan.main, session_.db());
    bind(running.get(), plan.main, plan.returnVariables.empty());
    int rows = 0;
    if (!plan.output.empty() && sink_) sink_->begin(plan.output, plan.main.shown);
    while (step(running.get(), plan.target, verb)) {
        ++rows;
        if (!plan.output.empty() && sink_) sink_->row(running.get(), plan.output);
        for (std::size_t i = 0; i < plan.returnVariables.size(); ++i) {
            frame_->variables[static_cast<std::size_t>(plan.returnVariables[i])] =
                columnDatum(running.get(), static_cast<int>(i));
        }
    }
    // A statement that sets variables only is a SELECT: its rows count.
    rowCount_ = sqlite3_stmt_readonly(running.get()) ? rows : static_cast<int>(sqlite3_changes64(session_.db()));
    affected_ = rowCount_;
}

void Interp::insertExec(const InsertStmt& stmt) {
    if (insertingExec_) throw sqlError(8164);
    DatumSink rows;
    Sink* sink = std::exchange(sink_, &rows);
    insertingExec_ = true;
    const bool permanent = !stmt.target.isTemporary() && !stmt.target.isVariable();
    struct Back {
        Interp& interp;
        Sink* sink;
        ~Back() {
            interp.sink_ = sink;
            interp.insertingExec_ = false;
        }
    };
    {
        const Back guard{*this, sink};
        if (permanent) session_.beforeWrite(false);
        if (const auto* call = as<ExecStmt>(stmt.exec)) {
            exec(*call);
        } else {
            execString(static_cast<const ExecStringStmt&>(*stmt.exec));
        }
    }
    DmlPlan plan;
    int total = 0;
    if (permanent) {
        session_.beforeWrite(false);
        const ObjectPtr target = Emitter(*this, frame_->database, frame_->scope, plan.main).target(stmt.target, true);
        if (!catalog().triggersOf(*target).empty()) {
            throw notSupported("INSERT ... EXEC into a table with triggers", static_cast<int>(stmt.pos.line),
                               static_cast<int>(stmt.pos.column));
        }
    }
    session_.runKept("SAVEPOINT kv_insert");
    try {
        for (const DatumSink::Set& set : rows.sets) {
            DmlPlan fresh;
            Emitter emitter(*this, frame_->database, frame_->scope, fresh.main);
            emitter.insertRows(stmt, set.columns.size(), fresh);
            plan = std::move(fresh);
            checkIdentityInsert(plan);
            Running running(plan.main, session_.db());
            for (const std::vector<Datum>& row : set.rows) {
                for (std::size_t i = 0; i < row.size(); ++i) {
                    const OutColumn& column = plan.main.columns[i];
                    bindDatum(running.get(), static_cast<int>(i + 1),
                              convertDatum(row[i], set.columns[i].type, column.type, ConvertMode::Column, column.name));
                }
                while (step(running.get(), plan.target, "INSERT")) {
                }
                sqlite3_reset(running.get());
                ++total;
            }
        }
        session_.runKept("RELEASE kv_insert");
    } catch (...) {
        session_.undoTo("kv_insert");
        throw;
    }
    if (plan.target) noteIdentity(plan, total);
    rowCount_ = total;
    affected_ = total;
}

void Interp::truncate(const TruncateStmt& stmt) {
    Plan plan;
    Emitter emitter(*this, frame_->database, frame_->scope, plan);
    ObjectPtr table;
    try {
        table = emitter.target(stmt.target);
    } catch (const SqlError& error) {
        if (error.number != 208) throw;
        throw sqlErrorAt(error.line, 4701, {stmt.target.text()});
    }
    if (!table->temporary) {
        if (!catalog().referencesTo(*table).empty()) throw sqlError(4712, {table->name});
        session_.beforeWrite(false);
    }
    const std::string schema = table->temporary ? "temp." : "main.";
    execSql(session_.db(), "DELETE FROM " + schema + quoted(table->physical));
    const ColumnInfo* identity = table->identityColumn();
    if (!identity) return;
    if (identity->plainIdentity()) {
        execSql(session_.db(), "UPDATE " + schema + "sqlite_sequence SET seq = " + std::to_string(identity->seed - 1) +
                                   " WHERE name = " + quotedText(table->physical));
    } else if (table->temporary) {
        session_.temps.setIdentity(*table, identity->seed - identity->increment);
    } else {
        Statement(session_.db(), "DELETE FROM kv_identity WHERE object = ?1").bind(1, table->id).run();
    }
}

}  // namespace kv::tsql
