#pragma once
// ReportFrame: finding a report's template, opening it, binding its parameters, logging the print and showing it.
//
// The order of a print is always: ReportPath, one OpenMainReport..., any number of OpenSubReport..., ShowReportViewer.

#include <map>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/data/Value.h"

namespace kv {

class Session;

/// Positional values: the i-th goes to the i-th parameter of the template.
using ReportParams = std::vector<Value>;
/// Named values, in the order given.
using ReportParamsDictionary = std::vector<std::pair<std::string, Value>>;

struct ViewerOptions {
    bool ShowGroupTree = false;
    std::string ReportCaption;
    bool DirectPrint = false;
    std::string ShowMain;
    std::string MainType;
    int ZoomLevel = 100;
    bool ExportFileReport = false;
    std::string ExportQuery;
};

namespace module1 {

using Place = std::source_location;

/// The client's own version of a template, else the common one, else the file in the program's folder; it need not
/// exist.
std::string ReportPath(const Session& session, std::string_view FileName);
std::string ReportPathIn(const std::string& programFolder, std::string_view clientCode, std::string_view FileName);

/// Raises 0x80040000 where the file is missing. False: no printer was selected, and the user has been told.
bool OpenMainReport(Session& session, const std::string& Path, const ReportParams& Params, Place at = Place::current());
/// The same with the text of a template that no file holds.
bool OpenReportText(Session& session, const std::string& Name, std::string_view Text, const ReportParams& Params,
                    Place at = Place::current());
/// The folder against which such a text's includes are looked up.
std::string ReportFolder();
bool OpenMainReport1(Session& session, const std::string& Database, const std::string& Path, const ReportParams& Params,
                     Place at = Place::current());
bool OpenMainReport2(Session& session, const std::string& Path, const ReportParamsDictionary& Params,
                     Place at = Place::current());
bool OpenImportedReport(Session& session, const std::string& Path, const std::string& Database,
                        const ReportParams& Params, Place at = Place::current());
void OpenSubReport(Session& session, const std::string& Name, const ReportParams& Params, Place at = Place::current());
void OpenSubReport2(Session& session, const std::string& Name, const ReportParamsDictionary& Params,
                    Place at = Place::current());
void ShowReportViewer(Session& session, const ViewerOptions& options, Place at = Place::current());
void rptBatchJournal(Session& session, std::string_view Book, std::string_view StartBatch, std::string_view EndBatch,
                     Place at = Place::current());

}  // namespace module1
}  // namespace kv
