#pragma once
// frmExportTextFile: the output of a statement as a plain text file, shown before it is saved.

#include <string>

#include "platform/forms/Form.h"

namespace kv {

class Session;

class frmExportTextFile : public Form {
public:
    explicit frmExportTextFile(Session& session);

    /// Shows the rows of the statement; `FileName` is proposed for the file, on the desktop where there is one.
    void ShowDialog(std::string_view Query, std::string_view FileName);

    Label lblFileName{*this, "lblFileName"};
    RichText txtData{*this, "txtData"};
    CommandButton cmdDownload{*this, "cmdDownload", "&Download...", "document-save"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override;

private:
    void LoadData();
    void cmdDownload_Click();

    Session& session_;
    std::string query_, fileName_;
    std::string data_;  ///< what is saved, byte by byte
};

}  // namespace kv
