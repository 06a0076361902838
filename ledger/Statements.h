#pragma once
// Statements: runs the rows of the statement table: asks for the values, opens the template with them and shows it.

#include <source_location>
#include <string_view>

#include "ledger/StatementTable.h"

namespace kv {

/// Asks by the row's dialog and shows the report. False when the dialog was cancelled: no report runs.
bool RunStatement(Session& session, const StatementRow& row);
/// Opens the row's template with the values of a choice and shows it.
void ShowStatement(Session& session, const StatementRow& row, const StatementChoice& choice,
                   std::source_location at = std::source_location::current());

/// Opens what stands behind a figure: "account 1101 202401 202403" the lines of an account, "group 101 202403" the
/// accounts of a group, "JV 2024-10002" a batch or voucher by its book. Asks for the user's right and tells what cannot
/// be opened.
void OpenLedgerDocument(Session& session, std::string_view key);

}  // namespace kv
