// CREATE and ALTER of views, procedures, functions and triggers.

#include <array>

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/ParserCore.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

/// At CREATE, CREATE OR ALTER, or ALTER.
StmtPtr Parser::module(ModuleMode mode) {
    const std::size_t head = mode == ModuleMode::CreateOrAlter ? 3 : 1;
    using ModuleParser = StmtPtr (Parser::*)(ModuleMode);
    struct Kind {
        std::string_view word;
        std::string_view inError;
        ModuleParser parse;
    };
    static constexpr std::array<Kind, 5> kKinds = {{
        {"VIEW", "CREATE VIEW", &Parser::viewModule},
        {"PROC", "CREATE/ALTER PROCEDURE", &Parser::procedureModule},
        {"PROCEDURE", "CREATE/ALTER PROCEDURE", &Parser::procedureModule},
        {"FUNCTION", "CREATE FUNCTION", &Parser::functionModule},
        {"TRIGGER", "CREATE TRIGGER", &Parser::triggerModule},
    }};
    for (const Kind& kind : kKinds) {
        if (!isWord(kind.word, head)) continue;
        if (at_ != 0 || module_) throw sqlErrorAt(static_cast<int>(here().line), 111, {kind.inError});
        at_ += head + 1;
        module_ = true;
        batch_.cacheable = false;
        return (this->*kind.parse)(mode);
    }
    failAt(at_ + head);
}

/// The name, then what all modules keep.
void Parser::moduleHead(ModuleStmt& stmt, ModuleMode mode) {
    stmt.mode = mode;
    stmt.name = objectName();
    stmt.source = std::string(lexed_.source);
}

/// WITH option, option
std::vector<std::string> Parser::moduleOptions() {
    std::vector<std::string> options;
    if (!take("WITH")) return options;
    do {
        if (isAnyWord({"EXEC", "EXECUTE"})) {
            at_ += 2;
            if (isString() || isName() || isWord("OWNER")) ++at_;
            options.push_back("EXECUTE AS");
            continue;
        }
        std::string option = word();
        if (option == "RETURNS" || option == "CALLED") {
            need("NULL");
            need("ON");
            need("NULL");
            need("INPUT");
        }
        options.push_back(std::move(option));
    } while (takeSymbol(','));
    return options;
}

StmtPtr Parser::viewModule(ModuleMode mode) {
    auto stmt = make<CreateViewStmt>();
    moduleHead(*stmt, mode);
    if (isSymbol('(')) stmt->columns = bracketedNameList();
    stmt->options = moduleOptions();
    need("AS");
    std::vector<Cte> with;
    if (isWord("WITH")) with = ctes();
    stmt->query = query(QueryPlace::Inner);
    stmt->query->with = std::move(with);
    if (isWord("WITH") && isWord("CHECK", 1) && isWord("OPTION", 2)) {
        at_ += 3;
        stmt->checkOption = true;
    }
    takeSymbol(';');
    return stmt;
}

StmtPtr Parser::procedureModule(ModuleMode mode) {
    auto stmt = make<CreateProcedureStmt>();
    body_ = Body::Procedure;
    moduleHead(*stmt, mode);
    const bool bracketed = isSymbol('(');
    if (bracketed) ++at_;
    if (token().kind == TokenKind::Variable) stmt->parameters = parameters();
    if (bracketed) needSymbol(')');
    stmt->options = moduleOptions();
    if (take("FOR")) need("REPLICATION");
    need("AS");
    if (isWord("EXTERNAL")) refuse("a procedure of an assembly");
    stmt->body = statements();
    if (stmt->body.empty()) fail();
    return stmt;
}

std::vector<Parameter> Parser::parameters() {
    std::vector<Parameter> list;
    do {
        list.push_back(parameter());
    } while (takeSymbol(','));
    return list;
}

/// @name [AS] type [NULL] [= default] [OUTPUT] [READONLY]
Parameter Parser::parameter() {
    Parameter result;
    result.pos = here();
    result.name = variable();
    take("AS");
    result.type = typeName();
    if (take("VARYING")) result.type.name = "cursor";
    if (isWord("NOT") && isWord("NULL", 1)) at_ += 2;
    take("NULL");
    if (takeSymbol('=')) result.defaultValue = execValue();
    if (take("OUTPUT") || take("OUT")) result.output = true;
    if (take("READONLY")) result.readOnly = true;
    return result;
}

StmtPtr Parser::functionModule(ModuleMode mode) {
    auto stmt = make<CreateFunctionStmt>();
    moduleHead(*stmt, mode);
    needSymbol('(');
    if (token().kind == TokenKind::Variable) stmt->parameters = parameters();
    needSymbol(')');
    need("RETURNS");
    if (token().kind == TokenKind::Variable) {
        stmt->form = FunctionForm::Table;
        stmt->returnVariable = variable();
        need("TABLE");
        stmt->table = std::make_unique<TableDef>(tableDef());
    } else if (take("TABLE")) {
        stmt->form = FunctionForm::Inline;
    } else {
        stmt->returns = typeName();
    }
    stmt->options = moduleOptions();
    if (stmt->form == FunctionForm::Inline) {
        take("AS");
        if (isWord("EXTERNAL")) refuse("a function of an assembly");
        need("RETURN");
        stmt->query = inlineQuery();
        takeSymbol(';');
        return stmt;
    }
    functionBody(*stmt);
    return stmt;
}

/// The query of an inline function, alone or in parentheses.
QueryPtr Parser::inlineQuery() {
    const bool bracketed = isSymbol('(') && (isWord("WITH", 1) || closing(at_) + 1 >= tokens_.size() - 2);
    if (bracketed) ++at_;
    std::vector<Cte> with;
    if (isWord("WITH")) with = ctes();
    QueryPtr result = query(QueryPlace::Inner);
    result->with = std::move(with);
    if (bracketed) needSymbol(')');
    return result;
}

/// [AS] BEGIN statements END, of which the last is RETURN.
void Parser::functionBody(CreateFunctionStmt& stmt) {
    body_ = stmt.form == FunctionForm::Scalar ? Body::ScalarFunction : Body::TableFunction;
    take("AS");
    if (isWord("EXTERNAL")) refuse("a function of an assembly");
    need("BEGIN");
    stmt.body = statements();
    const std::size_t end = at_;
    need("END");
    takeSymbol(';');
    if (stmt.body.empty() || stmt.body.back()->kind != StmtKind::Return)
        throw sqlErrorAt(static_cast<int>(tokens_[end].pos.line), 455);
}

StmtPtr Parser::triggerModule(ModuleMode mode) {
    auto stmt = make<CreateTriggerStmt>();
    body_ = Body::Trigger;
    moduleHead(*stmt, mode);
    need("ON");
    if (isWord("DATABASE") || (isWord("ALL") && isWord("SERVER", 1))) refuse("a DDL trigger");
    stmt->table = objectName();
    stmt->options = moduleOptions();
    if (take("INSTEAD")) {
        need("OF");
        stmt->insteadOf = true;
    } else if (!take("AFTER")) {
        need("FOR");
    }
    do {
        if (take("INSERT")) {
            stmt->onInsert = true;
        } else if (take("UPDATE")) {
            stmt->onUpdate = true;
        } else {
            need("DELETE");
            stmt->onDelete = true;
        }
    } while (takeSymbol(','));
    if (isWord("NOT") && isWord("FOR", 1) && isWord("REPLICATION", 2)) at_ += 3;
    need("AS");
    stmt->body = statements();
    if (stmt->body.empty()) fail();
    return stmt;
}

}  // namespace kv::tsql
