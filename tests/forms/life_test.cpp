// The life of forms: loading, showing, leaving, errors on the way, and what is remembered of them.
#include <gtest/gtest.h>

#include <QMdiSubWindow>
#include <QSplitter>
#include <QTimer>
#include <cstdio>
#include <fstream>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "tests/forms/TestForms.h"

namespace {

using namespace kv;
using namespace kv::test;

/// Writes down what happens to it.
class frmLife : public Form {
public:
    explicit frmLife(std::string name = "frmLife", Window window = Window::Dialog)
        : Form(std::move(name), "Life", window) {
        cmdSave.primary();
        cmdSave.onClick = [this] { log += "save "; };
        setLayout(column({fields({{"&Name:", txtName}, {"&Code:", txtCode}}), lvwList, buttons({cmdSave, cmdStop})}));
    }
    TextBox txtName{*this, "txtName"};
    TextBox txtCode{*this, "txt_Code"};
    ListView lvwList{*this, "lvwList"};
    CommandButton cmdSave{*this, "cmdOption0", "&Save"};
    CommandButton cmdStop{*this, "cmdOption1", "S&top"};
    std::string log;
    bool refuse = false;
    std::function<void()> onLoad;

    void Form_Load() override {
        log += "load ";
        if (onLoad) onLoad();
    }
    void Form_QueryUnload(bool& cancel) override {
        log += "query ";
        cancel = refuse;
    }
    void Form_Unload() override { log += "unload "; }
    using Form::setFirstFocus;
    using Form::setSize;
};

TEST(FormLife, loadsOnceShowsModallyAndUnloads) {
    frmLife form;
    Form* front = nullptr;
    whenModal([&](Form& shown) {
        front = Form::active();
        EXPECT_TRUE(shown.isVisible());
        EXPECT_EQ(shown.activeControl(), &form.txtName);
        EXPECT_TRUE(shown.Unload());
    });
    form.Load();
    form.ShowModal();
    dialogHooks() = {};
    EXPECT_EQ(front, &form);
    EXPECT_EQ(form.log, "load query unload ");
    EXPECT_FALSE(form.loaded());
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(Form::openForms().empty());
    EXPECT_TRUE(form.Unload()) << "an unloaded form is gone already";
    EXPECT_EQ(form.log, "load query unload ");
}

TEST(FormLife, waitsInALoopOfItsOwnUntilUnloadedOrHidden) {
    frmLife form;
    QTimer::singleShot(0, [&] { form.Unload(); });
    form.ShowModal();
    EXPECT_EQ(form.log, "load query unload ");
    QTimer::singleShot(0, [&] { form.Hide(); });
    form.ShowModal();
    EXPECT_TRUE(form.loaded());
    EXPECT_EQ(form.log, "load query unload load ");
}

TEST(FormLife, mayRefuseToGo) {
    frmLife form;
    form.refuse = true;
    whenModal([&](Form& shown) {
        shown.widget()->close();
        EXPECT_TRUE(shown.isVisible());
        key(form.txtName.widget(), Qt::Key_Escape);
        EXPECT_TRUE(shown.isVisible());
        form.refuse = false;
        key(form.txtName.widget(), Qt::Key_Escape);
        EXPECT_FALSE(shown.isVisible());
    });
    form.ShowModal();
    dialogHooks() = {};
    EXPECT_EQ(form.log, "load query query query unload ");
}

TEST(FormLife, aFormUnloadedWhileLoadingIsNotShown) {
    frmLife form;
    form.onLoad = [&] { form.Unload(); };
    bool shown = false;
    whenModal([&](Form&) { shown = true; });
    form.ShowModal();
    dialogHooks() = {};
    EXPECT_FALSE(shown);
}

TEST(FormLife, aFailingLoadShowsTheErrorAndTheForm) {
    Boxes boxes;
    frmLife form;
    form.onLoad = [] { throw Error(3021, "Recordset", "No current record."); };
    const unsigned line = __LINE__ - 1;
    bool shown = false;
    whenModal([&](Form& it) {
        shown = true;
        it.Unload();
    });
    form.ShowModal();
    EXPECT_TRUE(shown);
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, "Application Error");
    EXPECT_EQ(boxes.seen[0].icon, Icon::Stop);
    EXPECT_EQ(boxes.last(), "No current record.\r\nin Korvane.frmLife.Form_Load at line " + std::to_string(line));
}

