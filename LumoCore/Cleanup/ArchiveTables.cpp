#include "LumoCore/Cleanup/ArchiveTables.h"

#include "LumoCore/Basics/Path.h"

#include <algorithm>
#include <array>
#include <span>

namespace lumo::ArchiveTables {

namespace {

constexpr std::array<std::string_view, 9> homeFolders{
    "Desktop", "Documents", "Downloads", "Pictures", "Movies", "Music", "Library", "Applications", "Public"};
constexpr std::array<std::string_view, 2> furtherOnLinux{"Videos", "Templates"};
constexpr std::array<std::string_view, 8> packages{"app",       "photoslibrary",    "musiclibrary",
                                                   "fcpbundle", "logicx",           "imovielibrary",
                                                   "tvlibrary", "photoboothlibrary"};
constexpr std::array<std::string_view, 7> archives{"zip", "aar", "dmg", "7z", "rar", "gz", "tgz"};

bool holds(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

} // namespace

bool isHomeFolder(std::string_view name, System system) {
    return holds(homeFolders, name) || (system == System::linux && holds(furtherOnLinux, name));
}

std::string extensionOf(std::string_view name) {
    const std::string_view stem = fileStem(name);
    std::string extension(stem.size() < name.size() ? name.substr(stem.size() + 1) : std::string_view());
    std::ranges::transform(extension, extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return extension;
}

bool isPackageExtension(std::string_view extension) {
    return holds(packages, extension);
}

bool isArchiveExtension(std::string_view extension) {
    return holds(archives, extension);
}

const std::vector<std::string>& incompressibleExtensions() {
    static const std::vector<std::string> extensions{
        "jpg", "jpeg", "heic", "heif", "png", "gif", "webp",  "mp4", "mov", "m4v", "mkv",        "avi",
        "mp3", "m4a",  "aac",  "flac", "zip", "gz",  "tgz",   "bz2", "xz",  "7z",  "rar",        "dmg",
        "pkg", "xip",  "iso",  "aar",  "zst", "br",  "woff2", "ipa", "apk", "jar", "sparseimage"};
    return extensions;
}

bool isIncompressible(std::string_view extension) {
    return std::ranges::find(incompressibleExtensions(), extension) != incompressibleExtensions().end();
}

} // namespace lumo::ArchiveTables
