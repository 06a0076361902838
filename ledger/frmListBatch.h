#pragma once
// frmListBatch: the unposted batches of the open book, to enter a new one, edit or drop one.

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmListBatch : public Form {
public:
    explicit frmListBatch(Session& session);

    TextBox txtSearch{*this, "txtSearch"};
    ListView lvwList{*this, "lvwList"};
    Label lblTotal{*this, "lblTotal"};
    CommandButton cmdNew{*this, "cmdNew", "&New", "document-new"};
    CommandButton cmdEdit{*this, "cmdEdit", "&Edit", "document-edit"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override;

private:
    void LoadList();
    void ShowCount();
    void cmdNew_Click();
    void cmdEdit_Click();

    Session& session_;
};

}  // namespace kv
