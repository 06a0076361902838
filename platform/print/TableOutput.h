#pragma once
// Rows written out as a table: aligned text, csv, and what the spreadsheet writer walks over.

#include <functional>
#include <string>
#include <vector>

#include "platform/print/Prepared.h"

namespace kv {

struct TableColumn {
    std::string heading;
    std::string format;
    double width_mm = 0;  ///< 0: as wide as its content
    bool right = false;
};

/// Takes the parts of a report's table in the order in which they are read.
class TableSink {
public:
    TableSink() = default;
    TableSink(const TableSink&) = delete;
    TableSink& operator=(const TableSink&) = delete;
    virtual ~TableSink() = default;
    virtual void title(const std::string& line, int index) = 0;
    virtual void head(const std::vector<TableColumn>& columns) = 0;
    virtual void groupHead(const std::string& text, int level) = 0;
    virtual void row(const std::vector<Value>& values) = 0;
    /// Sums of a group (from 0) or, at level -1, of the report. Nulls where a column has none.
    virtual void totals(const std::string& label, const std::vector<Value>& values, int level) = 0;
};

/// Told how far a long task is; false from it stops the task.
using Progress = std::function<bool(int done, int all)>;

/// Walks the columns of a report; one without columns gives the fields of its source.
/// `grouped` false: heading and rows only. False when `progress` stopped it.
bool walkTable(const Prepared& data, TableSink& sink, bool grouped, const Progress& progress = {});

/// RFC 4180 with CR LF: heading and rows, numbers plain, dates yyyy-MM-dd, nothing for nulls.
std::string tableCsv(const Prepared& data);
/// Columns padded with blanks, groups and totals included.
std::string tableText(const Prepared& data);

enum class XlsxKind {
    Report,   ///< titles, groups and totals as the report shows them
    Tabular,  ///< heading and rows only, ready for filters and pivots
};
/// Raises 75 when the file cannot be written; a file that stood there stays then. False when it was stopped; nothing is
/// written then.
bool writeXlsx(const Prepared& data, const std::string& path, XlsxKind kind, const Progress& progress = {});

}  // namespace kv
