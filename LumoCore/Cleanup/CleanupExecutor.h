#pragma once

#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/Mover.h"
#include "LumoCore/Rules/CleanupAction.h"

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

using Refusal = std::function<std::optional<std::string>(const CleanupAction& action)>;
using Regret = std::function<std::optional<std::string>(const CleanupAction& action,
                                                        const std::vector<TrashedItem>& held)>;

/// How a cleanup is watched and ended.
struct Control {
    std::function<void(std::size_t index)> onBegin =
        {};                          ///< An action begins. Called on the cleanup's thread.
    std::stop_token stop = {};       ///< Ends after the action in hand.
    std::stop_token cancelTool = {}; ///< Ends a tool that is running, too.
    std::function<Date()> now;
    std::optional<std::string> caller = {}; ///< The agent that asked, for the log.
    /// What the actions' paths meant when the user was shown them (`resolved`). One that means something else
    /// when its turn comes fails untouched. Absent where nobody was asked: then it is fixed at the beginning.
    std::optional<ResolvedPaths> shown = {};
    /// Why an action is not carried out, besides what the guard says; absent when it is. Asked before
    /// anything of the action is touched, and such an action fails.
    Refusal refusal = {};
    /// Why what was just set aside goes back to its place; absent when all is well. What an action rests on
    /// may change between the last look at it and the move.
    Regret regret = {};
};

/// Carries out the actions one after the other, each with one line in the log; one that fails does not hold
/// up the next. Returns their outcomes in the same order, fewer after a stop. A log that cannot be written
/// changes no outcome. The home's lock must be held.
std::vector<CleanupOutcome> run(const std::vector<CleanupAction>& actions, const PathGuard& guard,
                                const std::optional<std::string>& history, Mover& mover, SafeItems safeItems,
                                const Control& control);

/// Carries out one action. All its paths are checked before the first is touched. At the first item that
/// fails it stops; the outcome then tells what was handled before. Bytes are counted where the measured paths
/// have shrunk, and no more than they have; a command that has not shrunk its own, or left most of what was
/// there, says so in its message.
CleanupOutcome perform(const CleanupAction& action, const PathGuard& guard, Mover& mover, SafeItems safeItems,
                       const Control& control);

/// Why the action may not be carried out, in words for the user; absent when it may. The guard's refusal of
/// all that it touches, or for a command also of what its tool is to empty.
std::optional<std::string> refusal(const CleanupAction& action, const PathGuard& guard,
                                   Language language = currentLanguage());

/// What the paths that the actions touch mean now: for `Control::shown`.
ResolvedPaths resolved(const std::vector<CleanupAction>& actions, const PathGuard& guard);

/// The paths that the action may remove or set aside, or whose contents: what the guard is asked about.
std::vector<std::string> touchedPaths(const CleanupAction& action);

/// Allocated bytes that are still at the action's measured paths; shared files count once, missing ones not.
std::int64_t remaining(const CleanupAction& action);

} // namespace lumo::CleanupExecutor
