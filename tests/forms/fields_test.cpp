// What may stand in a field, on every way in; choices, checks, keys that handlers see; help and messages.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>

#include "tests/forms/TestForms.h"

namespace {

using namespace kv;
using namespace kv::test;

class frmFields : public Form {
public:
    frmFields() : Form("frmFields", "Fields") {
        txtCode.code();
        txtShort.maxLength(4);
        txtDigits.chars("0123456789.");
        txtMemo.lines(3).maxLength(12);
        for (const char* type : {"REGULAR", "PETTY CASH"}) cboType.addItem(type, std::string(type).substr(0, 1));
        setStatusBar(staBar);
        setLayout(column({
            fields({{"&Code:", txtCode},
                    {"&Short:", txtShort},
                    {"&Digits:", txtDigits},
                    {"Free:", txtFree},
                    {"Memo:", txtMemo},
                    {"&Type:", cboType},
                    {"Terms:", cboTerms}}),
            row({chkVat, optCash, optCheck, optOther}),
        }));
        setKeyPreview(true);
    }
    void Form_KeyPress(int& character) override {
        if (preview) preview(character);
    }
    TextBox txtCode{*this, "txtCode"};
    TextBox txtShort{*this, "txtShort"};
    TextBox txtDigits{*this, "txtDigits"};
    TextBox txtFree{*this, "txtFree"};
    TextBox txtMemo{*this, "txtMemo"};
    ComboBox cboType{*this, "cboType"};
    ComboBox cboTerms{*this, "cboTerms", true};
    CheckBox chkVat{*this, "chkVat", "VAT"};
    OptionButton optCash{*this, "optCash", "Cash", "pay"};
    OptionButton optCheck{*this, "optCheck", "Check", "pay"};
    OptionButton optOther{*this, "optOther", "Other", "else"};
    StatusBar staBar{*this, "staBar"};
    std::function<void(int&)> preview;
};

class Fields : public testing::Test {
protected:
    Fields() {
        form.Show();
        ready();
    }
    frmFields form;
};

void paste(QWidget* widget, const char* text) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
    key(widget, Qt::Key_V, Qt::ControlModifier);
}

