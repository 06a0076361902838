#pragma once
// DemoHospital: fills a fresh database with an invented hospital: people, chart, vendors, settings and open months.

#include <string>

#include "platform/data/Connection.h"

namespace kv {

/// Loads the CSV files of a folder into a database that the installer made, in one transaction. Raises Error 58 when
/// the database holds a chart of accounts already, 53 for a missing file, and the server's error with file and line.
void loadDemoHospital(Connection& connection, const std::string& dataFolder);

}  // namespace kv
