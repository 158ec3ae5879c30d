#include "TarvoModel/Showing/DesktopFolder.h"

#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <cstddef>

namespace tarvo {

namespace platform = lumo::platform;

namespace {

/// The text up to the closing quote; a backslash takes its meaning from the character after it.
std::string unquoted(std::string_view text) {
    std::string plain;
    for (std::size_t index = 0; index < text.size() && text[index] != '"'; ++index) {
        if (text[index] == '\\' && index + 1 < text.size()) {
            ++index;
        }
        plain += text[index];
    }
    return plain;
}

std::optional<std::string> folderNamed(std::string_view value, const std::string& home) {
    constexpr std::string_view variable = "$HOME/";
    const bool isInHome = value.starts_with(variable);
    std::string folder = isInHome ? home + "/" + unquoted(value.substr(variable.size())) : unquoted(value);
    while (folder.ends_with('/')) {
        folder.pop_back();
    }
    return folder.starts_with('/') && folder != home ? std::optional(folder) : std::nullopt;
}

} // namespace

std::string desktopFolder(const std::string& home) {
    constexpr std::size_t mostBytes = std::size_t{64} * 1024;
    std::string usual = home + "/Desktop";
    if (platform::isFolderThroughLinks(usual)) {
        return usual;
    }
    const auto settings = platform::readWhole(home + "/.config/user-dirs.dirs", mostBytes);
    return settings ? namedDesktop(*settings, home).value_or(usual) : usual;
}

std::optional<std::string> namedDesktop(std::string_view settings, const std::string& home) {
    constexpr std::string_view key = "XDG_DESKTOP_DIR=\"";
    std::optional<std::string> folder;
    while (!settings.empty()) {
        const std::size_t end = settings.find('\n');
        std::string_view line = settings.substr(0, end);
        settings.remove_prefix(end == std::string_view::npos ? settings.size() : end + 1);
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        if (line.starts_with(key)) {
            folder = folderNamed(line.substr(key.size()), home); // As in a shell, the last one counts.
        }
    }
    return folder;
}

} // namespace tarvo
