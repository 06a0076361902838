// The report's view: pages, zoom, search, selection, drill-down and the keyboard, as a user works with them.
#include "platform/print/ReportView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "platform/forms/Form.h"
#include "platform/print/PagesArea.h"
#include "tests/print/Samples.h"

namespace kv {
namespace {

class ViewForm : public Form {
public:
    ReportView rptView{*this, "rptView"};
    std::string drilled;
    int laidOut = 0;
    ViewForm() : Form("frmView", "View") {
        setLayout(column({expand(rptView)}));
        rptView.onDrill = [this](const std::string& screen, const std::string& key) { drilled = screen + ":" + key; };
        rptView.onLayoutDone = [this] { ++laidOut; };
    }
};

class View : public testing::Test {
protected:
    void SetUp() override {
        form_.Load();
        form_.widget()->resize(900, 600);
        form_.widget()->show();
        QApplication::processEvents();
    }
    void show(const std::string& file, ResultSet rows) {
        report_ = samples::report(file);
        report_->setRows("main", std::move(rows));
        report_->runOnRows();
        form_.rptView.setReport(report_.get());
        QApplication::processEvents();
    }
    void TearDown() override { form_.rptView.setReport(nullptr); }
    template <class Widget>
    Widget* inner(const char* name) {
        return dynamic_cast<Widget*>(form_.rptView.widget()->findChild<QWidget*>(name));
    }
    PagesArea* area() { return inner<PagesArea>("qt_pages"); }

    ViewForm form_;
    std::unique_ptr<Report> report_;
    ReportView& view_ = form_.rptView;
};

TEST_F(View, GoesThroughPagesByKeys) {
    EXPECT_EQ(view_.text(), "");
    show("GLBatchJrnl_Ver2_JV.rpt", samples::batchJournal(3));
    EXPECT_EQ(view_.text(), "Page 1 of 3");
    EXPECT_EQ(form_.laidOut, 1);
    QTest::keyClick(area(), Qt::Key_End);
    EXPECT_EQ(view_.page(), 3);
    QTest::keyClick(area(), Qt::Key_Home);
    EXPECT_EQ(view_.page(), 1);
    for (int n = 0; n < 3; ++n) QTest::keyClick(area(), Qt::Key_PageDown);
    EXPECT_EQ(view_.page(), 2);
    QTest::keyClick(area(), Qt::Key_G, Qt::ControlModifier);
    auto* field = inner<QLineEdit>("qt_page");
    field->selectAll();
    QTest::keyClicks(field, "3");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(view_.page(), 3);
    EXPECT_NE(view_.pageText(3).find("Voucher no.\t2024-00003\tCancelled"), std::string::npos) << view_.pageText(3);
    EXPECT_EQ(view_.pageText(4), "");
}

TEST_F(View, Zooms) {
    show("TrialBalance.rpt", samples::trialBalance());
    EXPECT_EQ(view_.zoom(), 100);
    QTest::keyClick(area(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(view_.zoom(), 125);
    QTest::keyClick(area(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(view_.zoom(), 100);
    view_.fitWidth();
    const int wide = view_.zoom();
    EXPECT_LT(wide, 100);
    view_.fitPage();
    EXPECT_LE(view_.zoom(), wide);
    view_.setZoom(100000);
    EXPECT_EQ(view_.zoom(), 400);
}

TEST_F(View, FindsAndCopies) {
    show("GLBatchJrnl.rpt", samples::batchJournal(9));
    QTest::keyClick(area(), Qt::Key_F, Qt::ControlModifier);
    auto* field = inner<QLineEdit>("qt_find");
    ASSERT_TRUE(field->hasFocus());
    QTest::keyClicks(field, "capital STOCK");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(view_.found(), 4);
    EXPECT_EQ(view_.selectedText(), "Capital stock");
    area()->setFocus();
    QTest::keyClick(area(), Qt::Key_F3);
    QTest::keyClick(area(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Capital stock");
    EXPECT_FALSE(view_.find("no such text"));
    EXPECT_EQ(view_.found(), 0);
}

TEST_F(View, SelectsLinesWithTheMouse) {
    show("TrialBalance.rpt", samples::trialBalance());
    view_.fitWidth();
    // from the account's code to the right end of its line
    ASSERT_TRUE(view_.find("2304"));
    const Document& document = report_->document();
    const auto& runs = document.pages[0].runs;
    const Found at = report_->find("2304")[0];
    const double dots = (area()->viewport()->width() - 28) / document.width;
    const auto point = [&](double x, double y) {
        return QPoint(14 + static_cast<int>(x * dots), 14 + static_cast<int>(y * dots));
    };
    const double y = runs[at.run].y + runs[at.run].height / 2;
    QTest::mousePress(area()->viewport(), Qt::LeftButton, {}, point(runs[at.run].x + 2, y));
    QMouseEvent drag(QEvent::MouseMove, point(document.width - 15, y),
                     area()->viewport()->mapToGlobal(point(document.width - 15, y)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(area()->viewport(), &drag);
    EXPECT_EQ(view_.selectedText(), "2304\tWithholding tax payable\t45,120.80\t45,120.80\t38,211.09\t38,211.09");
}

TEST_F(View, LeadsToTheScreenBehindARow) {
    show("ReportGLDetailed_Ver2.rpt", samples::generalLedger(1, 5));
    ASSERT_TRUE(view_.find("Entry number 2"));
    area()->setFocus();
    QTest::keyClick(area(), Qt::Key_Return);
    EXPECT_EQ(form_.drilled, "frmGL:JV 2024-10002");
    form_.drilled.clear();
    ASSERT_TRUE(view_.find("Beginning balance"));  // nothing stands behind this row
    QTest::keyClick(area(), Qt::Key_Return);
    EXPECT_EQ(form_.drilled, "");
}

TEST_F(View, GroupTreeLeadsToPages) {
    view_.setShowGroupTree(true);
    show("GLBatchJrnl_Ver2_JV.rpt", samples::batchJournal(3));
    auto* tree = inner<QTreeWidget>("qt_tree");
    ASSERT_EQ(tree->topLevelItemCount(), 3);
    EXPECT_EQ(tree->topLevelItem(1)->text(0), "2024-00002  03/03/2024");
    tree->setCurrentItem(tree->topLevelItem(1));
    EXPECT_EQ(view_.page(), 2);
    view_.setShowGroupTree(false);
    EXPECT_FALSE(tree->isVisible());
}

TEST_F(View, ShowsPageOneWhileTheRestIsLaidOut) {
    show("ReportGLDetailed_Ver2.rpt", samples::generalLedger(900, 60));
    ASSERT_TRUE(view_.busy());
    EXPECT_GT(view_.pages(), 0);
    EXPECT_EQ(view_.text().substr(view_.text().size() - 3), "...");
    EXPECT_TRUE(inner<QPushButton>("qt_cancel")->isVisible());
    QTest::mouseClick(inner<QPushButton>("qt_cancel"), Qt::LeftButton);
    EXPECT_FALSE(view_.busy());
    const int then = view_.pages();
    EXPECT_FALSE(report_->complete());
    view_.finishLayout();
    EXPECT_TRUE(report_->complete());
    EXPECT_GT(view_.pages(), then);
    EXPECT_EQ(form_.laidOut, 1);
}

}  // namespace
}  // namespace kv
