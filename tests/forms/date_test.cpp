// Date fields: what may be typed, what it means, and what is refused.
#include <gtest/gtest.h>

#include <QLineEdit>

#include "platform/forms/DateTyping.h"
#include "tests/forms/TestForms.h"

namespace {

using namespace kv;
using namespace kv::test;

struct Typed {
    const char* text;
    const char* day;  ///< "yyyy-MM-dd"; empty: refused
};

std::string iso(const std::optional<Date>& date) { return date ? Format(*date, "yyyy-MM-dd") : std::string(); }

TEST(DateTyping, days) {
    const Date current(2024, 3, 20);
    const Typed rows[] = {
        {"03/15/2024", "2024-03-15"},
        {"3/5/2024", "2024-03-05"},
        {"3/5/24", "2024-03-05"},
        {"3-5-24", "2024-03-05"},
        {"3.5.24", "2024-03-05"},
        {"3/5", "2024-03-05"},
        {"12/31", "2024-12-31"},
        {"7", "2024-03-07"},
        {"07", "2024-03-07"},
        {"0315", "2024-03-15"},
        {"031524", "2024-03-15"},
        {"03152024", "2024-03-15"},
        {"20240315", "2024-03-15"},
        {"2024-03-15", "2024-03-15"},
        {"2024/3/5", "2024-03-05"},
        {"15 Mar 2024", "2024-03-15"},
        {"March 15, 2024", "2024-03-15"},
        {"mar 15", "2024-03-15"},
        {"02/29/2024", "2024-02-29"},
        {"1/1/29", "2029-01-01"},
        {"1/1/30", "1930-01-01"},
        {" 3 / 5 ", "2024-03-05"},
        {"12312024", "2024-12-31"},
        {"02/30/2024", ""},
        {"02/29/2023", ""},
        {"13/05/2024", ""},
        {"15/3/2024", ""},
        {"0", ""},
        {"32", ""},
        {"", ""},
        {"abc", ""},
        {"1/2/3/4", ""},
        {"031", ""},
        {"mar", ""},
        {"15 xyz 2024", ""},
        {"1/2/20245", ""},
        {"99999999999999999999", ""},
        {"0/0/0", ""},
    };
    for (const Typed& row : rows) EXPECT_EQ(iso(readTypedDay(row.text, current)), row.day) << row.text;
}

TEST(DateTyping, months) {
    const Date current(2024, 3, 1);
    const Typed rows[] = {
        {"03/2024", "2024-03-01"},
        {"3/24", "2024-03-01"},
        {"202403", "2024-03-01"},
        {"032024", "2024-03-01"},
        {"2024-12", "2024-12-01"},
        {"7", "2024-07-01"},
        {"0724", "2024-07-01"},
        {"March 2023", "2023-03-01"},
        {"dec", "2024-12-01"},
        {"03/15/2024", "2024-03-01"},
        {"sept 23", "2023-09-01"},
        {"13/2024", ""},
        {"202413", ""},
        {"0", ""},
        {"", ""},
        {"xyz", ""},
        {"ma", ""},
        {"20240", ""},
    };
    for (const Typed& row : rows) EXPECT_EQ(iso(readTypedMonth(row.text, current)), row.day) << row.text;
}

class frmDates : public Form {
public:
    frmDates() : Form("frmDates", "Dates") {
        setLayout(column({fields({{"&Date:", dtpDate}, {"&Month:", dtpMonth}, {"&Other:", txtOther}})}));
    }
    DatePicker dtpDate{*this, "dtpDate"};
    DatePicker dtpMonth{*this, "dtpMonth", "MMMM yyyy"};
    TextBox txtOther{*this, "txtOther"};
};

class DateField : public testing::Test {
protected:
    DateField() {
        fixClock(Date(2024, 3, 20, 9, 30));
        form.dtpDate.setValue(Date(2024, 3, 20));
        form.dtpMonth.setValue(Date(2024, 3, 1));
        form.Show();
        ready();
        form.dtpDate.setFocus();
    }
    ~DateField() override { releaseClock(); }
    Boxes boxes;
    frmDates form;
};

TEST_F(DateField, typedOverAndLeft) {
    int changes = 0;
    bool validated = false;
    form.dtpDate.onChange = [&] { ++changes; };
    form.dtpDate.onValidate = [&](bool&) { validated = form.dtpDate.text() == "2024-04-05"; };
    type(form.dtpDate.widget(), "4/5");
    EXPECT_EQ(form.dtpDate.text(), "2024-03-20") << "not before it is left";
    key(form.dtpDate.widget(), Qt::Key_Return);
    EXPECT_EQ(form.dtpDate.text(), "2024-04-05");
    EXPECT_EQ(form.dtpDate.shown(), "04/05/2024");
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(validated) << "its validation sees the new date";
    type(form.dtpMonth.widget(), "202312");
    key(form.dtpMonth.widget(), Qt::Key_Tab);
    EXPECT_EQ(form.dtpMonth.shown(), "December 2023");
    EXPECT_EQ(form.dtpMonth.value(), Date(2023, 12, 1));
}

TEST_F(DateField, animpossibleDayIsRefusedOnEveryWayOut) {
    type(form.dtpDate.widget(), "02/30/2024");
    key(form.dtpDate.widget(), Qt::Key_Tab);
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.last(), "Invalid date!");
    EXPECT_EQ(boxes.seen[0].icon, Icon::Exclamation);
    EXPECT_EQ(form.activeControl(), &form.dtpDate);
    EXPECT_EQ(static_cast<QLineEdit*>(form.dtpDate.widget())->selectedText(), "02/30/2024");
    click(form.txtOther.widget());
    EXPECT_EQ(boxes.seen.size(), 2U);
    EXPECT_EQ(form.dtpDate.value(), Date(2024, 3, 20));
    key(form.dtpDate.widget(), Qt::Key_Escape);
    EXPECT_EQ(form.dtpDate.shown(), "03/20/2024");
    EXPECT_TRUE(form.isVisible()) << "the first Escape only gives up the typing";
    key(form.dtpDate.widget(), Qt::Key_Tab);
    EXPECT_EQ(form.activeControl(), &form.dtpMonth);
}

