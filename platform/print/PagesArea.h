#pragma once
// PagesArea: the scrolled column of pages in a report's view; it paints what is visible and selects texts.

#include <QAbstractScrollArea>
#include <QPixmap>
#include <functional>
#include <map>
#include <set>

#include "platform/print/PagePainter.h"
#include "platform/print/TextMeasure.h"

namespace kv {

class PagesArea : public QAbstractScrollArea {
public:
    enum class Fit { None, Width, Page };

    explicit PagesArea(QWidget* parent);

    /// `pages` of the document may be shown.
    void setDocument(const Document* document, int pages);
    void setPages(int pages);
    int pages() const { return pages_; }
    int page() const;  ///< from 0
    void goTo(int page, double y_mm = 0);
    void setZoom(double percent);
    void setFit(Fit fit);
    double zoom() const { return zoom_; }

    /// Marks all `hits` and scrolls the current one into view.
    void setHits(std::vector<std::pair<int, std::size_t>> hits, int current);
    void selectOnly(int page, std::size_t run);
    QString selectedText() const;
    const PageLink* currentLink() const;
    void clearSelection();
    void forgetPictures();

    std::function<void()> onScrolled;
    std::function<void(const PageLink&)> onDrill;
    std::function<bool(QKeyEvent*)> onKey;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    double dotsPerMm() const;
    int pageHeight() const;
    int pageWidth() const;
    int step() const;  ///< from one page's top to the next
    QPoint pageOrigin(int page) const;
    void updateBars();
    const QPixmap& picture(int page);
    void paintMarks(QPainter& painter, int page);
    /// Where the text itself stands in its box, in dots.
    QRectF textRect(const TextRun& run, const QPoint& origin);
    std::optional<std::pair<int, QPointF>> placeAt(const QPoint& at) const;  ///< page and millimetres
    const PageLink* linkAt(const QPoint& at) const;
    void selectBetween(const QPoint& from, const QPoint& to);
    void step(int direction);

    const Document* document_ = nullptr;
    std::unique_ptr<PagePainter> painter_;
    int pages_ = 0;
    double zoom_ = 100;
    Fit fit_ = Fit::None;
    std::map<int, QPixmap> pictures_;
    std::vector<std::pair<int, std::size_t>> hits_;
    int hit_ = -1;
    std::set<std::pair<int, std::size_t>> selected_;
    QPoint pressed_;
    TextMeasure measure_;
};

}  // namespace kv
