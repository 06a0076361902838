#include "platform/login/frmLogin.h"

#include <algorithm>
#include <array>

#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/login/OpenSource.h"
#include "platform/odbc/Odbc.h"

namespace kv {
namespace {

constexpr int kEnterKey = 13;
constexpr const char* kOtherServer = "Another SQL Server";
constexpr long kErrLogonRefused = 18456;
constexpr std::array kErrsNoBooks = {4060L, 911L, 916L};  ///< no such database, or none for this logon
constexpr long kErrDamaged = 824;
constexpr const char* kDamagedAdvice =
    "Nothing in it was changed. Have the administrator put a backup in its place; the file as it is will be kept.";
constexpr int kPasswordMax = 128;
constexpr int kWidth_px = 460;
constexpr int kHeight_px = 420;

}  // namespace

frmLogin::frmLogin(const LoginOptions& options, std::string deptCode)
    : Form("frmLogin", "Sign In"), options_(options), signIn_(std::move(deptCode)) {
    lblProduct.look(Label::Look::Heading);
    lblWelcome.look(Label::Look::Hint);
    lblCapsLock.look(Label::Look::Hint);
    lblHint.setAlert(true);
    lblHint.wrap(2);
    txtEmployeeCode.code().maxLength(15);
    txtPassword.password().maxLength(kPasswordMax);
    cboSource.width(40);
    txtServer.maxLength(128);
    txtSQLUser.maxLength(128).placeholder("empty: this computer's own identity");
    txtSQLPassword.password().maxLength(kPasswordMax);
    cmdOK.primary();
    cmdCancel.cancels();
    layOut();
    wire();
}

void frmLogin::layOut() {
    setLayout(column({
        row({imgProduct, column({lblProduct, lblWelcome}), stretch()}),
        line(),
        fields({
            {"&Employee code:", txtEmployeeCode},
            {"&Password:", txtPassword},
            {"", lblCapsLock},
            {"&Data source:", cboSource},
            {"Ser&ver:", txtServer},
            {"SQL &user:", txtSQLUser},
            {"SQL pass&word:", txtSQLPassword},
            {"", lblHint},
        }),
        prgPrepare,
        stretch(),
        buttons({cmdOK, cmdCancel}),
    }));
    setIcon("view-institution");
    setSize(kWidth_px, kHeight_px);
}

void frmLogin::wire() {
    cboSource.onChange = [this] { cboSource_Click(); };
    txtPassword.onKeyPress = [this](int& key) { txtPassword_KeyPress(key); };
    txtPassword.onLostFocus = [this] { lblCapsLock.setVisible(false); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.onClick = [this] { Unload(); };
    txtEmployeeCode.setHelp("The code that the hospital gave you.");
    cboSource.setHelp("Where the books are: in this computer's own file or on a SQL Server.");
    txtSQLUser.setHelp("The logon of the SQL Server. It is not the employee code.");
}

void frmLogin::Form_Load() {
    try {
        if (!options_.settingsFile.empty()) settings_ = loadLoginSettings(options_.settingsFile);
    } catch (const Error& e) {  // a broken file must not keep anyone out; the save after the sign-in keeps a copy
        lblHint.setText(e.description);
    }
    lblCapsLock.setVisible(false);
    prgPrepare.setVisible(false);
    cboSource.addItem(kThisComputer);
    for (const DataSource& server : settings_.servers) cboSource.addItem(server.name);
    cboSource.addItem(kOtherServer);
    const std::string chosen = settings_.source(settings_.chosen).name;
    for (int i = 0; i < cboSource.count(); ++i) {
        if (cboSource.item(i) == chosen) cboSource.setIndex(i);
    }
    showSourceFields();
    txtEmployeeCode.setText(settings_.employee);
    if (settings_.employee.empty()) {
        txtEmployeeCode.setFocus();
    } else {
        txtPassword.setFocus();
    }
}

void frmLogin::cboSource_Click() { showSourceFields(); }

void frmLogin::showSourceFields() {
    const bool server = cboSource.text() != kThisComputer;
    const DataSource known = settings_.source(cboSource.text());
    txtServer.setText(known.server);
    txtServer.setEnabled(server);
    txtServer.placeholder(server ? "server, server\\instance or server,port" : "");
    txtSQLUser.setText(known.user);
    txtSQLPassword.setText("");
    txtSQLUser.setVisible(server);
    txtSQLPassword.setVisible(server);
}

void frmLogin::txtPassword_KeyPress(int& key) {
    lblCapsLock.setVisible(capsLockOn());
    // a server may ask for its own logon below; on this computer nothing follows the password
    if (key != kEnterKey || cboSource.text() != kThisComputer || txtPassword.text().empty()) return;
    key = 0;
    cmdOK_Click();
}

DataSource frmLogin::chosenSource() const {
    DataSource source = settings_.source(cboSource.text());
    if (cboSource.text() == kThisComputer) return source;
    const std::string server(trimBlanks(txtServer.text()));
    if (source.embedded()) source.name = server;
    source.server = server;
    source.user = trimBlanks(txtSQLUser.text());
    return source;
}

void frmLogin::refuse(Control& field, const std::string& message) {
    lblHint.setText(message);
    field.setFocus();
    if (auto* box = dynamic_cast<TextBox*>(&field)) box->selectAll();
}

void frmLogin::prepareFile() {
    const LoginOptions::Progress progress = [this](int percent) {
        lblHint.setAlert(false);
        lblHint.setText("Preparing the demo hospital...");
        prgPrepare.setVisible(true);
        prgPrepare.setValue(percent);
    };
    prgPrepare.setRange(100);
    prepareEmbedded(options_, progress);
    prgPrepare.setVisible(false);
    lblHint.setAlert(true);
    lblHint.setText("");
}

bool frmLogin::connectChosen() {
    const DataSource source = chosenSource();
    const std::string password = txtSQLPassword.text();
    const bool same = connected_ && *connected_ == source && connectedPassword_ == password;
    if (connection_ && connection_->isOpen() && same) return true;
    connection_.reset();
    try {
        if (source.embedded()) prepareFile();
        connection_ = openSource(options_, source, password);
    } catch (const Error& e) {
        prgPrepare.setVisible(false);
        lblHint.setAlert(true);
        if (e.number == kErrLogonRefused) {
            refuse(txtSQLUser, "The SQL Server refuses this SQL user or its password.");
        } else if (std::count(kErrsNoBooks.begin(), kErrsNoBooks.end(), e.number) > 0) {
            refuse(txtServer, "There are no books on this server: " + e.description);
        } else if (e.number == kErrDamaged) {
            MsgBox(e.description + "\n\n" + kDamagedAdvice, Icon::Stop, "Damaged Database File");
            refuse(cboSource, e.description);
        } else {
            refuse(source.embedded() ? static_cast<Control&>(cboSource) : txtServer, e.description);
        }
        return false;
    }
    connected_ = source;
    connectedPassword_ = password;
    return true;
}

void frmLogin::cmdOK_Click() {
    lblHint.setText("");
    const bool server = cboSource.text() != kThisComputer;
    if (trimBlanks(txtEmployeeCode.text()).empty()) return refuse(txtEmployeeCode, "Enter your employee code.");
    if (txtPassword.text().empty()) return refuse(txtPassword, "Enter your password.");
    if (server && trimBlanks(txtServer.text()).empty()) return refuse(txtServer, "Enter the name of the SQL Server.");
    const Hourglass busy;
    if (!connectChosen()) return;
    const SignInAnswer answer = signIn_.attempt(*connection_, txtEmployeeCode.text(), txtPassword.text());
    if (answer.what == SignInAnswer::What::Welcome) return enter(answer.employee);
    txtPassword.setText("");
    refuse(answer.what == SignInAnswer::What::NoAccess ? txtEmployeeCode : txtPassword, answer.message);
}

void frmLogin::enter(const Employee& employee) {
    SignedIn result;
    result.connection = std::move(connection_);
    result.employee = employee;
    result.serverName = connected_->embedded() ? kThisComputer : connected_->server;
    result.userID = connected_->user;
    result.password = connectedPassword_;
    signedIn_ = std::move(result);
    remember();
    Unload();
}

void frmLogin::remember() {
    if (options_.settingsFile.empty()) return;
    LoginSettings now = settings_;
    now.chosen = connected_->name;
    now.employee = signedIn_->employee.code;
    if (!connected_->embedded()) now.keep(*connected_);
    if (now == settings_) return;
    try {
        saveLoginSettings(options_.settingsFile, now);
    } catch (const Error&) {  // who has signed in goes on; only the next sign-in has to choose again
        return;
    }
}

}  // namespace kv
