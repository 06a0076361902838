#include "platform/embedded/Refusals.h"

#include <algorithm>

#include "platform/base/Text.h"

namespace kv::tsql {

namespace {

constexpr std::string_view kRefusedTypes[] = {
    "xml",       "sql_variant", "geography", "geometry", "hierarchyid", "time", "datetimeoffset",
    "timestamp", "rowversion",  "image",     "json",     "vector",
};

/// Collations that mean what the engine does: case is ignored, accents count.
constexpr std::string_view kCollations[] = {
    "database_default",     "catalog_default",          "SQL_Latin1_General_CP1_CI_AS",
    "Latin1_General_CI_AS", "Latin1_General_100_CI_AS", "Latin1_General_100_CI_AS_SC",
};

template <class List>
bool contains(const List& words, std::string_view word) {
    return std::any_of(std::begin(words), std::end(words), [&](std::string_view w) { return equalsNoCase(w, word); });
}

class RefusalVisitor : public Walker {
public:
    std::vector<Refusal> take() { return std::move(found_); }

protected:
    bool enter(const Stmt& stmt) override {
        if (const auto* unsupported = as<UnsupportedStmt>(&stmt)) {
            refuse(unsupported->construct, stmt.pos);
        } else if (const auto* insert = as<InsertStmt>(&stmt)) {
            target(insert->target);
            change(insert->top, insert->with, insert->target);
        } else if (const auto* update = as<UpdateStmt>(&stmt)) {
            target(update->target);
            change(update->top, update->with, update->target);
        } else if (const auto* deletion = as<DeleteStmt>(&stmt)) {
            target(deletion->target);
            change(deletion->top, deletion->with, deletion->target);
        } else if (const auto* truncate = as<TruncateStmt>(&stmt)) {
            target(truncate->target);
        } else if (const auto* option = as<SetOptionStmt>(&stmt)) {
            setOption(*option);
        } else if (const auto* exec = as<ExecStmt>(&stmt)) {
            target(exec->procedure);
        } else {
            definition(stmt);
        }
        return true;
    }

    bool enter(const Expr& e) override {
        if (const auto* collate = as<CollateExpr>(&e)) {
            collation(collate->collation, collate->pos);
        } else if (const auto* column = as<ColumnExpr>(&e)) {
            if (!column->qualifier.server.empty()) refuse("a linked server", column->pos);
        }
        return true;
    }

    bool enter(const Query& query) override {
        if (!query.forClause.empty()) refuse("FOR " + query.forClause, query.clausePos);
        return true;
    }

    bool enter(const SelectBody& body) override {
        limit(body.top);
        return true;
    }

    bool enter(const TableRef& ref) override {
        if (const auto* named = as<NamedRef>(&ref)) target(named->name);
        if (const auto* function = as<FunctionRef>(&ref)) target(function->name);
        return true;
    }

    void type(const TypeName& type) override {
        if (contains(kRefusedTypes, type.name)) {
            refuse("the type " + type.name, type.pos);
        } else if (!type.userSchema.empty()) {
            refuse("a user-defined type", type.pos);
        }
    }

    void column(const ColumnDef& def) override {
        if (def.computed) refuse("a computed column", def.pos);
        if (!def.collation.empty()) collation(def.collation, def.pos);
    }

private:
    void refuse(std::string construct, Pos pos) { found_.push_back({std::move(construct), pos}); }

    void target(const ObjectName& name) {
        if (!name.server.empty()) refuse("a linked server", name.pos);
    }

    void collation(const std::string& name, Pos pos) {
        if (!contains(kCollations, name)) refuse("the collation " + name, pos);
    }

    /// TOP 100 PERCENT is every row; other shares and ties are refused.
    void limit(const Top& top) {
        const auto* number = as<LiteralExpr>(top.count);
        if (top.percent && !(number && number->text == "100")) refuse("TOP ... PERCENT", top.pos);
        if (top.withTies) refuse("TOP ... WITH TIES", top.pos);
    }

    void change(const Top& top, const std::vector<Cte>& with, const ObjectName& changed) {
        limit(top);
        for (const Cte& cte : with)
            if (changed.schema.empty() && equalsNoCase(cte.name, changed.name))
                refuse("a change through a common table expression", changed.pos);
    }

    void setOption(const SetOptionStmt& stmt) {
        const std::string& option = stmt.options.front();
        if (option == "ROWCOUNT" && stmt.value != "0") refuse("SET ROWCOUNT", stmt.pos);
        if (option == "DATEFORMAT" && !equalsNoCase(stmt.value, "mdy"))
            refuse("SET DATEFORMAT " + stmt.value, stmt.pos);
        if (option == "DATEFIRST" && stmt.value != "7") refuse("SET DATEFIRST " + stmt.value, stmt.pos);
        if (option == "ANSI_NULLS" && stmt.value == "OFF") refuse("SET ANSI_NULLS OFF", stmt.pos);
        if (option == "QUOTED_IDENTIFIER" && stmt.value == "OFF") refuse("SET QUOTED_IDENTIFIER OFF", stmt.pos);
        if (option == "CONCAT_NULL_YIELDS_NULL" && stmt.value == "OFF")
            refuse("SET CONCAT_NULL_YIELDS_NULL OFF", stmt.pos);
        if (option == "IMPLICIT_TRANSACTIONS" && stmt.value == "ON") refuse("SET IMPLICIT_TRANSACTIONS ON", stmt.pos);
        if (option == "FMTONLY" || option == "NOEXEC" || option == "PARSEONLY") {
            if (stmt.value == "ON") refuse("SET " + option + " ON", stmt.pos);
        }
    }

    void definition(const Stmt& stmt) {
        const std::vector<Parameter>* parameters = nullptr;
        if (const auto* procedure = as<CreateProcedureStmt>(&stmt)) parameters = &procedure->parameters;
        if (const auto* function = as<CreateFunctionStmt>(&stmt)) parameters = &function->parameters;
        if (parameters) {
            inModule_ = true;
            for (const Parameter& p : *parameters)
                if (p.readOnly) refuse("a table-valued parameter", p.pos);
        } else if (stmt.kind == StmtKind::CreateTrigger) {
            inModule_ = true;
        } else if (stmt.kind == StmtKind::Use && inModule_) {
            refuse("USE inside a module", stmt.pos);
        }
    }

    bool inModule_ = false;
    std::vector<Refusal> found_;
};

}  // namespace

std::vector<Refusal> findRefusals(const StmtList& statements) {
    RefusalVisitor visitor;
    visitor.walk(statements);
    std::vector<Refusal> found = visitor.take();
    std::stable_sort(found.begin(), found.end(),
                     [](const Refusal& a, const Refusal& b) { return a.pos.offset < b.pos.offset; });
    return found;
}

void refuseUnsupported(const StmtList& statements) {
    const std::vector<Refusal> found = findRefusals(statements);
    if (found.empty()) return;
    const Refusal& first = found.front();
    throw notSupported(first.construct, static_cast<int>(first.pos.line), static_cast<int>(first.pos.column));
}

}  // namespace kv::tsql
