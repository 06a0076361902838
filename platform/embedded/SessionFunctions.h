#pragma once
// SessionFunctions: SQLite functions and modules that call back into the session: catalogue look-ups, counters, and the
// user's own functions.

#include <sqlite3.h>

#include <string>

#include "platform/embedded/Catalog.h"

namespace kv::tsql {

class Interp;

void registerSessionFunctions(sqlite3* db, Interp& interp);
/// A user's scalar function under its SQLite name.
void registerScalarFunction(sqlite3* db, Interp& interp, const std::string& name, const std::string& key);
/// A table function as an eponymous virtual table with hidden columns for its arguments.
void registerTableFunction(sqlite3* db, Interp& interp, const std::string& name, const Object& function, int arguments);

}  // namespace kv::tsql
