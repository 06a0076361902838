#pragma once
// frmBuildAcct: the chart of accounts: the tree of its groups, and the accounts and groups below the chosen node.

#include "ledger/ChartTree.h"
#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmBuildAcct : public Form {
public:
    explicit frmBuildAcct(Session& session);

    TreeView tvwChart{*this, "tvwChart"};
    Label lblHint{*this, "lblHint", "Drag an account onto a group to move it, or press Ctrl+M."};
    TextBox txtSearch{*this, "txtSearch"};
    Label lblCount{*this, "lblCount"};
    ListView lvwChart{*this, "lvwChart"};
    CommandButton cmdOption0{*this, "cmdOption0", "&Close", "document-close"};
    CommandButton cmdAccount{*this, "cmdAccount", "&New Account", "list-add"};
    CommandButton cmdOpen{*this, "cmdOpen", "&Open", "document-edit"};

    MenuItem mnuNewGroup{*this, "mnuNewGroup", "New &Group...", "folder", "Ctrl+G"};
    MenuItem mnuNewAccount{*this, "mnuNewAccount", "New &Account...", "list-add", "Ctrl+N"};
    MenuItem mnuEditGroup{*this, "mnuEditGroup", "&Edit Group...", "document-edit"};
    MenuItem mnuMove{*this, "mnuMove", "&Move to Another Group...", "go-next", "Ctrl+M"};
    MenuItem mnuClassification{*this, "mnuClassification", "&Classification...", "view-list-details"};
    MenuItem mnuSearch{*this, "mnuSearch", "&Search...", "edit-find", "Ctrl+F"};
    MenuItem mnuImport{*this, "mnuImport", "&Import...", "document-import"};
    MenuItem mnuClose{*this, "mnuClose", "C&lose", "document-close"};
    MenuItem mnuPrint{*this, "mnuPrint", "&Chart by Group", "document-print", "Ctrl+P"};
    MenuItem mnuPrintIncome{*this, "mnuPrintIncome", "&Income and Expense Accounts"};
    MenuItem mnuPrintList{*this, "mnuPrintList", "&List of Accounts"};

protected:
    void Form_Load() override;

private:
    void lay();
    void LoadTree();
    void showNode();
    void RefreshAccountList(const std::string& condition);
    void RefreshGroupList(const std::string& node);
    void addGroups(std::vector<ListView::Item>& items, const std::string& node) const;
    void addAccounts(std::vector<ListView::Item>& items, const std::string& condition);
    void fill(std::vector<ListView::Item> items);
    void reload(const std::string& keyToSelect);
    const ChartGroup* group(std::string_view code) const;

    void lvwChart_DblClick(int row);
    void tvwChart_DragDrop(const std::string& dragged, const std::string& target);
    void MoveAccount(const std::string& code, const std::string& toGroup);
    void openGroup(const std::string& code);
    void openAccount(const std::string& code);
    void mnuNewGroup_Click();
    void mnuNewAccount_Click();
    void mnuMove_Click();
    void mnuSearch_Click();
    void print(const char* file, const char* caption);

    Session& session_;
    std::vector<ChartGroup> groups_;
};

}  // namespace kv
