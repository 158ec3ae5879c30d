#include "LumoCore/Inventories/AppStatus.h"

#include "LumoCore/Basics/Path.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lumo {

namespace {

struct KnownApp {
    std::string_view bundleID;
    std::string_view name; ///< Empty where the identifier says more than we could.
    /// What its processes and its desktop entry are called on Linux, where the identifier is that of another
    /// system.
    std::array<std::string_view, 3> processes;
    std::string_view desktopID;
};

constexpr std::array<KnownApp, 5> knownApps{{
    {"com.google.Chrome",
     "Google Chrome",
     {"chrome", "google-chrome", "google-chrome-stable"},
     "google-chrome"},
    {"com.anthropic.claudefordesktop", "Claude", {"claude-desktop"}, "claude-desktop"},
    {"com.moonshot.kimichat", "Kimi", {"kimi", "kimi-desktop"}, "kimi"},
    {"com.docker.docker", "Docker Desktop", {"docker-desktop", "com.docker.backend"}, "docker-desktop"},
    {"ai.perplexity.macv3", "", {"perplexity"}, "perplexity"},
}};

const KnownApp* knownApp(std::string_view identifier) {
    const auto known = std::ranges::find_if(knownApps, [&](const KnownApp& app) {
        return app.bundleID == identifier || app.desktopID == identifier;
    });
    return known != knownApps.end() ? &*known : nullptr;
}

/// The identifiers that mean the same application as this one.
std::vector<std::string_view> identifiersOf(std::string_view identifier) {
    const KnownApp* known = knownApp(identifier);
    return known != nullptr ? std::vector{known->bundleID, known->desktopID} : std::vector{identifier};
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

AppStatus AppStatus::ofThisMachine(const std::string& home) {
    return {InstalledApp::scan(home), desktopEntriesIn(desktopDataFolders(home)),
            platform::runningProcesses()};
}

bool AppStatus::isRunning(const std::string& bundleID) const {
    if (bundleID.empty()) {
        return false; // What is unknown about a process is empty as well.
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
    const DesktopEntry* entry = nullptr;
    for (const std::string_view identifier : identifiersOf(bundleID)) {
        entry = entry != nullptr ? entry : entryOf(identifier);
    }
    if (entry != nullptr && isRunning(bundleID)) {
        return entry->name;
    }
    if (const KnownApp* known = knownApp(bundleID); known != nullptr && !known->name.empty()) {
        return std::string(known->name);
    }
    if (entry != nullptr) {
        return entry->name;
    }
    const auto app = std::ranges::find(installed_, bundleID, &InstalledApp::bundleID);
    return app != installed_.end() ? std::string(fileStem(app->path)) : bundleID;
}

const DesktopEntry* AppStatus::entryOf(std::string_view identifier) const {
    const auto entry = std::ranges::find(entries_, identifier, &DesktopEntry::id);
    return entry != entries_.end() ? &*entry : nullptr;
}

} // namespace lumo
