#include "platform/print/PagePainter.h"

#include <QPainter>
#include <cmath>

#include "platform/print/TextMeasure.h"

namespace kv {
namespace {

/// Pages are drawn in fortieths of a millimetre: fine enough for whole font sizes on every device.
constexpr double kUnitsPerMm = 40;

QColor colorOf(int rgb) { return QColor::fromRgb(static_cast<QRgb>(rgb) | 0xFF000000U); }

QRectF rectOf(float x, float y, float w, float h) {
    return {x * kUnitsPerMm, y * kUnitsPerMm, w * kUnitsPerMm, h * kUnitsPerMm};
}

/// At least one dot thick, on whole dots; what is thinner than a dot becomes paler.
void fillSnapped(QPainter& painter, const QRectF& rect, QColor color) {
    const QRectF dots = painter.transform().mapRect(rect);
    const double thin = std::min({1.0, dots.width(), dots.height()});
    if (thin < 1) color.setAlphaF(static_cast<float>(std::max(0.45, thin)));
    const QRectF whole(std::floor(dots.x() + 0.5), std::floor(dots.y() + 0.5), std::max(1.0, std::round(dots.width())),
                       std::max(1.0, std::round(dots.height())));
    painter.save();
    painter.resetTransform();
    painter.fillRect(whole, color);
    painter.restore();
}

}  // namespace

const QFont& PagePainter::font(int index) {
    while (fonts_.size() < document_.fonts.size()) {
        const FontSpec& spec = document_.fonts[fonts_.size()];
        QFont font(QString::fromStdString(spec.family));
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(spec.size_pt * kMmPerPoint * kUnitsPerMm))));
        font.setBold(spec.bold);
        font.setItalic(spec.italic);
        font.setHintingPreference(QFont::PreferNoHinting);
        fonts_.push_back(font);
    }
    return fonts_[static_cast<std::size_t>(index)];
}

void PagePainter::shape(QPainter& painter, const PageShape& shape, bool onScreen) {
    const QRectF rect = rectOf(shape.x, shape.y, shape.width, shape.height);
    if (shape.fill != kNoColor) {
        if (onScreen) {
            fillSnapped(painter, rect, colorOf(shape.fill));
        } else {
            painter.fillRect(rect, colorOf(shape.fill));
        }
    }
    if (shape.stroke == kNoColor) return;
    painter.setPen(QPen(colorOf(shape.stroke), shape.weight * kUnitsPerMm));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect);
}

void PagePainter::picture(QPainter& painter, const PageImage& picture) {
    auto [known, fresh] = images_.try_emplace(picture.path);
    if (fresh) known->second.load(QString::fromStdString(picture.path));
    if (known->second.isNull()) return;
    QRectF box = rectOf(picture.x, picture.y, picture.width, picture.height);
    const QSizeF fitted = QSizeF(known->second.size()).scaled(box.size(), Qt::KeepAspectRatio);
    box.setSize(fitted);
    painter.drawImage(box, known->second);
}

void PagePainter::run(QPainter& painter, const TextRun& run) {
    if (run.hidden) return;
    int flags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip;
    flags |= run.align == TextAlign::Right    ? Qt::AlignRight
             : run.align == TextAlign::Center ? Qt::AlignHCenter
                                              : Qt::AlignLeft;
    painter.setFont(font(run.font));
    painter.setPen(colorOf(run.color));
    painter.drawText(rectOf(run.x, run.y, run.width, run.height), flags, QString::fromStdString(run.text));
}

void PagePainter::paint(QPainter& painter, const PaperPage& page, double dotsPerMm, bool onScreen) {
    painter.save();
    painter.scale(dotsPerMm / kUnitsPerMm, dotsPerMm / kUnitsPerMm);
    for (const PageShape& s : page.shapes) shape(painter, s, onScreen);
    for (const PageImage& p : page.pictures) picture(painter, p);
    for (const TextRun& r : page.runs) run(painter, r);
    painter.restore();
}

QImage pageImage(PagePainter& pages, const Document& document, const PaperPage& page, double dotsPerInch) {
    const double dots = dotsPerInch / 25.4;
    QImage image(static_cast<int>(std::ceil(document.width * dots)),
                 static_cast<int>(std::ceil(document.height * dots)), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    pages.paint(painter, page, dots, true);
    return image;
}

}  // namespace kv
