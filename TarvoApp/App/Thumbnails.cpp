#include "TarvoApp/App/Thumbnails.h"

#include "LumoCore/Rules/HomePlaces.h"
#include "Platform/QuietFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QIODevice>
#include <QImageReader>
#include <QTemporaryFile>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tarvo {

namespace {

using lumo::platform::QuietFile;

constexpr QLatin1String widthKey("Thumb::Image::Width");
constexpr QLatin1String heightKey("Thumb::Image::Height");

/// A file as Qt reads it, without looking opened afterwards.
class QuietDevice final : public QIODevice {
  public:
    explicit QuietDevice(const QuietFile& file) : file_(file) { open(QIODevice::ReadOnly); }

    [[nodiscard]] qint64 size() const override { return file_.status().bytes; }
    bool seek(qint64 offset) override {
        offset_ = offset;
        return QIODevice::seek(offset);
    }

  protected:
    qint64 readData(char* data, qint64 most) override {
        const auto count = file_.read(offset_, {data, static_cast<std::size_t>(std::max<qint64>(most, 0))});
        if (!count) {
            return -1;
        }
        offset_ += static_cast<qint64>(*count);
        return static_cast<qint64>(*count);
    }
    qint64 writeData(const char*, qint64) override { return -1; }

  private:
    const QuietFile& file_;
    qint64 offset_ = 0; ///< Of the next byte that is read; what was read ahead makes it differ from pos().
};

QImage pictureIn(const QuietFile& file, QSize most, QSize* measures) {
    QuietDevice device(file);
    QImageReader reader(&device);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (measures != nullptr) {
        *measures = size;
    }
    if (size.width() > most.width() || size.height() > most.height()) {
        reader.setScaledSize(size.scaled(most, Qt::KeepAspectRatio));
    }
    return reader.read();
}

QByteArray addressOf(const std::string& path) {
    return "file://" + QByteArray::fromStdString(path).toPercentEncoding("/!$&'()*+,;=:@");
}

QString secondsOf(const lumo::platform::FileStatus& status) {
    return QString::number(
        std::chrono::floor<std::chrono::seconds>(status.modified).time_since_epoch().count());
}

QString onDisk(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}

/// The cache's, when it is that of the file as it is now.
QImage keptIn(const QString& file, const QString& changed) {
    QImage kept(file);
    return kept.text(QStringLiteral("Thumb::MTime")) == changed ? kept : QImage();
}

void keep(QImage picture, const QString& folder, const QString& name, const std::string& path,
          const QString& changed) {
    const QFile::Permissions mine = QFile::ReadOwner | QFile::WriteOwner;
    if (!QDir().mkpath(folder)) {
        return;
    }
    // Nobody else may see what only the user can read.
    QFile::setPermissions(folder, mine | QFile::ExeOwner);
    picture.setText(QStringLiteral("Thumb::URI"), QString::fromLatin1(addressOf(path)));
    picture.setText(QStringLiteral("Thumb::MTime"), changed);
    picture.setText(QStringLiteral("Software"), QStringLiteral("Tarvo AI"));
    // Packing them as small as can be would take longer than all the rest, and so would waiting for the disk
    // each time: what a crash leaves behind is none that can be read, and is made again.
    constexpr int quickly = 80;
    QTemporaryFile file(folder + QStringLiteral("/tarvo-XXXXXX.png"));
    if (file.open() && picture.save(&file, "PNG", quickly) && file.flush()) {
        std::error_code failure;
        std::filesystem::rename(QFile::encodeName(file.fileName()).constData(),
                                QFile::encodeName(folder + QLatin1Char('/') + name).constData(), failure);
        file.setAutoRemove(static_cast<bool>(failure));
    }
}

/// The measures of the picture that a small one was made of, as that says; not valid where it does not.
QSize measuresIn(const QImage& small) {
    return {small.text(widthKey).toInt(), small.text(heightKey).toInt()};
}

GrayPicture grayOf(const QImage& picture) {
    const QImage gray = picture.convertToFormat(QImage::Format_Grayscale8);
    GrayPicture points{.width = gray.width(), .height = gray.height(), .points = {}};
    for (int row = 0; row < gray.height(); ++row) {
        const uchar* const line = gray.constScanLine(row);
        points.points.insert(points.points.end(), line, line + gray.width());
    }
    return points;
}

} // namespace

QImage pictureFrom(const std::string& path, QSize most, QSize* measures) {
    const auto file = QuietFile::open(path);
    return file ? pictureIn(*file, most, measures) : QImage();
}

Thumbnails Thumbnails::ofHome(const std::string& home) {
    return Thumbnails(lumo::HomePlaces::ofThisMachine(home).path("~/.cache") + "/thumbnails");
}

QString Thumbnails::nameFor(const std::string& path) {
    const QByteArray hash = QCryptographicHash::hash(addressOf(path), QCryptographicHash::Md5);
    return QString::fromLatin1(hash.toHex()) + QStringLiteral(".png");
}

QImage Thumbnails::of(const std::string& path) const {
    const auto status = lumo::platform::statusOfFile(path);
    if (!status || path.starts_with(folder_ + "/")) {
        return {};
    }
    const QString folder = onDisk(folder_);
    const QString name = nameFor(path);
    const QString changed = secondsOf(*status);
    // What is smaller would be too coarse to be compared, and what is larger takes longer to read.
    for (const char* const size : {"large", "x-large", "xx-large"}) {
        if (QImage kept = keptIn(folder + '/' + size + '/' + name, changed); !kept.isNull()) {
            return kept;
        }
    }
    QSize measures;
    QImage made = pictureFrom(path, {side, side}, &measures);
    if (!made.isNull()) {
        made.setText(widthKey, QString::number(measures.width()));
        made.setText(heightKey, QString::number(measures.height()));
        keep(made, folder + QStringLiteral("/large"), name, path, changed);
    }
    return made;
}

std::optional<Look> Thumbnails::lookAt(const std::string& path) const {
    const QImage picture = of(path);
    if (picture.isNull()) {
        return std::nullopt;
    }
    QSize measures = measuresIn(picture);
    if (measures.isEmpty()) {
        measures = picture.size();
        if (const auto file = QuietFile::open(path)) {
            QuietDevice device(*file);
            const QSize size = QImageReader(&device).size();
            measures = size.isValid() ? size : measures;
        }
    }
    const QImage small =
        picture.scaled(hashedWidth, hashedHeight, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage weighed =
        picture.scaled(weighedSide, weighedSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return Look{.hash = gradientHash(grayOf(small)),
                .sharpness = sharpnessOf(grayOf(weighed)),
                .width = measures.width(),
                .height = measures.height()};
}

} // namespace tarvo
