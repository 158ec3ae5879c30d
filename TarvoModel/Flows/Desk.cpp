#include "TarvoModel/Flows/Desk.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "Platform/Environment.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <fmt/format.h>

#include <chrono>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::HomeLock;

Desk Desk::ofThisMachine(const std::string& home, std::string_view program) {
    return {.home = home,
            .program = fmt::format("{} ({})", program, lumo::platform::processNumber()),
            .now = lumo::platform::now,
            .applicationPath = lumo::platform::programFolder()};
}

std::shared_ptr<const lumo::InstalledApps> Desk::installedApps() const {
    return installed ? installed : std::make_shared<const lumo::InstalledApps>(home);
}

lumo::Result<HomeLock> lockHome(const lumo::PathGuard& guard, const Desk& desk) {
    constexpr std::chrono::seconds patience{3};
    return HomeLock::take(
        guard, {.program = desk.program, .patience = patience, .now = desk.now(), .boot = desk.boot()});
}

lumo::Result<HomeLock> lockHomeAtOnce(const lumo::PathGuard& guard, const Desk& desk) {
    return HomeLock::take(guard, {.program = desk.program, .now = desk.now(), .boot = desk.boot()});
}

lumo::Result<std::vector<CleanupOutcome>> history(const Desk& desk) {
    auto outcomes = lumo::HistoryLog::outcomes(lumo::OwnFiles::historyLog(desk.home));
    if (!outcomes) {
        return lumo::failure(unreadableHistoryText(outcomes.error()));
    }
    return std::move(*outcomes);
}

lumo::Result<std::vector<CleanupOutcome>> history(const Desk& desk, const HomeLock& lock) {
    auto outcomes = history(desk);
    if (outcomes) {
        outcomes->insert(outcomes->end(), lock.unlogged().begin(), lock.unlogged().end());
    }
    return outcomes;
}

} // namespace tarvo
