#pragma once
// frmLogin: the sign-in dialog: employee and password, and the place where the books are.

#include <optional>

#include "platform/forms/Form.h"
#include "platform/login/clsCurrentUser.h"

namespace kv {

class frmLogin : public Form {
public:
    frmLogin(const LoginOptions& options, std::string deptCode);

    /// What the sign-in left; nothing when the user gave up.
    const std::optional<SignedIn>& signedIn() const { return signedIn_; }

    void Form_Load() override;

private:
    void layOut();
    void wire();
    void cboSource_Click();
    void txtPassword_KeyPress(int& key);
    void cmdOK_Click();

    DataSource chosenSource() const;
    bool connectChosen();
    void prepareFile();
    void enter(const Employee& employee);
    void refuse(Control& field, const std::string& message);
    void showSourceFields();
    void remember();

    LoginOptions options_;
    SignIn signIn_;
    LoginSettings settings_;
    std::shared_ptr<Connection> connection_;
    std::optional<DataSource> connected_;  ///< the source that `connection_` stands for
    std::string connectedPassword_;
    std::optional<SignedIn> signedIn_;

    Image imgProduct{*this, "imgProduct", "view-institution", 48};
    Label lblProduct{*this, "lblProduct", "Korvane Accounting"};
    Label lblWelcome{*this, "lblWelcome", "Sign in with your employee code."};
    TextBox txtEmployeeCode{*this, "txtEmployeeCode"};
    TextBox txtPassword{*this, "txtPassword"};
    Label lblCapsLock{*this, "lblCapsLock", "Caps Lock is on."};
    ComboBox cboSource{*this, "cboSource"};
    TextBox txtServer{*this, "txtServer"};
    TextBox txtSQLUser{*this, "txtSQLUser"};
    TextBox txtSQLPassword{*this, "txtSQLPassword"};
    Label lblHint{*this, "lblHint"};
    ProgressBar prgPrepare{*this, "prgPrepare"};
    CommandButton cmdOK{*this, "cmdOK", "&Sign In"};
    CommandButton cmdCancel{*this, "cmdCancel", "Cancel"};
};

}  // namespace kv
