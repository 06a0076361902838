// Tables, indexes and modules as text.

#include "platform/embedded/Printer.h"
#include "platform/embedded/PrinterCore.h"

namespace kv::tsql {

bool TreePrinter::definition(const Stmt& stmt) {
    if (const auto* created = as<CreateTableStmt>(&stmt)) {
        add("CREATE TABLE ");
        object(created->name);
        add(" ");
        table(created->def);
    } else if (const auto* altered = as<AlterTableStmt>(&stmt)) {
        alterTable(*altered);
    } else if (const auto* index = as<CreateIndexStmt>(&stmt)) {
        createIndex(*index);
    } else if (const auto* view = as<CreateViewStmt>(&stmt)) {
        moduleHead(*view, "VIEW");
        if (!view->columns.empty()) names(view->columns);
        moduleOptions(*view);
        add(" AS\n");
        query(*view->query);
        if (view->checkOption) add(" WITH CHECK OPTION");
    } else if (const auto* procedure = as<CreateProcedureStmt>(&stmt)) {
        moduleHead(*procedure, "PROCEDURE");
        add(" ");
        parameters(procedure->parameters);
        moduleOptions(*procedure);
        add(" AS\n");
        statements(procedure->body);
    } else if (const auto* created_function = as<CreateFunctionStmt>(&stmt)) {
        function(*created_function);
    } else if (const auto* created_trigger = as<CreateTriggerStmt>(&stmt)) {
        trigger(*created_trigger);
    } else if (const auto* database = as<CreateDatabaseStmt>(&stmt)) {
        add("CREATE DATABASE ");
        name(database->name);
    } else if (const auto* schema = as<CreateSchemaStmt>(&stmt)) {
        add("CREATE SCHEMA ");
        name(schema->name);
    } else if (const auto* dropped = as<DropStmt>(&stmt)) {
        drop(*dropped);
    } else {
        return false;
    }
    return true;
}

void TreePrinter::table(const TableDef& def) {
    add("(");
    commas(def.columns, [&](const ColumnDef& c) { column(c); });
    for (const Constraint& c : def.constraints) {
        add(", ");
        constraint(c, false);
    }
    for (const InlineIndex& index : def.indexes) {
        add(", INDEX ");
        name(index.name);
        if (index.unique) add(" UNIQUE");
        indexColumns(index.columns);
    }
    add(")");
}

void TreePrinter::column(const ColumnDef& def) {
    name(def.name);
    add(" ");
    if (def.computed) {
        add("AS (");
        expr(*def.computed);
        add(def.persisted ? ") PERSISTED" : ")");
    } else {
        type(def.type);
    }
    if (!def.collation.empty()) add(" COLLATE " + def.collation);
    if (def.identity)
        add(" IDENTITY(" + std::to_string(def.identitySeed) + ", " + std::to_string(def.identityIncrement) + ")");
    if (def.nullable) add(*def.nullable ? " NULL" : " NOT NULL");
    for (const Constraint& c : def.constraints) {
        add(" ");
        constraint(c, true);
    }
}

void TreePrinter::indexColumns(const std::vector<IndexColumn>& columns) {
    add(" (");
    commas(columns, [&](const IndexColumn& c) {
        name(c.name);
        if (c.descending) add(" DESC");
    });
    add(")");
}

void TreePrinter::constraint(const Constraint& def, bool ofColumn) {
    if (!def.name.empty()) {
        add("CONSTRAINT ");
        name(def.name);
        add(" ");
    }
    switch (def.kind) {
        case ConstraintKind::PrimaryKey:
        case ConstraintKind::Unique:
            add(def.kind == ConstraintKind::Unique ? "UNIQUE" : "PRIMARY KEY");
            if (def.clustered) add(" CLUSTERED");
            indexColumns(def.columns);
            return;
        case ConstraintKind::Check:
            add("CHECK (");
            expr(*def.expr);
            add(")");
            return;
        case ConstraintKind::Default:
            add("DEFAULT (");
            expr(*def.expr);
            add(")");
            if (ofColumn) return;
            add(" FOR ");
            name(def.columns.front().name);
            return;
        case ConstraintKind::ForeignKey:
            break;
    }
    if (!ofColumn) {
        add("FOREIGN KEY");
        indexColumns(def.columns);
        add(" ");
    }
    add("REFERENCES ");
    object(def.references);
    if (!def.referenceColumns.empty()) names(def.referenceColumns);
    static constexpr std::string_view kActions[] = {"", "CASCADE", "SET NULL", "SET DEFAULT"};
    if (def.onDelete != ReferenceAction::NoAction)
        add(" ON DELETE " + std::string(kActions[static_cast<int>(def.onDelete)]));
    if (def.onUpdate != ReferenceAction::NoAction)
        add(" ON UPDATE " + std::string(kActions[static_cast<int>(def.onUpdate)]));
}

void TreePrinter::alterTable(const AlterTableStmt& s) {
    add("ALTER TABLE ");
    object(s.table);
    const auto listed = [&](std::string_view verb) {
        add(verb);
        if (s.ifExists) add("IF EXISTS ");
        commas(s.names, [&](const std::string& n) { n == "ALL" ? add(n) : name(n); });
    };
    switch (s.action) {
        case AlterAction::Add: {
            add(s.noCheck ? " WITH NOCHECK ADD " : " ADD ");
            commas(s.added.columns, [&](const ColumnDef& c) { column(c); });
            if (!s.added.columns.empty() && !s.added.constraints.empty()) add(", ");
            commas(s.added.constraints, [&](const Constraint& c) { constraint(c, false); });
            return;
        }
        case AlterAction::DropColumn:
            return listed(" DROP COLUMN ");
        case AlterAction::DropConstraint:
            return listed(" DROP CONSTRAINT ");
        case AlterAction::AlterColumn:
            add(" ALTER COLUMN ");
            return column(s.column);
        case AlterAction::EnableConstraint:
            return listed(" CHECK CONSTRAINT ");
        case AlterAction::DisableConstraint:
            return listed(" NOCHECK CONSTRAINT ");
        case AlterAction::EnableTrigger:
            return listed(" ENABLE TRIGGER ");
        case AlterAction::DisableTrigger:
            return listed(" DISABLE TRIGGER ");
    }
}

void TreePrinter::createIndex(const CreateIndexStmt& s) {
    add("CREATE ");
    if (s.unique) add("UNIQUE ");
    if (s.clustered) add("CLUSTERED ");
    add("INDEX ");
    name(s.name);
    add(" ON ");
    object(s.table);
    indexColumns(s.columns);
    if (!s.include.empty()) {
        add(" INCLUDE ");
        names(s.include);
    }
    if (!s.where) return;
    add(" WHERE ");
    expr(*s.where);
}

void TreePrinter::moduleHead(const ModuleStmt& s, std::string_view kind) {
    static constexpr std::string_view kModes[] = {"CREATE ", "ALTER ", "CREATE OR ALTER "};
    add(kModes[static_cast<int>(s.mode)]);
    add(kind);
    add(" ");
    object(s.name);
}

void TreePrinter::moduleOptions(const ModuleStmt& s) {
    if (s.options.empty()) return;
    add(" WITH ");
    commas(s.options, [&](const std::string& option) {
        add(option);
        if (option == "EXECUTE AS") add(" OWNER");
        if (option == "RETURNS" || option == "CALLED") add(" NULL ON NULL INPUT");
    });
}

void TreePrinter::parameters(const std::vector<Parameter>& list) {
    commas(list, [&](const Parameter& p) {
        add(p.name + " ");
        type(p.type);
        if (p.defaultValue) {
            add(" = ");
            expr(*p.defaultValue);
        }
        if (p.output) add(" OUTPUT");
        if (p.readOnly) add(" READONLY");
    });
}

void TreePrinter::function(const CreateFunctionStmt& s) {
    moduleHead(s, "FUNCTION");
    add(" (");
    parameters(s.parameters);
    add(") RETURNS ");
    switch (s.form) {
        case FunctionForm::Scalar:
            type(s.returns);
            break;
        case FunctionForm::Inline:
            add("TABLE");
            break;
        case FunctionForm::Table:
            add(s.returnVariable + " TABLE ");
            table(*s.table);
            break;
    }
    moduleOptions(s);
    add(" AS\n");
    if (s.form != FunctionForm::Inline) return block(s.body);
    add("RETURN (");
    query(*s.query);
    add(")");
}

void TreePrinter::trigger(const CreateTriggerStmt& s) {
    moduleHead(s, "TRIGGER");
    add(" ON ");
    object(s.table);
    moduleOptions(s);
    add(s.insteadOf ? " INSTEAD OF" : " AFTER");
    std::string_view separator = " ";
    const auto event = [&](bool on, std::string_view word) {
        if (!on) return;
        add(separator);
        add(word);
        separator = ", ";
    };
    event(s.onInsert, "INSERT");
    event(s.onUpdate, "UPDATE");
    event(s.onDelete, "DELETE");
    add(" AS\n");
    statements(s.body);
}

void TreePrinter::drop(const DropStmt& s) {
    static constexpr std::string_view kKinds[] = {"TABLE",   "VIEW",  "PROCEDURE", "FUNCTION",
                                                  "TRIGGER", "INDEX", "DATABASE",  "SCHEMA"};
    add("DROP " + std::string(kKinds[static_cast<int>(s.object)]));
    add(s.ifExists ? " IF EXISTS " : " ");
    bool first = true;
    for (std::size_t i = 0; i < s.names.size(); ++i) {
        if (!first) add(", ");
        first = false;
        object(s.names[i]);
        if (s.tables.empty()) continue;
        add(" ON ");
        object(s.tables[i]);
    }
}

}  // namespace kv::tsql
