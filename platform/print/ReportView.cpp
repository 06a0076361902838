#include "platform/print/ReportView.h"

#include <cmath>

#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>

#include "platform/forms/Internal.h"
#include "platform/print/PagesArea.h"
#include "platform/print/Report.h"

namespace kv {
namespace {

constexpr int kFirstSlice_ms = 250;  // small reports are whole at once
constexpr int kSlice_ms = 20;
constexpr int kProgressMost = 1000;
constexpr int kZooms[] = {50, 75, 100, 125, 150, 200, 300};
constexpr const char* kFitWidth = "Fit width";
constexpr const char* kFitPage = "Fit page";

QToolButton* toolButton(QWidget* parent, const char* icon, const char* tip) {
    auto* button = new QToolButton(parent);
    button->setIcon(iconOf(icon));
    button->setToolTip(QString::fromUtf8(tip));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

}  // namespace

struct ReportView::Impl {
    Report* report = nullptr;
    QWidget* frame = nullptr;
    QWidget* tools = nullptr;
    QTreeWidget* tree = nullptr;
    PagesArea* area = nullptr;
    QLineEdit* pageField = nullptr;
    QLabel* pageCount = nullptr;
    QComboBox* zoom = nullptr;
    QLineEdit* findField = nullptr;
    QLabel* findResult = nullptr;
    QWidget* progressRow = nullptr;
    QProgressBar* progress = nullptr;
    QTimer* timer = nullptr;
    bool showTree = false;
    bool stopped = false;
    std::string sought;
    std::vector<Found> hits;
    int hit = -1;
    std::size_t treeFilled = 0;
    int lastPage = -1;
    int lastPages = -1;

