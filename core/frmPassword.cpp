#include "core/frmPassword.h"

#include "core/Session.h"
#include "platform/forms/Dialogs.h"

namespace kv {

namespace {
constexpr const char* kSettingsPassword = "QUILLMANDATE";
}

frmPassword::frmPassword(Session& session) : Form("frmPassword", "Password"), session_(session) {
    txtPassword.password().width(24);
    txtPassword.onValidate = [this](bool& cancel) { txtPassword_Validate(cancel); };
    // Enter goes straight to OK: the comparison belongs to leaving the box, which a person does by Tab or a click
    txtPassword.onKeyPress = [this](int& key) {
        if (key != 13) return;
        key = 0;
        cmdOK_Click();
    };
    cmdOK.primary();
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.cancels();
    cmdCancel.onClick = [this] { Unload(); };
    setLayout(column({fields({{"&Password:", txtPassword}}), buttons({cmdOK, cmdCancel})}));
    setFirstFocus(txtPassword);
}

void frmPassword::txtPassword_Validate(bool& Cancel) {
    if (txtPassword.text() == kSettingsPassword) return;
    MsgBox("Invalid password!", Icon::Exclamation);
    Cancel = true;
}

void frmPassword::cmdOK_Click() {
    const PasswordTargets target = session_.PasswordTarget;
    Hide();
    const char* screen = target == PasswordTargets::ProgramSettings ? "frmHospitalInfo"
                         : target == PasswordTargets::UserSettings  ? "frmUserSettings"
                                                                    : nullptr;
    if (screen) session_.screens.showModal(session_, screen);
    Unload();
}

}  // namespace kv
