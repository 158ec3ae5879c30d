#include "TarvoApp/Views/CardPicture.h"

#include <QPainter>

namespace tarvo {

CardPicture::CardPicture(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void CardPicture::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(boundingRect(), image_);
}

void CardPicture::setImage(const QImage& image) {
    image_ = image;
    update();
    emit changed();
}

} // namespace tarvo
