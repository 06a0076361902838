#pragma once
// LedgerReports: the statements of the ledger with the values that their templates take.

#include <source_location>
#include <string_view>

namespace kv {

class Session;

/// The trial balance of a prepared month.
void rptTrialBalance(Session& session, std::string_view Period,
                     std::source_location at = std::source_location::current());

}  // namespace kv
