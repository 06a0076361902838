#pragma once
// CodeLookups: how the code fields of the date and period dialogs find accounts and cost centers.

#include "reporting/SelectDialog.h"

namespace kv {

class Session;

/// Accounts that take lines; `Mode` as sp_Search_Acct has it: "ALL", "BANK" for the cash in bank accounts, or a type.
CodeLookup AccountLookup(Session& session, std::string Mode = "ALL");
CodeLookup CostCenterLookup(Session& session);
/// Divisions, above the cost centers.
CodeLookup DivisionLookup(Session& session);
/// Schedule groups of the chart.
CodeLookup GroupLookup(Session& session);

}  // namespace kv
