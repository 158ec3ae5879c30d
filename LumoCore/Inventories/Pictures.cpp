#include "LumoCore/Inventories/Pictures.h"

#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Inventories/UserFiles.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "Platform/PictureTags.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace lumo {

namespace {

using platform::FilesFound;

constexpr std::string_view pictureExtensions =
    " jpg jpeg png webp gif bmp tif tiff heic heif avif jxl raw dng cr2 "
    "cr3 nef arw orf rw2 ";
constexpr std::string_view filmExtensions = " mp4 mkv avi mov m4v webm wmv mpg mpeg m2ts 3gp ogv ";

/// What such names begin with, folded.
constexpr std::array<std::string_view, 11> screenshotWords{
    "screenshot",      "screen shot",    "captura de pantalla", "captura_de_pantalla",
    "pantallazo",      "bildschirmfoto", "schermata",           "capture d'ecran",
    "captura de ecra", "schermafdruk",   "screencast"};

bool isOneOf(std::string_view extensions, std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point != std::string_view::npos && point > 0 &&
           extensions.find(" " + lowerCased(name.substr(point + 1)) + " ") != std::string_view::npos;
}

/// "2025:03:14 09:30:05", as the camera's clock showed, which is taken for the user's.
std::optional<Date> dateOfTag(std::string text) {
    std::erase(text, ':');
    std::ranges::replace(text, ' ', '-');
    return dateFromStampText(text);
}

Picture pictureOf(std::string path, const platform::FileStatus& status, const InventoryQuery& query) {
    Picture picture{.id = std::string(idPrefixOf(InventoryKind::large)) + pathInID(path, query.home),
                    .path = std::move(path),
                    .bytes = status.allocatedBytes,
                    .taken = status.modified};
    const std::string_view name = fileName(picture.path);
    picture.isFilm = isOneOf(filmExtensions, name);
    picture.isScreenshot = isNameOfScreenshot(name) || isNameOfScreenshot(fileName(parentOf(picture.path)));
    if (!picture.isFilm) {
        const auto tag = platform::takenTextOfPicture(picture.path);
        const auto date = tag ? dateOfTag(*tag) : std::nullopt;
        picture.isDatedByCamera = date.has_value();
        picture.taken = date.value_or(picture.taken);
    }
    return picture;
}

/// One path of each file that is a picture or a film.
std::vector<std::string> pathsAmong(const FilesFound& found, const UserFiles& own) {
    std::vector<FilesFound::File> files(found.files().begin(), found.files().end());
    std::ranges::sort(files, {}, &FilesFound::File::object);
    std::vector<std::string> paths;
    const FilesFound::File* previous = nullptr;
    for (const FilesFound::File& file : files) {
        if (previous != nullptr && found.isSame(*previous, file)) {
            continue;
        }
        std::string path = found.pathOf(file);
        if (isOneOf(pictureExtensions, path) || isOneOf(filmExtensions, path)) {
            if (own.mayHold(path)) {
                paths.push_back(std::move(path));
            }
            previous = &file;
        }
    }
    std::ranges::sort(paths);
    return paths;
}

} // namespace

bool isNameOfScreenshot(std::string_view name) {
    const std::string text = folded(name);
    return std::ranges::any_of(screenshotWords,
                               [&](std::string_view word) { return text.starts_with(word); }) ||
           text == "capturas de pantalla" || text == "capturas";
}

std::string picturesFolder(const std::string& home) {
    return HomePlaces::ofThisMachine(home).path("~/Pictures");
}

PicturesFound findPictures(const InventoryQuery& query) {
    const UserFiles own(query);
    const FilesFound found = own.search(1);
    const std::vector<std::string> paths = pathsAmong(found, own);
    std::vector<std::optional<Picture>> looked(paths.size());
    parallelFor(paths.size(), query.stop, [&](std::size_t index) {
        if (const auto status = platform::statusOfFile(paths[index])) {
            looked[index] = pictureOf(paths[index], *status, query);
        }
    });
    PicturesFound result{.pictures = {}, .unreadableCount = found.unreadableCount};
    for (std::optional<Picture>& picture : looked) {
        if (picture) {
            result.pictures.push_back(std::move(*picture));
        }
    }
    return result;
}

} // namespace lumo
