#include "ledger/frmBuildAcct.h"

#include <algorithm>

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/AccountRecord.h"
#include "ledger/LookupClass.h"
#include "ledger/MasterFiles.h"
#include "ledger/frmBuildAcct_2.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/MasterForm.h"
#include "reporting/ReportFrame.h"
#include "reporting/frmSearch.h"

namespace kv {
namespace {

constexpr const char* kAccountKey = "A-";

std::string accountOfKey(std::string_view key) {
    return key.starts_with(kAccountKey) ? std::string(key.substr(2)) : std::string();
}

}  // namespace

frmBuildAcct::frmBuildAcct(Session& session) : Form("frmBuildAcct", "Chart of Accounts"), session_(session) {
    tvwChart.setDragging(true);
    tvwChart.setHelp("Type, class and group. Enter edits a group; an account of the list can be dragged onto one.");
    tvwChart.onNodeClick = [this](const std::string&) { showNode(); };
    tvwChart.onDblClick = [this](const std::string& key) {
        if (const std::string code = groupOfNode(key); !code.empty()) openGroup(code);
    };
    tvwChart.onDrop = [this](const std::string& dragged, const std::string& target) {
        tvwChart_DragDrop(dragged, target);
    };
    txtSearch.placeholder("Type to narrow the list");
    txtSearch.onChange = [this] { lvwChart.filter(txtSearch.text()); };
    txtSearch.onKeyDown = [this](const std::string& key, bool& handled) {
        handled = key == "Down";
        if (handled) lvwChart.setFocus();
    };
    lblHint.look(Label::Look::Hint);
    lblCount.look(Label::Look::Hint);
    lvwChart.rows(18);
    lvwChart.setDragging(true);
    lvwChart.setColumns({{"Code", 14}, {"Description", 42, Align::Left, true}, {"Type", 8}, {"Dept.", 8}, {"Use", 14}});
    lvwChart.setHelp("Enter opens the account or group, Ctrl+M moves an account to another group.");
    lvwChart.onDblClick = [this](int row) { lvwChart_DblClick(row); };
    cmdOption0.cancels();
    cmdOption0.onClick = [this] { Unload(); };
    cmdAccount.onClick = [this] { mnuNewAccount_Click(); };
    cmdOpen.onClick = [this] {
        if (lvwChart.selected() >= 0) lvwChart_DblClick(lvwChart.selected());
    };
    mnuNewGroup.onClick = [this] { mnuNewGroup_Click(); };
    mnuNewAccount.onClick = [this] { mnuNewAccount_Click(); };
    mnuEditGroup.onClick = [this] {
        if (const std::string code = groupOfNode(tvwChart.selectedKey()); !code.empty()) openGroup(code);
    };
    mnuMove.onClick = [this] { mnuMove_Click(); };
    mnuClassification.onClick = [this] { session_.screens.showModal(session_, "frmBuildAcctClass"); };
    mnuSearch.onClick = [this] { mnuSearch_Click(); };
    mnuImport.onClick = [this] {
        session_.screens.showModal(session_, "frmImportMasters");
        reload({});
    };
    mnuClose.onClick = [this] { Unload(); };
    mnuPrint.onClick = [this] { print("AcctCodes.rpt", "Chart of Accounts"); };
    mnuPrintIncome.onClick = [this] { print("AcctCodesIncome.rpt", "Income and Expense Accounts"); };
    mnuPrintList.onClick = [this] { print("AcctCodesList.rpt", "List of Accounts"); };
    lay();
}

void frmBuildAcct::lay() {
    setMenu({{"C&hart",
              {mnuNewGroup, mnuNewAccount, nullptr, mnuEditGroup, mnuMove, nullptr, mnuClassification, mnuSearch,
               mnuImport, nullptr, mnuClose}},
             {"&Print", {mnuPrint, mnuPrintIncome, mnuPrintList}}});
    setLayout(column({expand(split(column({expand(tvwChart), lblHint}),
                                   column({row({expand(txtSearch), lblCount}), expand(lvwChart)}))),
                      row({cmdAccount, cmdOpen, stretch(), cmdOption0})}));
    setIcon("view-list-tree");
    setSize(1080, 680);
    setFirstFocus(tvwChart);
}

void frmBuildAcct::Form_Load() {
    LoadTree();
    tvwChart.select(kAllNode);
    showNode();
}

void frmBuildAcct::LoadTree() {
    groups_ = chartGroups(session_.cn().Open("select * from glgroup order by GLGroup"));
    tvwChart.clear();
    for (const ChartNode& node : chartNodes()) tvwChart.addNode(node.parent, node.key, node.text, "folder");
    for (const ChartGroup& one : groups_) tvwChart.addNode(parentNode(one), one.key(), one.text(), "view-list-text");
    for (const ChartNode& node : chartNodes()) tvwChart.expand(node.key);
}

// ---- the list ----------------------------------------------------------------------------------------------------

void frmBuildAcct::showNode() {
    const std::string node = tvwChart.selectedKey();
    mnuEditGroup.setEnabled(!groupOfNode(node).empty());
    if (node == kAllNode) return RefreshAccountList("");
    if (node == kNoGroupNode) return RefreshAccountList(" where isnull(GLGroup, '') = ''");
    RefreshGroupList(node);
}

void frmBuildAcct::RefreshAccountList(const std::string& condition) {
    std::vector<ListView::Item> items;
    addAccounts(items, condition);
    fill(std::move(items));
}

/// The groups right below the node, and behind them the accounts of the node's own group.
void frmBuildAcct::RefreshGroupList(const std::string& node) {
    std::vector<ListView::Item> items;
    addGroups(items, node);
    const std::string code = groupOfNode(node);
    if (!code.empty()) addAccounts(items, sql(" where GLGroup = '{}'").text(code).str());
    fill(std::move(items));
}

/// Types show the groups of all their classes.
void frmBuildAcct::addGroups(std::vector<ListView::Item>& items, const std::string& node) const {
    for (const ChartGroup& one : groups_) {
        const std::string parent = parentNode(one);
        const bool below = parent == node || (node.size() == 2 && parent.size() == 3 && parent.starts_with(node));
        if (!below) continue;
        ListView::Item item{one.key(), {one.group, one.description, one.type, "", "group"}};
        item.icon = "folder";
        items.push_back(std::move(item));
    }
}

void frmBuildAcct::addAccounts(std::vector<ListView::Item>& items, const std::string& condition) {
    const Recordset rows = session_.cn().Open("select Code, Description, Type, Subsidiary, Mast_Dept from AcctCode" +
                                              condition + " order by Code");
    for (const Row& row : rows.rows()) {
        const bool master = row[4].text() == "MAS";
        items.push_back({kAccountKey + row[0].text(),
                         {row[0].text(), row[1].text(), row[2].text(), row[3].integer() == 1 ? "yes" : "",
                          master ? "reporting only" : "posting"}});
        items.back().dim = master;
    }
}

void frmBuildAcct::fill(std::vector<ListView::Item> items) {
    lblCount.setText(std::to_string(items.size()) + (items.size() == 1 ? " entry" : " entries"));
    lvwChart.setItems(std::move(items));
    lvwChart.filter(txtSearch.text());
}

/// Reads the tree again and stays at its node.
void frmBuildAcct::reload(const std::string& keyToSelect) {
    const std::string node = tvwChart.selectedKey();
    LoadTree();
    tvwChart.select(tvwChart.has(node) ? node : std::string(kAllNode));
    showNode();
    if (const int row = lvwChart.find(keyToSelect); row >= 0) lvwChart.select(row);
}

const ChartGroup* frmBuildAcct::group(std::string_view code) const {
    const auto found =
        std::find_if(groups_.begin(), groups_.end(), [&](const ChartGroup& one) { return one.group == code; });
    return found == groups_.end() ? nullptr : &*found;
}

// ---- what is done to them ----------------------------------------------------------------------------------------

void frmBuildAcct::lvwChart_DblClick(int row) {
    const std::string key = lvwChart.item(row).key;
    if (const std::string code = groupOfNode(key); !code.empty()) return openGroup(code);
    openAccount(accountOfKey(key));
}

void frmBuildAcct::openGroup(const std::string& code) {
    MasterForm editor(session_, glGroupFile());
    editor.startWith({code});
    editor.ShowModal();
    reload("G-" + code);
}

void frmBuildAcct::openAccount(const std::string& code) {
    frmBuildAcct_2 editor(session_);
    if (!editor.Edit(code)) return reload({});
    editor.ShowModal();
    reload(kAccountKey + code);
}

/// A new group starts where the tree stands.
void frmBuildAcct::mnuNewGroup_Click() {
    const std::string node = tvwChart.selectedKey();
    MasterValues values;
    if (const ChartGroup* above = group(groupOfNode(node))) {
        values = {{"cboType", above->type}, {"cboClass", above->groupClass}, {"txtMainGroup", above->group}};
    } else if (node != kAllNode && node != kNoGroupNode) {
        values = {{"cboType", node.substr(0, 2)}, {"cboClass", node.substr(2)}};
    }
    MasterForm editor(session_, glGroupFile());
    editor.startWithNew(std::move(values));
    editor.ShowModal();
    reload(editor.savedKey().empty() ? std::string() : "G-" + editor.savedKey().front());
}

void frmBuildAcct::mnuNewAccount_Click() {
    frmBuildAcct_2 editor(session_);
    editor.Add(groupOfNode(tvwChart.selectedKey()));
    editor.ShowModal();
    reload(kAccountKey + editor.SavedCode());
}

void frmBuildAcct::tvwChart_DragDrop(const std::string& dragged, const std::string& target) {
    const std::string code = accountOfKey(dragged);
    const std::string toGroup = groupOfNode(target);
    if (code.empty() || toGroup.empty()) {
        MsgBox("Only an account can be moved, and only to a group.", Icon::Information);
        return;
    }
    MoveAccount(code, toGroup);
}

void frmBuildAcct::mnuMove_Click() {
    const std::string code = accountOfKey(lvwChart.selectedKey());
    if (code.empty()) {
        MsgBox("Please select the account that is to be moved.", Icon::Information);
        return;
    }
    clsGLGroup groups(session_);
    if (groups.Validate("")) MoveAccount(code, groups.GLGroup);
}

void frmBuildAcct::MoveAccount(const std::string& code, const std::string& toGroup) {
    const ChartGroup* to = group(toGroup);
    AccountRecord account = loadAccount(session_.cn(), code);
    if (!to || account.code.empty() || account.group == toGroup) return reload(kAccountKey + code);
    if (account.subsidiary == 1 && to->type != "IN" && to->type != "EX") {
        MsgBox("Departments can be set for income and expense accounts only.", Icon::Exclamation);
        return;
    }
    if (!Ask("Are you sure you want to move Acct. # '" + code + "' " + account.description + " to group " + to->text() +
                 " ?",
             "Warning!", Icon::Exclamation, false)) {
        return;
    }
    account.group = toGroup;
    Transaction move(session_.cn());
    logAccount(session_, code);
    session_.cn().Execute(updateStatement(account));
    move.commit();
    reload(kAccountKey + code);
}

void frmBuildAcct::mnuSearch_Click() {
    frmSearch dialog(session_);
    dialog.SearchCaption = "Account Codes";
    dialog.Query =
        "select Description [Account Title], Code, Type, GLGroup from AcctCode where (Description like '%##%' or Code "
        "like '##%') order by Description";
    if (!dialog.ShowDialog()) return;
    const AccountRecord account = loadAccount(session_.cn(), dialog.Code());
    const std::string node = "G-" + account.group;
    tvwChart.select(tvwChart.has(node) ? node : std::string(kAllNode));
    txtSearch.setText("");
    showNode();
    lvwChart.select(lvwChart.find(kAccountKey + dialog.Code()));
    lvwChart.setFocus();
}

void frmBuildAcct::print(const char* file, const char* caption) {
    if (module1::OpenMainReport(session_, module1::ReportPath(session_, file),
                                {session_.Sys.Company, session_.Sys.Address1})) {
        module1::ShowReportViewer(session_, {.ReportCaption = caption});
    }
}

}  // namespace kv
