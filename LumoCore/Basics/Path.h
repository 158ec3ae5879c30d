#pragma once

#include <string>
#include <string_view>

/// Paths are absolute byte strings without a final slash; these functions look at the bytes alone.
namespace lumo {

/// True when the path is the folder or lies below it.
inline bool isInside(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// The last component.
inline std::string_view fileName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// The last component without its extension; a leading dot begins no extension.
inline std::string_view fileStem(std::string_view path) {
    const std::string_view name = fileName(path);
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos || point == 0 ? name : name.substr(0, point);
}

/// The beginning of a name, at most that many bytes of it, cut between characters.
constexpr std::string_view cutToBytes(std::string_view name, std::size_t mostBytes) {
    if (name.size() <= mostBytes) {
        return name;
    }
    std::size_t length = mostBytes;
    const auto isContinuation = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
    // No character has more than four bytes; longer runs of such bytes are no characters anyway.
    for (int steps = 0; steps < 3 && length > 0 && isContinuation(name[length]); ++steps) {
        --length;
    }
    return name.substr(0, length);
}

/// The path with a leading "~" standing for the home folder.
inline std::string expanded(std::string_view path, std::string_view home) {
    return path.starts_with("~/") ? std::string(home) + std::string(path.substr(1)) : std::string(path);
}

/// The reverse, for showing.
inline std::string abbreviated(std::string_view path, std::string_view home) {
    return isInside(path, home) ? "~" + std::string(path.substr(home.size())) : std::string(path);
}

} // namespace lumo