    QWidget* toolbar(ReportView& view);
    QWidget* progressBar(ReportView& view);
};

QWidget* ReportView::Impl::toolbar(ReportView& view) {
    tools = new QWidget(frame);
    auto* row = new QHBoxLayout(tools);
    row->setContentsMargins(kGap_px, kGap_px / 2, kGap_px, kGap_px / 2);
    const auto move = [&](const char* icon, const char* tip, std::function<int()> to) {
        QToolButton* button = toolButton(frame, icon, tip);
        QObject::connect(button, &QToolButton::clicked, frame, [&view, to] { view.goToPage(to()); });
        row->addWidget(button);
    };
    move("go-first", "First page (Home)", [] { return 1; });
    move("go-previous", "Page before", [&view] { return view.page() - 1; });
    pageField = new QLineEdit(frame);
    pageField->setObjectName("qt_page");
    pageField->setAlignment(Qt::AlignRight);
    pageField->setFixedWidth(charsWidth(frame, 6));
    pageField->setValidator(new QIntValidator(1, 999'999, pageField));
    QObject::connect(pageField, &QLineEdit::returnPressed, frame, [this, &view] {
        view.goToPage(pageField->text().toInt());
        area->setFocus();
    });
    setOwnEnter(pageField);
    row->addWidget(pageField);
    pageCount = new QLabel(frame);
    pageCount->setContentsMargins(kGap_px / 2, 0, kGap_px / 2, 0);
    row->addWidget(pageCount);
    move("go-next", "Next page", [&view] { return view.page() + 1; });
    move("go-last", "Last page (End)", [&view] { return view.pages(); });
    row->addSpacing(kGap_px);
    zoom = new QComboBox(frame);
    zoom->setObjectName("qt_zoom");
    for (const int percent : kZooms) zoom->addItem(QString::number(percent) + "%");
    zoom->addItem(kFitWidth);
    zoom->addItem(kFitPage);
    QObject::connect(zoom, &QComboBox::textActivated, frame, [&view](const QString& text) {
        if (text == kFitWidth) return view.fitWidth();
        if (text == kFitPage) return view.fitPage();
        view.setZoom(text.chopped(1).toInt());
    });
    row->addWidget(zoom);
    row->addStretch(1);
    findResult = new QLabel(frame);
    row->addWidget(findResult);
    row->addSpacing(kGap_px);
    findField = new QLineEdit(frame);
    findField->setObjectName("qt_find");
    findField->setPlaceholderText("Find (Ctrl+F)");
    findField->setClearButtonEnabled(true);
    findField->setFixedWidth(charsWidth(frame, 26));
    setOwnEnter(findField);
    QObject::connect(findField, &QLineEdit::returnPressed, frame,
                     [this, &view] { (void)view.find(findField->text().toStdString()); });
    row->addWidget(findField);
    return tools;
}

QWidget* ReportView::Impl::progressBar(ReportView& view) {
    progressRow = new QWidget(frame);
    auto* row = new QHBoxLayout(progressRow);
    row->setContentsMargins(kGap_px, kGap_px / 2, kGap_px, kGap_px / 2);
    progress = new QProgressBar(progressRow);
    progress->setRange(0, kProgressMost);
    progress->setTextVisible(false);
    row->addWidget(new QLabel("Laying out pages", progressRow));
    row->addWidget(progress, 1);
    auto* cancel = new QPushButton("Cancel", progressRow);
    cancel->setObjectName("qt_cancel");
    cancel->setFocusPolicy(Qt::NoFocus);
    QObject::connect(cancel, &QPushButton::clicked, frame, [&view] { view.cancelLayout(); });
    row->addWidget(cancel);
    progressRow->hide();
    return progressRow;
}

ReportView::ReportView(Form& owner, std::string name)
    : Control(owner, std::move(name)), impl_(std::make_unique<Impl>()) {
    Impl& in = *impl_;
    in.frame = new QWidget;
    auto* whole = new QVBoxLayout(in.frame);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(in.toolbar(*this));
    auto* parts = new QSplitter(in.frame);
    in.tree = new QTreeWidget(parts);
    in.tree->setObjectName("qt_tree");
    in.tree->setHeaderHidden(true);
    in.tree->setIndentation(14);
    in.tree->setUniformRowHeights(true);
    in.tree->hide();
    in.area = new PagesArea(parts);
    in.area->setObjectName("qt_pages");
    parts->setStretchFactor(1, 1);
    parts->setSizes({200, 800});
    whole->addWidget(parts, 1);
    whole->addWidget(in.progressBar(*this));
    in.frame->setFocusProxy(in.area);
    in.timer = new QTimer(in.frame);
    in.timer->setInterval(0);
    QObject::connect(in.timer, &QTimer::timeout, in.frame, [this] { layoutSlice(kSlice_ms); });
    QObject::connect(in.tree, &QTreeWidget::currentItemChanged, in.frame, [this](QTreeWidgetItem* item) {
        if (item != nullptr)
            impl_->area->goTo(item->data(0, Qt::UserRole).toInt(), item->data(0, Qt::UserRole + 1).toDouble());
    });
    in.area->onScrolled = [this] { showState(); };
    in.area->onDrill = [this](const PageLink& link) { drill(link.screen, link.key); };
    in.area->onKey = [this](QKeyEvent* event) { return key(event->key(), event->modifiers()); };
    onThemeChanged(in.frame, [this] { impl_->area->viewport()->update(); });
    adopt(in.frame);
    showState();
}

ReportView::~ReportView() {
    impl_->area->onScrolled = nullptr;
    impl_->timer->stop();
}

void ReportView::setReport(Report* report) {
    Impl& in = *impl_;
    in.timer->stop();
    in.area->setDocument(nullptr, 0);
    in.tree->clear();
    in.treeFilled = 0;
    in.hits.clear();
    in.hit = -1;
    in.stopped = false;
    in.progressRow->hide();
    in.report = report;
    if (report != nullptr) startLayout();
    showState();
}

void ReportView::startLayout() {
    Impl& in = *impl_;
    in.area->setDocument(&in.report->document(), 0);
    layoutSlice(kFirstSlice_ms);
    if (in.report->complete() || in.stopped) return;
    in.progressRow->show();
    in.timer->start();
}

/// A failure (a sub-report that cannot be read) ends the layout; the pages so far stay.
void ReportView::layoutSlice(int ms_max) {
    Impl& in = *impl_;
    if (in.report == nullptr || in.stopped) return;
    bool more = false;
    bool went = false;
    guard("Layout", [&] {
        more = in.report->layoutFor(ms_max);
        went = true;
    });
    if (in.report == nullptr) return;
    in.area->setPages(in.report->pages());
    in.progress->setValue(static_cast<int>(in.report->progress() * kProgressMost));
    fillTree();
    if (!went) in.stopped = true;
    if (!more) layoutEnded();
    showState();
}

void ReportView::layoutEnded() {
    Impl& in = *impl_;
    in.timer->stop();
    in.progressRow->hide();
    // texts that waited for the number of pages are there now
    in.area->forgetPictures();
    raise(onLayoutDone, "LayoutDone");
}

bool ReportView::busy() const { return impl_->timer->isActive(); }

void ReportView::cancelLayout() {
    if (!busy()) return;
    impl_->stopped = true;
    impl_->timer->stop();
    impl_->progressRow->hide();
    showState();
}

void ReportView::finishLayout() {
    impl_->stopped = false;
    while (impl_->report != nullptr && !impl_->report->complete() && !impl_->stopped) layoutSlice(1000);
}

void ReportView::fillTree() {
    Impl& in = *impl_;
    const std::vector<TreeEntry>& entries = in.report->document().tree;
    for (; in.treeFilled < entries.size(); ++in.treeFilled) {
        const TreeEntry& entry = entries[in.treeFilled];
        QTreeWidgetItem* parent = in.tree->invisibleRootItem();
        for (int level = 0; level < entry.level && parent->childCount() > 0; ++level) {
            parent = parent->child(parent->childCount() - 1);
        }
        auto* item = new QTreeWidgetItem(parent, {QString::fromStdString(entry.label)});
        item->setData(0, Qt::UserRole, entry.page);
        item->setData(0, Qt::UserRole + 1, static_cast<double>(entry.y));
    }
    in.tree->setVisible(in.showTree && !entries.empty());
}

void ReportView::setShowGroupTree(bool show) {
    impl_->showTree = show;
    impl_->tree->setVisible(show && impl_->treeFilled > 0);
}

void ReportView::setTools(bool shown) { impl_->tools->setVisible(shown); }

void ReportView::showState() {
    Impl& in = *impl_;
    if (!in.pageField->hasFocus()) in.pageField->setText(pages() == 0 ? QString() : QString::number(page()));
    in.pageCount->setText(pages() == 0 ? QString() : "of " + QString::number(pages()) + (busy() ? "…" : ""));
    const QString percent = QString::number(zoom()) + "%";
    if (in.zoom->findText(percent) < 0) in.zoom->setItemText(0, percent);
    in.zoom->setCurrentText(percent);
    if (in.lastPage == page() && in.lastPages == pages()) return;
    in.lastPage = page();
    in.lastPages = pages();
    raise(onPageChange, "PageChange");
}

std::string ReportView::text() const {
    if (pages() == 0) return {};
    return "Page " + std::to_string(page()) + " of " + std::to_string(pages()) + (busy() ? "..." : "");
}

int ReportView::pages() const { return impl_->area->pages(); }
int ReportView::page() const { return pages() == 0 ? 0 : impl_->area->page() + 1; }
void ReportView::goToPage(int page) { impl_->area->goTo(page - 1); }

std::string ReportView::pageText(int page) const {
    if (page < 1 || page > pages()) return {};
    const PaperPage& shown = impl_->report->document().pages[static_cast<std::size_t>(page - 1)];
    return joinedText(shown, textLines(shown));
}

int ReportView::zoom() const { return static_cast<int>(std::lround(impl_->area->zoom())); }
void ReportView::setZoom(int percent) { impl_->area->setZoom(percent); }
void ReportView::fitWidth() { impl_->area->setFit(PagesArea::Fit::Width); }
void ReportView::fitPage() { impl_->area->setFit(PagesArea::Fit::Page); }

bool ReportView::find(std::string_view text, bool forward) {
    Impl& in = *impl_;
    if (in.report == nullptr) return false;
    const std::vector<Found> hits = in.report->find(text);
    const bool again = in.sought == text && !in.hits.empty();
    const int count = static_cast<int>(hits.size());
    in.hits = hits;
    in.sought = text;
    if (count == 0) {
        in.hit = -1;
    } else if (again) {
        in.hit = (in.hit + (forward ? 1 : count - 1)) % count;
    } else {
        const auto here = std::find_if(hits.begin(), hits.end(), [&](const Found& f) { return f.page >= page() - 1; });
        in.hit = here == hits.end() ? 0 : static_cast<int>(here - hits.begin());
    }
    std::vector<std::pair<int, std::size_t>> places;
    for (const Found& f : hits) places.emplace_back(f.page, f.run);
    in.area->setHits(std::move(places), in.hit);
    in.findResult->setText(text.empty() ? QString()
                           : count == 0 ? QString("Not found")
                                        : QString("%1 of %2").arg(in.hit + 1).arg(count));
    return count > 0;
}

int ReportView::found() const { return static_cast<int>(impl_->hits.size()); }
std::string ReportView::selectedText() const { return impl_->area->selectedText().toStdString(); }
void ReportView::copy() const { QGuiApplication::clipboard()->setText(impl_->area->selectedText()); }

bool ReportView::openMarked() {
    const PageLink* link = impl_->area->currentLink();
    if (link == nullptr) return false;
    // a copy: what opens may lay the pages out anew
    const PageLink there = *link;
    drill(there.screen, there.key);
    return true;
}

void ReportView::drill(const std::string& screen, const std::string& key) { raise(onDrill, "Drill", screen, key); }

bool ReportView::key(int key, int modifiers) {
    const bool control = (modifiers & Qt::ControlModifier) != 0;
    const bool ownTools = !impl_->tools->isHidden();
    if (!ownTools && (key == Qt::Key_F3 || key == Qt::Key_F || key == Qt::Key_G)) return false;
    if (key == Qt::Key_F3) {
        (void)find(impl_->sought, (modifiers & Qt::ShiftModifier) == 0);
        return true;
    }
    if (!control) return false;
    switch (key) {
        case Qt::Key_F:
            impl_->findField->setFocus();
            impl_->findField->selectAll();
            return true;
        case Qt::Key_C:
            copy();
            return true;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            setZoom(zoom() * 5 / 4);
            return true;
        case Qt::Key_Minus:
            setZoom(zoom() * 4 / 5);
            return true;
        case Qt::Key_0:
            setZoom(100);
            return true;
        case Qt::Key_G:
            impl_->pageField->setFocus();
            impl_->pageField->selectAll();
            return true;
        default:
            return false;
    }
}

}  // namespace kv
