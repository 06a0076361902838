// The interpreter's triggers: the rows of a statement are captured as it changes them, then the bodies run.

#include <algorithm>

#include "platform/embedded/Interp.h"

namespace kv::tsql {
namespace {

std::string captureName(const Object& table, bool inserted) {
    return (inserted ? "kv_inserted$" : "kv_deleted$") + std::to_string(table.id);
}

/// Column definitions of a capture table: the table's columns without keys, in its order.
std::string captureColumns(const Object& table) {
    std::string sql;
    for (const ColumnInfo& column : table.columns) {
        sql += (sql.empty() ? "" : ", ") + quoted(column.name) + " " + std::string(sqliteTypeOf(column.type));
        if (column.type.isText()) sql += " COLLATE CI";
    }
    return sql;
}

std::string captureTrigger(const Object& table, const char* event) {
    std::string oldValues;
    std::string newValues;
    for (const ColumnInfo& column : table.columns) {
        oldValues += (oldValues.empty() ? "old." : ", old.") + quoted(column.name);
        newValues += (newValues.empty() ? "new." : ", new.") + quoted(column.name);
    }
    const std::string kind = event;
    std::string sql = "CREATE TEMP TRIGGER IF NOT EXISTS " + quoted("kv_capture$" + std::to_string(table.id) + kind) +
                      " AFTER " + kind + " ON main." + quoted(table.physical) + " WHEN kv_capture(" +
                      std::to_string(table.id) + ") BEGIN ";
    if (kind != "INSERT") sql += "INSERT INTO " + quoted(captureName(table, false)) + " VALUES(" + oldValues + "); ";
    if (kind != "DELETE") sql += "INSERT INTO " + quoted(captureName(table, true)) + " VALUES(" + newValues + "); ";
    return sql + "END";
}

ObjectPtr captureTable(const Object& table, bool inserted) {
    auto object = std::make_shared<Object>();
    object->id = -1'000'000'000 - table.id * 2 - (inserted ? 1 : 0);
    object->name = inserted ? "inserted" : "deleted";
    object->physical = captureName(table, inserted);
    object->temporary = true;
    object->columns = table.columns;
    for (ColumnInfo& column : object->columns) column.identity = false;
    return object;
}

bool fires(const CreateTriggerStmt& trigger, const std::string& verb) {
    if (verb == "INSERT") return trigger.onInsert;
    return verb == "UPDATE" ? trigger.onUpdate : trigger.onDelete;
}

}  // namespace

const Capture& Interp::captureOf(const Object& table) {
    const auto known = session_.captures.find(table.physical);
    if (known != session_.captures.end()) return known->second;
    for (const bool inserted : {true, false}) {
        execSql(session_.db(), "DROP TABLE IF EXISTS temp." + quoted(captureName(table, inserted)));
        execSql(session_.db(),
                "CREATE TEMP TABLE " + quoted(captureName(table, inserted)) + "(" + captureColumns(table) + ") STRICT");
    }
    for (const char* event : {"INSERT", "UPDATE", "DELETE"}) {
        execSql(session_.db(),
                "DROP TRIGGER IF EXISTS temp." + quoted("kv_capture$" + std::to_string(table.id) + event));
        execSql(session_.db(), captureTrigger(table, event));
    }
    Capture capture{captureTable(table, true), captureTable(table, false), {}, {}};
    capture.clearInserted = "DELETE FROM temp." + quoted(capture.inserted->physical);
    capture.clearDeleted = "DELETE FROM temp." + quoted(capture.deleted->physical);
    return session_.captures[table.physical] = std::move(capture);
}

/// The triggers of this verb; one that is running does not fire itself again.
std::vector<ObjectPtr> Interp::firingOf(const std::vector<ObjectPtr>& triggers, const char* verb) {
    std::vector<ObjectPtr> firing;
    for (const ObjectPtr& trigger : triggers) {
        const bool active =
            std::find(activeTriggers_.begin(), activeTriggers_.end(), trigger->id) != activeTriggers_.end();
        if (!active && fires(*moduleOf(*trigger).trigger, verb)) firing.push_back(trigger);
    }
    return firing;
}

void Interp::runWithTriggers(DmlPlan& plan, const char* verb, const std::vector<ObjectPtr>& triggers) {
    const Object& table = *plan.target;
    const std::vector<ObjectPtr> firing = firingOf(triggers, verb);
    if (firing.empty()) return runDmlPlain(plan, verb);
    const Capture capture = captureOf(table);
    const int outerTran = session_.tranCount();
    // A failure inside a transaction of the user's loses all of it; outside, only this statement is undone.
    const bool alone = outerTran == 0;
    if (alone) session_.runKept("SAVEPOINT kv_statement");
    struct Outer {
        Interp& interp;
        ObjectPtr inserted;
        ObjectPtr deleted;
        std::int64_t capture;
        bool xactAbort;
        ~Outer() {
            interp.inserted_ = std::move(inserted);
            interp.deleted_ = std::move(deleted);
            interp.capture_ = capture;
            interp.session_.xactAbort = xactAbort;
        }
    };
    int rows = 0;
    try {
        const Outer outer{*this, inserted_, deleted_, capture_, session_.xactAbort};
        capture_ = table.id;
        runDmlPlain(plan, verb);
        capture_ = 0;
        rows = rowCount_;
        const std::int64_t identity = sqlite3_last_insert_rowid(session_.db());
        inserted_ = capture.inserted;
        deleted_ = capture.deleted;
        if (alone) session_.setTranCount(1);
        for (const ObjectPtr& trigger : firing) {
            runTrigger(trigger);
            if (session_.tranCount() == 0) break;
        }
        sqlite3_set_last_insert_rowid(session_.db(), identity);
    } catch (...) {
        if (alone) {
            session_.setTranCount(0);
            session_.undoom();
        }
        triggerFailed_ = true;
        if (alone) session_.undoTo("kv_statement");
        throw;
    }
    if (session_.tranCount() == 0) throw sqlError(3609);
    if (alone) session_.setTranCount(0);
    if (verb[0] != 'D') session_.runKept(capture.clearInserted);
    if (verb[0] != 'I') session_.runKept(capture.clearDeleted);
    if (alone) session_.runKept("RELEASE kv_statement");
    rowCount_ = rows;
    affected_ = rows;
}

void Interp::compileTrigger(const Object& trigger, const Module& module) {
    const ObjectPtr table = catalog().byId(trigger.parent);
    const Capture capture = captureOf(*table);
    inserted_ = capture.inserted;
    deleted_ = capture.deleted;
    compileList(module.body());
    session_.captures.clear();
}

void Interp::runTrigger(const ObjectPtr& trigger) {
    const Module& module = moduleOf(*trigger);
    Frame frame;
    frame.scope = &module.variables;
    frame.variables.resize(module.variables.size());
    frame.database = trigger->database;
    frame.procedure = trigger->name;
    frame.objectId = trigger->id;
    frame.trigger = true;
    struct Leave {
        Interp& interp;
        Frame& frame;
        std::vector<std::int64_t>& active;
        ~Leave() {
            interp.leave(frame);
            active.pop_back();
        }
    };
    enter(frame);
    activeTriggers_.push_back(trigger->id);
    const Leave guard{*this, frame, activeTriggers_};
    session_.xactAbort = true;
    statements(module.body());
}

}  // namespace kv::tsql
