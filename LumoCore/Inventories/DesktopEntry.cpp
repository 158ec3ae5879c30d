#include "LumoCore/Inventories/DesktopEntry.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace lumo {

namespace {

using platform::EntryKind;

constexpr std::string_view extension = ".desktop";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? ""
                                           : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// The keys of the "[Desktop Entry]" group.
std::map<std::string_view, std::string_view> mainGroup(std::string_view text) {
    std::map<std::string_view, std::string_view> values;
    bool isInGroup = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t equals = line.find('=');
        if (line.starts_with('[')) {
            isInGroup = line == "[Desktop Entry]";
        } else if (isInGroup && !line.starts_with('#') && equals != std::string_view::npos) {
            values.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    }
    return values;
}

/// The words of a command line, quotes removed.
std::vector<std::string> wordsOf(std::string_view line) {
    std::vector<std::string> words;
    bool isQuoted = false;
    bool isInWord = false;
    for (const char c : line) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == ' ' && !isQuoted) {
            isInWord = false;
            continue;
        }
        if (!isInWord) {
            words.emplace_back();
            isInWord = true;
        }
        if (c != '"') {
            words.back() += c;
        }
    }
    return words;
}

/// The program that the command line starts, as it is written there, if its name says which application runs.
std::string programOf(std::string_view line) {
    constexpr std::array<std::string_view, 14> tellNothing{"env",  "flatpak",     "snap",     "sh",    "bash",
                                                           "java", "python",      "perl",     "ruby",  "node",
                                                           "gjs",  "dbus-launch", "electron", "pkexec"};
    for (const std::string& word : wordsOf(line)) {
        const std::string_view name = fileName(word);
        if (name == "env" || word.find('=') != std::string::npos) {
            continue;
        }
        const bool isInterpreter =
            name.starts_with("python") || std::ranges::find(tellNothing, name) != tellNothing.end();
        return isInterpreter ? "" : word;
    }
    return {};
}

/// The folder that belongs to the program of a command line alone, which may be a script that starts another
/// program beside it under another name.
std::string ownFolderOf(const std::string& program) {
    constexpr std::array<std::string_view, 5> shared{"bin", "sbin", "games", "lib", "libexec"};
    std::string_view places = "/";
    const std::string searched =
        platform::environmentVariable("PATH").value_or("/usr/local/bin:/usr/bin:/bin");
    if (program.find('/') == std::string::npos) {
        places = searched;
    }
    while (!program.empty() && !places.empty()) {
        const std::size_t end = std::min(places.find(':'), places.size());
        const std::string path = program.starts_with('/') ? program : joined(places.substr(0, end), program);
        if (platform::isProgram(path)) {
            const std::string folder(parentOf(platform::withoutLinks(path).value_or("")));
            return std::ranges::find(shared, fileName(folder)) == shared.end() ? folder : std::string();
        }
        places.remove_prefix(std::min(end + 1, places.size()));
    }
    return {};
}

/// Collects the ids below an "applications" folder; those in subfolders have the folders' names before a "-".
void collect(const std::string& folder, const std::string& prefix, int depth,
             std::map<std::string, std::string>& pathsByID) {
    constexpr int deepest = 3;
    for (const std::string& name : platform::namesIn(folder)) {
        std::string path = folder;
        path.append("/").append(name);
        if (name.size() > extension.size() && name.ends_with(extension)) {
            pathsByID.emplace(prefix + name.substr(0, name.size() - extension.size()), path);
        } else if (depth < deepest && platform::kindOf(path) == EntryKind::folder) {
            collect(path, prefix + name + "-", depth + 1, pathsByID);
        }
    }
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, const std::string& id,
                                              const std::string& path, Language language) {
    const auto values = mainGroup(text);
    const auto value = [&](std::string_view key) {
        const auto found = values.find(key);
        return found != values.end() ? found->second : std::string_view();
    };
    if (value("Type") != "Application" || value("Hidden") == "true" || value("NoDisplay") == "true" ||
        value("Name").empty()) {
        return std::nullopt;
    }
    const std::string_view translated = value(language == Language::es ? "Name[es]" : "Name[en]");
    return DesktopEntry{id, std::string(translated.empty() ? value("Name") : translated), path,
                        std::string(fileName(programOf(value("Exec"))))};
}

std::vector<DesktopEntry> desktopEntriesIn(const std::vector<std::string>& dataFolders) {
    constexpr std::size_t mostBytes = std::size_t{1024} * 1024;
    std::vector<DesktopEntry> entries;
    std::set<std::string> known;
    for (const std::string& folder : dataFolders) {
        std::map<std::string, std::string> pathsByID;
        collect(folder + "/applications", "", 0, pathsByID);
        for (const auto& [id, path] : pathsByID) {
            const auto text = platform::readWhole(path, mostBytes);
            if (!text || !known.insert(id).second) {
                continue;
            }
            if (auto entry = parseDesktopEntry(*text, id, path)) {
                entry->programFolder = ownFolderOf(programOf(mainGroup(*text)["Exec"]));
                entries.push_back(std::move(*entry));
            }
        }
    }
    return entries;
}

std::vector<std::string> desktopDataFolders(const std::string& home) {
    std::vector<std::string> folders = platform::systemDataFolders();
    if (folders.empty()) {
        return folders; // This system describes its applications in another way.
    }
    folders.insert(folders.begin(), {home + "/.local/share", home + "/.local/share/flatpak/exports/share"});
    return folders;
}

} // namespace lumo
