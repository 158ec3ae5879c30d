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

/// The path with a leading "~" standing for the home folder.
inline std::string expanded(std::string_view path, std::string_view home) {
    return path.starts_with("~/") ? std::string(home) + std::string(path.substr(1)) : std::string(path);
}

/// The reverse, for showing.
inline std::string abbreviated(std::string_view path, std::string_view home) {
    return isInside(path, home) ? "~" + std::string(path.substr(home.size())) : std::string(path);
}

} // namespace lumo
