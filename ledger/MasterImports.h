#pragma once
// MasterImports: what can be imported into the master files: groups, accounts, cost centres and vendors.

#include "reporting/MasterImport.h"

namespace kv {

const std::vector<ImportKind>& importKinds();

}  // namespace kv
