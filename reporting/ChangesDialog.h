#pragma once
// ChangesDialog: what a save is about to change, each with its value now and then, before it is done.

#include <string>
#include <vector>

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

struct Change {
    std::string What, Before, After;
};

class frmChanges : public Form {
public:
    /// `subject` is what is saved, "Program Settings".
    explicit frmChanges(const std::string& subject);
    /// True when the user wants the save.
    bool ShowDialog(const std::vector<Change>& changes);

    Label lblCount{*this, "lblCount"};
    ListView lvwChanges{*this, "lvwChanges"};
    CommandButton cmdOption0{*this, "cmdOption0", "&Save", "document-save"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Back"};

private:
    bool confirmed_ = false;
};

}  // namespace kv
