#pragma once

#include <QColor>
#include <QPolygonF>
#include <QQuickPaintedItem>
#include <QVariantList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <vector>

namespace tarvo {

/// Lines over the item's whole size, one of them before the others. Not final, since the engine derives from
/// what it makes.
class TrendLines : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Maps whose "points" go from 0 to 1 both ways, from the corner above on the left.
    Q_PROPERTY(QVariantList lines READ lines WRITE setLines NOTIFY changed)
    /// The one that is drawn in the accent's color; none for -1.
    Q_PROPERTY(int chosen READ chosen WRITE setChosen NOTIFY changed)
    /// Where the line of no change is, from above.
    Q_PROPERTY(double zero READ zero WRITE setZero NOTIFY changed)
    Q_PROPERTY(QColor ink READ ink WRITE setInk NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent WRITE setAccent NOTIFY changed)

  public:
    explicit TrendLines(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
    /// The line that is nearest to the point and not far from it; -1 when there is none.
    Q_INVOKABLE [[nodiscard]] int lineAt(double x, double y) const;

    [[nodiscard]] const QVariantList& lines() const { return lines_; }
    [[nodiscard]] int chosen() const { return chosen_; }
    [[nodiscard]] double zero() const { return zero_; }
    [[nodiscard]] const QColor& ink() const { return ink_; }
    [[nodiscard]] const QColor& accent() const { return accent_; }
    void setLines(const QVariantList& lines);
    void setChosen(int chosen);
    void setZero(double zero);
    void setInk(const QColor& ink);
    void setAccent(const QColor& accent);

  signals:
    void changed();

  private:
    void redraw();
    /// The line as it lies in the item.
    [[nodiscard]] QPolygonF placed(const QPolygonF& line) const;
    void paintChosen(QPainter* painter, const QPolygonF& line) const;

    QVariantList lines_;
    std::vector<QPolygonF> polygons_;
    int chosen_ = -1;
    double zero_ = 1;
    QColor ink_;
    QColor accent_;
};

} // namespace tarvo
