#pragma once
// frmMain: the main shell. Book buttons, menus by rights and parameters, and the status bar. No book logic lives here.

#include <memory>
#include <string>
#include <vector>

#include "core/MainMenu.h"
#include "platform/forms/Form.h"

namespace kv {

class Session;

class frmMain : public Form {
public:
    explicit frmMain(Session& session);

    void SetUserAccess();

    Image picPicture2{*this, "picPicture2", "view-institution", 40};
    Label lblCompany{*this, "lblCompany"};
    CommandButton cmdHospital{*this, "cmdHospital", "&Hospital\nUploads", "book-upload"};
    CommandButton cmdQuit{*this, "cmdQuit", "E&xit", "application-exit"};
    StatusBar sbrMain{*this, "sbrMain"};

protected:
    void Form_Load() override { MDIForm_Load(); }
    void Form_QueryUnload(bool& Cancel) override;
    void Form_Unload() override { MDIForm_Unload(); }

private:
    void MDIForm_Load();
    void MDIForm_Unload();
    void ApplyParameters();
    void picPicture2_KeyPress(int& KeyAscii);
    void OpenBook(const BookEntry& book);
    void OpenMaintenance(const MaintenanceEntry& entry);
    void OpenPassword(int target, const char* log);
    void OpenSetting(std::string_view screen, std::string_view title);
    void cmdHospital_Click();
    void mnuUserLogs_Click_Err();
    void mnuFind_Click();
    void mnuRestore_Click();
    static void PickEntry(const Form& form, const std::string& name);
    bool ConfirmExit();

    void buildButtons();
    void buildMenus();
    MenuItem& addItem(std::string name, std::string caption, std::string icon, std::function<void()> click,
                      std::string shortcut = {});
    MenuItem& addMaintenance(const MaintenanceEntry& entry);
    CommandButton& button(std::string_view name) const;

    Session& session_;
    std::vector<std::unique_ptr<CommandButton>> bookButtons_;
    std::vector<std::unique_ptr<MenuItem>> items_;
    bool exitConfirmed_ = false;
};

}  // namespace kv
