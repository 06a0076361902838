#pragma once
// MasterPrint: the list of a master file on paper and in files, as the screen shows it: narrowed and sorted.

#include <string>

#include "reporting/MasterFile.h"

namespace kv {

/// What the list shows at the moment.
struct MasterView {
    std::string statement;
    std::string filter;     ///< rows that hold this in any column; empty for all
    int sortedColumn = -1;  ///< of the screen's columns; -1 for the order of the statement
    bool descending = false;
};

/// The list's template when no file was written for it: a column for each of the screen's.
std::string masterListTemplate(const MasterFile& file, const MasterView& view);
/// Opens the list as the session's report: the screen's own template, else the one made from its columns. False when no
/// printer was chosen.
bool openMasterList(Session& session, const MasterFile& file, const MasterView& view);
/// Writes the list by the path's ending: xlsx or csv.
void exportMasterList(Session& session, const MasterFile& file, const MasterView& view, const std::string& path);

}  // namespace kv
