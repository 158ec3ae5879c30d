#pragma once

#include "LumoCore/Cleanup/CleanupAction.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/Mover.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// Carries out what was planned and confirmed.
namespace lumo::CleanupExecutor {

/// Whether what recreates itself is deleted at once or set aside like everything else.
enum class SafeItems { deletedAtOnce, setAside };

/// How a cleanup is watched and ended.
struct Control {
    std::function<void(std::size_t index)> onBegin =
        {};                          ///< An action begins. Called on the cleanup's thread.
    std::stop_token stop = {};       ///< Ends after the action in hand.
    std::stop_token cancelTool = {}; ///< Ends a tool that is running, too.
    std::function<Date()> now;
    std::optional<std::string> caller = {}; ///< The agent that asked, for the log.
};

/// Carries out the actions one after the other, each with one line in the log; one that fails does not hold
/// up the next. Returns their outcomes in the same order, fewer after a stop. A log that cannot be written
/// changes no outcome. The home's lock must be held.
std::vector<CleanupOutcome> run(const std::vector<CleanupAction>& actions, const PathGuard& guard,
                                const std::optional<std::string>& history, Mover& mover, SafeItems safeItems,
                                const Control& control);

/// Carries out one action. All its paths are checked before the first is touched. At the first item that
/// fails it stops; the outcome then tells what was handled before.
CleanupOutcome perform(const CleanupAction& action, const PathGuard& guard, Mover& mover, SafeItems safeItems,
                       const Control& control);

/// The paths that the action may remove or set aside, or whose contents: what the guard is asked about.
std::vector<std::string> touchedPaths(const CleanupAction& action);

/// Allocated bytes that are still at the action's measured paths; shared files count once, missing ones not.
std::int64_t remaining(const CleanupAction& action);

} // namespace lumo::CleanupExecutor
