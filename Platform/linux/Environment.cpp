#include "Platform/Environment.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <malloc.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace lumo::platform {

namespace {

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) {
            parts.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// "es_MX.UTF-8@euro" as "es-MX".
std::string languageTag(std::string locale) {
    locale.resize(std::min(locale.find_first_of(".@"), locale.size()));
    std::ranges::replace(locale, '_', '-');
    return locale;
}

/// The locale for messages by the C library's order of precedence.
std::string messageLocale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const auto value = environmentVariable(name); value && !value->empty()) {
            return *value;
        }
    }
    return {};
}

} // namespace

std::vector<std::string> processArguments() {
    constexpr std::size_t mostBytes = std::size_t{8} * 1024 * 1024;
    const SystemResult<std::string> line = readWhole("/proc/self/cmdline", mostBytes);
    std::vector<std::string> arguments;
    for (std::string_view rest = line ? std::string_view(*line) : ""; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        arguments.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return arguments;
}

std::optional<std::string> environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<std::string> accountHome() {
    constexpr std::size_t enoughBytes = std::size_t{64} * 1024;
    std::vector<char> texts(enoughBytes);
    passwd account{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &account, texts.data(), texts.size(), &found) != 0 || found == nullptr ||
        found->pw_dir == nullptr || *found->pw_dir == '\0') {
        return std::nullopt;
    }
    return found->pw_dir;
}

std::vector<std::string> environmentVariables() {
    std::vector<std::string> variables;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        variables.emplace_back(*variable);
    }
    return variables;
}

std::vector<std::string> preferredLanguages() {
    const std::string locale = languageTag(messageLocale());
    if (locale.empty() || locale == "C" || locale == "POSIX") {
        return {};
    }
    std::vector<std::string> languages;
    for (const std::string& language : split(environmentVariable("LANGUAGE").value_or(""), ':')) {
        languages.push_back(languageTag(language));
    }
    languages.push_back(locale);
    return languages;
}

std::vector<std::string> systemDataFolders() {
    const std::string named = environmentVariable("XDG_DATA_DIRS").value_or("");
    std::vector<std::string> folders = split(named.empty() ? "/usr/local/share:/usr/share" : named, ':');
    for (const char* exported : {"/var/lib/flatpak/exports/share", "/var/lib/snapd/desktop"}) {
        if (std::ranges::find(folders, exported) == folders.end()) {
            folders.emplace_back(exported);
        }
    }
    return folders;
}

std::span<const std::string_view> sharedDataFolders() {
    // The standard places of the desktops' base directories, and Flatpak's.
    static constexpr auto folders = std::to_array<std::string_view>(
        {".cache", ".config", ".local", ".local/share", ".local/state", ".var", ".var/app"});
    return folders;
}

std::string programFolder() {
    return std::string(parentOf(linkTarget("/proc/self/exe").value_or("")));
}

std::string commandBesideProgram() {
    const std::string command = programFolder() + "/tarvo";
    return isProgram(command) ? command : "";
}

int processNumber() {
    return getpid();
}

bool bundlesApplications() {
    return false;
}

bool hasScreen() {
    return !environmentVariable("WAYLAND_DISPLAY").value_or("").empty() ||
           !environmentVariable("DISPLAY").value_or("").empty();
}

void shareOneHeap() {
    mallopt(M_ARENA_MAX, 1);
}

void becomeProgram(const std::string& path, const std::vector<std::string>& arguments) {
    std::vector<std::string> copies = arguments;
    std::vector<char*> pointers;
    pointers.reserve(copies.size() + 1);
    for (std::string& argument : copies) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    execv(path.c_str(), pointers.data());
}

} // namespace lumo::platform
