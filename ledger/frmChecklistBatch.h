#pragma once
// frmChecklistBatch: marks ticked batches of the open book posted or unposted.

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmChecklistBatch : public Form {
public:
    explicit frmChecklistBatch(Session& session);

    void PostBatches();
    void UnpostBatches(std::string_view Period);

    ListView lvwList{*this, "lvwList"};
    CheckBox chkAll{*this, "chkAll", "Select &All"};
    CommandButton cmdPost{*this, "cmdPost", "&Post"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override { LoadList(); }

private:
    void LoadList();
    void cmdPost_Click();

    Session& session_;
    std::string period_;  ///< empty: posts
};

}  // namespace kv
