#include "platform/embedded/Printer.h"

#include <cctype>

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/PrinterCore.h"

namespace kv::tsql {

std::string printName(std::string_view text) {
    bool plain = !text.empty() && !isReservedWord(text) && !std::isdigit(static_cast<unsigned char>(text[0]));
    for (const char c : text) plain = plain && (std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '#');
    if (plain) return std::string(text);
    return "[" + replaceAll(text, "]", "]]") + "]";
}

void TreePrinter::name(std::string_view text) {
    add(!text.empty() && text[0] == '@' ? std::string(text) : printName(text));
}

void TreePrinter::object(const ObjectName& o) {
    bool started = false;
    for (const std::string* part : {&o.server, &o.database, &o.schema}) {
        if (!part->empty()) name(*part);
        started = started || !part->empty();
        if (started) add(".");
    }
    name(o.name);
}

void TreePrinter::names(const std::vector<std::string>& list) {
    add("(");
    commas(list, [&](const std::string& n) { name(n); });
    add(")");
}

void TreePrinter::words(const std::vector<std::string>& list) {
    commas(list, [&](const std::string& w) { add(w); });
}

void TreePrinter::statements(const StmtList& list) {
    for (const StmtPtr& s : list) statement(*s);
}

void TreePrinter::statement(const Stmt& stmt) {
    if (!control(stmt) && !data(stmt) && !definition(stmt) && !transaction(stmt) && !cursor(stmt)) simple(stmt);
    add(";\n");
}

void TreePrinter::block(const StmtList& list) {
    add("BEGIN\n");
    statements(list);
    add("END");
}

bool TreePrinter::control(const Stmt& stmt) {
    if (const auto* choice = as<IfStmt>(&stmt)) {
        add("IF ");
        expr(*choice->condition);
        add("\n");
        statement(*choice->then);
        if (!choice->otherwise) return true;
        add("ELSE\n");
        statement(*choice->otherwise);
    } else if (const auto* loop = as<WhileStmt>(&stmt)) {
        add("WHILE ");
        expr(*loop->condition);
        add("\n");
        statement(*loop->body);
    } else if (const auto* group = as<BlockStmt>(&stmt)) {
        block(group->body);
    } else if (const auto* tried = as<TryCatchStmt>(&stmt)) {
        add("BEGIN TRY\n");
        statements(tried->body);
        add("END TRY\nBEGIN CATCH\n");
        statements(tried->handler);
        add("END CATCH");
    } else if (const auto* back = as<ReturnStmt>(&stmt)) {
        add("RETURN");
        if (back->value) {
            add(" ");
            expr(*back->value);
        }
    } else if (stmt.kind == StmtKind::Break) {
        add("BREAK");
    } else if (stmt.kind == StmtKind::Continue) {
        add("CONTINUE");
    } else {
        return false;
    }
    return true;
}

bool TreePrinter::data(const Stmt& stmt) {
    if (const auto* selected = as<SelectStmt>(&stmt)) {
        query(*selected->query);
    } else if (const auto* inserted = as<InsertStmt>(&stmt)) {
        insert(*inserted);
    } else if (const auto* updated = as<UpdateStmt>(&stmt)) {
        update(*updated);
    } else if (const auto* deleted = as<DeleteStmt>(&stmt)) {
        deletion(*deleted);
    } else if (const auto* truncated = as<TruncateStmt>(&stmt)) {
        add("TRUNCATE TABLE ");
        object(truncated->target);
    } else {
        return false;
    }
    return true;
}

void TreePrinter::insert(const InsertStmt& s) {
    ctes(s.with);
    add("INSERT ");
    top(s.top);
    add("INTO ");
    object(s.target);
    if (!s.columns.empty()) {
        add(" ");
        names(s.columns);
    }
    output(s.output.get());
    add(" ");
    if (s.defaultValues) {
        add("DEFAULT VALUES");
    } else if (!s.rows.empty()) {
        add("VALUES ");
        rows(s.rows);
    } else if (s.query) {
        query(*s.query);
    } else if (const auto* called = as<ExecStmt>(s.exec)) {
        exec(*called);
    } else {
        simple(*s.exec);
    }
}

void TreePrinter::output(const OutputClause* clause) {
    if (!clause) return;
    add(" OUTPUT ");
    commas(clause->items, [&](const SelectItem& i) { item(i); });
    if (clause->into.empty()) return;
    add(" INTO ");
    object(clause->into);
    if (!clause->columns.empty()) names(clause->columns);
}

void TreePrinter::assignment(const Assignment& a) {
    const std::string op = std::string(a.op ? symbolOf(*a.op) : "") + "= ";
    if (!a.variable.empty()) add(a.variable + (a.column.empty() ? " " + op : " = "));
    if (!a.column.empty()) {
        if (!a.qualifier.empty()) {
            object(a.qualifier);
            add(".");
        }
        name(a.column);
        add(" " + op);
    }
    expr(*a.value);
}

void TreePrinter::where(const ExprPtr& condition, const std::string& cursorName) {
    if (condition) {
        add(" WHERE ");
        expr(*condition);
    } else if (!cursorName.empty()) {
        add(" WHERE CURRENT OF ");
        name(cursorName);
    }
}

void TreePrinter::update(const UpdateStmt& s) {
    ctes(s.with);
    add("UPDATE ");
    top(s.top);
    object(s.target);
    add(" SET ");
    commas(s.assignments, [&](const Assignment& a) { assignment(a); });
    output(s.output.get());
    from(s.from);
    where(s.where, s.currentOf);
}

void TreePrinter::deletion(const DeleteStmt& s) {
    ctes(s.with);
    add("DELETE ");
    top(s.top);
    add("FROM ");
    object(s.target);
    output(s.output.get());
    from(s.from);
    where(s.where, s.currentOf);
}

bool TreePrinter::transaction(const Stmt& stmt) {
    struct Kind {
        StmtKind kind;
        std::string_view text;
    };
    static constexpr Kind kKinds[] = {{StmtKind::BeginTransaction, "BEGIN TRANSACTION"},
                                      {StmtKind::Commit, "COMMIT TRANSACTION"},
                                      {StmtKind::Rollback, "ROLLBACK TRANSACTION"},
                                      {StmtKind::SaveTransaction, "SAVE TRANSACTION"}};
    for (const Kind& kind : kKinds) {
        if (stmt.kind != kind.kind) continue;
        add(kind.text);
        const std::string& label = static_cast<const TransactionStmt&>(stmt).name;
        if (label.empty()) return true;
        add(" ");
        name(label);
        return true;
    }
    return false;
}

bool TreePrinter::cursor(const Stmt& stmt) {
    if (const auto* declared = as<DeclareCursorStmt>(&stmt)) {
        const bool variable = declared->name[0] == '@';
        add(variable ? "SET " : "DECLARE ");
        name(declared->name);
        add(variable ? " = CURSOR" : " CURSOR");
        std::string tail;
        for (const std::string& option : declared->options) {
            if (option == "UPDATE") {
                tail = " FOR UPDATE";
            } else {
                add(" " + option);
            }
        }
        add(" FOR ");
        query(*declared->query);
        add(tail);
        return true;
    }
    if (const auto* fetched = as<FetchCursorStmt>(&stmt)) {
        static constexpr std::string_view kWords[] = {"NEXT", "PRIOR", "FIRST", "LAST", "ABSOLUTE ", "RELATIVE "};
        add("FETCH ");
        add(kWords[static_cast<int>(fetched->direction)]);
        if (fetched->count) expr(*fetched->count);
        add(" FROM ");
        name(fetched->name);
        if (!fetched->into.empty()) add(" INTO ");
        words(fetched->into);
        return true;
    }
    const std::string_view verb = stmt.kind == StmtKind::OpenCursor         ? "OPEN "
                                  : stmt.kind == StmtKind::CloseCursor      ? "CLOSE "
                                  : stmt.kind == StmtKind::DeallocateCursor ? "DEALLOCATE "
                                                                            : "";
    if (verb.empty()) return false;
    add(verb);
    name(static_cast<const CursorStmt&>(stmt).name);
    return true;
}

bool TreePrinter::simple(const Stmt& stmt) {
    if (const auto* declared = as<DeclareStmt>(&stmt)) {
        add("DECLARE ");
        commas(declared->items, [&](const Declaration& d) { declaration(d); });
    } else if (const auto* set = as<SetVariableStmt>(&stmt)) {
        add("SET " + set->name + " " + std::string(set->op ? symbolOf(*set->op) : "") + "= ");
        expr(*set->value);
    } else if (const auto* option = as<SetOptionStmt>(&stmt)) {
        add("SET ");
        words(option->options);
        add(" " + option->value);
    } else if (const auto* identity = as<SetIdentityInsertStmt>(&stmt)) {
        add("SET IDENTITY_INSERT ");
        object(identity->table);
        add(identity->on ? " ON" : " OFF");
    } else if (const auto* shown = as<PrintStmt>(&stmt)) {
        add("PRINT ");
        expr(*shown->value);
    } else if (const auto* raised = as<RaisErrorStmt>(&stmt)) {
        add("RAISERROR (");
        expr(*raised->message);
        for (const ExprPtr* e : {&raised->severity, &raised->state}) {
            add(", ");
            expr(**e);
        }
        if (!raised->args.empty()) add(", ");
        exprs(raised->args);
        add(")");
        if (!raised->options.empty()) add(" WITH ");
        words(raised->options);
    } else if (const auto* thrown = as<ThrowStmt>(&stmt)) {
        add("THROW");
        if (!thrown->number) return true;
        add(" ");
        expr(*thrown->number);
        for (const ExprPtr* e : {&thrown->message, &thrown->state}) {
            add(", ");
            expr(**e);
        }
    } else if (const auto* called = as<ExecStmt>(&stmt)) {
        exec(*called);
    } else if (const auto* text = as<ExecStringStmt>(&stmt)) {
        add("EXEC (");
        expr(*text->text);
        add(")");
    } else if (const auto* use = as<UseStmt>(&stmt)) {
        add("USE ");
        name(use->database);
    } else if (const auto* dbcc = as<DbccStmt>(&stmt)) {
        add("DBCC " + dbcc->command + " (");
        exprs(dbcc->args);
        add(")");
    } else if (const auto* unsupported = as<UnsupportedStmt>(&stmt)) {
        add(unsupported->construct);
    } else if (stmt.kind == StmtKind::Ignored) {
        add("CHECKPOINT");
    }
    return true;
}

void TreePrinter::declaration(const Declaration& d) {
    add(d.name + " ");
    if (d.table) {
        add("TABLE ");
        table(*d.table);
        return;
    }
    type(d.type);
    if (!d.value) return;
    add(" = ");
    expr(*d.value);
}

void TreePrinter::exec(const ExecStmt& s) {
    add("EXEC ");
    if (!s.resultVariable.empty()) add(s.resultVariable + " = ");
    add(s.procedureVariable);
    if (!s.procedure.empty()) object(s.procedure);
    if (!s.args.empty()) add(" ");
    commas(s.args, [&](const ExecArg& arg) {
        if (!arg.name.empty()) add(arg.name + " = ");
        expr(*arg.value);
        if (arg.output) add(" OUTPUT");
    });
}

std::string print(const StmtList& statements) {
    TreePrinter printer;
    printer.statements(statements);
    return printer.take();
}

std::string print(const Stmt& statement) {
    TreePrinter printer;
    printer.statement(statement);
    return printer.take();
}

std::string print(const Expr& expr) {
    TreePrinter printer;
    printer.expr(expr);
    return printer.take();
}

std::string print(const Query& query) {
    TreePrinter printer;
    printer.query(query);
    return printer.take();
}

std::string print(const TypeName& type) {
    TreePrinter printer;
    printer.type(type);
    return printer.take();
}

}  // namespace kv::tsql
