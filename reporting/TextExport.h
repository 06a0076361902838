#pragma once
// TextExport: the rows of a statement as the text of a file or of the clipboard.

#include <string>
#include <vector>

#include "platform/data/Recordset.h"

namespace kv {

/// The cells of each row glued together, nothing for NULL; each row ends with CRLF, the last one too.
std::string gluedText(const Recordset& rows);

/// Rows of cells joined by CRLF: "," between the cells of a file, tabs on the clipboard. A line end in a cell becomes
/// "_", quotes are left out; in a file a cell with a "," stands in quotes, on the clipboard a tab is a blank.
std::string cellsText(const std::vector<std::vector<std::string>>& rows, bool ForFile);

}  // namespace kv
