#include "LumoCore/Inventories/AppStatus.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lumo {

namespace {

using Names = std::array<std::string_view, 4>;

struct KnownApp {
    std::string_view identifier; ///< A bundle identifier, or a desktop entry's of what only Linux has.
    std::string_view name;       ///< Empty where the identifier says more than we could.
    Names processes;             ///< What its processes are called on Linux.
    Names desktopIDs;            ///< Its desktop entries there, which each way of packaging calls otherwise.
};

constexpr auto knownApps = std::to_array<KnownApp>(
    {{"com.google.Chrome",
      "Google Chrome",
      {"chrome", "google-chrome", "google-chrome-stable"},
      {"google-chrome", "com.google.Chrome"}},
     {"com.anthropic.claudefordesktop", "Claude", {"claude-desktop"}, {"claude-desktop"}},
     {"com.moonshot.kimichat", "Kimi", {"kimi", "kimi-desktop"}, {"kimi"}},
     {"com.docker.docker", "Docker Desktop", {"docker-desktop", "com.docker.backend"}, {"docker-desktop"}},
     {"ai.perplexity.macv3", "", {"perplexity"}, {"perplexity"}},
     {"firefox",
      "Firefox",
      {"firefox", "firefox-esr", "firefox-bin"},
      {"firefox", "firefox-esr", "org.mozilla.firefox", "firefox_firefox"}},
     {"thunderbird",
      "Thunderbird",
      {"thunderbird", "thunderbird-bin"},
      {"thunderbird", "org.mozilla.Thunderbird", "net.thunderbird.Thunderbird", "thunderbird_thunderbird"}},
     {"chromium",
      "Chromium",
      {"chromium", "chromium-browser"},
      {"chromium", "chromium-browser", "org.chromium.Chromium", "chromium_chromium"}},
     {"brave-browser", "Brave", {"brave", "brave-browser"}, {"brave-browser", "com.brave.Browser"}},
     {"microsoft-edge", "Microsoft Edge", {"msedge", "microsoft-edge"}, {"microsoft-edge"}},
     {"vivaldi-stable", "Vivaldi", {"vivaldi-bin", "vivaldi"}, {"vivaldi-stable", "com.vivaldi.Vivaldi"}},
     {"opera", "Opera", {"opera"}, {"opera", "opera_opera"}},
     {"librewolf", "LibreWolf", {"librewolf"}, {"librewolf", "io.gitlab.librewolf-community"}},
     {"spotify", "Spotify", {"spotify"}, {"spotify", "com.spotify.Client", "spotify_spotify"}},
     {"code", "Visual Studio Code", {"code", "code-oss"}, {"code", "code-oss", "code_code"}},
     {"codium", "VSCodium", {"codium", "vscodium"}, {"codium", "vscodium", "com.vscodium.codium"}},
     {"cursor", "Cursor", {"cursor", "Cursor"}, {"cursor"}},
     {"windsurf", "Windsurf", {"windsurf"}, {"windsurf"}},
     {"discord", "Discord", {"Discord", "discord"}, {"discord", "com.discordapp.Discord"}},
     {"slack", "Slack", {"slack"}, {"slack", "com.slack.Slack", "slack_slack"}},
     {"teams", "Microsoft Teams", {"teams"}, {"teams"}},
     {"signal-desktop", "Signal", {"signal-desktop"}, {"signal-desktop", "org.signal.Signal"}},
     {"element-desktop", "Element", {"element-desktop"}, {"element-desktop", "im.riot.Riot"}}});

/// Programs whose places one rule cleans together.
struct KnownGroup {
    std::string_view identifier;
    Words name;
    std::array<std::string_view, 5> apps;
};

constexpr auto knownGroups =
    std::to_array<KnownGroup>({{"code-editors",
                                {"los editores de código", "the code editors"},
                                {"code", "codium", "cursor", "windsurf"}},
                               {"chat-apps",
                                {"las apps de chat", "the chat apps"},
                                {"discord", "slack", "teams", "signal-desktop", "element-desktop"}}});

const KnownApp* knownApp(std::string_view identifier) {
    const auto known = std::ranges::find_if(knownApps, [&](const KnownApp& app) {
        return app.identifier == identifier ||
               (!identifier.empty() && std::ranges::find(app.desktopIDs, identifier) != app.desktopIDs.end());
    });
    return known != knownApps.end() ? &*known : nullptr;
}

const KnownGroup* knownGroup(std::string_view identifier) {
    const auto* group = std::ranges::find(knownGroups, identifier, &KnownGroup::identifier);
    return group != knownGroups.end() ? group : nullptr;
}

/// The identifiers that mean the same application as this one.
std::vector<std::string_view> identifiersOf(std::string_view identifier) {
    const KnownApp* known = knownApp(identifier);
    if (known == nullptr) {
        return {identifier};
    }
    std::vector<std::string_view> identifiers{known->identifier};
    identifiers.insert(identifiers.end(), known->desktopIDs.begin(), known->desktopIDs.end());
    std::erase(identifiers, "");
    return identifiers;
}

bool isCalled(const platform::RunningProcess& process, std::string_view name) {
    return !name.empty() && (process.executable == name || process.argumentZero == name);
}

/// Browsers and editors are often started by a script, and run under another name out of the same folder.
bool belongsTo(const platform::RunningProcess& process, const DesktopEntry& entry) {
    return isCalled(process, entry.program) ||
           (!entry.programFolder.empty() && isInside(process.path, entry.programFolder));
}

} // namespace

