#pragma once
// Printer: syntax tree to T-SQL text that parses to the same tree.

#include <string>

#include "platform/embedded/Ast.h"

namespace kv::tsql {

std::string print(const StmtList& statements);
std::string print(const Stmt& statement);
std::string print(const Expr& expr);
std::string print(const Query& query);
std::string print(const TypeName& type);
/// A name in brackets where it needs them.
std::string printName(std::string_view name);

}  // namespace kv::tsql