void drop(QWidget* widget, const char* text) {
    QMimeData data;
    data.setText(QString::fromUtf8(text));
    QWidget* target = widget;
    if (auto* memo = qobject_cast<QPlainTextEdit*>(widget)) target = memo->viewport();
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    QDropEvent event(QPointF(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

void compose(QWidget* widget, const char* text) {
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8(text));
    QCoreApplication::sendEvent(widget, &event);
}

struct WayIn {
    const char* name;
    void (*put)(QWidget*, const char*);
};

constexpr WayIn kWays[] = {{"keys", type}, {"paste", paste}, {"drop", drop}, {"input method", compose}};

TEST_F(Fields, rulesHoldOnEveryWayIn) {
    struct Row {
        TextBox* box;
        const char* given;
        const char* taken;
    };
    const Row rows[] = {
        {&form.txtCode, "o'brien x", "OBRIEN X"},
        {&form.txtCode, "d'arc's \xC3\xB1", "DARCS \xC3\x91"},
        {&form.txtCode, "''", ""},
        {&form.txtShort, "abcdefg", "abcd"},
        {&form.txtDigits, "1,250.75 PHP", "1250.75"},
        {&form.txtFree, "O'Brien x", "O'Brien x"},
        {&form.txtMemo, "Twelve letters and more", "Twelve lette"},
    };
    for (const WayIn& way : kWays)
        for (const Row& row : rows) {
            row.box->setText("");
            row.box->setFocus();
            way.put(row.box->widget(), row.given);
            EXPECT_EQ(row.box->text(), row.taken) << way.name << " of " << row.given << " into " << row.box->name();
        }
}

TEST_F(Fields, aPasteIntoTheMiddleKeepsWhatIsAround) {
    form.txtCode.setText("AB");
    auto* line = static_cast<QLineEdit*>(form.txtCode.widget());
    form.txtCode.setFocus();
    line->setCursorPosition(1);
    paste(line, "x'y");
    EXPECT_EQ(form.txtCode.text(), "AXYB");
    type(line, "z");
    EXPECT_EQ(form.txtCode.text(), "AXYZB");
    form.txtShort.setText("1234");
    form.txtShort.setFocus();
    static_cast<QLineEdit*>(form.txtShort.widget())->setCursorPosition(2);
    paste(form.txtShort.widget(), "99");
    EXPECT_EQ(form.txtShort.text(), "1234") << "what stood there is not pushed out";
}

TEST_F(Fields, textSetByCodeStandsAsItIs) {
    form.txtCode.setText("o'brien");
    EXPECT_EQ(form.txtCode.text(), "o'brien");
    form.txtShort.setText("abcdefg");
    EXPECT_EQ(form.txtShort.text(), "abcdefg");
    form.txtMemo.setText("Twelve letters and more");
    EXPECT_EQ(form.txtMemo.text(), "Twelve letters and more");
}

TEST_F(Fields, typingReplacesWhatWasSelectedOnArrival) {
    form.txtCode.setText("V0001");
    form.txtCode.setFocus();
    type(form.txtCode.widget(), "v2");
    EXPECT_EQ(form.txtCode.text(), "V2");
    key(form.txtCode.widget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(form.txtCode.text(), "V2") << "a typed code can be undone";
}

TEST_F(Fields, aLockedFieldTakesNothingAndTabPassesIt) {
    form.txtShort.setText("x");
    form.txtShort.setLocked(true);
    for (const WayIn& way : kWays) way.put(form.txtShort.widget(), "y");
    EXPECT_EQ(form.txtShort.text(), "x");
    form.txtCode.setFocus();
    key(form.txtCode.widget(), Qt::Key_Tab);
    EXPECT_EQ(form.activeControl(), &form.txtDigits);
    form.cboType.setIndex(0);
    form.cboType.setLocked(true);
    form.cboType.setFocus();
    key(form.cboType.widget(), Qt::Key_Down);
    key(form.cboType.widget(), Qt::Key_P);
    click(form.cboType.widget());
    EXPECT_EQ(form.cboType.index(), 0);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Fields, enterMovesOnFromEveryFieldAndCtrlEnterBreaksTheLine) {
    form.txtCode.setFocus();
    std::string way;
    for (int i = 0; i < 8; ++i) {
        way += form.activeControl()->name() + " ";
        key(QApplication::focusWidget(), i % 2 ? Qt::Key_Enter : Qt::Key_Return);
    }
    EXPECT_EQ(way, "txtCode txtShort txtDigits txtFree txtMemo cboType cboTerms chkVat ");
    form.txtMemo.setFocus();
    type(form.txtMemo.widget(), "a");
    key(form.txtMemo.widget(), Qt::Key_Return, Qt::ControlModifier);
    type(form.txtMemo.widget(), "b");
    EXPECT_EQ(form.txtMemo.text(), "a\nb");
}

TEST_F(Fields, handlersSeeKeysBeforeTheField) {
    std::string log;
    form.preview = [&](int& character) {
        log += "form " + std::to_string(character) + " ";
        if (character == '\'')
            character = 0;
        else if (character >= 'a' && character <= 'z')
            character -= 32;
    };
    form.txtFree.onKeyPress = [&](int& character) {
        log += "field " + std::to_string(character) + " ";
        if (character == 'X') character = 0;
    };
    form.txtFree.onKeyDown = [&](const std::string& name, bool& handled) {
        if (name == "F2" || name == "Ctrl+Insert") {
            log += name + " ";
            handled = true;
        }
    };
    form.txtFree.setFocus();
    type(form.txtFree.widget(), "a'x");
    EXPECT_EQ(form.txtFree.text(), "A");
    key(form.txtFree.widget(), Qt::Key_F2);
    key(form.txtFree.widget(), Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(log, "form 97 field 65 form 39 form 120 field 88 F2 Ctrl+Insert ");
    form.preview = [&](int& character) { character = character == 13 ? 0 : character; };
    key(form.txtFree.widget(), Qt::Key_Return);
    EXPECT_EQ(form.activeControl(), &form.txtFree) << "the form has swallowed Enter";
}

TEST_F(Fields, choices) {
    int changes = 0;
    form.cboType.onChange = [&] { ++changes; };
    EXPECT_EQ(form.cboType.index(), -1) << "the first entry is no choice yet";
    form.cboType.setKey("P");
    EXPECT_EQ(form.cboType.text(), "PETTY CASH");
    form.cboType.setText("nothing like it");
    EXPECT_EQ(form.cboType.index(), -1);
    form.cboType.setFocus();
    key(form.cboType.widget(), Qt::Key_R);
    EXPECT_EQ(form.cboType.key(), "R");
    EXPECT_EQ(changes, 3);
    form.cboTerms.addItem("30 DAYS");
    form.cboTerms.setText("45 DAYS");
    EXPECT_EQ(form.cboTerms.text(), "45 DAYS");
    form.cboTerms.setText("30 DAYS");
    EXPECT_EQ(form.cboTerms.index(), 0);
}

TEST_F(Fields, checksAndOptionsOfOneGroup) {
    int clicks = 0;
    form.chkVat.onClick = form.optCheck.onClick = [&] { ++clicks; };
    form.optOther.choose();
    form.optCash.choose();
    QTest::mouseClick(form.optCheck.widget(), Qt::LeftButton, {}, QPoint(8, 13));
    EXPECT_TRUE(form.optCheck.chosen());
    EXPECT_FALSE(form.optCash.chosen());
    EXPECT_TRUE(form.optOther.chosen()) << "of another group";
    form.chkVat.setFocus();
    key(form.chkVat.widget(), Qt::Key_Space);
    EXPECT_TRUE(form.chkVat.checked());
    form.chkVat.setChecked(false);
    EXPECT_EQ(clicks, 2);
}

TEST_F(Fields, helpAndFocusEvents) {
    std::string log;
    auto* help = form.staBar.widget()->findChild<QLabel*>();
    form.txtCode.setFocus();
    form.txtFree.setHelp("Any text.");
    form.txtCode.onLostFocus = [&] { log += "left "; };
    form.txtFree.onGotFocus = [&] { log += "got "; };
    form.txtFree.setFocus();
    EXPECT_EQ(log, "left got ");
    EXPECT_EQ(help->text(), "Any text.");
    form.cboType.setFocus();
    EXPECT_EQ(help->text(), "");
}

TEST_F(Fields, statesOfControls) {
    form.txtFree.setVisible(false);
    form.txtDigits.setEnabled(false);
    EXPECT_FALSE(form.txtFree.visible());
    EXPECT_FALSE(form.txtDigits.enabled());
    for (const auto* caption : form.widget()->findChildren<QLabel*>())
        if (caption->text() == "Free:") {
            EXPECT_FALSE(caption->isVisible()) << "a caption goes with its field";
        }
    form.txtShort.setFocus();
    key(form.txtShort.widget(), Qt::Key_Tab);
    EXPECT_EQ(form.activeControl(), &form.txtMemo);
}

TEST_F(Fields, keysSentByCode) {
    form.txtCode.setFocus();
    sendKeys("a'b{Tab}12{Enter}", true);
    EXPECT_EQ(form.txtCode.text(), "AB");
    EXPECT_EQ(form.txtShort.text(), "12");
    EXPECT_EQ(form.activeControl(), &form.txtDigits);
    sendKeys("7", false);
    EXPECT_EQ(form.txtDigits.text(), "") << "later";
    ready();
    EXPECT_EQ(form.txtDigits.text(), "7");
    for (const char* name : {"Enter", "Escape", "PageDown", "Ctrl+Insert", "Shift+Tab", "F12", "Ctrl+Shift+S"}) {
        const auto combination = keyFromName(name);
        ASSERT_TRUE(combination) << name;
        EXPECT_EQ(keyName(QKeyEvent(QEvent::KeyPress, combination->key(), combination->keyboardModifiers())), name);
    }
    EXPECT_FALSE(keyFromName("Hyper+X"));
}

}  // namespace
