#pragma once

#include <QColor>
#include <QPainterPath>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tarvo {

/// An icon of ours, drawn in one color. The window needs no icon theme and no font with pictures in it. Not
/// final, since the engine derives from what it makes.
class Glyph : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// One of the names in the drawing table; an unknown one draws nothing.
    Q_PROPERTY(QString shape READ shape WRITE setShape NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    /// Of the pen, for a glyph that is 24 wide.
    Q_PROPERTY(double weight READ weight WRITE setWeight NOTIFY changed)

  public:
    explicit Glyph(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    [[nodiscard]] const QString& shape() const { return shape_; }
    [[nodiscard]] const QColor& color() const { return color_; }
    [[nodiscard]] double weight() const { return weight_; }
    void setShape(const QString& shape);
    void setColor(const QColor& color);
    void setWeight(double weight);

  signals:
    void changed();

  private:
    QString shape_;
    QPainterPath path_;
    QColor color_;
    double weight_ = 1.75;
};

/// Faint diagonal lines within a rounded rectangle: what nobody has looked at yet.
class Hatch : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)

  public:
    explicit Hatch(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    [[nodiscard]] const QColor& color() const { return color_; }
    [[nodiscard]] double radius() const { return radius_; }
    void setColor(const QColor& color);
    void setRadius(double radius);

  signals:
    void changed();

  private:
    QColor color_;
    double radius_ = 0;
};

} // namespace tarvo
