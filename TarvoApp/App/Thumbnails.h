#pragma once

#include "TarvoModel/Photos/Look.h"

#include <QImage>
#include <QString>

#include <optional>
#include <string>

namespace tarvo {

/// Small pictures of pictures, from the cache that the programs of a desktop share and into it (thumbnail
/// managing standard, 0.9.0). May be used from several threads at once. Looking leaves no trace.
class Thumbnails final {
  public:
    /// The cache in the home; where it cannot be written, nothing is kept.
    static Thumbnails ofHome(const std::string& home);
    /// `folder` is the cache's, absolute.
    explicit Thumbnails(std::string folder) : folder_(std::move(folder)) {}

    /// The longer side of those that are made.
    static constexpr int side = 256;

    /// Upright, its longer side `side` points or the next size that is there; null where nothing can be
    /// shown.
    [[nodiscard]] QImage of(const std::string& path) const;
    /// What the picture looks like; absent where nothing can be shown.
    [[nodiscard]] std::optional<Look> lookAt(const std::string& path) const;

    /// Under which name the file's small picture is kept, in each folder of the cache.
    static QString nameFor(const std::string& path);

  private:
    std::string folder_;
};

/// What the file shows when it is a picture, upright and never larger than that; null otherwise.
QImage pictureFrom(const std::string& path, QSize most, QSize* measures = nullptr);

} // namespace tarvo