AppStatus::AppStatus(std::vector<InstalledApp> installed, std::vector<DesktopEntry> entries,
                     std::vector<platform::RunningProcess> processes)
    : installed_(std::move(installed)), entries_(std::move(entries)), processes_(std::move(processes)) {}

AppStatus AppStatus::ofThisMachine(const InstalledApps& installed) {
    return {installed.apps(), installed.entries(), platform::runningProcesses()};
}

bool AppStatus::isRunning(const std::string& bundleID) const {
    if (bundleID.empty()) {
        return false; // What is unknown about a process is empty as well.
    }
    if (const KnownGroup* group = knownGroup(bundleID)) {
        return std::ranges::any_of(group->apps,
                                   [&](std::string_view app) { return isRunning(std::string(app)); });
    }
    const std::vector<std::string_view> identifiers = identifiersOf(bundleID);
    const KnownApp* known = knownApp(bundleID);
    return std::ranges::any_of(processes_, [&](const platform::RunningProcess& process) {
        const bool isKnownProcess =
            known != nullptr && std::ranges::any_of(known->processes, [&](std::string_view name) {
                return isCalled(process, name);
            });
        return isKnownProcess || std::ranges::any_of(identifiers, [&](std::string_view identifier) {
                   const DesktopEntry* entry = entryOf(identifier);
                   return process.applicationID == identifier ||
                          (entry != nullptr && belongsTo(process, *entry));
               });
    });
}

std::string AppStatus::name(const std::string& bundleID) const {
    if (const KnownGroup* group = knownGroup(bundleID)) {
        const auto* open = std::ranges::find_if(
            group->apps, [&](std::string_view app) { return isRunning(std::string(app)); });
        return open != group->apps.end() ? name(std::string(*open)) : group->name.in();
    }
    const DesktopEntry* entry = nullptr;
    for (const std::string_view identifier : identifiersOf(bundleID)) {
        entry = entry != nullptr ? entry : entryOf(identifier);
    }
    if (entry != nullptr && isRunning(bundleID)) {
        return entry->name;
    }
    if (const auto known = wellKnownName(bundleID); known != bundleID) {
        return known;
    }
    if (entry != nullptr) {
        return entry->name;
    }
    const auto app = std::ranges::find(installed_, bundleID, &InstalledApp::bundleID);
    return app != installed_.end() ? std::string(fileStem(app->path)) : bundleID;
}

std::string AppStatus::wellKnownName(const std::string& identifier, Language language) {
    if (const KnownGroup* group = knownGroup(identifier)) {
        return group->name.in(language);
    }
    const KnownApp* known = knownApp(identifier);
    return std::string(known != nullptr && !known->name.empty() ? known->name : identifier);
}

const DesktopEntry* AppStatus::entryOf(std::string_view identifier) const {
    const auto entry = std::ranges::find(entries_, identifier, &DesktopEntry::id);
    return entry != entries_.end() ? &*entry : nullptr;
}

} // namespace lumo
