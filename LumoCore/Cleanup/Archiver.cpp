#include "LumoCore/Cleanup/Archiver.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/ToolOutput.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ArchiveCheck.h"
#include "LumoCore/Cleanup/ArchiveStaging.h"
#include "LumoCore/Cleanup/ArchiveTables.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/Holding.h"
#include "Platform/Archiving.h"
#include "Platform/LogFile.h"
#include "Platform/Removal.h"
#include "Platform/Volume.h"

#include <fmt/format.h>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace lumo::Archiver {

using platform::Place;
using platform::SystemError;
using platform::SystemResult;
using platform::ToolRun;
using Checked = std::expected<void, ArchiveError>;

namespace {

std::unexpected<ArchiveError> interrupted() {
    return std::unexpected(ArchiveError{.problem = ArchiveProblem::interrupted});
}

/// A failure at the item or folder of that path.
std::unexpected<ArchiveError> failedAt(const std::string& path, const SystemError& error) {
    return std::unexpected(ArchiveError{.problem = ArchiveProblem::failed,
                                        .detail = std::string(fileName(path)) + ": " + reasonText(error)});
}

void enter(ArchivePhase phase, const ArchiveControl& control) {
    if (control.progress != nullptr) {
        control.progress->phase = phase;
    }
}

/// Counts what the tool has written while something else waits for it. A system that allows no more threads
/// does without.
std::jthread watcherOf(const std::string& folder, ArchiveProgress* progress) {
    if (progress == nullptr) {
        return {};
    }
    try {
        return std::jthread([folder, progress](const std::stop_token& stop) {
            constexpr std::chrono::milliseconds pause(100);
            std::mutex mutex;
            std::condition_variable_any ended;
            std::unique_lock<std::mutex> lock(mutex);
            while (!stop.stop_requested()) {
                progress->writtenBytes = platform::bytesWrittenIn(folder);
                ended.wait_for(lock, stop, pause, [] { return false; });
            }
        });
    } catch (const std::system_error&) {
        return {};
    }
}

Checked checkSpace(const std::string& folder, const ArchiveControl& control) {
    const auto capacity = platform::volumeCapacity(folder);
    if (capacity && capacity->available < control.expectedBytes) {
        return std::unexpected(
            ArchiveError{.problem = ArchiveProblem::notEnoughSpace, .neededBytes = control.expectedBytes});
    }
    return {};
}

Checked compress(const std::string& path, const ArchiveStaging& staging, const PathGuard& guard,
                 const ArchiveControl& control) {
    enter(ArchivePhase::compressing, control);
    const std::jthread watcher = watcherOf(staging.path(), control.progress);
    const ToolRun ran = platform::makeZip({.folder = std::string(parentOf(path)),
                                           .name = std::string(fileName(path)),
                                           .archive = staging.archivePath(),
                                           .storedEndings = ArchiveTables::incompressibleExtensions()},
                                          guard.home(), control.stop);
    if (ran.wasEndedByUs || control.stop.stop_requested()) {
        return interrupted();
    }
    if (ran.status != 0) {
        return std::unexpected(
            ArchiveError{.detail = failureDetail(ran.output, ran.status, currentLanguage())});
    }
    return {};
}

/// Unpacks everything and compares it with the item, both at once where the system allows a thread.
Checked verify(const ArchivedTree& tree, const ArchiveStaging& staging, const PathGuard& guard,
               const ArchiveControl& control) {
    enter(ArchivePhase::checking, control);
    ToolRun tested;
    const auto test = [&] { tested = platform::testZip(staging.archivePath(), guard.home(), control.stop); };
    Checked compared;
    {
        std::jthread tester;
        try {
            tester = std::jthread(test);
        } catch (const std::system_error&) {
            test();
        }
        compared = tree.isIn(staging.archivePath(), control.stop,
                             control.progress == nullptr ? nullptr : &control.progress->checkedBytes);
    }
    if (control.stop.stop_requested()) {
        return interrupted();
    }
    if (tested.status != 0) {
        return std::unexpected(
            ArchiveError{.problem = ArchiveProblem::notVerified,
                         .detail = failureDetail(tested.output, tested.status, currentLanguage())});
    }
    return compared;
}

SystemResult<void> makeDurable(const ArchiveStaging& staging) {
    const SystemResult<Place> place = staging.archivePlace();
    return place ? platform::seal(*place) : std::unexpected(place.error());
}

/// Gives the archive its name. One that was taken meanwhile is never replaced.
SystemResult<std::string> publish(const ArchiveStaging& staging, const std::string& path, std::string wanted,
                                  const PathGuard& guard) {
    const SystemResult<Place> made = staging.archivePlace();
    if (!made) {
        return std::unexpected(made.error());
    }
    constexpr int mostTries = 100; // Somebody who takes every name does not want an archive here.
    SystemResult<void> moved;
    for (int tries = 0; tries < mostTries; ++tries, wanted = destination(path)) {
        const SystemResult<Place> place = guard.place(wanted);
        moved = place ? platform::moveWithoutReplacing(*made, *place) : std::unexpected(place.error());
        if (moved) {
            const SystemResult<void> synced = platform::syncFolder(place->folderPath);
            if (!synced) {
                // Its name may be gone after a power cut: not what an original is given up for.
                (void)platform::removeTree(*place);
                return std::unexpected(synced.error());
            }
            return wanted;
        }
        if (moved.error().code != EEXIST) {
            break;
        }
    }
    return std::unexpected(moved.error());
}

} // namespace

