// Message and input boxes as a person works them.
#include <gtest/gtest.h>

#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "tests/forms/Gallery.h"
#include "tests/forms/TestForms.h"

namespace {

using namespace kv;
using namespace kv::test;

struct Pressed {
    Buttons buttons;
    std::optional<Answer> byDefault;
    Qt::Key key;
    Answer answer;
};

TEST(Boxes, keysAnswer) {
    const Pressed rows[] = {
        {Buttons::Ok, {}, Qt::Key_Return, Answer::Ok},
        {Buttons::Ok, {}, Qt::Key_Escape, Answer::Ok},
        {Buttons::OkCancel, {}, Qt::Key_Escape, Answer::Cancel},
        {Buttons::YesNo, {}, Qt::Key_Return, Answer::Yes},
        {Buttons::YesNo, Answer::No, Qt::Key_Return, Answer::No},
        {Buttons::YesNo, Answer::No, Qt::Key_Space, Answer::No},
        {Buttons::YesNo, {}, Qt::Key_Escape, Answer::No},
        {Buttons::YesNo, Answer::No, Qt::Key_Y, Answer::Yes},
        {Buttons::YesNoCancel, {}, Qt::Key_Escape, Answer::Cancel},
        {Buttons::YesNoCancel, {}, Qt::Key_N, Answer::No},
        {Buttons::RetryCancel, {}, Qt::Key_R, Answer::Retry},
        {Buttons::RetryCancel, Answer::Yes, Qt::Key_Return, Answer::Retry},
    };
    for (const Pressed& row : rows) {
        const auto box = openBox({.text = "Text", .buttons = row.buttons, .defaultAnswer = row.byDefault});
        ready();
        key(QApplication::focusWidget(), row.key);
        ASSERT_TRUE(box->answered()) << static_cast<int>(row.key);
        EXPECT_EQ(*box->answered(), row.answer) << static_cast<int>(row.key);
        EXPECT_FALSE(box->isVisible());
    }
}

TEST(Boxes, arrowsMoveBetweenButtonsAndClosingIsTheRefusal) {
    auto box = openBox({.text = "Text", .buttons = Buttons::YesNoCancel});
    ready();
    key(QApplication::focusWidget(), Qt::Key_Right);
    key(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(box->answered(), Answer::No);
    box = openBox({.text = "Text", .buttons = Buttons::YesNo});
    box->close();
    EXPECT_EQ(box->answered(), Answer::No);
    box = openBox({.text = "Text", .buttons = Buttons::YesNo});
    click(box->button(Answer::Yes));
    EXPECT_EQ(box->answered(), Answer::Yes);
    EXPECT_EQ(box->button(Answer::Retry), nullptr);
}

TEST(Boxes, longTextsWrapAndShortOnesStayOnTheirLine) {
    const auto narrow = openBox({.text = "Invalid date!"});
    std::string text;
    for (int i = 0; i < 60; ++i) text += "no end of words ";
    const auto wide = openBox({.text = text + "\r\nin Korvane.frmX.Save at line 12"});
    EXPECT_LT(wide->width(), 620);
    EXPECT_GT(wide->height(), narrow->height() + 100);
}

TEST(Boxes, waitForTheAnswerAndGiveTheFocusBack) {
    test::frmShell shell;
    shell.Show();
    ready();
    shell.cmdBook.setFocus();
    QTimer::singleShot(0, [] {
        ready();
        key(QApplication::focusWidget(), Qt::Key_N);
    });
    EXPECT_FALSE(Ask("Are you sure you want to exit?", "Warning"));
    ready();
    EXPECT_EQ(QApplication::focusWidget(), shell.cmdBook.widget());
    QTimer::singleShot(0, [] {
        ready();
        type(QApplication::focusWidget(), "41.50");
        key(QApplication::focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(InputBox("Enter amount to pay.", kProgramTitle, "40.00"), "41.50");
    QTimer::singleShot(0, [] {
        ready();
        key(QApplication::focusWidget(), Qt::Key_Escape);
    });
    EXPECT_EQ(InputBox("Enter amount to pay."), std::nullopt);
}

TEST(Look, everyIconInUseIsThereAndTakesTheColourOfTheTheme) {
    const auto inked = [](const QIcon& icon) {
        const QImage image = icon.pixmap(QSize(66, 66)).toImage();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (qAlpha(image.pixel(x, y)) == 255) return QColor(image.pixel(x, y)).lightness();
        return -1;
    };
    for (const char* name :
         {"document-save", "document-print", "edit-delete", "book-ap", "book-ar", "book-cdb", "book-crb", "book-gl",
          "book-jv", "book-upload", "list-add", "view-calendar", "application-exit"}) {
        Application::instance()->setTheme(Theme::Light);
        const int light = inked(iconOf(name));
        Application::instance()->setTheme(Theme::Dark);
        const int dark = inked(iconOf(name));
        EXPECT_GE(light, 0) << name;
        EXPECT_LT(light, 140) << name << " is dark on light";
        EXPECT_GT(dark, 160) << name << " is light on dark";
    }
    Application::instance()->setTheme(Theme::Light);
    EXPECT_TRUE(iconOf("no-such-icon").isNull());
}

TEST(Look, themesChangeWhileFormsAreOpen) {
    gallery::frmControls form;
    form.Show();
    const auto corner = [&] { return form.widget()->grab().toImage().pixelColor(3, 3).lightness(); };
    EXPECT_GT(corner(), 200);
    Application::instance()->setTheme(Theme::Dark);
    EXPECT_LT(corner(), 60);
    Application::instance()->setTheme(Theme::Light);
    EXPECT_GT(corner(), 200);
}

}  // namespace
