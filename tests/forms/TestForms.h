#pragma once
// TestForms: what the tests of forms share: a recorder of boxes and a form whose life can be watched.

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <string>
#include <utility>
#include <vector>

#include "platform/forms/Application.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/Form.h"
#include "platform/forms/Internal.h"
#include "platform/forms/Lists.h"

namespace kv::test {

/// Answers every box with its first answer that lets things go on, and keeps what it said.
class Boxes {
public:
    Boxes() : before_(dialogHooks()) {
        dialogHooks().message = [this](const MessageBox& box) {
            seen.push_back(box);
            return answer;
        };
    }
    ~Boxes() { dialogHooks() = before_; }
    Boxes(const Boxes&) = delete;
    Boxes& operator=(const Boxes&) = delete;

    std::vector<MessageBox> seen;
    Answer answer = Answer::Ok;
    std::string last() const { return seen.empty() ? std::string() : seen.back().text; }

private:
    DialogHooks before_;
};

/// Lets things happen; under a window manager it waits until the window in front is active.
inline void ready() {
    settle();
    if (Application::offscreen()) return;
    QWidget* front = QApplication::activeModalWidget();
    if (!front && Form::active()) front = Form::active()->widget()->window();
    (void)QTest::qWaitFor([&] { return !front || QApplication::activeWindow() == front; }, 2000);
    settle();
}

/// Works in the next modal form that appears.
inline void whenModal(std::function<void(Form&)> work) {
    dialogHooks().modal = [work = std::move(work)](Form& form) {
        ready();
        work(form);
    };
}

inline void key(QWidget* widget, Qt::Key which, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(widget, which, held);
}

inline void type(QWidget* widget, const char* text) {
    for (const QChar c : QString::fromUtf8(text)) {
        if (c.unicode() < 128)
            QTest::keyClick(widget, c.toLatin1());
        else
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

inline void click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }

/// A shell that holds the middle for children.
class frmShell : public Form {
public:
    frmShell() : Form("frmShell", "Shell", Window::Shell) {
        setStatusBar(staBar);
        setLayout(column({cmdBook, mdiArea()}));
    }
    StatusBar staBar{*this, "staBar"};
    CommandButton cmdBook{*this, "cmdBook", "&Book"};
};

}  // namespace kv::test
