// The sign-in dialog as a clerk works it: sources, refusals, what it leaves and what it remembers.
#include "platform/login/frmLogin.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/forms/Application.h"
#include "platform/forms/Dialogs.h"
#include "platform/odbc/Odbc.h"
#include "tests/data/HostileFields.h"
#include "tests/login/Desk.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

class TestApplication : public testing::Environment {
public:
    void SetUp() override {
        application_ = std::make_unique<Application>(argc_, argv_);
        setMemoryFile("");
    }
    void TearDown() override { application_.reset(); }

private:
    char name_[5] = "test";
    char* argv_[2] = {name_, nullptr};
    int argc_ = 1;
    std::unique_ptr<Application> application_;
};

const auto* const kApplication = testing::AddGlobalTestEnvironment(new TestApplication);

class LoginDialog : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "kv_signin_XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        options.settingsFile = folder + "/login.toml";
        options.embeddedFile = folder + "/var/hospital.db";
        options.prepare = [this](const std::string& file, const LoginOptions::Progress& progress) {
            ++prepared;
            progress(10);
            shownWhilePreparing = text("lblHint");
            test::openDesk(file)->close();
            progress(100);
        };
    }
    void TearDown() override {
        dialogHooks() = {};
        fs::remove_all(folder);
    }

    /// Runs the dialog with a clerk's hands; the user is what the component says afterwards.
    clsCurrentUser run(const std::function<void()>& hands) {
        dialogHooks().modal = [&](Form& form) {
            dialog = &form;
            hands();
            if (form.loaded()) form.Unload();
            dialog = nullptr;
        };
        clsCurrentUser user(options);
        user.PasswordDeptCode = "55";
        user.ShowMain();
        return user;
    }
    TextBox& box(const char* name) { return dynamic_cast<TextBox&>(*dialog->control(name)); }
    ComboBox& source() { return dynamic_cast<ComboBox&>(*dialog->control("cboSource")); }
    std::string text(const char* name) { return dialog->control(name)->text(); }
    void press(const char* name) { dynamic_cast<CommandButton&>(*dialog->control(name)).press(); }
    void signIn(const char* code, const char* password) {
        box("txtEmployeeCode").setText(code);
        box("txtPassword").setText(password);
        press("cmdOK");
    }

    std::string folder;
    LoginOptions options;
    Form* dialog = nullptr;
    int prepared = 0;
    std::string shownWhilePreparing;
};

TEST_F(LoginDialog, PreparesTheHospitalOnceAndSignsIn) {
    for (int start = 1; start <= 2; ++start) {
        const clsCurrentUser user = run([&] {
            EXPECT_EQ(source().text(), kThisComputer);
            EXPECT_FALSE(dialog->control("txtServer")->enabled());
            EXPECT_FALSE(dialog->control("txtSQLUser")->visible());
            EXPECT_EQ(text("txtEmployeeCode"), start == 1 ? "" : "E001");  // who signed in last
            signIn("E001", "ledger-2024");
            EXPECT_FALSE(dialog->loaded());
        });
        ASSERT_TRUE(user.Connected());
        EXPECT_EQ(user.EmployeeCode(), "E001");
        EXPECT_EQ(user.EmployeeName(), "MARIA L. SANTOS");
        EXPECT_EQ(user.UserRights(), "SA");
        EXPECT_EQ(user.ServerName(), kThisComputer);
        EXPECT_EQ(user.UserID(), "");
        const std::string text = user.SQLConnection()->connectionString();
        const std::size_t key = text.find("Server") + 7;
        EXPECT_EQ(text.substr(key, text.find(';', key) - key), kThisComputer) << text;
        EXPECT_EQ(user.SQLConnection()->defaultDatabase(), "ACCOUNTING");
    }
    EXPECT_EQ(prepared, 1);
    EXPECT_EQ(shownWhilePreparing, "Preparing the demo hospital...");
    for (const auto& file : fs::directory_iterator(folder + "/var")) {
        EXPECT_EQ(file.path().string().find(".making"), std::string::npos) << file.path();
    }
}

