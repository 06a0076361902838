#include "app/Program.h"

#include "core/DemoHospital.h"
#include "core/Installer.h"
#include "core/module1.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Embedded.h"
#include "platform/forms/Dialogs.h"

namespace kv {

namespace {
constexpr const char* kDepartmentCode = "55";
constexpr int kCommandTimeout_s = 120;
}  // namespace

Program::Program(Options options) : options_(std::move(options)) { registerScreens(screens_); }

Program::~Program() { screens_.unloadAll(); }

bool Program::Main() {
    LoginOptions login;
    login.settingsFile = options_.settingsFile;
    login.embeddedFile = options_.dataFile;
    if (options_.makeDemo) login.prepare = makeHospital;
    user_ = std::make_unique<clsCurrentUser>(std::move(login));
    user_->PasswordDeptCode = kDepartmentCode;
    user_->ShowMain();
    if (!user_->Connected()) return false;
    try {
        takeConnection();
        screens_.show(*session_, "frmMain");
        shell_ = screens_.open("frmMain");
    } catch (Error& failure) {
        failure.addPlace("Korvane.module1.Main");
        MsgBox(failure.description, Icon::Stop, "Application Error");
    }
    return shell_ != nullptr;
}

void Program::takeConnection() {
    connection_ = user_->SQLConnection();
    if (onConnected) onConnected(*connection_);
    session_ = std::make_unique<Session>(*user_, *connection_, screens_);
    session_->ConnectionText = connection_->connectionString();
    session_->ServerNameText = GetServerName(session_->ConnectionText);
    connection_->setDefaultDatabase("ACCOUNTING");
    connection_->setCommandTimeout(kCommandTimeout_s);
    session_->UserAccess.LoadSettings(*connection_, user_->EmployeeCode());
    ResetGlobalVariables(*session_);
    session_->EmployeeCode = user_->EmployeeCode();
    session_->ReportsFolder = ResourcesFolder(programFolder(), session_->ClientCode());
    session_->Parameters.LoadParameters(session_->ClientCode());
    modGeneral::MainHospitalSettings(*session_);
}

void makeHospital(const std::string& file, const std::function<void(int percent)>& progress) {
    EmbeddedOptions options;
    options.file = file;
    const std::unique_ptr<Connection> connection = openEmbedded(options);
    installDatabase(*connection, buildPath(programFolder(), "server"), [&](int done, int of) {
        if (progress) progress(of > 0 ? done * 70 / of : 0);
    });
    loadDemoHospital(*connection, buildPath(programFolder(), "demo/data"));
    if (progress) progress(100);
    connection->close();
}

}  // namespace kv
