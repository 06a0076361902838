#pragma once
// Lateral: the table kv_lateral(query, argument ...), by which APPLY runs a query for each row of its left side.

#include <sqlite3.h>

#include "platform/embedded/Functions.h"

namespace kv::tsql {

constexpr int kLateralColumnsMax = 60;    ///< columns c1, c2, ... of the query
constexpr int kLateralArgumentsMax = 40;  ///< values that the query takes as ?1, ?2, ...

/// Registers the table on a connection. Errors of the query go to `context.pending`.
void registerLateral(sqlite3* db, FunctionContext& context);

}  // namespace kv::tsql
