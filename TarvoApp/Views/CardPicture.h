#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tarvo {

/// A picture that exists only in memory, drawn over the item's whole size. Not final, since the engine
/// derives from what it makes.
class CardPicture : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY changed)

  public:
    explicit CardPicture(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    [[nodiscard]] const QImage& image() const { return image_; }
    void setImage(const QImage& image);

  signals:
    void changed();

  private:
    QImage image_;
};

} // namespace tarvo
