#pragma once
// Opening a data source for the sign-in: the file of this computer, made when it is missing, or a SQL Server.

#include <memory>
#include <string>

#include "platform/login/clsCurrentUser.h"

namespace kv {

/// Raises the engine's or the server's errors.
std::unique_ptr<Connection> openSource(const LoginOptions& options, const DataSource& source,
                                       const std::string& password);

/// Makes the embedded file where it is missing and `options` knows how; `progress` hears percents. Another process that
/// was faster wins. True when the file was made.
bool prepareEmbedded(const LoginOptions& options, const LoginOptions::Progress& progress);

}  // namespace kv
