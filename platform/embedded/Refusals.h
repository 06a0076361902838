#pragma once
// Refusals: names what the embedded engine does not take, with line and column, before anything is compiled.

#include <string>
#include <vector>

#include "platform/embedded/Ast.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

struct Refusal {
    std::string construct;  ///< "MERGE", "a computed column", "the type xml"
    Pos pos;
};

/// Everything in the statements that the engine refuses, in the order of the text.
std::vector<Refusal> findRefusals(const StmtList& statements);
/// Raises the first of them: "<construct> is not supported by the embedded engine ...".
void refuseUnsupported(const StmtList& statements);

}  // namespace kv::tsql
