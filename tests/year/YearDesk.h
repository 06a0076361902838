#pragma once
// YearDesk: a desk on a hospital whose books hold a demo year.

#include <memory>
#include <string>
#include <vector>

#include "demo/year/DemoYear.h"
#include "tests/desk/Desk.h"

namespace kv {

/// Writes a year into a copy of the demo hospital under the name given; made anew each time.
std::unique_ptr<Desk> deskOfYear(const std::string& name, const DemoYearPlan& plan);

/// First columns of all rows, joined by "|" within a row.
std::vector<std::string> rowsOf(Desk& desk, const std::string& statement);

/// The checks of the books that find something, each as its name.
std::vector<std::string> findingsOf(Desk& desk);

}  // namespace kv
