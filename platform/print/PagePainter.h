#pragma once
// PagePainter: draws laid-out pages with the toolkit's painter, on paper, on the screen and into pictures alike.

#include <QFont>
#include <QImage>
#include <unordered_map>

#include "platform/print/Document.h"

class QPainter;

namespace kv {

class PagePainter {
public:
    explicit PagePainter(const Document& document) : document_(document) {}

    /// `dotsPerMm` of the device. On a screen thin lines are snapped to whole dots so that they stay visible and even.
    void paint(QPainter& painter, const PaperPage& page, double dotsPerMm, bool onScreen);

private:
    void shape(QPainter& painter, const PageShape& shape, bool onScreen);
    void picture(QPainter& painter, const PageImage& picture);
    void run(QPainter& painter, const TextRun& run);
    const QFont& font(int index);

    const Document& document_;
    std::vector<QFont> fonts_;
    std::unordered_map<std::string, QImage> images_;
};

QImage pageImage(PagePainter& painter, const Document& document, const PaperPage& page, double dotsPerInch);

}  // namespace kv
