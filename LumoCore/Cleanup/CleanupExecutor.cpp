#include "LumoCore/Cleanup/CleanupExecutor.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/ToolOutput.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/ToolPlaces.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/CloudFiles.h"
#include "Platform/Removal.h"
#include "Platform/ToolCommand.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cerrno>
#include <expected>
#include <iterator>
#include <memory>
#include <span>

namespace lumo::CleanupExecutor {

using platform::BaseFolder;
using platform::EntryKind;
using platform::FolderIdentity;
using platform::Place;
using platform::SystemError;
using platform::SystemResult;

namespace {

/// An action in hand.
struct Task {
    const CleanupAction& action;
    const PathGuard& guard;
    Mover& mover;
    const Control& control;
    const ResolvedPaths& shown;
    bool isDirect;
    std::int64_t bytesBefore = 0; ///< At the measured paths, before anything was touched.
};

/// What handling items came to.
struct Handled {
    bool hasTouched = false; ///< Something was removed or moved.
    std::vector<TrashedItem> held;
    std::optional<std::string> problem; ///< Of the item at which it stopped.
    std::optional<SystemError> cause;   ///< Of that, where it is the system's.
};

std::string problemWith(const std::string& path, const SystemError& error) {
    return std::string(fileName(path)) + ": " + reasonText(error);
}

std::string isElsewhere(const std::string& path, const PathGuard& guard) {
    return Words{"{}: ya no es lo que era cuando se mostró",
                 "{}: it is no longer what it was when it was shown"}
        .with(abbreviated(path, guard.home()));
}

/// Where an item stands; absent when there is nothing, which is no error. The error is in words.
std::expected<std::optional<Place>, std::string> standing(const Task& task, const std::string& path) {
    SystemResult<Place> place = task.guard.item(path);
    if (!place) {
        return place.error().isMissing() ? std::expected<std::optional<Place>, std::string>(std::nullopt)
                                         : std::unexpected(problemWith(path, place.error()));
    }
    const bool wasThere = task.shown.contains(path);
    if (wasThere && !PathGuard::isAsResolved(path, *place, task.shown)) {
        return std::unexpected(isElsewhere(path, task.guard));
    }
    const SystemResult<EntryKind> kind = platform::kindAt(*place);
    if (!kind) {
        return kind.error().isMissing() ? std::expected<std::optional<Place>, std::string>(std::nullopt)
                                        : std::unexpected(problemWith(path, kind.error()));
    }
    if (!wasThere) {
        return std::unexpected(isElsewhere(path, task.guard));
    }
    return std::optional(std::move(*place));
}

/// Removes each item, or what is in it, at once.
Handled remove(const Task& task, const std::vector<std::string>& paths,
               SystemResult<void> (*removal)(const Place&, std::span<const FolderIdentity>)) {
    Handled handled;
    for (const std::string& path : paths) {
        const auto place = standing(task, path);
        if (!place) {
            handled.problem = place.error();
            return handled;
        }
        if (!*place) {
            continue;
        }
        handled.hasTouched = true;
        if (const SystemResult<void> removed = removal(**place, task.guard.spared()); !removed) {
            handled.problem = problemWith(path, removed.error());
            handled.cause = removed.error();
            return handled;
        }
    }
    return handled;
}

/// Something to be set aside.
struct Item {
    std::string path;
    std::shared_ptr<const BaseFolder> folder; ///< In which its name is found; absent for a path of its own.
};

/// Items that are there, and what kept the rest from being found.
struct Found {
    std::vector<Item> items;
    std::optional<std::string> problem;
};

Found standingItems(const Task& task, const std::vector<std::string>& paths) {
    Found found;
    for (const std::string& path : paths) {
        const auto place = standing(task, path);
        if (!place) {
            found.problem = place.error();
            return found;
        }
        if (*place) {
            found.items.push_back({path, nullptr});
        }
    }
    return found;
}

Found childrenOf(const Task& task, const std::vector<std::string>& folders) {
    Found found;
    for (const std::string& path : folders) {
        const auto place = standing(task, path);
        if (!place) {
            found.problem = place.error();
            return found;
        }
        if (!*place) {
            continue;
        }
        SystemResult<BaseFolder> folder = BaseFolder::openAt(**place);
        const SystemResult<std::vector<std::string>> names =
            folder ? folder->names() : std::unexpected(folder.error());
        if (!names) {
            if (names.error().isMissing()) {
                continue;
            }
            found.problem = problemWith(path, names.error());
            return found;
        }
        const auto opened = std::make_shared<const BaseFolder>(std::move(*folder));
        for (const std::string& name : *names) {
            found.items.push_back({joined(path, name), opened});
        }
    }
    return found;
}

/// Where an item is now; absent when it is gone.
std::expected<std::optional<Place>, std::string> placeOf(const Task& task, const Item& item) {
    if (item.folder == nullptr) {
        return standing(task, item.path);
    }
    SystemResult<Place> place = item.folder->placeWithoutLinks(fileName(item.path));
    const SystemResult<void> allowed = place ? task.guard.mayTake(*place) : std::unexpected(place.error());
    if (!allowed) {
        return std::unexpected(problemWith(item.path, allowed.error()));
    }
    return std::optional(std::move(*place));
}

Handled setAside(const Task& task, Found found) {
    Handled handled;
    handled.problem = std::move(found.problem);
    if (found.items.empty()) {
        return handled;
    }
    std::vector<std::string> paths;
    std::ranges::transform(found.items, std::back_inserter(paths), &Item::path);
    const auto reserved = task.mover.reserve(task.action, paths);
    if (!reserved) {
        handled.problem = problemWith(paths.front(), reserved.error());
        handled.cause = reserved.error();
        return handled;
    }
    for (std::size_t index = 0; index < found.items.size(); ++index) {
        const auto place = placeOf(task, found.items[index]);
        if (!place) {
            handled.problem = place.error();
            return handled;
        }
        const SystemResult<void> moved =
            *place ? task.mover.move(**place, (*reserved)[index]) : platform::failed(ENOENT);
        if (moved) {
            handled.hasTouched = true;
            handled.held.push_back({.original = paths[index], .inTrash = (*reserved)[index]});
        } else if (!moved.error().isMissing()) {
            handled.problem = problemWith(paths[index], moved.error());
            handled.cause = moved.error();
            return handled;
        }
    }
    return handled;
}

/// What the estimate says is gone, but no more than what went by this action: what was gone before has been
/// counted by whoever took it.
std::int64_t goneBytes(const Task& task) {
    const std::int64_t left = remaining(task.action);
    const std::int64_t most = task.action.measuredPaths.empty()
                                  ? task.action.estimatedBytes
                                  : std::min(task.action.estimatedBytes, task.bytesBefore);
    return most > left ? most - left : 0;
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

CleanupOutcome outcomeOf(const Task& task, Handled handled) {
    CleanupOutcome outcome =
        handled.problem ? failed(task.action, std::move(*handled.problem)) : begun(task.action);
    outcome.cause = handled.cause;
    // What was gone before, or somebody else took meanwhile, is nothing that this action freed.
    const std::int64_t bytes = handled.hasTouched ? goneBytes(task) : 0;
    (task.isDirect ? outcome.freedBytes : outcome.trashedBytes) = bytes;
    if (!handled.held.empty()) {
        outcome.restorable = std::move(handled.held);
    }
    return outcome;
}

/// What is left of it once that has gone back which should not have been taken.
Handled unlessRegretted(const Task& task, Handled handled) {
    std::optional<std::string> reason;
    if (task.control.regret && !handled.held.empty()) {
        reason = task.control.regret(task.action, handled.held);
    }
    if (!reason) {
        return handled;
    }
    std::erase_if(handled.held, [&](const TrashedItem& item) {
        return Holding::restore({item}, task.guard).failures.empty();
    });
    handled.hasTouched = !handled.held.empty();
    handled.problem = std::move(reason);
    handled.cause.reset();
    return handled;
}

CleanupOutcome trashItems(const Task& task, const std::vector<std::string>& paths) {
    return outcomeOf(task, task.isDirect ? remove(task, paths, platform::removeTree)
                                         : unlessRegretted(task, setAside(task, standingItems(task, paths))));
}

CleanupOutcome trashContents(const Task& task, const std::vector<std::string>& folders) {
    return outcomeOf(task, task.isDirect ? remove(task, folders, platform::removeContents)
                                         : setAside(task, childrenOf(task, folders)));
}

CleanupOutcome runCommand(const Task& task, const std::vector<std::string>& words) {
    const CleanupAction& action = task.action;
    const platform::ToolRun ran = platform::runTool(words, task.guard.home(), task.control.cancelTool,
                                                    variablesHolding(words, action.measuredPaths));
    if (ran.status == 0) {
        CleanupOutcome outcome = begun(action);
        const std::int64_t left = action.measuredPaths.empty() ? 0 : remaining(action);
        if (!action.measuredPaths.empty() && left >= task.bytesBefore) {
            outcome.message =
                Words{"la herramienta no ha liberado nada aquí", "the tool freed nothing here"}.in();
            return outcome;
        }
        outcome.freedBytes = goneBytes(task);
        // As pip does with what a newer pip has put there.
        constexpr std::int64_t worthTelling = 1000000;
        if (left >= worthTelling && left > task.bytesBefore / 2) {
            outcome.message = Words{"la herramienta ha dejado aquí {}", "the tool left {} here"}.with(
                ByteFormat::string(left));
        }
        return outcome;
    }
    // Whoever ends a tool half-way does not ask for its folders to be emptied by us instead.
    const bool isCancelled = ran.wasEndedByUs || task.control.cancelTool.stop_requested();
    if (!isCancelled && !action.fallbackContents.empty()) {
        return trashContents(task, action.fallbackContents);
    }
    const std::string detail = isCancelled ? Words{"se ha interrumpido", "it was interrupted"}.in()
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

/// Why nothing of the action may be touched, in words.
std::optional<std::string> obstacleTo(const Task& task) {
    if (auto refused = refusal(task.action, task.guard)) {
        return refused;
    }
    if (auto refused = task.control.refusal ? task.control.refusal(task.action) : std::nullopt) {
        return refused;
    }
    for (const std::string& path : touchedPaths(task.action)) {
        if (const auto place = standing(task, path); !place) {
            return place.error();
        }
    }
    return std::nullopt;
}

CleanupOutcome handle(Task task) {
    if (std::optional<std::string> obstacle = obstacleTo(task)) {
        return failed(task.action, std::move(*obstacle));
    }
    task.bytesBefore = remaining(task.action);
    struct Choose {
        const Task& task;

        CleanupOutcome operator()(const method::TrashItems& how) const { return trashItems(task, how.paths); }
        CleanupOutcome operator()(const method::TrashContents& how) const {
            return trashContents(task, how.folders);
        }
        CleanupOutcome operator()(const method::Command& how) const { return runCommand(task, how.words); }
        CleanupOutcome operator()(const method::EvictFromICloud& how) const {
            return evict(how.paths, task.action);
        }
    };
    return std::visit(Choose{task}, task.action.method);
}

CleanupOutcome performAsShown(const CleanupAction& action, const PathGuard& guard, Mover& mover,
                              SafeItems safeItems, const Control& control, const ResolvedPaths& shown) {
    CleanupOutcome outcome =
        handle({.action = action,
                .guard = guard,
                .mover = mover,
                .control = control,
                .shown = shown,
                .isDirect = safeItems == SafeItems::deletedAtOnce && action.safety == Safety::safe});
    outcome.date = control.now();
    outcome.caller = control.caller;
    return outcome;
}

} // namespace

CleanupOutcome perform(const CleanupAction& action, const PathGuard& guard, Mover& mover, SafeItems safeItems,
                       const Control& control) {
    return performAsShown(action, guard, mover, safeItems, control,
                          control.shown ? *control.shown : resolved({action}, guard));
}

std::vector<CleanupOutcome> run(const std::vector<CleanupAction>& actions, const PathGuard& guard,
                                const std::optional<std::string>& history, Mover& mover, SafeItems safeItems,
                                const Control& control) {
    const ResolvedPaths shown = control.shown ? *control.shown : resolved(actions, guard);
    std::vector<CleanupOutcome> outcomes;
    auto log = history ? std::optional<HistoryWriter>(*history) : std::nullopt;
    for (std::size_t index = 0; index < actions.size() && !control.stop.stop_requested(); ++index) {
        if (control.onBegin) {
            control.onBegin(index);
        }
        outcomes.push_back(performAsShown(actions[index], guard, mover, safeItems, control, shown));
        if (log && log->append(outcomes.back())) {
            mover.settle();
        }
    }
    if (log && log->finish()) {
        mover.settle();
    }
    return outcomes;
}

ResolvedPaths resolved(const std::vector<CleanupAction>& actions, const PathGuard& guard) {
    ResolvedPaths all;
    for (const CleanupAction& action : actions) {
        all.merge(guard.resolve(touchedPaths(action)));
    }
    return all;
}

std::optional<std::string> refusal(const CleanupAction& action, const PathGuard& guard, Language language) {
    std::optional<std::string> refused = guard.refusal(touchedPaths(action), language);
    const bool runsTool = std::holds_alternative<method::Command>(action.method);
    return refused || !runsTool ? refused : guard.protectedRefusal(action.measuredPaths, language);
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
