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
    MenuItem mnuBegBal0{*this, "mnuBegBal0", "&Beginning Balances of a Year", "document-edit"};
    MenuItem mnuBegBalPeriod{*this, "mnuBegBalPeriod", "Beginning Balances of a &Period", "document-edit"};
    MenuItem mnuBegBal1{*this, "mnuBegBal1", "Post &Forwarded Balances", "go-next"};
    MenuItem mnuBegBal2{*this, "mnuBegBal2", "&Year End Closing", "object-locked"};
    MenuItem mnuBegBal3{*this, "mnuBegBal3", "Post Beginning Balances to &GL", "go-next"};
    MenuItem mnuBegBalReport{*this, "mnuBegBalReport", "Print Beginning B&alances", "office-report"};
    MenuItem mnuGLReport{*this, "mnuGLReport", "Print General &Ledger of a Year", "office-report"};
    MenuItem mnuCloseCockpit{*this, "mnuCloseCockpit", "Close Coc&kpit", "view-pim-tasks", "Ctrl+B"};
    MenuItem mnuClose{*this, "mnuClose", "C&lose", "document-close"};

    void Form_Rights() override;

protected:
    void Form_Load() override;

private:
    MenuSpec buildReports();
    void ApplyParameters();
    void ShowState();
    void OpenPeriod(int mode);
    void OpenYear(int mode);
    void tbrGL_ButtonClick(const std::string& key);

    Session& session_;
    std::vector<std::unique_ptr<MenuItem>> reports_;  ///< an entry for each row of the statement table
};

}  // namespace kv
