#include "LumoCore/Inventories/Installed.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Inventories/Packages.h"
#include "LumoCore/Scanning/FolderLocation.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <array>
#include <functional>
#include <span>

namespace lumo {

namespace {

using WordList = std::vector<std::string>;

constexpr std::size_t shortestName = 3;

/// WordList that name a kind of thing, or a command of every system, rather than one program; besides the
/// generic words of a Mac.
constexpr std::array<std::string_view, 56> ordinaryWords{
    "backup", "backups", "bin",     "browser",   "calendar", "client",   "config", "console",
    "core",   "default", "docs",    "documents", "editor",   "file",     "files",  "fonts",
    "games",  "help",    "home",    "icons",     "info",     "lib",      "link",   "local",
    "locale", "logs",    "mail",    "manager",   "music",    "network",  "photos", "pictures",
    "player", "plugins", "profile", "projects",  "script",   "settings", "share",  "software",
    "sounds", "state",   "studio",  "system",    "temp",     "terminal", "test",   "text",
    "themes", "time",    "tools",   "trash",     "user",     "videos",   "viewer", "web"};

/// Folders with another name than the program that they belong to.
struct Pair {
    std::string_view folder;
    std::array<std::string_view, 3> programs;
};

constexpr std::array<Pair, 14> pairs{
    {{"bravesoftware", {"brave", "brave-browser"}},
     {"code", {"code", "code-oss"}},
     {"emacs.d", {"emacs"}},
     {"google-chrome", {"chrome", "google-chrome", "google-chrome-stable"}},
     {"gradle", {"gradle"}},
     {"m2", {"mvn"}},
     {"microsoft-edge", {"msedge", "microsoft-edge", "microsoft-edge-stable"}},
     {"mozilla", {"firefox", "firefox-esr"}},
     {"purple", {"pidgin", "finch"}},
     {"telegramdesktop", {"telegram-desktop", "telegram"}},
     {"vagrant.d", {"vagrant"}},
     {"vim", {"vim", "vi"}},
     {"vscode", {"code", "code-oss"}},
     {"wine", {"wine", "wine64"}}}};

bool isOrdinary(std::string_view word) {
    const auto holds = [&](std::span<const std::string_view> all) {
        return std::ranges::find(all, word) != all.end();
    };
    return holds(ordinaryWords) || holds(InstalledApp::genericTokens);
}

bool identifies(const WordList& alias) {
    std::size_t characters = 0;
    for (const std::string& word : alias) {
        characters += characterCount(word);
    }
    return characters >= shortestName && !std::ranges::all_of(alias, isOrdinary);
}

/// What an application is called, each as the words of it.
std::vector<WordList> aliasesOf(const InstalledApp& app) {
    const std::string_view identifier = app.bundleID;
    std::vector<WordList> aliases{words(app.name), words(identifier.substr(identifier.rfind('.') + 1)),
                                  words(app.program)};
    std::erase_if(aliases, [](const WordList& alias) { return !identifies(alias); });
    return aliases;
}

std::string together(const WordList& words) {
    std::string text;
    for (const std::string& word : words) {
        text += word;
    }
    return text;
}

const InstalledApp* firstWithAlias(const std::vector<InstalledApp>& apps,
                                   const std::function<bool(const WordList& alias)>& fits) {
    const auto found = std::ranges::find_if(
        apps, [&](const InstalledApp& app) { return std::ranges::any_of(aliasesOf(app), fits); });
    return found != apps.end() ? &*found : nullptr;
}

/// The same identifier, or one below it: "org.mozilla.firefox.helper" belongs to "org.mozilla.firefox".
const InstalledApp* firstWithIdentifier(const std::vector<InstalledApp>& apps, const std::string& sought) {
    const auto found = std::ranges::find_if(apps, [&](const InstalledApp& app) {
        const std::string identifier = lowerCased(app.bundleID);
        return identifier.find('.') != std::string::npos && sought.starts_with(identifier) &&
               (sought.size() == identifier.size() || sought[identifier.size()] == '.');
    });
    return found != apps.end() ? &*found : nullptr;
}

std::optional<InstalledApp> programCalled(const std::string& name, const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        std::string path = joined(folder, name);
        if (platform::isProgram(path)) {
            return InstalledApp{.name = name, .bundleID = name, .path = std::move(path), .program = name};
        }
    }
    return std::nullopt;
}

/// The folder's program by the table of pairs; no other can be meant.
std::optional<InstalledApp> pairedWith(const Pair& pair, const Installed& installed) {
    for (const std::string_view program : pair.programs) {
        const std::string name(program);
        const WordList sought = words(name);
        if (sought.empty()) {
            continue;
        }
        if (const InstalledApp* app = firstWithAlias(
                installed.apps, [&](const WordList& alias) { return together(alias) == together(sought); })) {
            return *app;
        }
        if (auto found = programCalled(name, installed.programFolders)) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<InstalledApp> programOrPackage(std::string_view name, const Installed& installed) {
    const std::string lower = lowerCased(name);
    if (!identifies(words(name)) || name.find('/') != std::string_view::npos) {
        return std::nullopt;
    }
    for (const std::string& spelling : {std::string(name), lower}) {
        if (auto program = programCalled(spelling, installed.programFolders)) {
            return program;
        }
    }
    return installed.packages.contains(lower)
               ? std::optional(InstalledApp{.name = lower, .bundleID = lower, .path = {}})
               : std::nullopt;
}

/// The lists of Debian's package manager and of Arch's; other systems keep theirs in data bases.
void readPackages(Installed& installed) {
    for (const auto& [name, package] : packagesOfSystem()) {
        (package.state == Package::State::installed ? installed.packages : installed.removedPackages)
            .insert(name);
    }
    for (const std::string& entry : platform::namesIn("/var/lib/pacman/local")) {
        const std::size_t release = entry.rfind('-');
        const std::size_t version = release == std::string::npos ? release : entry.rfind('-', release - 1);
        installed.packages.insert(entry.substr(0, version));
    }
}

std::vector<std::string> programFoldersOf(const std::string& home) {
    std::vector<std::string> folders;
    const std::string searched =
        platform::environmentVariable("PATH").value_or("/usr/local/bin:/usr/bin:/bin");
    for (std::string_view rest = searched; !rest.empty();) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        if (rest.starts_with('/')) {
            folders.emplace_back(rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    // A desktop starts its programs without what a shell adds to PATH.
    for (const char* own : {"/.local/bin", "/bin", "/.cargo/bin", "/go/bin"}) {
        folders.push_back(home + own);
    }
    return folders;
}

std::optional<std::string> uninstalledIn(const std::vector<std::string>& folders, std::string_view id) {
    const bool isListed = std::ranges::any_of(folders, platform::canList);
    const bool isThere = std::ranges::any_of(
        folders, [&](const std::string& folder) { return !platform::isMissing(joined(folder, id)); });
    return isListed && !isThere ? std::optional(std::string(id)) : std::nullopt;
}

} // namespace

Installed Installed::ofThisMachine(const std::string& home) {
    return ofThisMachine(home, InstalledApp::scan(home));
}

Installed Installed::ofThisMachine(const std::string& home, std::vector<InstalledApp> apps) {
    Installed installed{.apps = std::move(apps)};
    if (currentSystem() == System::macos) {
        return installed;
    }
    installed.programFolders = programFoldersOf(home);
    readPackages(installed);
    // Further installations may stand anywhere.
    if (platform::namesIn("/etc/flatpak/installations.d").empty()) {
        installed.flatpakFolders = {home + "/.local/share/flatpak/app", "/var/lib/flatpak/app"};
    }
    installed.snapFolders = {"/snap", "/var/lib/snapd/snap"};
    return installed;
}

std::optional<InstalledApp> Installed::related(std::string_view folderName, System system) const {
    if (system == System::macos) {
        return InstalledApp::related(folderName, apps);
    }
    const std::string_view name = folderName.substr(folderName.starts_with('.') ? 1 : 0);
    const std::string lower = lowerCased(name);
    if (const auto pair = std::ranges::find(pairs, lower, &Pair::folder); pair != pairs.end()) {
        return pairedWith(*pair, *this);
    }
    const WordList sought = words(name);
    const InstalledApp* app = firstWithIdentifier(apps, lower);
    if (app == nullptr) {
        app =
            firstWithAlias(apps, [&](const WordList& alias) { return together(alias) == together(sought); });
    }
    if (app == nullptr) {
        app = firstWithAlias(apps, [&](const WordList& alias) {
            return sought.size() >= alias.size() && std::equal(alias.begin(), alias.end(), sought.begin());
        });
    }
    return app != nullptr ? std::optional(*app) : programOrPackage(name, *this);
}

std::optional<std::string> Installed::uninstalledOwnerOf(const std::string& path, const std::string& home,
                                                         System system) const {
    if (system == System::macos || !isInside(path, home)) {
        return std::nullopt;
    }
    const std::string_view owner = ownersName(path, home, system);
    const std::string_view inHome = std::string_view(path).substr(home.size());
    if (inHome.starts_with("/.var/app/")) {
        return uninstalledIn(flatpakFolders, owner);
    }
    if (inHome.starts_with("/snap/")) {
        return uninstalledIn(snapFolders, owner);
    }
    const std::string lower = lowerCased(owner.substr(owner.starts_with('.') ? 1 : 0));
    return removedPackages.contains(lower) && !related(owner, system) ? std::optional(lower) : std::nullopt;
}

} // namespace lumo
