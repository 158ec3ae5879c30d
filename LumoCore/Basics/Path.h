#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Taking paths apart and putting them together. Paths are byte strings without a final slash, absolute where
/// nothing else is said; these functions look at the bytes alone and ask no disk.
namespace lumo {

/// True when the path is the folder or lies below it.
inline bool isInside(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// The last component.
inline std::string_view fileName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// The path without its last component and the slash before it: "" for what stands in the root folder, and
/// for a name alone.
inline std::string_view parentOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return path.substr(0, slash == std::string_view::npos ? 0 : slash);
}

/// The path of a name, or of a relative path, in a folder.
inline std::string joined(std::string_view folder, std::string_view name) {
    std::string path(folder);
    path += '/';
    path += name;
    return path;
}

/// What stands between the slashes; a slash at the beginning begins no component.
inline std::vector<std::string_view> components(std::string_view path) {
    std::vector<std::string_view> names;
    if (path.starts_with('/')) {
        path.remove_prefix(1);
    }
    for (std::size_t slash = path.find('/'); slash != std::string_view::npos; slash = path.find('/')) {
        names.push_back(path.substr(0, slash));
        path.remove_prefix(slash + 1);
    }
    names.push_back(path);
    return names;
}

/// True when every component is a name: where the path leads must not depend on how far it was walked.
inline bool isSpeltOut(std::string_view path) {
    for (const std::string_view name : components(path)) {
        if (name.empty() || name == "." || name == ".." || name.find('\0') != std::string_view::npos) {
            return false;
        }
    }
    return true;
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
    return path == "~" || path.starts_with("~/") ? std::string(home) + std::string(path.substr(1))
                                                 : std::string(path);
}

/// The reverse, for showing.
inline std::string abbreviated(std::string_view path, std::string_view home) {
    return isInside(path, home) ? "~" + std::string(path.substr(home.size())) : std::string(path);
}

} // namespace lumo
