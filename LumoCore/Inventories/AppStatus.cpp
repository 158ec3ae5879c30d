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
    /// What its processes are called on Linux, where the identifier is that of another system.
    std::array<std::string_view, 3> processes;
};

constexpr std::array<KnownApp, 5> knownApps{{
    {"com.google.Chrome", "Google Chrome", {"chrome", "google-chrome", "google-chrome-stable"}},
    {"com.anthropic.claudefordesktop", "Claude", {"claude-desktop"}},
    {"com.moonshot.kimichat", "Kimi", {"kimi", "kimi-desktop"}},
    {"com.docker.docker", "Docker Desktop", {"docker-desktop", "com.docker.backend"}},
    {"ai.perplexity.macv3", "", {"perplexity"}},
}};

const KnownApp* knownApp(std::string_view bundleID) {
    const auto known = std::ranges::find(knownApps, bundleID, &KnownApp::bundleID);
    return known != knownApps.end() ? &*known : nullptr;
}

bool isCalled(const platform::RunningProcess& process, std::string_view name) {
    return !name.empty() && (process.executable == name || process.argumentZero == name);
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
    const KnownApp* known = knownApp(bundleID);
    const DesktopEntry* entry = entryOf(bundleID);
    return std::ranges::any_of(processes_, [&](const platform::RunningProcess& process) {
        const bool isKnownProcess =
            known != nullptr && std::ranges::any_of(known->processes, [&](std::string_view name) {
                return isCalled(process, name);
            });
        return isKnownProcess || process.applicationID == bundleID ||
               (entry != nullptr && isCalled(process, entry->program));
    });
}

std::string AppStatus::name(const std::string& bundleID) const {
    const DesktopEntry* entry = entryOf(bundleID);
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

const DesktopEntry* AppStatus::entryOf(const std::string& bundleID) const {
    const auto entry = std::ranges::find(entries_, bundleID, &DesktopEntry::id);
    return entry != entries_.end() ? &*entry : nullptr;
}

} // namespace lumo
