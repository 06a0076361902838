#pragma once
// frmCenter: the home view in the shell's middle: hospital and user, how far each book is, what waits today.

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmCenter : public Form {
public:
    explicit frmCenter(Session& session);

    Label lblCompany{*this, "lblCompany"};
    Label lblUser{*this, "lblUser"};
    Label lblPrepared{*this, "lblPrepared"};
    ListView lvwBooks{*this, "lvwBooks"};
    ListView lvwWaiting{*this, "lvwWaiting"};
    CommandButton cmdRefresh{*this, "cmdRefresh", "&Refresh", "view-refresh"};

protected:
    void Form_Load() override;
    void Form_Activate() override {
        run("Form_Activate", [this] { ShowState(); });
    }

private:
    void ShowState();

    Session& session_;
};

}  // namespace kv
