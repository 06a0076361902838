#include "platform/print/PagesArea.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/forms/Internal.h"

namespace kv {
namespace {

constexpr int kGapBetween_px = 14;
constexpr std::size_t kPicturesKept = 8, kPicturesLeast = 2;
constexpr double kPicturesDotsMost = 24e6;  // about 100 MB
constexpr double kZoomLeast = 20, kZoomMost = 400;

QRectF inDots(float x, float y, float w, float h, const QPoint& origin, double dots) {
    return {origin.x() + x * dots, origin.y() + y * dots, w * dots, h * dots};
}

}  // namespace

PagesArea::PagesArea(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    setOwnEnter(this);
}

void PagesArea::setDocument(const Document* document, int pages) {
    document_ = document;
    painter_ = document == nullptr ? nullptr : std::make_unique<PagePainter>(*document);
    hits_.clear();
    selected_.clear();
    hit_ = -1;
    pictures_.clear();
    pages_ = pages;
    updateBars();
    verticalScrollBar()->setValue(0);
    viewport()->update();
}

void PagesArea::setPages(int pages) {
    if (pages == pages_) return;
    pages_ = pages;
    updateBars();
    viewport()->update();
}

void PagesArea::forgetPictures() {
    pictures_.clear();
    viewport()->update();
}

double PagesArea::dotsPerMm() const { return zoom_ / 100 * logicalDpiX() / 25.4; }
int PagesArea::pageHeight() const {
    return document_ == nullptr ? 0 : static_cast<int>(document_->height * dotsPerMm());
}
int PagesArea::pageWidth() const { return document_ == nullptr ? 0 : static_cast<int>(document_->width * dotsPerMm()); }
int PagesArea::step() const { return pageHeight() + kGapBetween_px; }

QPoint PagesArea::pageOrigin(int page) const {
    const int wide = viewport()->width();
    const int left = pageWidth() < wide ? (wide - pageWidth()) / 2 : -horizontalScrollBar()->value() + kGapBetween_px;
    return {left, kGapBetween_px + page * step() - verticalScrollBar()->value()};
}

void PagesArea::updateBars() {
    if (fit_ != Fit::None && document_ != nullptr) {
        const double across = (viewport()->width() - 2.0 * kGapBetween_px) / document_->width;
        const double down = (viewport()->height() - 2.0 * kGapBetween_px) / document_->height;
        const double dots = fit_ == Fit::Width ? across : std::min(across, down);
        const double fitted = std::clamp(dots * 25.4 / logicalDpiX() * 100, kZoomLeast, kZoomMost);
        if (std::abs(fitted - zoom_) > 0.1) pictures_.clear();
        zoom_ = fitted;
    }
    const int whole = pages_ * step() + kGapBetween_px;
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setRange(0, std::max(0, whole - viewport()->height()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, std::max(0, pageWidth() + 2 * kGapBetween_px - viewport()->width()));
}

int PagesArea::page() const {
    if (pages_ == 0) return 0;
    const int middle = verticalScrollBar()->value() + viewport()->height() / 2 - kGapBetween_px;
    // a view at either end shows the first or the last page, however small pages are
    if (verticalScrollBar()->value() == 0) return 0;
    if (verticalScrollBar()->value() == verticalScrollBar()->maximum()) return pages_ - 1;
    return std::clamp(middle / std::max(1, step()), 0, pages_ - 1);
}

void PagesArea::goTo(int page, double y_mm) {
    const int at = std::clamp(page, 0, std::max(0, pages_ - 1));
    verticalScrollBar()->setValue(at * step() + static_cast<int>(y_mm * dotsPerMm()));
}

void PagesArea::setZoom(double percent) {
    fit_ = Fit::None;
    const double at = step() > 0 ? static_cast<double>(verticalScrollBar()->value()) / step() : 0;
    zoom_ = std::clamp(percent, kZoomLeast, kZoomMost);
    pictures_.clear();
    updateBars();
    verticalScrollBar()->setValue(static_cast<int>(at * step()));
    viewport()->update();
    if (onScrolled) onScrolled();
}

void PagesArea::setFit(Fit fit) {
    fit_ = fit;
    const int at = page();
    updateBars();
    goTo(at);
    viewport()->update();
    if (onScrolled) onScrolled();
}

const QPixmap& PagesArea::picture(int page) {
    auto known = pictures_.find(page);
    if (known != pictures_.end()) return known->second;
    const double dots =
        std::max(1.0, static_cast<double>(pageWidth()) * pageHeight() * devicePixelRatioF() * devicePixelRatioF());
    const auto room = static_cast<std::size_t>(kPicturesDotsMost / dots);
    while (pictures_.size() >= std::clamp(room, kPicturesLeast, kPicturesKept)) {
        // the page farthest from this one goes
        const auto first = pictures_.begin(), last = std::prev(pictures_.end());
        pictures_.erase(page - first->first > last->first - page ? first : last);
    }
    const double ratio = devicePixelRatioF();
    QPixmap picture(QSize(pageWidth(), pageHeight()) * ratio);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter_->paint(painter, document_->pages[static_cast<std::size_t>(page)], dotsPerMm() * ratio, true);
    painter.end();
    picture.setDevicePixelRatio(ratio);
    return pictures_[page] = picture;
}

void PagesArea::paintMarks(QPainter& painter, int page) {
    const QPoint origin = pageOrigin(page);
    const std::vector<TextRun>& runs = document_->pages[static_cast<std::size_t>(page)].runs;
    // marks colour the paper, not the letters
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const auto mark = [&](std::size_t run, const QColor& color) {
        if (run < runs.size()) painter.fillRect(textRect(runs[run], origin), color);
    };
    for (std::size_t h = 0; h < hits_.size(); ++h) {
        const bool current = static_cast<int>(h) == hit_;
        if (hits_[h].first == page) mark(hits_[h].second, current ? QColor(255, 176, 80) : QColor(255, 236, 130));
    }
    for (const auto& [p, run] : selected_) {
        if (p == page) mark(run, QColor(178, 205, 255));
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

QRectF PagesArea::textRect(const TextRun& run, const QPoint& origin) {
    const auto width =
        static_cast<float>(measure_.width(document_->fonts[static_cast<std::size_t>(run.font)], run.text));
    const float spare = run.width - width;
    const float x = run.align == TextAlign::Right    ? run.x + spare
                    : run.align == TextAlign::Center ? run.x + spare / 2
                                                     : run.x;
    return inDots(x, run.y, width, run.height, origin, dotsPerMm()).adjusted(-2, 0, 2, 0);
}

void PagesArea::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), tones().desktop);
    if (document_ == nullptr || pages_ == 0) return;
    const int top = verticalScrollBar()->value();
    const int first = std::clamp((top - kGapBetween_px) / std::max(1, step()), 0, pages_ - 1);
    for (int p = first; p < pages_; ++p) {
        const QPoint origin = pageOrigin(p);
        if (origin.y() > viewport()->height()) break;
        painter.drawPixmap(origin, picture(p));
        painter.setPen(tones().borderStrong);
        painter.drawRect(QRect(origin, QSize(pageWidth(), pageHeight())).adjusted(-1, -1, 0, 0));
        paintMarks(painter, p);
    }
}

void PagesArea::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const int at = page();
    updateBars();
    if (fit_ != Fit::None) goTo(at);
    if (onScrolled) onScrolled();
}

