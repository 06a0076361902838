#pragma once
// Routines: the parsed sources of views, procedures, functions and triggers.

#include <memory>
#include <string>

#include "platform/embedded/Ast.h"
#include "platform/embedded/Catalog.h"
#include "platform/embedded/Plan.h"

namespace kv::tsql {

/// A module of the catalogue, parsed and with its variables in place: the parameters first.
struct Module : Attachment {
    Batch batch;
    const CreateViewStmt* view = nullptr;
    const CreateProcedureStmt* procedure = nullptr;
    const CreateFunctionStmt* function = nullptr;
    const CreateTriggerStmt* trigger = nullptr;
    VariableScope variables;
    const std::vector<Parameter>* parameters = nullptr;  ///< of procedures and functions
    Type returns;                                        ///< of scalar functions
    /// May it change a permanent table? A procedure that it calls counts as a writer (looked up when it is run).
    bool writes = false;
    bool calls = false;

    const StmtList& body() const;
    std::size_t parameterCount() const { return parameters ? parameters->size() : 0; }
};

/// Parses a module's source; raises syntax errors, 134, 137, 2715, and refusals.
std::shared_ptr<Module> parseModule(const std::string& source);
/// The same for a statement that was parsed already (CREATE in a batch): checks its body.
void checkModule(const ModuleStmt& statement);

/// Does any statement of the list write to a permanent table, or begin a transaction; does it call a procedure?
struct Effects {
    bool writes = false;
    bool calls = false;
    bool locals = false;       ///< it writes to temporary tables or table variables
    bool definitions = false;  ///< CREATE, ALTER, DROP of permanent objects
};
Effects effectsOf(const StmtList& statements);

}  // namespace kv::tsql
