#include "core/frmUserSettings.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"

namespace kv {

frmUserSettings::frmUserSettings(Session& session)
    : Form("frmUserSettings", "User Settings Maintenance"), session_(session) {
    txtUserID.code().width(14).required();
    txtUserID.setHelp("Employee code of the user, as in the personnel file.");
    txtUserID.onValidate = [this](bool& cancel) { txtUserID_Validate(cancel); };
    txtUser.setLocked(true);
    lvwAccess.checkBoxes().rows(14);
    lvwAccess.setColumns({{"Right", 48, Align::Left, true}, {"Code", 10}});
    lvwAccess.setHelp("Space ticks or clears a right.");
    cmdGrant.onClick = [this] { lvwAccess.checkAll(true); };
    cmdDeny.onClick = [this] { lvwAccess.checkAll(false); };
    cmdSave.primary();
    cmdSave.onClick = [this] { cmdSave_Click(); };
    cmdIgnore.setCausesValidation(false);
    cmdIgnore.onClick = [this] { cmdIgnore_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { cmdClose_Click(); };
    setLayout(column({
        fields({{"&User ID:", txtUserID}, {"Name:", txtUser}}),
        expand(lvwAccess),
        row({cmdGrant, cmdDeny, stretch(), cmdSave, cmdIgnore, cmdClose}),
    }));
    setSize(640, 600);
    setFirstFocus(txtUserID);
}

void frmUserSettings::Form_Load() {
    module1::SaveUserLog(session_, "Open User Settings");
    Recordset rows = session_.cn().Open("select * from ACCESSTYPES order by Sequence");
    std::vector<ListView::Item> items;
    for (; !rows.eof(); rows.moveNext()) {
        if (rows["Sequence"].isNull()) continue;
        ListView::Item item;
        item.key = rows["AccessID"].text();
        item.cells = {rows["Description"].text(), item.key};
        items.push_back(std::move(item));
    }
    lvwAccess.setItems(std::move(items));
    lvwAccess.setEnabled(false);
}

void frmUserSettings::txtUserID_Validate(bool& Cancel) {
    const Recordset row = session_.cn().Open("sp_CheckUser '" + module1::SQLString(txtUserID.text()) + "'");
    if (row.eof()) {
        MsgBox("User does not have Accounting access.", Icon::Stop);
        Cancel = true;
        return;
    }
    txtUser.setText(row["LastName"].text() + ", " + row["FirstName"].text() + " " + row["MiddleName"].text());
    lvwAccess.setEnabled(true);
    LoadUserAccess();
}

void frmUserSettings::LoadUserAccess() {
    lvwAccess.checkAll(false);
    Recordset rows = session_.cn().Open("sp_Load_UserAccess '" + module1::SQLString(txtUserID.text()) + "'");
    for (; !rows.eof(); rows.moveNext()) {
        const int item = lvwAccess.find(rows["AccessID"].text());
        if (item >= 0) lvwAccess.setChecked(item, rows["CanAccess"].integer() != 0);
    }
}

void frmUserSettings::cmdSave_Click() {
    // without a user there is nobody to save rights for
    if (module1::ATrim(txtUserID.text()).empty() || !lvwAccess.enabled()) {
        txtUserID.setFocus();
        return;
    }
    SaveAccess();
    MsgBox("Access restrictions has been set.");
    if (txtUserID.text() == session_.EmployeeCode)
        session_.UserAccess.LoadSettings(session_.cn(), session_.EmployeeCode);
    ClearForm();
}

/// The user's rights and the log of the change are stored together or not at all.
void frmUserSettings::SaveAccess() {
    const std::string user = module1::SQLString(txtUserID.text());
    Transaction save(session_.cn());
    session_.cn().Execute("Delete Access where UserID = '" + user + "'");
    for (int i = 0; i < lvwAccess.count(); ++i) {
        session_.cn().Execute("INSERT INTO ACCESS (UserID, AccessID, CanAccess) VALUES ('" + user + "','" +
                              module1::SQLString(lvwAccess.item(i).key) + "'," + (lvwAccess.checked(i) ? "1" : "0") +
                              ")");
    }
    LogSaved();
    save.commit();
}

void frmUserSettings::LogSaved() {
    const std::string user = module1::SQLString(txtUserID.text());
    const Recordset count =
        session_.cn().Open("SELECT COUNT(*) AS UserSettCount FROM ACCESS WHERE UserID = '" + user + "'");
    const bool edited = !count.eof() && count["UserSettCount"].integer() > 0;
    module1::SaveUserLog(session_, std::string(edited ? "Edited" : "Created") +
                                       " User Settings : " + escaped(txtUser.text()) + " | Code : " + user);
}

void frmUserSettings::cmdIgnore_Click() {
    module1::SaveUserLog(session_, "Ignore changes in User Settings");
    ClearForm();
}

void frmUserSettings::cmdClose_Click() {
    module1::SaveUserLog(session_, "Exit User Settings");
    Unload();
}

void frmUserSettings::ClearForm() {
    txtUserID.setText("");
    txtUser.setText("");
    lvwAccess.checkAll(false);
    lvwAccess.setEnabled(false);
    txtUserID.setFocus();
}

}  // namespace kv
