#include "ledger/frmBuildAcct_2.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/LookupClass.h"
#include "ledger/MasterFiles.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSearchVend.h"

namespace kv {
namespace {

constexpr const char* kMaster = "MAS";

std::optional<FoundCode> lookUpVendor(Session& session, std::string_view text) {
    const Recordset row = session.cn().Open(sql("Select VendorID, Company from Vend where VendorID = '{}'").text(text));
    if (!row.eof()) return FoundCode{row["VendorID"].text(), row["Company"].text()};
    frmSearchVend dialog(session);
    dialog.Query = "select Vendor [Description], VendorID [Code] from vwVENDOR where Vendor like '##%' order by Vendor";
    if (!dialog.ShowDialog(text)) return std::nullopt;
    return FoundCode{dialog.Code(), dialog.Title()};
}

std::vector<MasterChoice> choicesOf(Session& session, const char* statement) {
    std::vector<MasterChoice> choices = {{"", "(none)"}};
    const Recordset rows = session.cn().Open(statement);
    for (const Row& row : rows.rows()) choices.push_back({row.at(0).text(), row.at(1).text()});
    return choices;
}

std::vector<MasterField> accountFields(Session& session) {
    return {
        {.control = "txtAcctCode", .caption = "&Account code:", .kind = MasterKind::Code, .length = 15},
        {.control = "txtDescription", .caption = "&Title:", .length = 100},
        {.control = "txtGroup",
         .caption = "Schedule &group:",
         .kind = MasterKind::Lookup,
         .length = 10,
         .lookup = lookUpMaster<clsGLGroup>,
         .button = "cmdGroup",
         .help = "The group gives the account its type and its place in the statements. F2 searches."},
        {.control = "cboSubsidiary",
         .caption = "S&ubsidiary:",
         .kind = MasterKind::Choice,
         .standard = "0",
         .choices = {{"0", "0 - NONE"}, {"1", "1 - DEPARTMENTS"}},
         .help = "1 - DEPARTMENTS asks for a cost center on each line; income and expense accounts only."},
        {.control = "txtDefaultDept",
         .caption = "Default d&ept.:",
         .kind = MasterKind::Lookup,
         .length = 10,
         .lookup = lookUpMaster<clsCostCenter>,
         .button = "cmdDefaultDept",
         .help = "The cost center that a line is proposed. F2 searches."},
        {.control = "txtVendorID",
         .caption = "&Vendor:",
         .kind = MasterKind::Lookup,
         .length = 15,
         .lookup = lookUpVendor,
         .button = "cmdVend",
         .help = "A vendor that this account stands for. F2 searches."},
        {.control = "cboBudget",
         .caption = "&Budget class:",
         .kind = MasterKind::Choice,
         .choices = choicesOf(session,
                              "select distinct BudgetClassID, BudgetClassID from AcctCode where "
                              "isnull(BudgetClassID, '') <> '' order by BudgetClassID")},
        {.control = "cmbClass",
         .caption = "&Classification:",
         .kind = MasterKind::Choice,
         .choices = choicesOf(session,
                              "select ClassID, Classification from AcctCodeClass where Status = 'A' order by "
                              "Classification")},
    };
}

}  // namespace

frmBuildAcct_2::frmBuildAcct_2(Session& session)
    : Form("frmBuildAcct_2", "GL Accounts"), session_(session), fields_(accountFields(session)) {
    makeInputs();
    optPosting.setHelp("The account takes lines.");
    optReportingOnly.setHelp("The account only heads others and takes no lines.");
    cmdDelete.onClick = [this] { cmdDelete_Click(); };
    cmdDelete.setCausesValidation(false);
    cmdOpt_0.primary();
    cmdOpt_0.onClick = [this] { cmdOpt_0_Click(); };
    cmdOpt_1.cancels();
    cmdOpt_1.onClick = [this] { cmdOpt_1_Click(); };
    std::vector<FieldRow> rows;
    for (const auto& one : inputs_) rows.push_back(one->row());
    rows.emplace_back("Use:", std::initializer_list<Layout>{optPosting, optReportingOnly, stretch()});
    setLayout(column({fields(rows), stretch(), row({cmdDelete, stretch(), cmdOpt_0, cmdOpt_1})}));
    setIcon("view-list-tree");
    setSize(720, 460);
    Add({});
}

void frmBuildAcct_2::makeInputs() {
    for (const MasterField& field : fields_) {
        inputs_.push_back(std::make_unique<MasterInput>(*this, session_, field));
    }
    input("txtAcctCode").onLeave = [this](bool& cancel) { txtAcctCode_Validate(cancel); };
    input("cboSubsidiary").onLeave = [this](bool& cancel) { cboSubsidiary_Validate(cancel); };
}

MasterInput& frmBuildAcct_2::input(std::string_view control) const {
    for (const auto& one : inputs_) {
        if (one->field().control == control) return *one;
    }
    throw Error(kErrObjectMissing, "frmBuildAcct_2", "There is no field " + std::string(control) + ".");
}

std::string frmBuildAcct_2::value(std::string_view control) const { return input(control).value(); }

void frmBuildAcct_2::Add(std::string_view Group) {
    clsGLGroup group(session_);
    if (!Group.empty()) group.Search(Group);
    AccountRecord account;
    account.group = group.GLGroup;
    account.groupName = group.Description;
    watch_.watchNew();
    LoadAcct(account);
    setFirstFocus(input("txtAcctCode").control());
}

bool frmBuildAcct_2::Edit(std::string_view Code) {
    const Recordset row = session_.cn().Open(loadStatement(Code));
    if (row.eof()) {
        MsgBox("Account '" + std::string(Code) + "' is no longer there: it was deleted at another workstation.",
               Icon::Exclamation);
        return false;
    }
    watch_.watch(loadStatement(Code), row.rows().front());
    LoadAcct(accountOfRow(row));
    setFirstFocus(input("txtDescription").control());
    return true;
}

void frmBuildAcct_2::LoadAcct(const AccountRecord& account) {
    const auto show = [this](const char* control, const std::string& text, const std::string& name = {}) {
        input(control).show(text, name);
    };
    show("txtAcctCode", account.code);
    show("txtDescription", account.description);
    show("txtGroup", account.group, account.groupName);
    show("cboSubsidiary", std::to_string(account.subsidiary));
    show("txtDefaultDept", account.defaultDept, account.deptName);
    show("txtVendorID", account.vendor, account.vendorName);
    show("cboBudget", account.budget);
    show("cmbClass", account.classification);
    (account.mast == kMaster ? optReportingOnly : optPosting).choose();
    input("txtAcctCode").setLocked(!watch_.isNew());
    cmdDelete.setEnabled(!watch_.isNew());
    loaded_ = updateStatement(entered());
    loadedVendor_ = value("txtVendorID");
}

AccountRecord frmBuildAcct_2::entered() const {
    AccountRecord account;
    account.code = value("txtAcctCode");
    account.description = value("txtDescription");
    account.budget = value("cboBudget");
    account.mast = optReportingOnly.chosen() ? kMaster : "";
    account.group = value("txtGroup");
    account.subsidiary = value("cboSubsidiary") == "1" ? 1 : 0;
    account.defaultDept = value("txtDefaultDept");
    account.classification = value("cmbClass");
    account.vendor = value("txtVendorID");
    return account;
}

bool frmBuildAcct_2::changed() const {
    return updateStatement(entered()) != loaded_ || value("txtVendorID") != loadedVendor_;
}

void frmBuildAcct_2::txtAcctCode_Validate(bool& Cancel) {
    if (!watch_.isNew() || value("txtAcctCode").empty()) return;
    if (session_.cn().Open(sql("Select * from AcctCode where Code = '{}'").text(value("txtAcctCode"))).eof()) return;
    MsgBox("Account Code already exists!", Icon::Exclamation);
    Cancel = true;
}

void frmBuildAcct_2::cboSubsidiary_Validate(bool& Cancel) {
    if (value("cboSubsidiary") != "1" || mayHaveDepartments()) return;
    MsgBox("Departments can be set for income and expense accounts only.", Icon::Exclamation);
    Cancel = true;
}

/// By the account as it is stored; a new one by the type of its group.
bool frmBuildAcct_2::mayHaveDepartments() const {
    const Recordset stored = session_.cn().Open(
        sql("Select * from AcctCode where Code = '{}' AND TYPE IN ('IN','EX')").text(value("txtAcctCode")));
    if (!watch_.isNew()) return !stored.eof();
    clsGLGroup group(session_);
    group.Search(value("txtGroup"));
    return group.GroupType == "IN" || group.GroupType == "EX";
}

bool frmBuildAcct_2::complete() {
    const auto missing = [this](const char* control, const char* text) {
        MsgBox(text, Icon::Exclamation);
        input(control).control().setFocus();
        return false;
    };
    if (value("txtGroup").empty()) return missing("txtGroup", "Please assign this account's Schedule Group.");
    if (value("txtAcctCode").empty()) return missing("txtAcctCode", "The account code must not be blank.");
    if (value("txtDescription").empty()) return missing("txtDescription", "Please enter the title.");
    return true;
}

void frmBuildAcct_2::cmdOpt_0_Click() {
    if (!complete()) return;
    const AccountRecord account = entered();
    const bool stored =
        watch_.save(session_.cn(), loadStatement(account.code), account.code, "Account Code already exists!", [&] {
            logAccount(session_, account.code);
            session_.cn().Execute(updateStatement(account));
            session_.cn().Execute(call("sp_Update_AcctVend").text(account.code).text(account.vendor));
            module1::CheckErrors(session_.cn());
        });
    if (!stored) return;
    savedCode_ = account.code;
    MsgBox("Successfully updated.", Icon::Information);
    leaving_ = true;
    Unload();
}

void frmBuildAcct_2::cmdOpt_1_Click() {
    if (!changed() && value("txtAcctCode").empty()) leaving_ = true;
    if (!leaving_ && !askToIgnore()) return;
    leaving_ = true;
    Unload();
}

bool frmBuildAcct_2::askToIgnore() {
    if (!Ask("Changes will be ignored! Do you wish to Cancel?", "Warning", Icon::Exclamation)) return false;
    module1::SaveUserLog(session_, "Ignore changes in Acct Code : " + escaped(value("txtAcctCode")));
    return true;
}

/// The window's own close button asks where something would be lost.
void frmBuildAcct_2::Form_QueryUnload(bool& Cancel) { Cancel = !leaving_ && changed() && !askToIgnore(); }

void frmBuildAcct_2::cmdDelete_Click() {
    const std::string code = value("txtAcctCode");
    if (!session_.cn().Open(call("sp_VerifyAcct").text(code)).eof()) {
        MsgBox("Cannot delete Code " + code + " because it was used.", Icon::Exclamation);
        return;
    }
    if (!Ask("Are you sure you want to delete Acct. # '" + code + "' ?", "Warning!", Icon::Exclamation, false)) return;
    Transaction removal(session_.cn());
    module1::SaveUserLog(session_, "Delete Acct Code : " + escaped(code));
    session_.cn().Execute(sql("Delete from acctcode where code = '{}'").text(code));
    removal.commit();
    leaving_ = true;
    Unload();
}

void OpenAccountDocument(Session& session, std::string_view key) {
    frmBuildAcct_2 editor(session);
    if (editor.Edit(key)) editor.ShowModal();
}

}  // namespace kv
