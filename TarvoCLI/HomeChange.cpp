#include "TarvoCLI/HomeChange.h"

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "Platform/Clock.h"
#include "Platform/Environment.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <fmt/format.h>

#include <chrono>

namespace tarvo {

using namespace std::chrono_literals;
namespace platform = lumo::platform;

std::string programName(std::string_view command) {
    return fmt::format("tarvo {} ({})", command, platform::processNumber());
}

std::expected<lumo::HomeLock, ExitCode> lockHome(const lumo::PathGuard& guard, std::string_view command) {
    lumo::Result<lumo::HomeLock> lock = lumo::HomeLock::take(
        guard, {.program = programName(command), .patience = 3s, .now = platform::now()});
    if (!lock) {
        return std::unexpected(complain(lock.error().message, ExitCode::failed));
    }
    return std::move(*lock);
}

std::optional<ExitCode> refuseForeign(const Invocation& invocation) {
    if (!lumo::HomeLock::isForeign(invocation.home)) {
        return std::nullopt;
    }
    return complain(lumo::HomeLock::foreignText(), ExitCode::failed);
}

std::expected<std::vector<lumo::CleanupOutcome>, ExitCode>
readHistory(const std::string& home, const std::vector<lumo::CleanupOutcome>& unlogged) {
    auto outcomes = lumo::HistoryLog::outcomes(lumo::OwnFiles::historyLog(home));
    if (!outcomes) {
        return std::unexpected(complain(unreadableHistoryText(outcomes.error()), ExitCode::failed));
    }
    outcomes->insert(outcomes->end(), unlogged.begin(), unlogged.end());
    return std::move(*outcomes);
}

} // namespace tarvo
