#pragma once
// ReportExport: the files that the report viewer writes from a statement.

#include <string>

#include "platform/data/Recordset.h"

namespace kv {

/// The text of a statement's rows as the viewer's CSV export has it: quoted names, character fields quoted without
/// their own quotes, other fields plain, nothing for nulls. The last row stands twice, by the design of this file; a
/// result without rows has an empty line behind its heading.
std::string exportText(const Recordset& rows);

}  // namespace kv