TEST_F(LoginDialog, RefusalsStandInTheDialogAndKeepItOpen) {
    const clsCurrentUser user = run([&] {
        press("cmdOK");
        EXPECT_EQ(text("lblHint"), "Enter your employee code.");
        signIn("E001", "");
        EXPECT_EQ(text("lblHint"), "Enter your password.");
        EXPECT_EQ(prepared, 0);
        signIn("E001", "wrong");
        EXPECT_EQ(text("lblHint"), "The employee code or the password is wrong.");
        EXPECT_EQ(box("txtPassword").text(), "");
        EXPECT_TRUE(box("txtPassword").hasFocus());
        signIn("E777", "wrong");
        EXPECT_EQ(text("lblHint"), "The employee code or the password is wrong.");
        signIn("E009", "ward-2024");
        EXPECT_NE(text("lblHint").find("do not have access to Accounting"), std::string::npos);
        EXPECT_TRUE(dialog->loaded());
        press("cmdCancel");
    });
    EXPECT_FALSE(user.Connected());
    EXPECT_EQ(user.SQLConnection(), nullptr);
    EXPECT_EQ(user.EmployeeCode(), "");
    EXPECT_FALSE(fileExists(options.settingsFile));
}

TEST_F(LoginDialog, HostileCodesStayValuesOnTheirWayToTheServer) {
    std::vector<std::string> sent;
    options.open = [&](const DataSource&, const std::string&) {
        auto connection = test::openDesk();
        connection->observe([&](std::string_view statement) { sent.emplace_back(statement); });
        return connection;
    };
    run([&] {
        TextBox& code = box("txtEmployeeCode");
        EXPECT_EQ(test::apostrophesIn(code), std::vector<std::string>());
        const auto tryIt = [&] {
            box("txtPassword").setText("x");
            press("cmdOK");
        };
        const auto nothingLeft = std::vector<std::string>{"only apostrophes", "long"};  // no code, nothing is sent
        EXPECT_EQ(test::fieldBreakers(code, tryIt, sent), nothingLeft);
        EXPECT_FALSE(sent.empty());
    });
}

TEST_F(LoginDialog, CapsLockIsPointedOutWhileThePasswordIsTyped) {
    run([&] {
        box("txtPassword").setFocus();
        sendKeys("a1", true);
        EXPECT_FALSE(dialog->control("lblCapsLock")->visible());
        sendKeys("B", true);  // a capital without Shift
        EXPECT_TRUE(dialog->control("lblCapsLock")->visible());
        sendKeys("c", true);
        EXPECT_FALSE(dialog->control("lblCapsLock")->visible());
        EXPECT_EQ(box("txtPassword").text(), "a1Bc");
    });
}

TEST_F(LoginDialog, ABrokenPreparationLeavesNoFile) {
    options.prepare = [](const std::string& file, const LoginOptions::Progress&) {
        writeTextFile(file, "half");
        throw Error(61, "test", "Disk full");
    };
    run([&] {
        signIn("E001", "ledger-2024");
        EXPECT_EQ(text("lblHint"), "Disk full");
    });
    EXPECT_TRUE(fs::is_empty(folder + "/var"));
}

TEST_F(LoginDialog, ADamagedFileIsNamedAndLeftAsItIs) {
    fs::create_directories(folder + "/var");
    const std::string file = folder + "/var/damaged.db";
    options.embeddedFile = file;
    options.open = {};
    std::string told;
    dialogHooks().message = [&](const MessageBox& box) {
        told = box.text;
        return Answer::Ok;
    };
    for (const std::string& bytes : {std::string(), std::string("no database at all"), std::string(4096, 'x')}) {
        writeTextFile(file, bytes);
        told.clear();
        const clsCurrentUser user = run([&] { signIn("E001", "ledger-2024"); });
        EXPECT_FALSE(user.Connected());
        EXPECT_NE(told.find(file), std::string::npos) << told;
        EXPECT_NE(told.find("Nothing in it was changed"), std::string::npos) << told;
        EXPECT_EQ(readTextFile(file), bytes);
    }
    dialogHooks().message = {};
}

