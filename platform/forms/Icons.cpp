// Icons: drawings in one colour that take the colour of the theme as they are drawn.

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <unordered_map>

#include "platform/forms/Internal.h"

namespace kv {

namespace {

/// The drawing of a name as it lies in the program; empty when there is none.
const QByteArray& drawingOf(const std::string& name) {
    static std::unordered_map<std::string, QByteArray> known;
    auto [it, fresh] = known.try_emplace(name);
    if (fresh) {
        QFile file(QStringLiteral(":/korvane/icons/") + qs(name) + QStringLiteral(".svg"));
        if (file.open(QIODevice::ReadOnly)) it->second = file.readAll();
    }
    return it->second;
}

/// Draws one icon. State On asks for the accent colour, mode Selected for the colour on a filled button.
class DrawingEngine : public QIconEngine {
public:
    explicit DrawingEngine(std::string name) : name_(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal scale = painter->device()->devicePixelRatioF();
        QPixmap drawn = pixmap(rect.size() * scale, mode, state);
        drawn.setDevicePixelRatio(scale);
        painter->drawPixmap(rect.topLeft(), drawn);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QColor colour = colourFor(mode, state);
        const QString key = QStringLiteral("kv/%1/%2/%3").arg(qs(name_), colour.name()).arg(size.width());
        QPixmap drawn;
        if (QPixmapCache::find(key, &drawn)) return drawn;
        drawn = QPixmap(size);
        drawn.fill(Qt::transparent);
        QByteArray drawing = drawingOf(name_);
        const QByteArray ink = colour.name().toLatin1();
        drawing.replace("currentColor", ink).replace("#232629", ink);
        QSvgRenderer renderer(drawing);
        QPainter painter(&drawn);
        if (mode == QIcon::Disabled) painter.setOpacity(0.6);
        renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
        painter.end();
        QPixmapCache::insert(key, drawn);
        return drawn;
    }

    QIconEngine* clone() const override { return new DrawingEngine(name_); }

private:
    static QColor colourFor(QIcon::Mode mode, QIcon::State state) {
        if (mode == QIcon::Disabled) return tones().hint;
        if (mode == QIcon::Selected) return tones().accentText;
        if (state == QIcon::On) return tones().accent;
        return tones().dark ? QColor("#cdd5e1") : QColor("#46536a");
    }

    std::string name_;
};

}  // namespace

QIcon iconOf(std::string_view name) {
    if (name.empty() || drawingOf(std::string(name)).isEmpty()) return {};
    return QIcon(new DrawingEngine(std::string(name)));
}

}  // namespace kv
