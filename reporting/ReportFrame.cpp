#include "reporting/ReportFrame.h"

#include <algorithm>

#include "core/Session.h"
#include "core/Version.h"
#include "core/module1.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/print/Report.h"
#include "reporting/frmReportViewer.h"

namespace kv::module1 {
namespace {

constexpr long kFileMissing = static_cast<long>(0x80040000);
constexpr const char* kOwnDatabase = "ACCOUNTING";

/// A value as a parameter of that type takes it from a positional array. Raises 13 for a text that is no number.
kv::Value positional(const kv::Value& value, ParameterType type) {
    switch (type) {
        case ParameterType::Number:
        case ParameterType::Currency:
            if (value.isText() && !IsNumeric(value.text())) {
                throw Error(kErrTypeMismatch, "module1", "Type mismatch: '" + value.text() + "' is no number.");
            }
            return value.isText() ? kv::Value(numberOf(value.text())) : kv::Value(value.number());
        case ParameterType::Boolean:
            return kv::Value(value.boolean());
        default:
            return value;
    }
}

/// The same from a dictionary: numbers by the numeric value of the text, no boolean case.
kv::Value named(const kv::Value& value, ParameterType type) {
    const bool number = type == ParameterType::Number || type == ParameterType::Currency;
    return number ? kv::Value(numberOf(value.text())) : value;
}

void bindPositional(Report& report, const ReportParams& params) {
    const std::size_t count = std::min(params.size(), report.parameters().size());
    for (std::size_t i = 0; i < count; ++i) report.setValue(i, positional(params[i], report.parameters()[i].type));
}

void bindNamed(Report& report, const ReportParamsDictionary& params) {
    const std::size_t count = std::min(params.size(), report.parameters().size());
    for (std::size_t i = 0; i < count; ++i) {
        const ParameterDef& parameter = report.parameters()[i];
        const auto found =
            std::find_if(params.begin(), params.end(), [&](const auto& pair) { return pair.first == parameter.name; });
        if (found != params.end()) report.setValue(i, named(found->second, parameter.type));
    }
}

/// Opens a template as the session's current report, its sources directed to a database.
Report& openReport(Session& session, const std::string& path, const std::string& database) {
    session.CurrentReport = Report::load(path);
    session.CurrentReport->setDatabase(database);
    return *session.CurrentReport;
}

void describe(Session& session, Report& report) {
    report.setDescription("Printed by: " + GetEmployeeName(session.cn(), session.EmployeeCode) +
                          "; Print date: " + defaultText(Now()) + "; HALCYRA " + std::to_string(kVersionMajor) + ".0");
}

void logPrint(Session& session, const std::string& path) {
    SaveUserLog(session, "Printed report : " + fileNameOf(path));
}

Report& current(Session& session) {
    if (!session.CurrentReport) throw Error(kErrObjectMissing, "module1", "No report is open.");
    return *session.CurrentReport;
}

/// A sub-report of the current report. It reads from the accounts, wherever the main report reads from.
Report& subReport(Session& session, const std::string& name) {
    Report& report = current(session).openSubreport(name);
    report.setDatabase(kOwnDatabase);
    return report;
}

}  // namespace

std::string ReportPathIn(const std::string& programFolder, std::string_view clientCode, std::string_view FileName) {
    for (const std::string& folder : {"Reports_" + std::string(clientCode), std::string("Reports")}) {
        std::string path = buildPath(buildPath(programFolder, folder), FileName);
        if (fileExists(path)) return path;
    }
    return buildPath(programFolder, FileName);
}

std::string ReportPath(const Session& session, std::string_view FileName) {
    return ReportPathIn(programFolder(), session.ClientCode(), FileName);
}

bool OpenMainReport(Session& session, const std::string& Path, const ReportParams& Params, Place at) {
    return traced("module1.OpenMainReport", at, [&] {
        if (!SelectPrinter(session)) return false;
        if (!fileExists(Path)) throw Error(kFileMissing, programFolder(), "File not found. " + Path);
        Report& report = openReport(session, Path, kOwnDatabase);
        bindPositional(report, Params);
        session.ReportFlag = false;
        describe(session, report);
        logPrint(session, Path);
        return true;
    });
}

std::string ReportFolder() { return buildPath(programFolder(), "Reports"); }

bool OpenReportText(Session& session, const std::string& Name, std::string_view Text, const ReportParams& Params,
                    Place at) {
    return traced("module1.OpenReportText", at, [&] {
        if (!SelectPrinter(session)) return false;
        session.CurrentReport = Report::fromText(Text, Name, ReportFolder());
        session.CurrentReport->setDatabase(kOwnDatabase);
        bindPositional(*session.CurrentReport, Params);
        describe(session, *session.CurrentReport);
        logPrint(session, Name);
        return true;
    });
}

bool OpenMainReport1(Session& session, const std::string& Database, const std::string& Path, const ReportParams& Params,
                     Place at) {
    return traced("module1.OpenMainReport1", at, [&] {
        Report& report = openReport(session, Path, Database);
        bindPositional(report, Params);
        describe(session, report);
        logPrint(session, Path);
        return true;
    });
}

bool OpenMainReport2(Session& session, const std::string& Path, const ReportParamsDictionary& Params, Place at) {
    return traced("module1.OpenMainReport2", at, [&] {
        if (!SelectPrinter(session)) return false;
        if (!fileExists(Path)) {
            throw Error(kFileMissing, programFolder(),
                        "File not found: " + Path + ". Contact EDP/IT/Helpdesk to install this file.");
        }
        Report& report = openReport(session, Path, kOwnDatabase);
        bindNamed(report, Params);
        session.ReportFlag = false;
        describe(session, report);
        logPrint(session, Path);
        return true;
    });
}

bool OpenImportedReport(Session& session, const std::string& Path, const std::string& Database,
                        const ReportParams& Params, Place at) {
    return traced("module1.OpenImportedReport", at, [&] {
        if (!SelectPrinter(session)) return false;
        if (!fileExists(Path)) throw Error(kFileMissing, programFolder(), "File not found. " + Path);
        bindPositional(openReport(session, Path, Database), Params);
        session.ReportFlag = false;
        return true;
    });
}

void OpenSubReport(Session& session, const std::string& Name, const ReportParams& Params, Place at) {
    traced("module1.OpenSubReport", at, [&] { bindPositional(subReport(session, Name), Params); });
}

void OpenSubReport2(Session& session, const std::string& Name, const ReportParamsDictionary& Params, Place at) {
    traced("module1.OpenSubReport2", at, [&] { bindNamed(subReport(session, Name), Params); });
}

void ShowReportViewer(Session& session, const ViewerOptions& options, Place at) {
    traced("module1.ShowReportViewer", at, [&] {
        {
            const Hourglass busy;
            current(session).run(session.cn());
        }
        frmReportViewer viewer(session, options);
        viewer.ShowModal();
    });
}

void rptBatchJournal(Session& session, std::string_view Book, std::string_view StartBatch, std::string_view EndBatch,
                     Place at) {
    traced("module1.rptBatchJournal", at, [&] {
        const bool printed = Book == "JV" && session.Parameters.UsePrintJVBatch();
        const std::string path = ReportPath(session, printed ? "GLBatchJrnl_Ver2_JV.rpt" : "GLBatchJrnl.rpt");
        const ReportParams params = {session.Sys.Company, session.Sys.Address1, std::string(StartBatch),
                                     std::string(EndBatch), std::string(Book)};
        if (OpenMainReport(session, path, params)) ShowReportViewer(session, {.ReportCaption = "Batch Journal"});
    });
}

}  // namespace kv::module1
