// Menus, toolbars, status bars and the keys of forms, also where two open forms mean the same key.
#include <gtest/gtest.h>

#include <QMenu>
#include <QMenuBar>

#include "tests/forms/TestForms.h"

namespace {

using namespace kv;
using namespace kv::test;

class frmBooks : public Form {
public:
    frmBooks() : Form("frmBooks", "Books", Window::Shell) {
        for (MenuItem* entry : {&mnuAP, &mnuUpload, &mnuChart})
            entry->onClick = [this, entry] { log += entry->name() + " "; };
        cmdPay.onClick = [this] { log += "cmdPay "; };
        tlbMain.button("NEW", "New", "document-new").separator().button("POST", "Post", "document-save");
        tlbMain.onButtonClick = [this](const std::string& pressed) { log += pressed + " "; };
        staBar.setPanels(2);
        setMenu({{"&File", {mnuAP, nullptr, MenuSpec{"&Links", {mnuUpload}, &mnuLinks}}},
                 {"&Maintenance", {mnuChart}, &mnuMaintenance},
                 {"&Help", {mnuAbout}}});
        setToolbar(tlbMain);
        setStatusBar(staBar);
        setLayout(column({cmdPay, mdiArea()}));
        shortcut("F2", "Key_F2", [this] { log += "shell F2 "; });
        shortcut("F9", "Key_F9", [this] { log += "shell F9 "; });
    }
    MenuItem mnuAP{*this, "mnuAP", "&Payables", "book-ap", "Ctrl+S"};
    MenuItem mnuUpload{*this, "mnuUpload", "&Upload"};
    MenuItem mnuLinks{*this, "mnuLinks", "&Links"};
    MenuItem mnuChart{*this, "mnuChart", "&Chart"};
    MenuItem mnuMaintenance{*this, "mnuMaintenance", "&Maintenance"};
    MenuItem mnuAbout{*this, "mnuAbout", "&About"};
    CommandButton cmdPay{*this, "cmdPay", "&Pay"};
    Toolbar tlbMain{*this, "tlbMain"};
    StatusBar staBar{*this, "staBar"};
    std::string log;
};

class frmChild : public Form {
public:
    explicit frmChild(std::string& log) : Form("frmChild", "Child", Window::Child) {
        mnuSave.onClick = [&log] { log += "mnuSave "; };
        cmdPrint.onClick = [&log] { log += "cmdPrint "; };
        setMenu({{"&File", {mnuSave}}});
        setLayout(column({fields({{"&Name:", txtName}}), cmdPrint}));
        shortcut("F2", "Key_F2", [&log] { log += "child F2 "; });
    }
    MenuItem mnuSave{*this, "mnuSave", "&Save", "", "Ctrl+S"};
    TextBox txtName{*this, "txtName"};
    CommandButton cmdPrint{*this, "cmdPrint", "&Print"};
};

class Menus : public testing::Test {
protected:
    Menus() {
        shell.Show();
        ready();
    }
    frmBooks shell;
};

QMenuBar* barOf(const Form& form) { return form.widget()->findChild<QMenuBar*>(); }

TEST_F(Menus, entriesFireWhenShownAndAble) {
    shell.mnuAP.pick();
    shell.mnuAP.setEnabled(false);
    shell.mnuAP.pick();
    key(shell.cmdPay.widget(), Qt::Key_S, Qt::ControlModifier);
    shell.mnuAP.setEnabled(true);
    shell.mnuAP.setVisible(false);
    shell.mnuAP.pick();
    EXPECT_EQ(shell.log, "mnuAP ");
    EXPECT_FALSE(shell.mnuAP.shown());
    shell.mnuAP.setVisible(true);
    key(shell.cmdPay.widget(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(shell.log, "mnuAP mnuAP ");
}

TEST_F(Menus, aMenuHidesWithTheEntryThatOwnsIt) {
    const auto heads = barOf(shell)->actions();
    ASSERT_EQ(heads.size(), 4);
    EXPECT_EQ(heads[2]->text(), "&Window") << "before Help";
    shell.mnuMaintenance.setVisible(false);
    EXPECT_FALSE(heads[1]->isVisible());
    EXPECT_FALSE(shell.mnuMaintenance.shown());
    shell.mnuMaintenance.setVisible(true);
    EXPECT_TRUE(heads[1]->isVisible());
    shell.mnuLinks.setVisible(false);
    EXPECT_FALSE(heads[0]->menu()->actions().back()->isVisible());
}

TEST_F(Menus, onlyTheScreenDecidesWhatIsChecked) {
    shell.mnuChart.setChecked(true);
    shell.mnuChart.action()->trigger();
    EXPECT_TRUE(shell.mnuChart.checked());
    EXPECT_EQ(shell.log, "mnuChart ");
}

TEST_F(Menus, theFormInFrontGoesBeforeTheShell) {
    frmChild child(shell.log);
    child.Show();
    ready();
    child.txtName.setFocus();
    QWidget* field = child.txtName.widget();
    key(field, Qt::Key_S, Qt::ControlModifier);
    key(field, Qt::Key_F2);
    key(field, Qt::Key_F9);
    key(field, Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(shell.log, "mnuSave child F2 shell F9 cmdPrint ");
    key(field, Qt::Key_F, Qt::AltModifier);
    EXPECT_NE(barOf(child)->activeAction(), nullptr) << "its own File menu opens";
    if (QWidget* open = QApplication::activePopupWidget()) open->close();
    shell.log.clear();
    child.Unload();
    ready();
    shell.cmdPay.setFocus();
    key(shell.cmdPay.widget(), Qt::Key_S, Qt::ControlModifier);
    key(shell.cmdPay.widget(), Qt::Key_F2);
    EXPECT_EQ(shell.log, "mnuAP shell F2 ");
}

TEST_F(Menus, theWindowMenuListsTheChildren) {
    frmChild first(shell.log);
    frmChild second(shell.log);
    first.setCaption("First");
    second.setCaption("Second");
    first.Show();
    second.Show();
    QMenu* menu = barOf(shell)->actions()[2]->menu();
    emit menu->aboutToShow();
    const auto entries = menu->actions();
    ASSERT_EQ(entries.size(), 6);
    EXPECT_EQ(entries[4]->text(), "&1 First");
    EXPECT_TRUE(entries[5]->isChecked());
    entries[4]->trigger();
    EXPECT_EQ(Form::active(), &first);
    entries[0]->trigger();
    EXPECT_FALSE(frameOf(first)->geometry().intersects(frameOf(second)->geometry())) << "tiled";
    entries[2]->trigger();
    EXPECT_FALSE(first.loaded() || second.loaded());
}

TEST_F(Menus, toolbarButtonsByKey) {
    EXPECT_TRUE(shell.tlbMain.press("NEW"));
    shell.tlbMain.setButtonEnabled("POST", false);
    EXPECT_FALSE(shell.tlbMain.press("POST"));
    shell.tlbMain.setButtonEnabled("POST", true);
    shell.tlbMain.setButtonVisible("POST", false);
    EXPECT_FALSE(shell.tlbMain.press("POST"));
    EXPECT_FALSE(shell.tlbMain.press("NONE"));
    EXPECT_EQ(shell.tlbMain.keys(), (std::vector<std::string>{"NEW", "POST"}));
    EXPECT_EQ(shell.log, "NEW ");
}

TEST_F(Menus, statusPanelsAndTheHelpOfChildren) {
    shell.staBar.setPanel(0, "Maria Santos");
    shell.staBar.setPanel(1, "ACCOUNTING");
    EXPECT_EQ(shell.staBar.text(), "Maria Santos | ACCOUNTING");
    EXPECT_EQ(shell.staBar.panel(7), "");
    frmChild child(shell.log);
    child.txtName.setHelp("Name of the vendor.");
    child.Show();
    ready();
    child.txtName.setFocus();
    EXPECT_EQ(shell.staBar.widget()->findChild<QLabel*>()->text(), "Name of the vendor.");
}

}  // namespace
