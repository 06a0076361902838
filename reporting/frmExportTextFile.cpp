#include "reporting/frmExportTextFile.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Paths.h"
#include "platform/forms/Dialogs.h"
#include "reporting/TextExport.h"

namespace kv {
namespace {

constexpr const char* kOverwrite = "A file has already been created for this report. Overwrite the existing file?";

}  // namespace

frmExportTextFile::frmExportTextFile(Session& session)
    : Form("frmExportTextFile", "Export Text File"), session_(session) {
    lblFileName.look(Label::Look::Hint);
    cmdDownload.primary();
    cmdDownload.onClick = [this] { cmdDownload_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({lblFileName, expand(txtData), buttons({cmdDownload, cmdClose})}));
    setSize(820, 520);
    setFirstFocus(cmdDownload);
}

void frmExportTextFile::ShowDialog(std::string_view Query, std::string_view FileName) {
    query_ = Query;
    fileName_ = FileName;
    lblFileName.setText(fileName_);
    ShowModal();
}

void frmExportTextFile::Form_Load() {
    const Hourglass busy;
    LoadData();
}

void frmExportTextFile::LoadData() {
    data_.clear();
    cmdDownload.setEnabled(false);  // until the statement has gone through
    data_ = gluedText(session_.cn().Open(query_));
    txtData.setText(data_);
    cmdDownload.setEnabled(true);
}

void frmExportTextFile::cmdDownload_Click() {
    const std::string proposed = buildPath(Module3::getPathToDesktop(), fileName_);
    FileFilter filter{"All Files (*.*)|*.*", ""};
    filter.callerAsksToOverwrite = true;
    const auto path = askSaveFile("Save File", proposed, filter);
    if (!path || path->empty()) return;
    if (fileExists(*path) && !Ask(kOverwrite, kProgramTitle, Icon::Question, false)) return;
    writeTextFile(*path, data_);
    MsgBox("The report has been saved to " + *path + ".");
}

}  // namespace kv
