#pragma once
// Parser: T-SQL text to its syntax tree, by SQL Server's reserved words and with its syntax errors.

#include <string_view>

#include "platform/embedded/Ast.h"
#include "platform/embedded/Lexer.h"

namespace kv::tsql {

/// Parses a batch. Raises 102, 156 and the other syntax errors with the line of the offending token (severity 15).
/// Constructs outside the engine's subset parse as far as the tree has a place for them; see Refusals.h.
Batch parseBatch(const LexedBatch& lexed);
/// Lexes and parses; for module sources of the catalogue and for tests.
Batch parseBatch(std::string_view text);

/// A single condition or value, for expressions that the catalogue keeps as text (CHECK, DEFAULT, filters).
ExprPtr parseCondition(std::string_view text);
ExprPtr parseExpression(std::string_view text);

/// True for a word that cannot be a name without brackets.
bool isReservedWord(std::string_view word);

}  // namespace kv::tsql
