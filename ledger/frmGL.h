#pragma once
// frmGL: the shell of the general ledger: preparation, periods, statements.

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmGL : public Form {
public:
    explicit frmGL(Session& session);

    Label Label1{*this, "Label1", "General Ledger"};
    Label lblPrepared{*this, "lblPrepared"};
    Toolbar tbrGL{*this, "tbrGL"};
    ListView lvwBooks{*this, "lvwBooks"};

    MenuItem mnuEnter{*this, "mnuEnter", "&Financial Report Preparation", "media-playback-start", "Ctrl+R"};
    MenuItem mnuGeneral{*this, "mnuGeneral", "Pe&riods"};
    MenuItem mnuGeneral_0{*this, "mnuGeneral_0", "&Set GL Period", "view-calendar"};
    MenuItem mnuGeneral_1{*this, "mnuGeneral_1", "&Open a Closed Book", "object-unlocked"};
    MenuItem mnuClose{*this, "mnuClose", "C&lose", "document-close"};

    void Form_Rights() override;

protected:
    void Form_Load() override;

private:
    MenuSpec buildReports();
    void ApplyParameters();
    void ShowState();
    void OpenPeriod(int mode);
    void tbrGL_ButtonClick(const std::string& key);

    Session& session_;
    std::vector<std::unique_ptr<MenuItem>> reports_;  ///< an entry for each row of the statement table
};

}  // namespace kv
