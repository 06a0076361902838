#include "core/frmMain.h"

#include "core/DatabaseTasks.h"
#include "core/Session.h"
#include "core/Version.h"
#include "core/frmFind.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/forms/Application.h"
#include "platform/forms/Dialogs.h"

namespace kv {

frmMain::frmMain(Session& session) : Form("frmMain", kProgramTitle, Window::Shell), session_(session) {
    picPicture2.onKeyPress = [this](int& key) { picPicture2_KeyPress(key); };
    cmdHospital.onClick = [this] { cmdHospital_Click(); };
    cmdHospital.large();
    cmdHospital.setHelp("Brings the day's charges, collections, stock issues and payroll into the books.");
    cmdQuit.onClick = [this] { Unload(); };
    cmdQuit.large();
    setIcon("view-institution");
    buildButtons();
    buildMenus();
    setStatusBar(sbrMain);
    setSize(1280, 800);
}

void frmMain::buildButtons() {
    std::vector<Layout> strip{picPicture2};
    for (const BookEntry& book : bookEntries()) {
        bookButtons_.push_back(std::make_unique<CommandButton>(*this, book.button, book.caption, book.icon));
        CommandButton& made = *bookButtons_.back();
        made.large();
        const std::string title = replaceAll(book.caption, "\n", " ");
        made.setHelp("Opens the " + replaceAll(title, "&", "") +
                     (std::string_view(book.code) == "GL" ? "." : " book."));
        made.onClick = [this, &book] { OpenBook(book); };
        strip.emplace_back(made);
    }
    strip.emplace_back(cmdHospital);
    strip.push_back(stretch());
    strip.emplace_back(lblCompany);
    strip.push_back(stretch());
    strip.emplace_back(cmdQuit);
    setLayout(column({row(strip), expand(mdiArea())}));
}

MenuItem& frmMain::addItem(std::string name, std::string caption, std::string icon, std::function<void()> click,
                           std::string shortcut) {
    items_.push_back(
        std::make_unique<MenuItem>(*this, std::move(name), std::move(caption), std::move(icon), std::move(shortcut)));
    items_.back()->onClick = std::move(click);
    return *items_.back();
}

MenuItem& frmMain::addMaintenance(const MaintenanceEntry& entry) {
    return addItem(entry.menu, entry.caption, {}, [this, &entry] { OpenMaintenance(entry); });
}

void frmMain::buildMenus() {
    MenuSpec file{"&File", {}};
    file.parts.emplace_back(addItem(
        "mnuFind", "&Find Anything...", "edit-find", [this] { mnuFind_Click(); }, "Ctrl+K"));
    file.parts.emplace_back(nullptr);
    file.parts.emplace_back(addItem("mnuFileSettings", "Program &Settings...", "configure", [this] {
        OpenPassword(static_cast<int>(PasswordTargets::ProgramSettings), "Open Program Settings");
    }));
    file.parts.emplace_back(addItem("mnuUserSettings", "&User Settings...", "user-identity", [this] {
        OpenPassword(static_cast<int>(PasswordTargets::UserSettings), "Open User Settings");
    }));
    file.parts.emplace_back(
        addItem("mnuUserLogs", "User &Logs...", "view-list-text", [this] { mnuUserLogs_Click_Err(); }));
    file.parts.emplace_back(nullptr);
    file.parts.emplace_back(addItem("mnuBooksCheck", "&Books Check...", "task-complete",
                                    [this] { session_.screens.showModal(session_, "frmBooksCheck"); }));
    file.parts.emplace_back(
        addItem("mnuBackup", "Bac&k Up the Books...", "document-save", [this] { BackUpBooks(session_); }));
    file.parts.emplace_back(
        addItem("mnuRestore", "&Restore the Books...", "document-import", [this] { mnuRestore_Click(); }));
    file.parts.emplace_back(nullptr);
    file.parts.emplace_back(addItem("mnuQuit", "E&xit", "application-exit", [this] { Unload(); }));

    MenuSpec books{"&Books", {}};
    for (const BookEntry& book : bookEntries()) {
        books.parts.emplace_back(addItem(book.menu, replaceAll(book.caption, "\n", " "), book.icon,
                                         [this, &book] { button(book.button).press(); }));
    }
    books.parts.emplace_back(nullptr);
    books.parts.emplace_back(addItem("mnuHU", "&Hospital Uploads", "book-upload", [this] {
        if (cmdHospital.enabled()) cmdHospital.press();
    }));

    MenuSpec maintenance{"File &Maintenance", {}};
    for (const auto& section : maintenanceSections()) {
        for (const MaintenanceEntry& entry : section) maintenance.parts.emplace_back(addMaintenance(entry));
        maintenance.parts.emplace_back(nullptr);
    }
    MenuSpec links{"&Hospital Links", {}};
    for (const MaintenanceEntry& entry : hospitalLinkEntries()) links.parts.emplace_back(addMaintenance(entry));
    maintenance.parts.emplace_back(links);

    MenuSpec view{"&View", {}};
    const auto themeEntry = [this](const char* name, const char* caption, Theme theme) -> MenuItem& {
        return addItem(name, caption, {}, [theme] {
            if (Application* app = Application::instance()) app->setTheme(theme);
        });
    };
    view.parts.emplace_back(themeEntry("mnuThemeLight", "&Light", Theme::Light));
    view.parts.emplace_back(themeEntry("mnuThemeDark", "&Dark", Theme::Dark));
    setMenu({file, books, maintenance, view});
}

void frmMain::MDIForm_Load() {
    session_.Parameters.LoadParameters(session_.ClientCode());
    session_.screens.show(session_, "frmCenter");
    setCaption("HALCYRA Accounting Version: " + versionText());
    sbrMain.setPanels(4);
    sbrMain.setPanel(0, properCase(session_.CurrentUser.EmployeeName()));
    sbrMain.setPanel(1, session_.ServerNameText);
    sbrMain.setPanel(2, "ACCOUNTING");
    sbrMain.setPanel(3, versionText());
    SetUserAccess();
    ApplyParameters();
    lblCompany.setText(session_.Sys.Company);
    module1::SaveUserLog(session_, "User Login | Brevane");
}

void frmMain::SetUserAccess() {
    for (const RightEntry& entry : rightEntries()) {
        const bool allowed = session_.UserAccess.CanAccess(entry.right);
        for (const char* name : entry.controls) control(name)->setEnabled(allowed);
    }
    control("mnuLinkAR")->setEnabled(true);
    control("mnuLinkRevenue")->setEnabled(true);
    control("mnuUserLogs")->setVisible(session_.UserAccess.CanAccess("UL"));
    control("mnuBooksCheck")->setEnabled(session_.UserAccess.CanAccess("GL"));
    const bool keeper = session_.CurrentUser.UserRights().find_first_of("SA") != std::string::npos;
    control("mnuBackup")->setEnabled(keeper);
    control("mnuRestore")->setEnabled(keeper);
}

/// What the parameters show or hide. Runs after the rights and touches visibility only.
void frmMain::ApplyParameters() {
    const clsParameters& p = session_.Parameters;
    const std::string& client = session_.ClientCode();
    const auto show = [this](const char* name, bool visible) { control(name)->setVisible(visible); };
    show("mnuFileDept", p.EnableFileDept(client));
    show("mnuFilePayable", p.EnablePayableTypeEntryInAP());
    show("mnuFileTerms", p.EnableTermsEntryInAP());
    show("mnuFiscalYears", UCase(session_.Sys.YearType) == "FISCAL");
    show("mnuBuildFixedAssetDepartment", true);
    show("mnuLinkInvClassification", p.IsInventoryBasedOnClassification());
    show("mnuLinkInvClassificationLocation", !p.IsInventoryBasedOnLocation() && !p.IsInventoryBasedOnClassification());
    show("mnuModeOfPayment", p.EnableModeOfPayment(client));
    control("mnuLinkCards")->setEnabled(module1::TableExists(session_.cn(), "CardLink"));
}

void frmMain::OpenBook(const BookEntry& book) {
    session_.SelectBook(bookOf(session_, book));
    picPicture2.setFocus();
    if (std::string_view(book.screen) == "frmGeneral") ManualUnloadForm(session_, "frmGeneral");
    if (!session_.screens.find(book.screen)) {
        OpenSetting(book.screen, book.name);
        return;
    }
    session_.screens.show(session_, book.screen);
    if (std::string_view(book.code) == "AR") session_.CurrentPeriod = session_.Sys.glperiod;
    module1::SaveUserLog(session_, book.log);
}

/// Shows a screen modally; one that this version does not have says so.
void frmMain::OpenSetting(std::string_view screen, std::string_view title) {
    if (session_.screens.find(screen)) {
        session_.screens.showModal(session_, screen);
    } else {
        MsgBox(std::string(title) + " is not part of this version.", Icon::Information);
    }
}

void frmMain::OpenMaintenance(const MaintenanceEntry& entry) {
    std::string screen = entry.screen;
    if (screen == "frmBuildFixedAssetCategory" && session_.Parameters.FixedAssetCodeLink() == "ACC") {
        screen = "frmBuildFixedAssetMajorCategory";
    }
    OpenSetting(screen, replaceAll(entry.caption, "&", ""));
    if (session_.screens.find(screen)) module1::SaveUserLog(session_, entry.log);
}

void frmMain::OpenPassword(int target, const char* log) {
    session_.PasswordTarget = static_cast<PasswordTargets>(target);
    session_.screens.showModal(session_, "frmPassword");
    lblCompany.setText(session_.Sys.Company);  // the settings may have renamed the hospital
    module1::SaveUserLog(session_, log);
}

void frmMain::cmdHospital_Click() {
    picPicture2.setFocus();
    if (!session_.screens.find("frmDataImport")) {
        OpenSetting("frmDataImport", "Hospital Uploads");
        return;
    }
    session_.screens.showModal(session_, "frmDataImport");
    module1::SaveUserLog(session_, "Open Hospital Uploads");
}

void frmMain::mnuFind_Click() {
    frmFind find(session_);
    const frmFind::Choice choice = find.ShowDialog();
    if (!choice.made) return;
    if (choice.record) {
        session_.screens.openDocument(session_, choice.record->screen, choice.key);
        if (Form* front = Form::active()) front->Form_Activate();
    } else if (!choice.menu.book) {
        PickEntry(*this, choice.menu.item);
    } else {
        Form* window = session_.screens.open(choice.menu.book->screen);
        if (!window || session_.BookCode() != choice.menu.book->code) {
            OpenBook(*choice.menu.book);
            window = session_.screens.open(choice.menu.book->screen);
        }
        if (window) PickEntry(*window, choice.menu.item);
    }
}

void frmMain::PickEntry(const Form& form, const std::string& name) {
    auto* item = dynamic_cast<MenuItem*>(form.control(name));
    if (item && item->shown() && item->able()) {
        item->pick();
    } else {
        MsgBox("This entry is not available now.", Icon::Information);
    }
}

/// Everything that the session read belongs to the books before: open windows go, the rest is read anew.
void frmMain::mnuRestore_Click() {
    session_.screens.unloadOthers("frmMain", "frmCenter");
    if (!RestoreBooks(session_)) return;
    ResetGlobalVariables(session_);
    session_.Parameters.LoadParameters(session_.ClientCode());
    modGeneral::MainHospitalSettings(session_);
    session_.UserAccess.LoadSettings(session_.cn(), session_.EmployeeCode);
    SetUserAccess();
    ApplyParameters();
    lblCompany.setText(session_.Sys.Company);
    if (Form* home = session_.screens.open("frmCenter")) home->Form_Activate();
}

void frmMain::mnuUserLogs_Click_Err() {
    module1::SaveUserLog(session_, "Open User Logs");
    session_.screens.runCommand(session_, "UserLogs");
}

void frmMain::picPicture2_KeyPress(int& KeyAscii) {
    if (KeyAscii == 13) {
        Module3::SendKeys("{Tab}");
        KeyAscii = 0;
    } else if (KeyAscii == '\'') {
        KeyAscii = 0;
    } else if (KeyAscii >= 'a' && KeyAscii <= 'z') {
        KeyAscii -= 32;
    }
}

bool frmMain::ConfirmExit() {
    if (!Ask("Are you sure you want to exit?", "Warning", Icon::Exclamation)) {
        picPicture2.setFocus();
        return false;
    }
    module1::SaveUserLog(session_, "Exit | Brevane");
    return true;
}

void frmMain::Form_QueryUnload(bool& Cancel) {
    if (!exitConfirmed_) exitConfirmed_ = ConfirmExit();
    Cancel = !exitConfirmed_;
}

/// The other windows have gone before the shell goes.
void frmMain::MDIForm_Unload() { session_.cn().close(); }

CommandButton& frmMain::button(std::string_view name) const { return dynamic_cast<CommandButton&>(*control(name)); }

}  // namespace kv