std::string ArchiveError::errorDescription(Language language) const {
    switch (problem) {
    case ArchiveProblem::notEnoughSpace:
        return Words{"No hay sitio para crear el archivo (hacen falta unos {}). Libera algo primero.",
                     "There's no room to create the archive (about {} needed). Free something up "
                     "first."}
            .in(language, ByteFormat::string(neededBytes, language));
    case ArchiveProblem::failed:
        return Words{"No se pudo crear el archivo. No se ha tocado nada.",
                     "The archive couldn't be created. Nothing was touched."}
            .in(language);
    case ArchiveProblem::notVerified:
        return Words{"El archivo no pasó la comprobación, así que se ha borrado. El original sigue intacto.",
                     "The archive failed its check, so it was deleted. The original is untouched."}
            .in(language);
    case ArchiveProblem::interrupted:
        break;
    }
    return Words{"Se ha interrumpido. No se ha tocado nada.", "It was interrupted. Nothing was touched."}.in(
        language);
}

std::string destination(const std::string& path) {
    const std::string folder = std::string(parentOf(path)) + "/";
    for (std::int64_t number = 1;; ++number) {
        const std::string ending = (number == 1 ? "" : fmt::format(" ({})", number)) + ".zip";
        constexpr std::size_t mostBytes = 255;
        std::string candidate =
            folder + std::string(cutToBytes(fileName(path), mostBytes - ending.size())) + ending;
        if (!platform::kindOf(candidate)) {
            return candidate;
        }
    }
}

std::expected<Archive, ArchiveError> archive(const std::string& path, const std::string& destination,
                                             const PathGuard& guard, const ArchiveControl& control) {
    enter(ArchivePhase::looking, control);
    const SystemResult<Place> place = guard.item(path);
    if (!place) {
        return failedAt(path, place.error());
    }
    if (const Checked roomy = checkSpace(std::string(parentOf(path)), control); !roomy) {
        return std::unexpected(roomy.error());
    }
    auto tree = ArchivedTree::of(path, control.stop);
    if (!tree) {
        return std::unexpected(tree.error());
    }
    const SystemResult<ArchiveStaging> staging = ArchiveStaging::make(guard, std::string(parentOf(path)));
    if (!staging) {
        return failedAt(std::string(parentOf(path)), staging.error());
    }
    if (const Checked made = compress(path, *staging, guard, control); !made) {
        return std::unexpected(made.error());
    }
    if (const Checked verified = verify(*tree, *staging, guard, control); !verified) {
        return std::unexpected(verified.error());
    }
    if (const SystemResult<void> sealed = makeDurable(*staging); !sealed) {
        return failedAt(destination, sealed.error());
    }
    // Comes last of all that takes time, so that hardly anything can change between it and the move.
    if (const Checked unchanged = tree->isUnchanged(control.stop); !unchanged) {
        return std::unexpected(unchanged.error());
    }
    SystemResult<std::string> published = publish(*staging, path, destination, guard);
    if (!published) {
        return failedAt(destination, published.error());
    }
    return Archive{.path = std::move(*published),
                   .original = std::make_shared<const ArchivedTree>(std::move(*tree))};
}

namespace {

/// Gives an original back that was saved into until it was moved, and takes its archive, which lacks that,
/// away. What cannot be given back stays held, with its archive.
void takeBack(CleanupOutcome& outcome, const Archive& archive, const PathGuard& guard) {
    outcome.status = CleanupStatus::failed;
    const std::string_view name = fileName(archive.original->path());
    outcome.message =
        Words{"{}: se guardó algo dentro mientras se archivaba, y está apartado",
              "{}: something was saved into it while it was being archived, and it is set aside"}
            .with(name);
    if (!Holding::restore(*outcome.restorable, guard).failures.empty()) {
        return;
    }
    outcome.message =
        Words{"{}: se guardó algo dentro mientras se archivaba; el original vuelve a estar en su "
              "sitio y el archivo se ha borrado",
              "{}: something was saved into it while it was being archived; the original is back "
              "in its place and the archive was deleted"}
            .with(name);
    outcome.restorable.reset();
    outcome.trashedBytes = 0;
    if (const SystemResult<Place> place = guard.place(archive.path)) {
        // One that stays is beside the original, where the user sees it.
        (void)platform::removeTree(*place);
    }
}

} // namespace

std::vector<CleanupOutcome> setAside(const Archive& archive, const std::string& title,
                                     std::int64_t estimatedBytes, const PathGuard& guard, Date now,
                                     const std::optional<std::string>& caller) {
    const std::string& path = archive.original->path();
    const CleanupAction action{.id = std::string(idPrefix) + path,
                               .title = title,
                               .safety = Safety::review,
                               .estimatedBytes = estimatedBytes,
                               .method = method::TrashItems{{path}},
                               .measuredPaths = {path}};
    Mover mover(guard, Holding::newBatch(guard.home(), now));
    CleanupOutcome outcome =
        CleanupExecutor::perform(action, guard, mover, CleanupExecutor::SafeItems::setAside,
                                 {.now = [now] { return now; }, .caller = caller});
    if (outcome.restorable && !archive.original->isUnchangedAt(outcome.restorable->front().inTrash, {})) {
        takeBack(outcome, archive, guard);
    }
    HistoryWriter log(OwnFiles::historyLog(guard.home()));
    if (log.append(outcome) || log.finish()) {
        mover.settle();
    }
    return {std::move(outcome)};
}

} // namespace lumo::Archiver
