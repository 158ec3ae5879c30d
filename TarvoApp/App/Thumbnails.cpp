#include "TarvoApp/App/Thumbnails.h"

#include "LumoCore/Rules/HomePlaces.h"
#include "Platform/QuietFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QIODevice>
#include <QImageReader>
#include <QLocale>
#include <QTemporaryFile>
#include <QtEndian>

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
constexpr QLatin1String changedKey("Thumb::MTime");
// Ours. Both are short enough not to be compressed.
constexpr QLatin1String lookKey("X-Tarvo::Look");
constexpr QLatin1String sharpnessKey("X-Tarvo::Sharpness");

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
    return kept.text(changedKey) == changed ? kept : QImage();
}

/// Where the cache has the small picture of a file, and when that file was changed.
struct Place {
    QString folder; ///< The cache's.
    QString name;
    QString changed;

    [[nodiscard]] QString in(const char* size) const { return folder + '/' + size + '/' + name; }
};

/// Absent for what is not there, and for the cache itself.
std::optional<Place> placeOf(const std::string& path, const std::string& folder) {
    const auto status = lumo::platform::statusOfFile(path);
    if (!status || path.starts_with(folder + "/")) {
        return std::nullopt;
    }
    return Place{.folder = onDisk(folder), .name = Thumbnails::nameFor(path), .changed = secondsOf(*status)};
}

void keep(QImage picture, const Place& place, const std::string& path) {
    const QString folder = place.folder + QStringLiteral("/large");
    const QFile::Permissions mine = QFile::ReadOwner | QFile::WriteOwner;
    if (!QDir().mkpath(folder)) {
        return;
    }
    // Nobody else may see what only the user can read.
    QFile::setPermissions(folder, mine | QFile::ExeOwner);
    picture.setText(QStringLiteral("Thumb::URI"), QString::fromLatin1(addressOf(path)));
    picture.setText(changedKey, place.changed);
    picture.setText(QStringLiteral("Software"), QStringLiteral("Tarvo AI"));
    // Packing them as small as can be would take longer than all the rest, and so would waiting for the disk
    // each time: what a crash leaves behind is none that can be read, and is made again.
    constexpr int quickly = 80;
    QTemporaryFile file(folder + QStringLiteral("/tarvo-XXXXXX.png"));
    if (file.open() && picture.save(&file, "PNG", quickly) && file.flush()) {
        std::error_code failure;
        std::filesystem::rename(QFile::encodeName(file.fileName()).constData(),
                                QFile::encodeName(place.in("large")).constData(), failure);
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

Look lookOf(const QImage& picture, const QSize& measures) {
    const QImage small =
        picture.scaled(hashedWidth, hashedHeight, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage weighed =
        picture.scaled(weighedSide, weighedSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return Look{.hash = gradientHash(grayOf(small)),
                .sharpness = sharpnessOf(grayOf(weighed)),
                .width = measures.width(),
                .height = measures.height()};
}

// In which way a look is made, for a later one to differ. The hash follows where there is one.
constexpr QLatin1String lookKind("1");

void tell(QImage& picture, const Look& look) {
    picture.setText(widthKey, QString::number(look.width));
    picture.setText(heightKey, QString::number(look.height));
    picture.setText(lookKey,
                    look.hash ? lookKind + ' ' + QString::number(*look.hash, 16) : QString(lookKind));
    picture.setText(sharpnessKey, QString::number(look.sharpness, 'g', QLocale::FloatingPointShortest));
}

/// The text of that name in the beginning of a PNG picture; empty where it has none before its points. Qt
/// reads it, too, but takes five times as long, since it makes ready to read the points.
QByteArrayView textIn(QByteArrayView beginning, QLatin1String key) {
    // Each part begins with its length and its kind, and ends with a sum.
    constexpr qsizetype head = 8;
    constexpr qsizetype tail = 4;
    qsizetype at = head; // What all such files begin with is as long.
    while (beginning.size() - at >= head) {
        const QByteArrayView kind = beginning.sliced(at + 4, 4);
        const auto length = qsizetype{qFromBigEndian<quint32>(beginning.data() + at)};
        at += head;
        if (kind == "IDAT" || length > beginning.size() - at) {
            break;
        }
        const QByteArrayView text = beginning.sliced(at, length);
        if (kind == "tEXt" && text.startsWith(key) && text.size() > key.size() && text[key.size()] == '\0') {
            return text.sliced(key.size() + 1);
        }
        at += length + tail;
    }
    return {};
}

/// Absent where the small picture is another program's, or of the file as it was.
std::optional<Look> lookIn(const Place& place) {
    const auto file = QuietFile::open(QFile::encodeName(place.in("large")).toStdString());
    std::array<char, 4096> bytes;
    const std::size_t count = file ? file->read(0, bytes).value_or(0) : 0;
    const QByteArrayView beginning(bytes.data(), static_cast<qsizetype>(count));
    const QList<QByteArray> words = textIn(beginning, lookKey).toByteArray().split(' ');
    if (words[0] != lookKind.data() || words.size() > 2 ||
        textIn(beginning, changedKey) != place.changed.toLatin1()) {
        return std::nullopt;
    }
    bool isSharp = false;
    bool isHash = true;
    Look look{.hash = std::nullopt,
              .sharpness = textIn(beginning, sharpnessKey).toDouble(&isSharp),
              .width = textIn(beginning, widthKey).toInt(),
              .height = textIn(beginning, heightKey).toInt()};
    if (words.size() == 2) {
        look.hash = words[1].toULongLong(&isHash, 16);
    }
    return look.width > 0 && look.height > 0 && isSharp && isHash ? std::optional(look) : std::nullopt;
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
    const auto place = placeOf(path, folder_);
    if (!place) {
        return {};
    }
    // What is smaller would be too coarse to be compared, and what is larger takes longer to read.
    for (const char* const size : {"large", "x-large", "xx-large"}) {
        if (QImage kept = keptIn(place->in(size), place->changed); !kept.isNull()) {
            return kept;
        }
    }
    QSize measures;
    QImage made = pictureFrom(path, {side, side}, &measures);
    if (!made.isNull()) {
        tell(made, lookOf(made, measures));
        keep(made, *place, path);
    }
    return made;
}

std::optional<Look> Thumbnails::lookAt(const std::string& path) const {
    if (const auto place = placeOf(path, folder_)) {
        if (const auto look = lookIn(*place)) {
            return look;
        }
    }
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
    return lookOf(picture, measures);
}

} // namespace tarvo
