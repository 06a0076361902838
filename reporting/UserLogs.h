#pragma once
// UserLogs: the report of what users opened and did on the days asked for.

#include <source_location>

namespace kv {

class Session;

/// Asks the days and a user, nothing for all, and shows the report.
void ShowUserLogs(Session& session, std::source_location at = std::source_location::current());

}  // namespace kv
