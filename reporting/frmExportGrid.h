#pragma once
// frmExportGrid: the rows of a statement in a list, for the clipboard or a CSV file.

#include <string>
#include <vector>

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmExportGrid : public Form {
public:
    explicit frmExportGrid(Session& session);

    void ShowDialog(std::string_view ReportCaption, std::string_view Query);

    Label lblReportCaption{*this, "lblReportCaption"};
    ListView grdData{*this, "grdData"};
    Label lblTotal{*this, "lblTotal"};
    CommandButton cmdCopy{*this, "cmdCopy", "C&opy", "edit-copy"};
    CommandButton cmdSaveAs{*this, "cmdSaveAs", "&Save as CSV", "document-save"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override;

private:
    /// Headings and rows, in the order in which they are shown.
    std::string GetTextFromGrid(bool ForFile) const;
    void cmdCopy_Click();
    void cmdSaveAs_Click();
    void SaveFile(const std::string& Path);

    Session& session_;
    std::string query_;
    std::string caption_;
};

}  // namespace kv
