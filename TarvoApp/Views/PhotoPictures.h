#pragma once

#include "TarvoApp/App/Thumbnails.h"

#include <QQuickAsyncImageProvider>
#include <QThreadPool>

namespace tarvo {

/// Hands small pictures to the windows as they scroll by; what has scrolled out again before it was begun is
/// left out. The engine that it is given to owns it.
class PhotoPictures final : public QQuickAsyncImageProvider {
  public:
    explicit PhotoPictures(Thumbnails thumbnails);
    /// Returns when nothing is read any more.
    ~PhotoPictures() override;

    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& wanted) override;

  private:
    Thumbnails thumbnails_;
    QThreadPool readers_;
};

} // namespace tarvo
