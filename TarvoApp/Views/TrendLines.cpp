#include "TarvoApp/Views/TrendLines.h"

#include <QLineF>
#include <QPainter>
#include <QPen>

#include <algorithm>

namespace tarvo {

namespace {

/// Room at the edges for what is drawn around a point.
constexpr double margin = 5;

/// How far the point is from the piece of a line.
double distanceTo(const QPointF& from, const QPointF& to, const QPointF& point) {
    const QPointF along = to - from;
    const double length = QPointF::dotProduct(along, along);
    const double share = length > 0 ? QPointF::dotProduct(point - from, along) / length : 0;
    return QLineF(from + along * std::clamp(share, 0.0, 1.0), point).length();
}

} // namespace

TrendLines::TrendLines(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

QPolygonF TrendLines::placed(const QPolygonF& line) const {
    QPolygonF there;
    for (const QPointF& point : line) {
        there.push_back(QPointF(margin + point.x() * (width() - 2 * margin),
                                margin + point.y() * (height() - 2 * margin)));
    }
    return there;
}

void TrendLines::paint(QPainter* painter) {
    constexpr double faint = 0.35;
    painter->setPen(QPen(ink_, 1, Qt::DashLine));
    painter->setOpacity(faint);
    painter->drawPolyline(placed({{0, zero_}, {1, zero_}}));
    painter->setPen(QPen(ink_, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QPolygonF& line : polygons_) {
        painter->drawPolyline(placed(line));
    }
    painter->setOpacity(1);
    if (chosen_ >= 0 && chosen_ < static_cast<int>(polygons_.size())) {
        paintChosen(painter, placed(polygons_[static_cast<std::size_t>(chosen_)]));
    }
}

void TrendLines::paintChosen(QPainter* painter, const QPolygonF& line) const {
    constexpr double radius = 3;
    painter->setPen(QPen(accent_, 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(line);
    painter->setPen(Qt::NoPen);
    painter->setBrush(accent_);
    for (const QPointF& point : line) {
        painter->drawEllipse(point, radius, radius);
    }
}

int TrendLines::lineAt(double x, double y) const {
    double nearest = 16; // What a finger or an unsteady hand misses by.
    int found = -1;
    for (std::size_t index = 0; index < polygons_.size(); ++index) {
        const QPolygonF line = placed(polygons_[index]);
        for (qsizetype point = 0; point + 1 < line.size(); ++point) {
            const double distance = distanceTo(line[point], line[point + 1], {x, y});
            if (distance < nearest) {
                nearest = distance;
                found = static_cast<int>(index);
            }
        }
    }
    return found;
}

void TrendLines::redraw() {
    update();
    emit changed();
}

void TrendLines::setLines(const QVariantList& lines) {
    lines_ = lines;
    polygons_.clear();
    for (const QVariant& line : lines) {
        QPolygonF polygon;
        for (const QVariant& point : line.toMap().value(QStringLiteral("points")).toList()) {
            polygon.push_back(point.toPointF());
        }
        polygons_.push_back(polygon);
    }
    redraw();
}

void TrendLines::setChosen(int chosen) {
    chosen_ = chosen;
    redraw();
}

void TrendLines::setZero(double zero) {
    zero_ = zero;
    redraw();
}

void TrendLines::setInk(const QColor& ink) {
    ink_ = ink;
    redraw();
}

void TrendLines::setAccent(const QColor& accent) {
    accent_ = accent;
    redraw();
}

} // namespace tarvo