TEST_F(DateField, keysThatMoveTheDate) {
    struct Row {
        Qt::Key key;
        const char* day;
        const char* month;
    };
    const Row rows[] = {
        {Qt::Key_Plus, "2024-03-21", "2024-04-01"},     {Qt::Key_Minus, "2024-03-20", "2024-03-01"},
        {Qt::Key_Up, "2024-03-21", "2024-04-01"},       {Qt::Key_Down, "2024-03-20", "2024-03-01"},
        {Qt::Key_PageDown, "2024-04-20", "2024-04-01"}, {Qt::Key_Home, "2024-04-01", "2024-01-01"},
        {Qt::Key_End, "2024-04-30", "2024-12-01"},      {Qt::Key_PageUp, "2024-03-30", "2024-11-01"},
        {Qt::Key_T, "2024-03-20", "2024-03-01"},
    };
    for (DatePicker* picker : {&form.dtpDate, &form.dtpMonth}) {
        picker->setFocus();
        for (const Row& row : rows) {
            const bool day = picker == &form.dtpDate;
            QTest::keyClick(picker->widget(), row.key);
            EXPECT_EQ(picker->text(), day ? row.day : row.month) << picker->name() << " key " << row.key;
        }
    }
    form.dtpDate.setFocus();
    type(form.dtpDate.widget(), "2024-04-02");
    key(form.dtpDate.widget(), Qt::Key_Tab);
    EXPECT_EQ(form.dtpDate.text(), "2024-04-02") << "while one types, - only separates";
}

TEST_F(DateField, lockedAndPickedFromTheCalendar) {
    key(form.dtpDate.widget(), Qt::Key_F4);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    key(QApplication::focusWidget(), Qt::Key_Right);
    key(QApplication::focusWidget(), Qt::Key_Return);
    ready();
    EXPECT_EQ(form.dtpDate.text(), "2024-03-21");
    EXPECT_EQ(form.activeControl(), &form.dtpDate);
    form.dtpDate.setLocked(true);
    type(form.dtpDate.widget(), "4/5");
    key(form.dtpDate.widget(), Qt::Key_Plus);
    key(form.dtpDate.widget(), Qt::Key_F4);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    key(form.dtpDate.widget(), Qt::Key_Tab);
    EXPECT_EQ(form.dtpDate.text(), "2024-03-21");
}

}  // namespace