TEST(FormLife, everyErrorOfAnEventGoesOneWay) {
    Boxes boxes;
    frmLife form;
    form.Show();
    form.cmdSave.onClick = [] {
        traced("Module2.Query", std::source_location::current(), [] { throw Error(7, "x", "Deep."); });
    };
    form.cmdSave.press();
    EXPECT_NE(boxes.last().find("Deep.\r\nin Korvane.Module2.Query at line "), std::string::npos);
    EXPECT_NE(boxes.last().find("\r\nin Korvane.frmLife.cmdOption0_Click at line "), std::string::npos);
    form.cmdSave.onClick = [] { throw std::runtime_error("Out of paper."); };
    form.cmdSave.press();
    EXPECT_EQ(boxes.last().rfind("Out of paper.\r\nin Korvane.frmLife.cmdOption0_Click at line ", 0), 0U);
    EXPECT_FALSE(form.run("Save_Routine", [] { throw std::runtime_error("No."); }));
    EXPECT_EQ(boxes.last(), "No.\r\nin Korvane.frmLife.Save_Routine at line " + std::to_string(__LINE__ - 1));
    EXPECT_TRUE(form.run("Save_Routine", [] {}));
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(boxes.seen.size(), 3U);
}

TEST(FormLife, aButtonMayCloseAndItsOwnerForgetTheForm) {
    auto form = std::make_unique<frmLife>();
    form->cmdSave.onClick = [&form] {
        form->Unload();
        form.reset();
    };
    form->Show();
    click(form->cmdSave.widget());
    EXPECT_EQ(form, nullptr);
    ready();
    form = std::make_unique<frmLife>();
    form->Show();
    form.reset();  // without unloading it
    ready();
    EXPECT_TRUE(Form::openForms().empty());
}

TEST(FormLife, theShellGoesWithItsChildrenOrNotAtAll) {
    test::frmShell shell;
    shell.Show();
    frmLife first("frmFirst", Form::Window::Child);
    frmLife second("frmSecond", Form::Window::Child);
    first.Show();
    second.Show();
    EXPECT_EQ(Form::active(), &second);
    EXPECT_EQ(Form::openForms(), (std::vector<Form*>{&shell, &first, &second}));
    first.Show();
    EXPECT_EQ(Form::active(), &first);
    EXPECT_EQ(first.log, "load ") << "showing again only brings to the front";
    first.refuse = true;
    EXPECT_FALSE(shell.Unload());
    EXPECT_TRUE(shell.loaded());
    EXPECT_FALSE(second.loaded()) << "closed before the first refused";
    first.refuse = false;
    EXPECT_TRUE(shell.Unload());
    EXPECT_EQ(Form::shell(), nullptr);
    EXPECT_TRUE(Form::openForms().empty());
}

class frmHome : public Form {
public:
    frmHome() : Form("frmHome", "Home", Window::Child) {
        setHome();
        setLayout(column({lblHere}));
    }
    Label lblHere{*this, "lblHere", "Here"};
    int seen = 0;
    void Form_Activate() override { ++seen; }
};

TEST(FormLife, theHomeFormFillsTheMiddleWhileNoOtherChildIsOpen) {
    test::frmShell shell;
    shell.Show();
    frmHome home;
    home.Show();
    EXPECT_TRUE(home.isVisible());
    EXPECT_EQ(Form::active(), &shell);
    EXPECT_EQ(home.seen, 0);
    frmLife child("frmChild", Form::Window::Child);
    child.Show();
    EXPECT_FALSE(home.isVisible());
    EXPECT_EQ(Form::active(), &child);
    child.Unload();
    EXPECT_TRUE(home.isVisible());
    EXPECT_EQ(home.seen, 1);
    EXPECT_EQ(Form::active(), &shell);
}

TEST(FormLife, childrenAreStackedInsideTheShell) {
    test::frmShell shell;
    shell.Show();
    std::vector<std::unique_ptr<frmLife>> children;
    for (int i = 0; i < 10; ++i) {
        children.push_back(std::make_unique<frmLife>("frmChild" + std::to_string(i), Form::Window::Child));
        children.back()->setSize(3000, 300);
        children.back()->Show();
        const QWidget* frame = frameOf(*children.back());
        EXPECT_TRUE(frame->parentWidget()->rect().contains(frame->geometry())) << i;
    }
    EXPECT_NE(frameOf(*children[0])->pos(), frameOf(*children[1])->pos());
}

