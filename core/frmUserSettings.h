#pragma once
// frmUserSettings: which rights of the accounting system a user has.

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmUserSettings : public Form {
public:
    explicit frmUserSettings(Session& session);

    TextBox txtUserID{*this, "txtUserID"};
    TextBox txtUser{*this, "txtUser"};
    ListView lvwAccess{*this, "lvwAccess"};
    CommandButton cmdGrant{*this, "cmdGrant", "&Grant All"};
    CommandButton cmdDeny{*this, "cmdDeny", "&Deny All"};
    CommandButton cmdSave{*this, "cmdSave", "&Save", "document-save"};
    CommandButton cmdIgnore{*this, "cmdIgnore", "&Ignore"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override;

private:
    void txtUserID_Validate(bool& Cancel);
    void LoadUserAccess();
    void cmdSave_Click();
    void cmdIgnore_Click();
    void cmdClose_Click();
    void SaveAccess();
    void LogSaved();
    void ClearForm();

    Session& session_;
};

}  // namespace kv