void PagesArea::scrollContentsBy(int, int) {
    viewport()->update();
    if (onScrolled) onScrolled();
}

std::optional<std::pair<int, QPointF>> PagesArea::placeAt(const QPoint& at) const {
    for (int p = 0; document_ != nullptr && p < pages_; ++p) {
        const QRect rect(pageOrigin(p), QSize(pageWidth(), pageHeight()));
        if (rect.contains(at)) return std::pair(p, QPointF(at - rect.topLeft()) / dotsPerMm());
    }
    return std::nullopt;
}

const PageLink* PagesArea::linkAt(const QPoint& at) const {
    const auto place = placeAt(at);
    if (!place) return nullptr;
    const PageLink* best = nullptr;
    for (const PageLink& link : document_->pages[static_cast<std::size_t>(place->first)].links) {
        const bool inside = QRectF(link.x, link.y, link.width, link.height).contains(place->second);
        // the narrowest wins: a figure's own way over its row's
        if (inside && (best == nullptr || link.width < best->width)) best = &link;
    }
    return best;
}

void PagesArea::selectBetween(const QPoint& from, const QPoint& to) {
    selected_.clear();
    const QRect rect = QRect(from, to).normalized().adjusted(0, 0, 1, 1);
    for (int p = 0; document_ != nullptr && p < pages_; ++p) {
        const QPoint origin = pageOrigin(p);
        if (origin.y() > rect.bottom() || origin.y() + pageHeight() < rect.top()) continue;
        const std::vector<TextRun>& runs = document_->pages[static_cast<std::size_t>(p)].runs;
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const TextRun& r = runs[i];
            if (!r.hidden && textRect(r, origin).intersects(QRectF(rect))) {
                selected_.insert({p, i});
            }
        }
    }
    viewport()->update();
}

