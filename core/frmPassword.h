#pragma once
// frmPassword: the lock before the settings screens.

#include "platform/forms/Form.h"

namespace kv {

class Session;

class frmPassword : public Form {
public:
    explicit frmPassword(Session& session);

    TextBox txtPassword{*this, "txtPassword"};
    CommandButton cmdOK{*this, "cmdOK", "&OK"};
    CommandButton cmdCancel{*this, "cmdCancel", "&Cancel"};

private:
    void txtPassword_Validate(bool& Cancel);
    void cmdOK_Click();

    Session& session_;
};

}  // namespace kv
