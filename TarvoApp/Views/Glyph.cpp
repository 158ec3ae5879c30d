#include "TarvoApp/Views/Glyph.h"

#include <QImage>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tarvo {

namespace {

/// The square in which the strokes below are written.
constexpr double side = 24;
constexpr double hatchGap = 9;
constexpr double hatchWeight = 1.5;

/// How a shape is drawn: M and L go to a point, O is a circle (centre, radius), R a rounded rectangle (x, y,
/// width, height, radius), A goes on along an ellipse (x, y, width, height, start, sweep in degrees) and B
/// begins there.
struct Strokes {
    std::string_view shape;
    const char* path;
};

constexpr auto table = std::to_array<Strokes>({
    {"tick", "M 5.5 12.5 L 10 17 L 18.5 7.5"},
    {"lock", "R 5.5 11 13 9 2 M 8 11 L 8 8 A 8 4 8 8 180 -180 L 16 11"},
    {"search", "O 10.5 10.5 6 M 15 15 L 20 20"},
    {"zoom", "O 10.5 10.5 6 M 15 15 L 20 20 M 10.5 8 L 10.5 13 M 8 10.5 L 13 10.5"},
    {"scan", "B 4.5 4.5 15 15 55 295 M 19.3 4 L 19.3 9 L 14.3 9"},
    {"stop", "R 7 7 10 10 1.5"},
    {"settings", "M 4 8 L 12 8 O 14.5 8 2.5 M 17 8 L 20 8 M 4 16 L 7 16 O 9.5 16 2.5 M 12 16 L 20 16"},
    {"help", "O 12 12 8.5 B 9.4 7 5.2 5.2 180 -225 L 12 13.2 L 12 13.8 M 12 16.6 L 12 16.65"},
    {"menu", "M 4.5 7 L 19.5 7 M 4.5 12 L 19.5 12 M 4.5 17 L 19.5 17"},
    {"up", "M 12 19 L 12 5.5 M 6.5 11 L 12 5.5 L 17.5 11"},
    {"plus", "M 12 6 L 12 18 M 6 12 L 18 12"},
    {"minus", "M 6 12 L 18 12"},
    {"close", "M 7 7 L 17 17 M 17 7 L 7 17"},
    {"next", "M 9.5 6 L 15.5 12 L 9.5 18"},
    {"undo", "M 8.5 5 L 4.5 9 L 8.5 13 M 4.5 9 L 14.5 9 A 9.5 9 10 10 90 -180 L 9 19"},
    {"spark", "M 12 3.5 L 14 10 L 20.5 12 L 14 14 L 12 20.5 L 10 14 L 3.5 12 L 10 10 L 12 3.5"},
    {"disk", "R 3.5 5 17 14 2.5 M 3.5 14 L 20.5 14 M 16.5 16.5 L 16.55 16.5"},
    {"photos", "R 3.5 5.5 17 13 2.5 O 8.5 10 1.6 M 4.5 17 L 10.5 12.5 L 13.5 15 L 17 11.5 L 20 14.5"},
    {"film", "R 3.5 5.5 17 13 2.5 M 10 9 L 15 12 L 10 15 L 10 9"},
    {"warning", "M 12 4.5 L 20.5 19 L 3.5 19 L 12 4.5 M 12 10 L 12 14 M 12 16.4 L 12 16.45"},
    {"clock", "O 12 12 8.5 M 12 7 L 12 12 L 15.5 14"},
    {"info", "O 12 12 8.5 M 12 11 L 12 16 M 12 8 L 12 8.05"},
});

QPainterPath pathFrom(const QString& strokes) {
    QPainterPath path;
    QString source = strokes;
    QTextStream in(&source);
    const auto number = [&] {
        double value = 0;
        in >> value;
        return value;
    };
    const auto point = [&] {
        const double x = number();
        return QPointF(x, number());
    };
    const auto box = [&] {
        const QPointF corner = point();
        const QPointF size = point();
        return QRectF(corner, QSizeF(size.x(), size.y()));
    };
    while (!in.atEnd()) {
        QString command;
        in >> command;
        if (command == "M") {
            path.moveTo(point());
        } else if (command == "L") {
            path.lineTo(point());
        } else if (command == "O") {
            const QPointF centre = point();
            const double radius = number();
            path.addEllipse(centre, radius, radius);
        } else if (command == "R") {
            const QRectF place = box();
            const double radius = number();
            path.addRoundedRect(place, radius, radius);
        } else {
            const QRectF place = box();
            const double start = number();
            if (command == "B") {
                path.arcMoveTo(place, start);
            }
            path.arcTo(place, start, number());
        }
    }
    return path;
}

QPainterPath pathOf(const QString& shape) {
    const auto found = std::ranges::find_if(
        table, [&](const Strokes& strokes) { return shape == QLatin1String(strokes.shape); });
    return found == table.end() ? QPainterPath() : pathFrom(QString::fromLatin1(found->path));
}

} // namespace

Glyph::Glyph(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void Glyph::paint(QPainter* painter) {
    const double scale = std::min(width(), height()) / side;
    painter->translate((width() - side * scale) / 2, (height() - side * scale) / 2);
    painter->scale(scale, scale);
    painter->setPen(QPen(color_, weight_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(path_);
}

void Glyph::setShape(const QString& shape) {
    if (shape_ != shape) {
        shape_ = shape;
        path_ = pathOf(shape);
        update();
        emit changed();
    }
}

void Glyph::setColor(const QColor& color) {
    if (color_ != color) {
        color_ = color;
        update();
        emit changed();
    }
}

void Glyph::setWeight(double weight) {
    if (weight_ != weight) {
        weight_ = weight;
        update();
        emit changed();
    }
}

Hatch::Hatch(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

namespace {

/// One square of the lines, which meets itself on all sides.
QBrush hatchOf(const QColor& color, double pixelRatio) {
    const int pixels = static_cast<int>(std::lround(hatchGap * pixelRatio));
    QImage square(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QPainter lines(&square);
    lines.setRenderHint(QPainter::Antialiasing);
    lines.setPen(QPen(color, hatchWeight * pixelRatio));
    for (const int from : {-pixels, 0, pixels}) {
        lines.drawLine(QPointF(from - pixels, 2 * pixels), QPointF(from + 2 * pixels, -pixels));
    }
    lines.end();
    QBrush brush(square);
    brush.setTransform(QTransform::fromScale(hatchGap / pixels, hatchGap / pixels));
    return brush;
}

} // namespace

void Hatch::paint(QPainter* painter) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(hatchOf(color_, painter->device()->devicePixelRatioF()));
    // Line by line, each would be shared out among threads and waited for, as is all that has more rows than
    // this: on a busy machine that takes a hundred times as long as painting it.
    constexpr double mostRows = 64;
    for (double top = 0; top < height(); top += mostRows) {
        painter->setClipRect(QRectF(0, top, width(), mostRows));
        painter->drawRoundedRect(boundingRect(), radius_, radius_);
    }
}

void Hatch::setColor(const QColor& color) {
    if (color_ != color) {
        color_ = color;
        update();
        emit changed();
    }
}

void Hatch::setRadius(double radius) {
    if (radius_ != radius) {
        radius_ = radius;
        update();
        emit changed();
    }
}

} // namespace tarvo