void PagesArea::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    setFocus();
    pressed_ = event->position().toPoint();
    selectBetween(pressed_, pressed_);
}

void PagesArea::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton) return selectBetween(pressed_, event->position().toPoint());
    viewport()->setCursor(linkAt(event->position().toPoint()) != nullptr ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void PagesArea::mouseDoubleClickEvent(QMouseEvent* event) {
    const PageLink* link = linkAt(event->position().toPoint());
    if (link != nullptr && onDrill) onDrill(*link);
}

void PagesArea::setHits(std::vector<std::pair<int, std::size_t>> hits, int current) {
    hits_ = std::move(hits);
    hit_ = current;
    viewport()->update();
    if (current < 0 || current >= static_cast<int>(hits_.size())) return;
    const auto [p, run] = hits_[static_cast<std::size_t>(current)];
    const double y = document_->pages[static_cast<std::size_t>(p)].runs[run].y * dotsPerMm();
    const int wanted = kGapBetween_px + p * step() + static_cast<int>(y);
    const int top = verticalScrollBar()->value();
    if (wanted < top + 20 || wanted > top + viewport()->height() - 40) {
        verticalScrollBar()->setValue(wanted - viewport()->height() / 3);
    }
    selectOnly(p, run);
}

void PagesArea::selectOnly(int page, std::size_t run) {
    selected_ = {{page, run}};
    viewport()->update();
}

void PagesArea::clearSelection() {
    selected_.clear();
    viewport()->update();
}

QString PagesArea::selectedText() const {
    QString out;
    for (int p = 0; document_ != nullptr && p < pages_; ++p) {
        if (std::none_of(selected_.begin(), selected_.end(), [&](const auto& s) { return s.first == p; })) continue;
        const PaperPage& page = document_->pages[static_cast<std::size_t>(p)];
        std::vector<std::vector<std::size_t>> lines = textLines(page);
        for (auto& line : lines) std::erase_if(line, [&](std::size_t run) { return !selected_.contains({p, run}); });
        std::erase_if(lines, [](const auto& line) { return line.empty(); });
        if (!out.isEmpty()) out += "\n";
        out += QString::fromStdString(joinedText(page, lines));
    }
    return out;
}

const PageLink* PagesArea::currentLink() const {
    if (selected_.empty()) return nullptr;
    const auto [page, run] = *selected_.begin();
    const TextRun& r = document_->pages[static_cast<std::size_t>(page)].runs[run];
    const QPointF middle(r.x + r.width / 2, r.y + r.height / 2);
    return linkAt(pageOrigin(page) + (middle * dotsPerMm()).toPoint());
}

/// Moves the selection from text to text, so that a way to a screen can be taken without the mouse.
void PagesArea::step(int direction) {
    const int at = selected_.empty() ? page() : selected_.begin()->first;
    if (document_ == nullptr || pages_ == 0) return;
    const std::size_t runs = document_->pages[static_cast<std::size_t>(at)].runs.size();
    if (runs == 0) return;
    std::size_t next = selected_.empty() ? 0 : selected_.begin()->second + static_cast<std::size_t>(direction);
    if (next < runs) return setHits({{at, next}}, 0);
    const int beside = at + direction;
    if (beside < 0 || beside >= pages_) return;
    const std::size_t there = document_->pages[static_cast<std::size_t>(beside)].runs.size();
    if (there > 0) setHits({{beside, direction > 0 ? 0 : there - 1}}, 0);
}

void PagesArea::keyPressEvent(QKeyEvent* event) {
    if (onKey && onKey(event)) return;
    switch (event->key()) {
        case Qt::Key_Home:
            return verticalScrollBar()->setValue(0);
        case Qt::Key_End:
            return verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        case Qt::Key_Right:
            return step(1);
        case Qt::Key_Left:
            return step(-1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (const PageLink* link = currentLink(); link != nullptr && onDrill) onDrill(*link);
            return;
        case Qt::Key_Escape:
            return event->ignore();
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void PagesArea::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() & Qt::ControlModifier) {
        return setZoom(zoom_ * (event->angleDelta().y() > 0 ? 1.1 : 1 / 1.1));
    }
    QAbstractScrollArea::wheelEvent(event);
}

}  // namespace kv
