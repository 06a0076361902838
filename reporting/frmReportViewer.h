#pragma once
// frmReportViewer: shows the session's current report: pages, search, zoom, printing and exports.

#include "platform/forms/Form.h"
#include "platform/print/ReportView.h"
#include "reporting/ReportFrame.h"

namespace kv {

class Session;

class frmReportViewer : public Form {
public:
    frmReportViewer(Session& session, ViewerOptions options);

    ReportView crvReport{*this, "crvReport"};
    TextBox txtFind{*this, "txtFind"};
    Label lblPage{*this, "lblPage"};
    Label lblFound{*this, "lblFound"};
    CommandButton cmdFirst{*this, "cmdFirst", "", "go-first"};
    CommandButton cmdPrevious{*this, "cmdPrevious", "", "go-previous"};
    CommandButton cmdNext{*this, "cmdNext", "", "go-next"};
    CommandButton cmdLast{*this, "cmdLast", "", "go-last"};
    ComboBox cboZoom{*this, "cboZoom"};
    CommandButton cmdPrint{*this, "cmdPrint", "&Print", "document-print"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

    MenuItem mnuPrint{*this, "mnuPrint", "&Print...", "document-print", "Ctrl+P"};
    MenuItem mnu_export{*this, "mnu_export", "Export to &Excel", "document-export"};
    MenuItem mnuXlsx{*this, "mnuXlsx", "Export to Excel, &tabular...", "document-export"};
    MenuItem mnuCSV{*this, "mnuCSV", "Export to &CSV", "document-export"};
    MenuItem mnuPDF{*this, "mnuPDF", "Save as P&DF...", "document-save"};
    MenuItem mnuText{*this, "mnuText", "Save as &Text...", "document-save"};
    MenuItem mnuOpen{*this, "mnuOpen", "&Open the document of the marked row", "document-edit", "Ctrl+Return"};
    MenuItem mnuCopy{*this, "mnuCopy", "C&opy", "edit-copy", "Ctrl+C"};
    MenuItem mnuClose{*this, "mnuClose", "C&lose", "document-close"};

    const std::string& ReportCaption() const { return options_.ReportCaption; }
    Report& report() const { return *report_; }

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void SaveExcel(const std::string& Path, std::string_view Kind);
    void SaveCSV(const std::string& Path);
    void SaveTextFile(const std::string& Path);
    void mnu_export_Click(std::string_view Kind);
    void mnuCSV_Click();
    void savePages(std::string_view title, std::string_view ending);
    void Print();
    void PrintPages();
    void mnuOpen_Click();
    void ShowPage();
    void Find(bool forward);
    void cboZoom_Change();
    void connect();
    void arrange();

    Session& session_;
    ViewerOptions options_;
    std::shared_ptr<Report> report_;
};

}  // namespace kv
