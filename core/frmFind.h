#pragma once
// frmFind: find anything: one line to type, below it what it may mean, Enter opens it.

#include "core/FindSources.h"
#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class frmFind : public Form {
public:
    explicit frmFind(Session& session);

    /// What was chosen.
    struct Choice {
        bool made = false;
        MenuSource menu;                       ///< a menu entry, when `record` is nullptr
        const RecordSource* record = nullptr;  ///< a record
        std::string key;
    };
    /// What was opened last is remembered in the session.
    Choice ShowDialog();

    TextBox txtFind{*this, "txtFind"};
    ListView lvwFound{*this, "lvwFound"};
    Label lblFound{*this, "lblFound"};
    CommandButton cmdOpen{*this, "cmdOpen", "&Open"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override;

private:
    void Search();
    void ShowEntries(const std::vector<std::size_t>& entries);
    std::vector<std::size_t> recentEntries() const;
    std::string nameOf(std::size_t entry) const;
    void txtFind_KeyDown(const std::string& key, bool& handled);
    void cmdOpen_Click();

    Session& session_;
    std::vector<MenuSource> menus_;
    Finder finder_;
    Choice choice_;
};

}  // namespace kv
