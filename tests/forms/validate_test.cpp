// Leaving a field: whatever takes the focus away, its validation runs once and a refusal keeps the focus; what is no
// leaving by the user runs nothing.
#include <gtest/gtest.h>

#include <QMdiSubWindow>
#include <QTabBar>
#include <QTableView>

#include "platform/base/Error.h"
#include "tests/forms/TestForms.h"

namespace {

using namespace kv;
using namespace kv::test;

/// A child form with one control of each kind that can take the focus from txtA.
class frmFields : public Form {
public:
    explicit frmFields(std::string caption = "Fields") : Form("frmFields", std::move(caption), Window::Child) {
        cboC.addItem("ONE");
        cboC.addItem("TWO");
        cboC.setIndex(0);
        lvwG.setColumns({{"Code", 10}});
        lvwG.setItems({{"1", {"1101"}}, {"2", {"1210"}}});
        lvwG.rows(3);
        cmdX.cancels();
        txtA.onValidate = [this](bool& cancel) {
            ++runs;
            if (script) script(cancel);
        };
        cmdGo.onClick = [this] { ++clicks; };
        chkE.onClick = [this] { ++clicks; };
        cmdX.onClick = [this] { ++clicks; };
        mnuSave.onClick = [this] { ++saves; };
        setMenu({{"&File", {mnuSave}}});
        setLayout(column({
            fields({{"&First:", txtFirst}, {"&A:", txtA}, {"&Buddy:", txtB}, {"&Choice:", cboC}, {"&Date:", dtpD}}),
            row({chkE, cmdGo, cmdX}),
            tabs(tabF, {{"&One", column({txtOne})}, {"&Two", column({txtTwo})}}),
            lvwG,
        }));
    }
    TextBox txtFirst{*this, "txtFirst"};
    TextBox txtA{*this, "txtA"};
    TextBox txtB{*this, "txtB"};
    ComboBox cboC{*this, "cboC"};
    DatePicker dtpD{*this, "dtpD"};
    CheckBox chkE{*this, "chkE", "&Extra"};
    CommandButton cmdGo{*this, "cmdGo", "&Go"};
    CommandButton cmdX{*this, "cmdX", "Cance&l"};
    TabStrip tabF{*this, "tabF"};
    TextBox txtOne{*this, "txtOne"};
    TextBox txtTwo{*this, "txtTwo"};
    ListView lvwG{*this, "lvwG"};
    MenuItem mnuSave{*this, "mnuSave", "&Save", "", "Ctrl+S"};

    int runs = 0;
    int clicks = 0;
    int saves = 0;
    std::function<void(bool&)> script;

