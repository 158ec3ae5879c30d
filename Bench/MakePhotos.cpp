#include "LumoCore/Basics/Parallel.h"
#include "NumberOf.h"
#include "SplitMix.h"
#include "StopProgram.h"

#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <string>
#include <sys/stat.h>
#include <system_error>

// A home with nothing in it but pictures, the same for the same number of them.
namespace tarvo::bench {

namespace {

constexpr const char* usage = "usage: make-photos DIR FILES";
constexpr int width = 640;
constexpr int height = 480;

QColor colorFrom(SplitMix& random) {
    return QColor::fromHsv(static_cast<int>(random.below(360)), static_cast<int>(random.below(200)),
                           static_cast<int>(random.between(30, 255)));
}

/// As photos are: large areas that differ from picture to picture, and some edges.
QImage drawn(std::uint64_t number) {
    SplitMix random(number);
    QImage areas(12, 9, QImage::Format_RGB32);
    for (int at = 0; at < areas.width() * areas.height(); ++at) {
        areas.setPixelColor(at % areas.width(), at / areas.width(), colorFrom(random));
    }
    QImage picture = areas.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&picture);
    for (int block = 0; block < 60; ++block) {
        painter.fillRect(static_cast<int>(random.below(width)), static_cast<int>(random.below(height)),
                         static_cast<int>(random.between(4, 60)), static_cast<int>(random.between(4, 60)),
                         colorFrom(random));
    }
    return picture;
}

/// All in one month, a minute after each other.
void setTaken(const std::string& path, std::size_t number) {
    const timespec time{.tv_sec = 1'763'000'000 + static_cast<time_t>(number) * 60, .tv_nsec = 0};
    const timespec both[]{time, time};
    if (::utimensat(AT_FDCWD, path.c_str(), both, 0) != 0) {
        stopOnFailedCall(path);
    }
}

void makePhotos(const std::string& home, std::size_t count) {
    const std::string unfinished = home + ".unfinished";
    const std::string folder = unfinished + "/Pictures";
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    lumo::parallelFor(count, {}, [&](std::size_t number) {
        const std::string path = fmt::format("{}/IMG_{:05}.jpg", folder, number);
        if (!drawn(number).save(QFile::decodeName(path.c_str()), "JPEG", 80)) {
            stopOnFailedCall(path);
        }
        setTaken(path, number);
    });
    std::filesystem::rename(unfinished, home, failure);
    if (failure) {
        stopProgram(home + ": " + failure.message());
    }
    fmt::print("{}: {} pictures made\n", home, count);
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** arguments) {
    using namespace tarvo::bench;
    const QCoreApplication application(count, arguments);
    if (count != 3) {
        stopProgram(usage);
    }
    const auto files = numberOf<std::size_t>(arguments[2], usage, 1);
    // It gets its name when it is complete.
    if (!std::filesystem::exists(arguments[1])) {
        makePhotos(arguments[1], files);
    }
    return 0;
}