TEST_F(LoginDialog, AServerIsAskedForItsLogonAndRememberedWithoutThePassword) {
    std::vector<std::pair<DataSource, std::string>> asked;
    options.open = [&](const DataSource& source, const std::string& password) -> std::unique_ptr<Connection> {
        asked.emplace_back(source, password);
        if (password != "se;cret") throw Error(18456, "test", "Login failed for user 'acct'.");
        return test::openDesk();
    };
    const clsCurrentUser user = run([&] {
        source().setIndex(source().count() - 1);
        EXPECT_TRUE(dialog->control("txtServer")->enabled());
        EXPECT_TRUE(dialog->control("txtSQLUser")->visible());
        signIn("E001", "ledger-2024");
        EXPECT_EQ(text("lblHint"), "Enter the name of the SQL Server.");
        box("txtServer").setText(" books\\ACC ");
        box("txtSQLUser").setText("acct");
        box("txtSQLPassword").setText("typo");
        press("cmdOK");
        EXPECT_EQ(text("lblHint"), "The SQL Server refuses this SQL user or its password.");
        box("txtSQLPassword").setText("se;cret");
        box("txtPassword").setText("wrong");
        press("cmdOK");
        EXPECT_TRUE(dialog->loaded());
        signIn("E001", "ledger-2024");
    });
    ASSERT_TRUE(user.Connected());
    EXPECT_EQ(asked.size(), 2u);  // a wrong employee's password does not sign the server on again
    EXPECT_EQ(asked.back().first.server, "books\\ACC");
    EXPECT_EQ(user.ServerName(), "books\\ACC");
    EXPECT_EQ(user.UserID(), "acct");
    EXPECT_EQ(user.ServerPassword(), "se;cret");
    const std::string kept = readTextFile(options.settingsFile);
    EXPECT_EQ(kept.find("cret"), std::string::npos) << kept;
    EXPECT_EQ(kept.find("ledger"), std::string::npos) << kept;
    run([&] {
        EXPECT_EQ(source().text(), "books\\ACC");
        EXPECT_EQ(text("txtSQLUser"), "acct");
        EXPECT_EQ(box("txtSQLPassword").text(), "");
        source().setText(kThisComputer);
        EXPECT_FALSE(dialog->control("txtSQLPassword")->visible());
    });
}

TEST_F(LoginDialog, ADamagedSettingsFileIsToldAndKeptAndKeepsNobodyOut) {
    const std::string damaged =
        "employee = \"E001\"\nsource = Pe\xC3\xB1"
        "a\n";
    writeTextFile(options.settingsFile, damaged);
    const clsCurrentUser user = run([&] {
        EXPECT_NE(text("lblHint").find("login.toml, line 2"), std::string::npos) << text("lblHint");
        EXPECT_EQ(source().text(), kThisComputer);
        EXPECT_EQ(text("txtEmployeeCode"), "");
        signIn("E002", "payable-2024");
    });
    EXPECT_TRUE(user.Connected());
    EXPECT_EQ(loadLoginSettings(options.settingsFile).employee, "E002");
    std::vector<std::string> kept;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().string().find(".damaged-") != std::string::npos)
            kept.push_back(readTextFile(entry.path().string()));
    }
    EXPECT_EQ(kept, std::vector<std::string>{damaged});
    run([&] {
        EXPECT_EQ(text("lblHint"), "");
        EXPECT_EQ(text("txtEmployeeCode"), "E002");
    });
}

}  // namespace
}  // namespace kv
