#include "LumoCore/Cleanup/CleanupExecutor.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/ToolOutput.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/CloudFiles.h"
#include "Platform/Removal.h"
#include "Platform/ToolCommand.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cerrno>

namespace lumo::CleanupExecutor {

using platform::BaseFolder;
using platform::EntryKind;
using platform::Place;
using platform::SystemError;
using platform::SystemResult;

namespace {

/// What handling items came to.
struct Handled {
    bool hasTouched = false; ///< Something was removed or moved.
    std::vector<TrashedItem> held;
    std::optional<std::string> problem; ///< Of the item at which it stopped.
};

std::string problemWith(const std::string& path, const SystemError& error) {
    return std::string(fileName(path)) + ": " + reasonText(error);
}

/// Where an item stands; absent when there is nothing, which is no error.
SystemResult<std::optional<Place>> standing(const PathGuard& guard, const std::string& path) {
    SystemResult<Place> place = guard.place(path);
    if (!place) {
        return place.error().isMissing() ? SystemResult<std::optional<Place>>(std::nullopt)
                                         : std::unexpected(place.error());
    }
    const SystemResult<EntryKind> kind = platform::kindAt(*place);
    if (!kind) {
        return kind.error().isMissing() ? SystemResult<std::optional<Place>>(std::nullopt)
                                        : std::unexpected(kind.error());
    }
    return std::optional(std::move(*place));
}

/// Removes each item, or what is in it, at once.
Handled remove(const std::vector<std::string>& paths, const PathGuard& guard,
               SystemResult<void> (*removal)(const Place&)) {
    Handled handled;
    for (const std::string& path : paths) {
        const auto place = standing(guard, path);
        if (place && !*place) {
            continue;
        }
        handled.hasTouched = true;
        const SystemResult<void> removed = place ? removal(**place) : std::unexpected(place.error());
        if (!removed) {
            handled.problem = problemWith(path, removed.error());
            return handled;
        }
    }
    return handled;
}

/// Items that are there, and what kept the rest from being found.
struct Found {
    std::vector<std::string> paths;
    std::optional<std::string> problem;
};

Found standingItems(const std::vector<std::string>& paths, const PathGuard& guard) {
    Found found;
    for (const std::string& path : paths) {
        const auto place = standing(guard, path);
        if (!place) {
            found.problem = problemWith(path, place.error());
            return found;
        }
        if (*place) {
            found.paths.push_back(path);
        }
    }
    return found;
}

Found childrenOf(const std::vector<std::string>& folders, const PathGuard& guard) {
    Found found;
    for (const std::string& path : folders) {
        const SystemResult<Place> place = guard.place(path);
        const SystemResult<BaseFolder> folder =
            place ? BaseFolder::openAt(*place) : std::unexpected(place.error());
        const SystemResult<std::vector<std::string>> names =
            folder ? folder->names() : std::unexpected(folder.error());
        if (!names && !names.error().isMissing()) {
            found.problem = problemWith(path, names.error());
            return found;
        }
        for (const std::string& name : names.value_or(std::vector<std::string>())) {
            found.paths.push_back(path + "/" + name);
        }
    }
    return found;
}

SystemResult<void> moveOne(const std::string& path, const std::string& reserved, const PathGuard& guard,
                           const Mover& mover) {
    const SystemResult<Place> place = guard.place(path);
    return place ? mover.move(*place, reserved) : std::unexpected(place.error());
}

Handled setAside(Found found, const CleanupAction& action, const PathGuard& guard, Mover& mover) {
    Handled handled;
    handled.problem = std::move(found.problem);
    if (found.paths.empty()) {
        return handled;
    }
    const auto reserved = mover.reserve(action, found.paths);
    if (!reserved) {
        handled.problem = problemWith(found.paths.front(), reserved.error());
        return handled;
    }
    for (std::size_t index = 0; index < found.paths.size(); ++index) {
        const std::string& path = found.paths[index];
        const SystemResult<void> moved = moveOne(path, (*reserved)[index], guard, mover);
        if (moved) {
            handled.hasTouched = true;
            handled.held.push_back({.original = path, .inTrash = (*reserved)[index]});
        } else if (!moved.error().isMissing()) {
            handled.problem = problemWith(path, moved.error());
            return handled;
        }
    }
    return handled;
}

std::int64_t goneBytes(const CleanupAction& action) {
    const std::int64_t left = remaining(action);
    return action.estimatedBytes > left ? action.estimatedBytes - left : 0;
}

CleanupOutcome begun(const CleanupAction& action) {
    CleanupOutcome outcome;
    outcome.id = action.id;
    outcome.title = action.title;
    return outcome;
}

CleanupOutcome failed(const CleanupAction& action, std::string message) {
    CleanupOutcome outcome = begun(action);
    outcome.status = CleanupStatus::failed;
    outcome.message = std::move(message);
    return outcome;
}

CleanupOutcome outcomeOf(const CleanupAction& action, Handled handled, bool isDirect) {
    CleanupOutcome outcome = handled.problem ? failed(action, std::move(*handled.problem)) : begun(action);
    // What was gone before, or somebody else took meanwhile, is nothing that this action freed.
    const std::int64_t bytes = handled.hasTouched ? goneBytes(action) : 0;
    (isDirect ? outcome.freedBytes : outcome.trashedBytes) = bytes;
    if (!handled.held.empty()) {
        outcome.restorable = std::move(handled.held);
    }
    return outcome;
}

CleanupOutcome trashContents(const std::vector<std::string>& folders, const CleanupAction& action,
                             const PathGuard& guard, Mover& mover, bool isDirect) {
    return outcomeOf(action,
                     isDirect ? remove(folders, guard, platform::removeContents)
                              : setAside(childrenOf(folders, guard), action, guard, mover),
                     isDirect);
}

CleanupOutcome runCommand(const std::vector<std::string>& words, const CleanupAction& action,
                          const PathGuard& guard, Mover& mover, bool isDirect, const Control& control) {
    const platform::ToolRun ran = platform::runTool(words, guard.home(), control.cancelTool);
    if (ran.status == 0) {
        CleanupOutcome outcome = begun(action);
        outcome.freedBytes = goneBytes(action);
        return outcome;
    }
    // Whoever ends a tool half-way does not ask for its folders to be emptied by us instead.
    if (!ran.wasEndedByUs && !action.fallbackContents.empty()) {
        return trashContents(action.fallbackContents, action, guard, mover, isDirect);
    }
    const std::string detail = ran.wasEndedByUs ? Words{"se ha interrumpido", "it was interrupted"}.in()
                                                : failureDetail(ran.output, ran.status, currentLanguage());
    return failed(action,
                  fmt::format("{}{}{}", fmt::join(words, " "), Words{" falló: ", " failed: "}.in(), detail));
}

CleanupOutcome evict(const std::vector<std::string>& paths, const CleanupAction& action) {
    const std::optional<platform::Eviction> eviction = platform::evictLocalCopies(paths);
    if (!eviction) {
        return failed(action, Words{"iCloud Drive no está disponible en este sistema",
                                    "iCloud Drive is not available on this system"}
                                  .in());
    }
    CleanupOutcome outcome = begun(action);
    const bool isFailed = eviction->fileCount == 0 && eviction->hadFailures;
    outcome.status = isFailed ? CleanupStatus::failed : CleanupStatus::done;
    outcome.message = std::to_string(eviction->fileCount) +
                      Words{" archivos siguen en iCloud y ya no ocupan sitio en este Mac",
                            " files stay in iCloud and no longer take space on this Mac"}
                          .in();
    outcome.freedBytes = std::max<std::int64_t>(eviction->releasedBytes, 0);
    return outcome;
}

CleanupOutcome handle(const CleanupAction& action, const PathGuard& guard, Mover& mover, SafeItems safeItems,
                      const Control& control) {
    if (std::optional<std::string> refusal = guard.refusal(touchedPaths(action))) {
        return failed(action, std::move(*refusal));
    }
    struct Choose {
        const CleanupAction& action;
        const PathGuard& guard;
        Mover& mover;
        bool isDirect;
        const Control& control;

        CleanupOutcome operator()(const method::TrashItems& how) const {
            return outcomeOf(action,
                             isDirect ? remove(how.paths, guard, platform::removeTree)
                                      : setAside(standingItems(how.paths, guard), action, guard, mover),
                             isDirect);
        }
        CleanupOutcome operator()(const method::TrashContents& how) const {
            return trashContents(how.folders, action, guard, mover, isDirect);
        }
        CleanupOutcome operator()(const method::Command& how) const {
            return runCommand(how.words, action, guard, mover, isDirect, control);
        }
        CleanupOutcome operator()(const method::EvictFromICloud& how) const {
            return evict(how.paths, action);
        }
    };
    const bool isDirect = safeItems == SafeItems::deletedAtOnce && action.safety == Safety::safe;
    return std::visit(Choose{action, guard, mover, isDirect, control}, action.method);
}

} // namespace

CleanupOutcome perform(const CleanupAction& action, const PathGuard& guard, Mover& mover, SafeItems safeItems,
                       const Control& control) {
    CleanupOutcome outcome = handle(action, guard, mover, safeItems, control);
    outcome.date = control.now();
    outcome.caller = control.caller;
    return outcome;
}

std::vector<CleanupOutcome> run(const std::vector<CleanupAction>& actions, const PathGuard& guard,
                                const std::optional<std::string>& history, Mover& mover, SafeItems safeItems,
                                const Control& control) {
    std::vector<CleanupOutcome> outcomes;
    auto log = history ? std::optional<HistoryWriter>(*history) : std::nullopt;
    for (std::size_t index = 0; index < actions.size() && !control.stop.stop_requested(); ++index) {
        if (control.onBegin) {
            control.onBegin(index);
        }
        outcomes.push_back(perform(actions[index], guard, mover, safeItems, control));
        if (log && log->append(outcomes.back())) {
            mover.settle();
        }
    }
    if (log && log->finish()) {
        mover.settle();
    }
    return outcomes;
}

std::vector<std::string> touchedPaths(const CleanupAction& action) {
    struct Choose {
        const CleanupAction& action;
        std::vector<std::string> operator()(const method::TrashItems& how) const { return how.paths; }
        std::vector<std::string> operator()(const method::TrashContents& how) const { return how.folders; }
        std::vector<std::string> operator()(const method::Command&) const { return action.fallbackContents; }
        std::vector<std::string> operator()(const method::EvictFromICloud& how) const { return how.paths; }
    };
    return std::visit(Choose{action}, action.method);
}

std::int64_t remaining(const CleanupAction& action) {
    HardLinkRegistry registry;
    std::int64_t bytes = 0;
    for (const Usage& usage :
         FileTree::measureAll({action.measuredPaths.begin(), action.measuredPaths.end()}, registry)) {
        bytes = checkedSum(bytes, usage.allocatedBytes);
    }
    return bytes;
}

} // namespace lumo::CleanupExecutor
