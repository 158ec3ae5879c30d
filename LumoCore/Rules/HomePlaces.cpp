#include "LumoCore/Rules/HomePlaces.h"

#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <array>
#include <span>

namespace lumo {

/// A usual place, and what a variable or a line of the settings calls it.
struct HomePlaces::Named {
    std::string_view name;
    std::string_view usual;
};

namespace {

/// The folders of user-dirs.dirs, by their names there.
constexpr auto userFolders = std::to_array<HomePlaces::Named>({{"XDG_DESKTOP_DIR", "~/Desktop"},
                                                               {"XDG_DOWNLOAD_DIR", "~/Downloads"},
                                                               {"XDG_DOCUMENTS_DIR", "~/Documents"},
                                                               {"XDG_PICTURES_DIR", "~/Pictures"},
                                                               {"XDG_MUSIC_DIR", "~/Music"},
                                                               {"XDG_VIDEOS_DIR", "~/Movies"},
                                                               {"XDG_PUBLICSHARE_DIR", "~/Public"},
                                                               {"XDG_TEMPLATES_DIR", "~/Templates"}});

/// The base directories, as the desktops have agreed on them (XDG). The first holds the settings that
/// name the user's folders.
constexpr auto namedBases = std::to_array<HomePlaces::Named>({{"XDG_CONFIG_HOME", "~/.config"},
                                                              {"XDG_CACHE_HOME", "~/.cache"},
                                                              {"XDG_DATA_HOME", "~/.local/share"},
                                                              {"XDG_STATE_HOME", "~/.local/state"}});

/// What the tools' own documentation says that they read.
constexpr auto toolFolders = std::to_array<HomePlaces::Named>({{"UV_CACHE_DIR", "~/.cache/uv"},
                                                               {"PIP_CACHE_DIR", "~/.cache/pip"},
                                                               {"npm_config_cache", "~/.npm"},
                                                               {"YARN_CACHE_FOLDER", "~/.cache/yarn"},
                                                               {"HF_HOME", "~/.cache/huggingface"},
                                                               {"GRADLE_USER_HOME", "~/.gradle"},
                                                               {"CARGO_HOME", "~/.cargo"},
                                                               {"RUSTUP_HOME", "~/.rustup"},
                                                               {"GOPATH", "~/go"},
                                                               {"GOMODCACHE", "~/go/pkg/mod"},
                                                               {"GOCACHE", "~/.cache/go-build"},
                                                               {"CCACHE_DIR", "~/.cache/ccache"}});

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

std::string withoutFinalSlashes(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path;
}

/// The folder that a line of the settings names, which is absolute or begins with "$HOME/"; absent when it is
/// none, or the home folder itself, which is how they say that there is no such folder.
std::optional<std::string> folderNamed(std::string_view value, const std::string& home) {
    constexpr std::string_view variable = "$HOME/";
    const bool isInHome = value.starts_with(variable);
    const std::string folder = withoutFinalSlashes(
        isInHome ? joined(home, unquoted(value.substr(variable.size()))) : unquoted(value));
    return folder.starts_with('/') && folder != home ? std::optional(folder) : std::nullopt;
}

std::optional<std::string> folderIn(std::string_view settings, std::string_view name,
                                    const std::string& home) {
    const std::string key = std::string(name) + "=\"";
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

} // namespace

HomePlaces::HomePlaces(std::string home, System system) : home_(std::move(home)), system_(system) {}

HomePlaces::HomePlaces(std::string home, System system, const Variables& variables)
    : HomePlaces(std::move(home), system) {
    if (system_ != System::linux) {
        return;
    }
    moveByVariable(namedBases.front(), variables);
    constexpr std::size_t mostBytes = std::size_t{64} * 1024;
    if (const auto settings = platform::readWhole(path("~/.config/user-dirs.dirs"), mostBytes)) {
        moveMainFolders(*settings);
    }
    for (const Named& folder : std::span(namedBases).subspan(1)) {
        moveByVariable(folder, variables);
    }
    for (const Named& folder : toolFolders) {
        moveByVariable(folder, variables);
    }
    sortLargestFirst(moved_, [](const auto& move) { return std::ssize(move.first); });
}

HomePlaces HomePlaces::ofThisMachine(const std::string& home, System system) {
    const bool isOwn = platform::isSamePlace(platform::environmentVariable("HOME").value_or(""), home);
    return {home, system, [isOwn](const std::string& name) {
                return isOwn ? platform::environmentVariable(name) : std::nullopt;
            }};
}

std::string HomePlaces::placed(std::string_view usual) const {
    for (const auto& [from, to] : moved_) {
        if (isInside(usual, from)) {
            return to + std::string(usual.substr(from.size()));
        }
    }
    return std::string(usual);
}

std::string HomePlaces::path(std::string_view usual) const {
    return expanded(placed(usual), home_);
}

std::string HomePlaces::usual(std::string_view path) const {
    const std::pair<std::string, std::string>* nearest = nullptr;
    for (const auto& move : moved_) {
        if (isInside(path, expanded(move.second, home_)) &&
            (nearest == nullptr || nearest->second.size() < move.second.size())) {
            nearest = &move;
        }
    }
    return nearest == nullptr ? std::string(path)
                              : expanded(nearest->first, home_) +
                                    std::string(path.substr(expanded(nearest->second, home_).size()));
}

std::vector<std::string> HomePlaces::baseFolders() const {
    std::vector<std::string> folders;
    if (system_ == System::linux) {
        for (const Named& base : namedBases) {
            folders.push_back(path(base.usual));
        }
    }
    return folders;
}

std::vector<std::string> HomePlaces::mainFolders() const {
    std::vector<std::string> folders;
    for (const Named& folder : userFolders) {
        folders.push_back(path(folder.usual));
    }
    if (system_ == System::linux) {
        folders.push_back(joined(home_, "Videos")); // What the settings call so when they name none.
    }
    return folders;
}

void HomePlaces::moveMainFolders(const std::string& settings) {
    for (const Named& folder : userFolders) {
        if (const auto named = folderIn(settings, folder.name, home_); named && isSpeltOut(*named)) {
            moveFolder(folder.usual, *named);
        }
    }
}

void HomePlaces::moveFolder(std::string_view usual, const std::string& path) {
    std::string real = abbreviated(path, home_);
    if (real != usual) {
        moved_.emplace_back(usual, std::move(real));
    }
}

void HomePlaces::moveByVariable(const Named& folder, const Variables& variables) {
    std::string value = variables(std::string(folder.name)).value_or("");
    if (folder.name == "GOPATH") {
        value.resize(
            std::min(value.find(':'), value.size())); // The first folder of the list takes downloads.
    }
    const std::string path = withoutFinalSlashes(std::move(value));
    if (path == expanded(folder.usual, home_) || !mayBeTaken(path)) {
        return;
    }
    moveFolder(folder.usual, path);
    taken_.push_back(path);
}

bool HomePlaces::mayBeTaken(const std::string& path) const {
    if (!path.starts_with('/') || !isSpeltOut(path) || path == home_ || !isInside(path, home_)) {
        return false;
    }
    std::vector<std::string> kept = mainFolders();
    for (const Named& base : namedBases) {
        kept.push_back(this->path(base.usual));
        kept.push_back(expanded(base.usual, home_));
    }
    for (std::string own : {OwnFiles::support(home_), OwnFiles::caches(home_), OwnFiles::settings(home_),
                            joined(home_, ".ssh"), joined(home_, ".gnupg")}) {
        kept.push_back(std::move(own));
    }
    const bool holdsKept =
        std::ranges::any_of(kept, [&](const std::string& folder) { return isInside(folder, path); });
    return !holdsKept &&
           std::ranges::none_of(taken_, [&](const std::string& other) { return isInside(other, path); });
}

} // namespace lumo
