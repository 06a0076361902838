#pragma once
// frmImportMasters: brings a CSV file into a master file, after a preview that names each bad row.

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"
#include "reporting/MasterImport.h"

namespace kv {

class Session;

class frmImportMasters : public Form {
public:
    explicit frmImportMasters(Session& session);

    ComboBox cboKind{*this, "cboKind"};
    TextBox txtFile{*this, "txtFile"};
    CommandButton cmdFile{*this, "cmdFile", "&Choose...", "folder-open"};
    CheckBox chkReplace{*this, "chkReplace", "&Replace rows whose code exists already"};
    Label lblColumns{*this, "lblColumns"};
    Label lblSummary{*this, "lblSummary"};
    CheckBox chkBad{*this, "chkBad", "&Bad rows only"};
    ListView lvwPreview{*this, "lvwPreview"};
    ProgressBar prgImport{*this, "prgImport"};
    CommandButton cmdImport{*this, "cmdImport", "&Import", "document-import"};
    CommandButton cmdClose{*this, "cmdClose", "C&lose", "document-close"};

protected:
    void Form_Load() override;

private:
    const ImportKind* kind() const;
    void cboKind_Change();
    void cmdFile_Click();
    void cmdImport_Click();
    void Preview();
    void showPreview();
    void clear();

    Session& session_;
    std::string bytes_;  ///< of the chosen file, as the preview saw it
    ImportPreview preview_;
};

}  // namespace kv
