#include "reporting/MasterPrint.h"

#include <algorithm>

#include "core/Session.h"
#include "platform/base/Text.h"
#include "platform/print/Report.h"
#include "reporting/ReportFrame.h"

namespace kv {
namespace {

constexpr double kChar_mm = 1.9;
constexpr double kPortrait_mm = 180;

std::string tomlText(std::string_view text) {
    return "\"" + replaceAll(replaceAll(replaceAll(text, "\\", "\\\\"), "\"", "\\\""), "\n", "\\n") + "\"";
}

/// What a column shows, as an expression of the template.
std::string shownExpression(const MasterColumn& column) {
    const std::string field = "[" + column.field + "]";
    switch (column.look) {
        case MasterLook::Active:
            return "if(text(" + field + ") in ('A', '1', 'True'), 'active', 'inactive')";
        case MasterLook::Date:
            return "if(isNull(" + field + "), '', format(" + field + ", 'MM/dd/yyyy'))";
        case MasterLook::Amount:
            return "if(isNull(" + field + "), '', format(" + field + ", '#,##0.00'))";
        default:
            return "text(" + field + ")";
    }
}

bool keepsType(MasterLook look) { return look != MasterLook::Active; }

std::string columnTable(const MasterFile& file, std::size_t index, bool fills) {
    const MasterColumn& column = file.columns[index];
    std::string text =
        "\n[[column]]\nname = " + tomlText("c" + std::to_string(index)) + "\nheading = " + tomlText(column.heading) +
        "\nvalue = " + tomlText(keepsType(column.look) ? "[" + column.field + "]" : shownExpression(column)) + "\n";
    if (!fills) text += "width = " + plainText(column.width_chars * kChar_mm) + "\n";
    if (fills) text += "wrap = true\n";
    if (column.look == MasterLook::Date) text += "format = \"MM/dd/yyyy\"\nalign = \"left\"\n";
    if (column.look == MasterLook::Amount) text += "format = \"#,##0.00\"\nalign = \"right\"\n";
    if (column.look == MasterLook::Text) text += "align = \"left\"\n";
    return text;
}

std::string filterExpression(const MasterFile& file) {
    std::string text = "isBlank(:Filter)";
    for (const MasterColumn& column : file.columns) text += " or contains(" + shownExpression(column) + ", :Filter)";
    return text;
}

ReportParams madeParams(const Session& session, const MasterView& view) {
    return {session.Sys.Company, session.Sys.Address1, view.filter};
}

}  // namespace

std::string masterListTemplate(const MasterFile& file, const MasterView& view) {
    double width = 0;
    std::size_t widest = 0;
    for (std::size_t i = 0; i < file.columns.size(); ++i) {
        width += file.columns[i].width_chars * kChar_mm;
        if (file.columns[i].width_chars > file.columns[widest].width_chars) widest = i;
    }
    const char* page = width > kPortrait_mm ? "landscape" : "portrait";
    std::string text = "title = " + tomlText(file.title) + "\ninclude = [\"common/page-" + page +
                       ".toml\", \"common/heading.toml\"]\nwhere = " + tomlText(filterExpression(file)) + "\n";
    if (view.sortedColumn >= 0) {
        const MasterColumn& by = file.columns.at(static_cast<std::size_t>(view.sortedColumn));
        text += "sort = [" + tomlText("[" + by.field + "]" + (view.descending ? " desc" : "")) + "]\n";
    }
    for (const char* name : {"HospitalName", "HospAddress", "Filter"}) {
        text += std::string("\n[[parameter]]\nname = \"") + name + "\"\ndefault = \"\"\n";
    }
    text += "\n[source]\nstatement = " + tomlText(view.statement) + "\n\n[formula]\n" +
            "range = \"if(isBlank(:Filter), '', 'Entries that hold ' & :Filter)\"\n" +
            "\n[detail]\nemptyText = \"There is no entry.\"\n";
    for (std::size_t i = 0; i < file.columns.size(); ++i) text += columnTable(file, i, i == widest);
    return text + "\n[reportFooter]\nbefore = 2\nwhen = \"rows() > 0\"\n" +
           "text = [{ text = \"{rows()} entries\", style = \"small\" }]\n";
}

bool openMasterList(Session& session, const MasterFile& file, const MasterView& view) {
    if (!file.report.empty()) {
        return module1::OpenMainReport(session, module1::ReportPath(session, file.report),
                                       {session.Sys.Company, session.Sys.Address1});
    }
    return module1::OpenReportText(session, file.screen + ".rpt", masterListTemplate(file, view),
                                   madeParams(session, view));
}

void exportMasterList(Session& session, const MasterFile& file, const MasterView& view, const std::string& path) {
    const auto report = Report::fromText(masterListTemplate(file, view), file.screen + ".rpt", module1::ReportFolder());
    const ReportParams params = madeParams(session, view);
    for (std::size_t i = 0; i < params.size(); ++i) report->setValue(i, params[i]);
    report->run(session.cn());
    if (path.ends_with(".csv")) {
        report->saveCsv(path);
    } else {
        report->saveXlsx(path, XlsxKind::Tabular);
    }
}

}  // namespace kv