TEST(FormLife, modalFormsStackAndTheOneBelowIsInFrontAfterwards) {
    frmLife outer("frmOuter");
    frmLife inner("frmInner");
    int depth = 0;
    whenModal([&](Form& shown) {
        if (++depth == 1) {
            inner.ShowModal();
            ready();
            EXPECT_EQ(Form::active(), &outer);
            EXPECT_EQ(QApplication::focusWidget(), outer.txtName.widget());
        }
        shown.Unload();
    });
    outer.ShowModal();
    dialogHooks() = {};
    EXPECT_EQ(depth, 2);
}

TEST(FormLife, escapeAndEnterWithoutAField) {
    frmLife form;
    whenModal([&](Form& shown) {
        form.lvwList.setFocus();
        key(form.lvwList.widget(), Qt::Key_Escape);
        EXPECT_FALSE(shown.isVisible());
    });
    form.ShowModal();
    form.cmdStop.cancels();
    form.cmdStop.onClick = [&] { form.log += "stop "; };
    form.log.clear();
    whenModal([&](Form& shown) {
        key(form.txtName.widget(), Qt::Key_Escape);
        EXPECT_TRUE(shown.isVisible()) << "the button decides";
        key(form.cmdStop.widget(), Qt::Key_Return);
        form.widget()->setFocus();
        key(form.widget(), Qt::Key_Return);
        EXPECT_EQ(form.log, "load stop stop save ");
        shown.Unload();
    });
    form.ShowModal();
    dialogHooks() = {};
}

TEST(FormLife, namesOfControls) {
    frmLife form;
    EXPECT_EQ(form.control("cmdOption_0"), &form.cmdSave);
    EXPECT_EQ(form.control("cmdOption(1)"), &form.cmdStop);
    EXPECT_EQ(form.control("txtCode"), &form.txtCode);
    EXPECT_EQ(form.control("txtCod"), nullptr);
}

TEST(FormLife, firstFocusIsTheOneAskedForOrTheOneThatLoadingSet) {
    frmLife form;
    form.setFirstFocus(form.txtCode);
    form.Show();
    EXPECT_EQ(form.activeControl(), &form.txtCode);
    form.Unload();
    form.onLoad = [&] { form.cmdSave.setFocus(); };
    form.Show();
    EXPECT_EQ(form.activeControl(), &form.cmdSave);
}

TEST(FormMemory, keepsSizesBetweenRunsAndNothingWithoutAFile) {
    const std::string path = testing::TempDir() + "forms-memory.txt";
    std::remove(path.c_str());
    setMemoryFile(path);
    QSize size;
    {
        frmLife form;
        form.Show();
        size = form.widget()->size() + QSize(60, 40);
        form.widget()->resize(size);
        form.Unload();
    }
    remember("frmLife.lvwList.columns", "80,120");
    setMemoryFile("");
    {
        frmLife form;
        form.Show();
        EXPECT_NE(form.widget()->size(), size);
    }
    setMemoryFile(path);
    EXPECT_EQ(remembered("frmLife.lvwList.columns"), "80,120");
    {
        frmLife form;
        form.Show();
        EXPECT_EQ(form.widget()->size(), size);
    }
    std::ofstream(path) << "no key\n=\nfrmLife.size=9x9\nfrmX.size=wide\n";
    setMemoryFile(path);
    frmLife form;
    form.Show();
    EXPECT_GT(form.widget()->width(), 100) << "a size that cannot be is not taken";
    setMemoryFile("");
    std::remove(path.c_str());
}

class frmSplit : public Form {
public:
    frmSplit() : Form("frmSplit", "Split") {
        setLayout(split(tvwLeft, lvwRight));
        setSize(700, 300);
    }
    TreeView tvwLeft{*this, "tvwLeft"};
    ListView lvwRight{*this, "lvwRight"};
    QSplitter* splitter() { return widget()->findChild<QSplitter*>(); }
};

TEST(FormMemory, keepsWhereASplitStood) {
    const std::string path = testing::TempDir() + "forms-split.txt";
    std::remove(path.c_str());
    setMemoryFile(path);
    for (const int wanted : {180, 260}) {
        frmSplit form;
        form.Show();
        form.splitter()->setSizes({wanted, 600 - wanted});
        const int left = form.splitter()->sizes().front();
        form.Unload();
        frmSplit again;
        again.Show();
        ready();
        EXPECT_NEAR(again.splitter()->sizes().front(), left, 3);
    }
    setMemoryFile("");
    std::remove(path.c_str());
}

}  // namespace