    QWidget* heads() { return tabF.widget()->findChild<QTabBar*>(); }
    QWidget* rows() {
        if (auto* table = qobject_cast<QTableView*>(lvwG.widget())) return table->viewport();
        return lvwG.widget()->findChild<QTableView*>()->viewport();
    }
    std::string focusName() const { return activeControl() ? activeControl()->name() : std::string("none"); }
};

enum class Handler { Accepts, Refuses, RefusesWithBox };

struct Case {
    const char* name;
    Handler handler;
    void (*act)(frmFields&);
    int runs;
    const char* focus;
    int clicks = 0;
};

void tab(frmFields& f) { key(f.txtA.widget(), Qt::Key_Tab); }
void backTab(frmFields& f) { key(f.txtA.widget(), Qt::Key_Tab, Qt::ShiftModifier); }
void enter(frmFields& f) { key(f.txtA.widget(), Qt::Key_Return); }
void clickEdit(frmFields& f) { click(f.txtB.widget()); }
void clickButton(frmFields& f) { click(f.cmdGo.widget()); }
void clickTable(frmFields& f) { click(f.rows()); }
void clickCombo(frmFields& f) { click(f.cboC.widget()); }
void clickDate(frmFields& f) { QTest::mouseClick(f.dtpD.widget(), Qt::LeftButton, {}, QPoint(8, 8)); }
void clickCheck(frmFields& f) { QTest::mouseClick(f.chkE.widget(), Qt::LeftButton, {}, QPoint(8, 13)); }
void clickHead(frmFields& f) {
    auto* bar = static_cast<QTabBar*>(f.heads());
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
}
void doubleClick(frmFields& f) { QTest::mouseDClick(f.txtB.widget(), Qt::LeftButton); }
void letterOfButton(frmFields& f) { key(f.txtA.widget(), Qt::Key_G, Qt::AltModifier); }
void letterOfLabel(frmFields& f) { key(f.txtA.widget(), Qt::Key_B, Qt::AltModifier); }
void cancelButton(frmFields& f) { click(f.cmdX.widget()); }
void cancelThenOther(frmFields& f) {
    click(f.cmdX.widget());
    click(f.txtB.widget());
}
void byCode(frmFields& f) { f.txtB.setFocus(); }
void disabled(frmFields& f) { f.txtA.setEnabled(false); }
void hidden(frmFields& f) { f.txtA.setVisible(false); }
void twice(frmFields& f) {
    tab(f);
    tab(f);
}

const Case kCases[] = {
    {"Tab", Handler::Accepts, tab, 1, "txtB"},
    {"Tab refused", Handler::Refuses, tab, 1, "txtA"},
    {"Shift+Tab", Handler::Accepts, backTab, 1, "txtFirst"},
    {"Shift+Tab refused", Handler::Refuses, backTab, 1, "txtA"},
    {"Enter", Handler::Accepts, enter, 1, "txtB"},
    {"Enter refused", Handler::Refuses, enter, 1, "txtA"},
    {"Enter refused with a box", Handler::RefusesWithBox, enter, 1, "txtA"},
    {"click on a text box", Handler::Accepts, clickEdit, 1, "txtB"},
    {"click on a text box refused", Handler::Refuses, clickEdit, 1, "txtA"},
    {"click on a button", Handler::Accepts, clickButton, 1, "cmdGo", 1},
    {"click on a button refused", Handler::Refuses, clickButton, 1, "txtA", 0},
    {"click on a button refused with a box", Handler::RefusesWithBox, clickButton, 1, "txtA", 0},
    {"click on a list", Handler::Accepts, clickTable, 1, "lvwG"},
    {"click on a list refused", Handler::Refuses, clickTable, 1, "txtA"},
    {"click on a combo refused", Handler::Refuses, clickCombo, 1, "txtA"},
    {"click on a date", Handler::Accepts, clickDate, 1, "dtpD"},
    {"click on a date refused", Handler::Refuses, clickDate, 1, "txtA"},
    {"click on a check box", Handler::Accepts, clickCheck, 1, "chkE", 1},
    {"click on a check box refused", Handler::Refuses, clickCheck, 1, "txtA", 0},
    {"click on a tab head refused", Handler::Refuses, clickHead, 1, "txtA"},
    {"double click refused", Handler::RefusesWithBox, doubleClick, 1, "txtA"},
    {"letter of a button", Handler::Accepts, letterOfButton, 1, "cmdGo", 1},
    {"letter of a button refused", Handler::Refuses, letterOfButton, 1, "txtA", 0},
    {"letter of a caption", Handler::Accepts, letterOfLabel, 1, "txtB"},
    {"letter of a caption refused", Handler::Refuses, letterOfLabel, 1, "txtA"},
    {"a button that causes no validation", Handler::Refuses, cancelButton, 0, "cmdX", 1},
    {"validated once the focus goes on from there", Handler::Accepts, cancelThenOther, 1, "txtB", 1},
    {"and taken back when it is refused then", Handler::Refuses, cancelThenOther, 1, "txtA", 1},
    {"focus set by code", Handler::Refuses, byCode, 0, "txtB"},
    {"disabled while it has the focus", Handler::Refuses, disabled, 0, "txtB"},
    {"hidden while it has the focus", Handler::Refuses, hidden, 0, "txtB"},
    {"refused twice", Handler::Refuses, twice, 2, "txtA"},
};

void PrintTo(const Case& one, std::ostream* out) { *out << one.name; }

class Validate : public testing::Test {
protected:
    Validate() {
        shell.Show();
        fields.Show();
        ready();
        fields.txtA.setFocus();
        type(fields.txtA.widget(), "99");
    }
    void handle(Handler how) {
        fields.script = [how](bool& cancel) {
            cancel = how != Handler::Accepts;
            if (how == Handler::RefusesWithBox) MsgBox("There is no such account.", Icon::Exclamation);
        };
    }
    Boxes boxes;
    test::frmShell shell;
    frmFields fields;
};

class ValidateCase : public Validate, public testing::WithParamInterface<Case> {};

TEST_P(ValidateCase, runsOnceAndKeepsTheFocusWhenRefused) {
    const Case& one = GetParam();
    handle(one.handler);
    const int page = fields.tabF.index();
    one.act(fields);
    ready();
    EXPECT_EQ(fields.runs, one.runs);
    EXPECT_EQ(fields.focusName(), one.focus);
    EXPECT_EQ(fields.clicks, one.clicks);
    EXPECT_EQ(fields.txtA.text(), "99");
    if (one.handler != Handler::Accepts) {
        EXPECT_EQ(fields.tabF.index(), page);
    }
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "a refused click opens no list";
    EXPECT_EQ(!fields.txtA.refused().empty(), one.handler != Handler::Accepts && one.runs > 0);
}

INSTANTIATE_TEST_SUITE_P(Leaving, ValidateCase, testing::ValuesIn(kCases), [](const auto& of) {
    std::string name = of.param.name;
    for (char& c : name)
        if (!isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
});

TEST_F(Validate, aTabHeadComesToTheFrontWhenAccepted) {
    handle(Handler::Accepts);
    clickHead(fields);
    EXPECT_EQ(fields.runs, 1);
    EXPECT_EQ(fields.tabF.index(), 1);
}

TEST_F(Validate, aShortcutOfAMenuValidatesNothingAndFires) {
    handle(Handler::Refuses);
    key(fields.txtA.widget(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(fields.saves, 1);
    EXPECT_EQ(fields.runs, 0);
}

TEST_F(Validate, anotherChildTakesTheFocusUnasked) {
    handle(Handler::Refuses);
    frmFields other("Other");
    other.Show();
    ready();
    EXPECT_EQ(Form::active(), &other);
    click(other.txtB.widget());
    EXPECT_EQ(fields.runs, 0);
    EXPECT_EQ(QApplication::focusWidget(), other.txtB.widget());
}

TEST_F(Validate, closingTheChildOrTheShellAsksNoField) {
    handle(Handler::Refuses);
    static_cast<QMdiSubWindow*>(frameOf(fields))->close();
    EXPECT_FALSE(fields.loaded());
    fields.Show();
    fields.txtA.setFocus();
    shell.widget()->close();
    EXPECT_FALSE(shell.loaded());
    EXPECT_FALSE(fields.loaded());
    EXPECT_EQ(fields.runs, 0);
}

TEST_F(Validate, theFocusThatTheHandlerSetsStays) {
    fields.script = [this](bool& cancel) {
        fields.dtpD.setFocus();
        cancel = false;
    };
    tab(fields);
    EXPECT_EQ(fields.focusName(), "dtpD");
    fields.txtA.setFocus();
    click(fields.cmdGo.widget());
    EXPECT_EQ(fields.focusName(), "dtpD");
    EXPECT_EQ(fields.clicks, 0);
}

TEST_F(Validate, theHandlerMayCloseItsOwnForm) {
    fields.script = [this](bool& cancel) {
        cancel = true;
        fields.Unload();
    };
    tab(fields);
    EXPECT_FALSE(fields.loaded());
    ready();
}

TEST_F(Validate, aFailingHandlerShowsItsErrorAndLetsTheFocusGo) {
    fields.script = [](bool&) { throw Error(5, "here", "It went wrong."); };
    tab(fields);
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, "Application Error");
    EXPECT_NE(boxes.last().find("in Korvane.frmFields.txtA_Validate at line "), std::string::npos) << boxes.last();
    EXPECT_EQ(fields.focusName(), "txtB");
}

TEST_F(Validate, aMarkStandsUntilTheFieldChangesOrPasses) {
    handle(Handler::RefusesWithBox);
    tab(fields);
    EXPECT_EQ(fields.txtA.refused(), "There is no such account.");
    type(fields.txtA.widget(), "1");
    EXPECT_EQ(fields.txtA.refused(), "");
    fields.txtA.setRefused("Needed.");
    handle(Handler::Accepts);
    tab(fields);
    EXPECT_EQ(fields.txtA.refused(), "Needed.") << "a mark that the screen set is the screen's to clear";
}

TEST_F(Validate, theActiveFieldCanBeAskedByCode) {
    handle(Handler::Refuses);
    EXPECT_FALSE(fields.validateActive());
    handle(Handler::Accepts);
    EXPECT_TRUE(fields.validateActive());
    EXPECT_EQ(fields.runs, 2);
}

TEST_F(Validate, theWheelChangesNoFieldAndTakesNoFocus) {
    const QPointF at(10, 10);
    QWheelEvent wheel(at, fields.cboC.widget()->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(fields.cboC.widget(), &wheel);
    EXPECT_EQ(fields.cboC.index(), 0);
    EXPECT_EQ(fields.focusName(), "txtA");
}

}  // namespace
