#include "reporting/frmReportViewer.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/TaskProgress.h"
#include "platform/print/Report.h"
#include "reporting/ReportExport.h"

namespace kv {

frmReportViewer::frmReportViewer(Session& session, ViewerOptions options)
    : Form("frmReportViewer", "Report"),
      session_(session),
      options_(std::move(options)),
      report_(session.CurrentReport) {
    if (!report_) throw Error(kErrObjectMissing, "frmReportViewer", "No report is open.");
    connect();
    arrange();
}

void frmReportViewer::connect() {
    crvReport.onPageChange = [this] { ShowPage(); };
    crvReport.onLayoutDone = [this] { ShowPage(); };
    crvReport.onDrill = [this](const std::string& screen, const std::string& key) {
        session_.screens.openDocument(session_, screen, key);
    };
    cmdFirst.onClick = [this] { crvReport.goToPage(1); };
    cmdPrevious.onClick = [this] { crvReport.goToPage(crvReport.page() - 1); };
    cmdNext.onClick = [this] { crvReport.goToPage(crvReport.page() + 1); };
    cmdLast.onClick = [this] {
        crvReport.finishLayout();
        crvReport.goToPage(crvReport.pages());
    };
    txtFind.onKeyDown = [this](const std::string& key, bool& handled) {
        if (key != "Enter" && key != "Shift+Enter") return;
        Find(key == "Enter");
        handled = true;
    };
    cboZoom.onChange = [this] { cboZoom_Change(); };
    cmdPrint.onClick = [this] { Print(); };
    cmdClose.onClick = [this] { Unload(); };
    mnuPrint.onClick = [this] { Print(); };
    mnu_export.onClick = [this] { mnu_export_Click("8"); };
    mnuXlsx.onClick = [this] { mnu_export_Click("8T"); };
    mnuCSV.onClick = [this] { mnuCSV_Click(); };
    mnuPDF.onClick = [this] { savePages("Save as PDF", "pdf"); };
    mnuText.onClick = [this] { savePages("Save as Text", "txt"); };
    mnuOpen.onClick = [this] { mnuOpen_Click(); };
    mnuCopy.onClick = [this] { crvReport.copy(); };
    mnuClose.onClick = [this] { Unload(); };
    shortcut("Ctrl+F", "txtFind_GotFocus", [this] { txtFind.setFocus(); });
    shortcut("F3", "Find", [this] { Find(true); });
}

void frmReportViewer::arrange() {
    for (CommandButton* arrow : {&cmdFirst, &cmdPrevious, &cmdNext, &cmdLast}) arrow->narrow();
    txtFind.placeholder("Find").width(18);
    txtFind.setHelp("Enter finds the text, Shift+Enter the one before.");
    lblFound.look(Label::Look::Hint);
    cboZoom.width(12);
    for (const char* zoom : {"50 %", "75 %", "100 %", "125 %", "150 %", "200 %", "Width", "Page"})
        cboZoom.addItem(zoom);
    cmdClose.cancels();
    crvReport.setTools(false);
    setMenu({{"&Report",
              {mnuPrint, nullptr, mnuPDF, mnu_export, mnuXlsx, mnuCSV, mnuText, nullptr, mnuOpen, mnuCopy, nullptr,
               mnuClose}}});
    setLayout(column({row({cmdFirst, cmdPrevious, lblPage, cmdNext, cmdLast, gap(), cboZoom, gap(), txtFind, lblFound,
                           stretch(), cmdPrint, cmdClose}),
                      expand(crvReport)}));
    setSize(1220, 860);
    setFirstFocus(crvReport);
}

void frmReportViewer::Form_Load() {
    setCaption(options_.ReportCaption);
    mnuCSV.setVisible(options_.ExportFileReport);
    crvReport.setShowGroupTree(options_.ShowGroupTree);
    if (options_.DirectPrint) {
        PrintPages();
        Unload();
        return;
    }
    crvReport.setReport(report_.get());
    crvReport.setZoom(options_.ZoomLevel);
    cboZoom.setText(std::to_string(options_.ZoomLevel) + " %");
    ShowPage();
}

void frmReportViewer::Form_Unload() {
    crvReport.setReport(nullptr);
    options_.ShowMain.clear();
    options_.MainType.clear();
    session_.CurrentReport.reset();
}

void frmReportViewer::ShowPage() {
    lblPage.setText(crvReport.text());
    cmdFirst.setEnabled(crvReport.page() > 1);
    cmdPrevious.setEnabled(crvReport.page() > 1);
    cmdNext.setEnabled(crvReport.page() < crvReport.pages());
    cmdLast.setEnabled(crvReport.page() < crvReport.pages() || crvReport.busy());
}

void frmReportViewer::Find(bool forward) {
    if (txtFind.text().empty()) return;
    crvReport.finishLayout();
    crvReport.find(txtFind.text(), forward);
    lblFound.setText(crvReport.found() == 0 ? "not found" : std::to_string(crvReport.found()) + " found");
}

void frmReportViewer::cboZoom_Change() {
    const std::string chosen = cboZoom.text();
    if (chosen == "Width") {
        crvReport.fitWidth();
    } else if (chosen == "Page") {
        crvReport.fitPage();
    } else if (const double percent = numberOf(replaceAll(chosen, "%", "")); percent > 0) {
        crvReport.setZoom(static_cast<int>(percent));
    }
}

void frmReportViewer::Print() {
    if (askPrinter()) PrintPages();
}

/// On the printer, with the pages and copies that were chosen last.
void frmReportViewer::PrintPages() {
    const PrinterChoice choice = takePrinterChoice();
    const PrintJob job{choice.printer, choice.fromPage, choice.toPage, choice.copies, {}};
    TaskProgress progress("Printing " + report_->title());
    report_->print(job, [&](int done, int all) { return progress.step(done, all); });
}

void frmReportViewer::mnuOpen_Click() {
    if (!crvReport.openMarked()) {
        MsgBox("No document stands behind this place. Mark a row by a click or by a search first.", Icon::Information);
    }
}

void frmReportViewer::mnu_export_Click(std::string_view Kind) {
    const auto path =
        askSaveFile("Export to Excel", options_.ReportCaption + ".xlsx",
                    {"Excel Files (*.xlsx)|*.xlsx|Excel Files (*.xls)|*.xls|All Files (*.*)|*.*", "xlsx"});
    if (path) SaveExcel(*path, Kind);
}

void frmReportViewer::SaveExcel(const std::string& Path, std::string_view Kind) {
    TaskProgress progress("Writing " + fileNameOf(Path));
    report_->saveXlsx(Path, Kind == "8T" ? XlsxKind::Tabular : XlsxKind::Report,
                      [&](int done, int all) { return progress.step(done, all); });
}

void frmReportViewer::mnuCSV_Click() {
    const auto path = askSaveFile("Export to CSV", options_.ReportCaption + ".csv",
                                  {"Comma Separated Values (*.csv)|*.csv|All Files (*.*)|*.*", "csv"});
    if (path) SaveCSV(*path);
}

void frmReportViewer::SaveCSV(const std::string& Path) {
    if (Path.empty()) return;
    if (options_.ExportFileReport) {
        SaveTextFile(Path);
    } else {
        report_->saveCsv(Path);
    }
}

void frmReportViewer::SaveTextFile(const std::string& Path) {
    writeTextFile(Path, exportText(session_.cn().Open(options_.ExportQuery)));
    MsgBox("File saved as " + Path + ".");
}

void frmReportViewer::savePages(std::string_view title, std::string_view ending) {
    const std::string dotted = "." + std::string(ending);
    const auto path = askSaveFile(title, options_.ReportCaption + dotted,
                                  {"*" + dotted + "|*" + dotted + "|All Files (*.*)|*.*", std::string(ending)});
    if (!path) return;
    if (ending == "pdf") {
        TaskProgress progress("Writing " + fileNameOf(*path));
        if (!report_->savePdf(*path, [&](int done, int all) { return progress.step(done, all); })) return;
    } else {
        writeTextFile(*path, report_->text());
    }
    MsgBox("The report has been saved to " + *path + ".", Icon::Information);
}

}  // namespace kv
