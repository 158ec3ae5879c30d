#include "TarvoApp/Views/PhotoPictures.h"

#include "TarvoApp/App/PhotoList.h"

#include <QMetaObject>
#include <QQuickTextureFactory>

#include <atomic>
#include <memory>
#include <utility>

namespace tarvo {

namespace {

/// One picture that a window waits for, or no longer does.
class Waiting final : public QQuickImageResponse {
  public:
    [[nodiscard]] QQuickTextureFactory* textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(picture_);
    }
    void cancel() override { *isCancelled_ = true; }

    [[nodiscard]] std::shared_ptr<std::atomic<bool>> isCancelled() const { return isCancelled_; }
    void finish(QImage picture) {
        picture_ = std::move(picture);
        emit finished();
    }

  private:
    QImage picture_;
    std::shared_ptr<std::atomic<bool>> isCancelled_ = std::make_shared<std::atomic<bool>>(false);
};

/// For what cannot be shown: one point, which is no fault of anybody's.
QImage nothing() {
    QImage point(1, 1, QImage::Format_ARGB32);
    point.fill(Qt::transparent);
    return point;
}

} // namespace

PhotoPictures::PhotoPictures(Thumbnails thumbnails) : thumbnails_(std::move(thumbnails)) {
    constexpr int readers = 2; // More would take the disk and the processor from what is scrolled.
    readers_.setMaxThreadCount(readers);
}

PhotoPictures::~PhotoPictures() {
    readers_.clear();
    readers_.waitForDone();
}

QQuickImageResponse* PhotoPictures::requestImageResponse(const QString& id, const QSize&) {
    auto* const waiting = new Waiting;
    // What somebody looks at now comes before what has scrolled by.
    static std::atomic<int> priority = 0;
    readers_.start(
        [this, waiting, isCancelled = waiting->isCancelled(), path = pathOfPicture(id)] {
            QImage picture = *isCancelled ? QImage() : thumbnails_.of(path);
            waiting->finish(picture.isNull() ? nothing() : std::move(picture));
        },
        ++priority);
    return waiting;
}

} // namespace tarvo
