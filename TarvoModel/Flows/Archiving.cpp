#include "TarvoModel/Flows/Archiving.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/Removal.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

namespace tarvo {

using lumo::PathGuard;

namespace {

std::unexpected<NotArchived> refused(std::string reason) {
    return std::unexpected(NotArchived{.reason = std::move(reason)});
}

/// Why no archive could hold all of the item; absent when what is in it can be read.
std::optional<std::string> unreadableRefusal(const std::string& path) {
    const std::string name = lumo::printable(lumo::fileName(path));
    if (lumo::platform::isFolderThroughLinks(path) && !lumo::platform::canList(path)) {
        return lumo::Words{"«{}» no se puede leer: comprueba sus permisos.",
                           "“{}” can't be read: check its permissions."}
            .with(name);
    }
    lumo::HardLinkRegistry registry;
    if (lumo::FileTree::measure(path, registry).unreadableCount == 0) {
        return std::nullopt;
    }
    return lumo::Words{"Algo dentro de «{}» no se puede leer: comprueba los permisos.",
                       "Something in “{}” can't be read: check the permissions."}
        .with(name);
}

} // namespace

std::optional<std::string> archiveRefusal(const std::string& path, const Desk& desk) {
    const Preferences preferences = Preferences::load(desk.home);
    if (auto problem = preferences.problem()) {
        return problem;
    }
    if (auto refusal = lumo::Archiver::refusal(path, desk.home)) {
        return refusal;
    }
    if (auto refusal =
            PathGuard(desk.home, protectedFolders(preferences, desk.home)).protectedRefusal({path})) {
        return refusal;
    }
    return unreadableRefusal(path);
}

std::expected<Archived, NotArchived> archive(const std::string& path, const Desk& desk,
                                             const lumo::Archiver::ArchiveControl& control) {
    const auto lock = lockHome(PathGuard(desk.home), desk);
    if (!lock) {
        return refused(lock.error().message);
    }
    // The user may have protected it since the question.
    if (auto refusal = archiveRefusal(path, desk)) {
        return refused(std::move(*refusal));
    }
    const PathGuard guard(desk.home, protectedFolders(Preferences::load(desk.home), desk.home));
    // Measured now, since nothing may take time between the last look at the original and its move.
    lumo::HardLinkRegistry registry;
    const std::int64_t bytes = lumo::FileTree::measure(path, registry).allocatedBytes;
    const auto made = lumo::Archiver::archive(path, lumo::Archiver::destination(path), guard, control);
    if (!made) {
        const std::string& detail = made.error().detail;
        return std::unexpected(NotArchived{
            .reason = made.error().errorDescription() + (detail.empty() ? "" : " (" + detail + ")"),
            .isInterrupted = made.error().problem == lumo::Archiver::ArchiveProblem::interrupted});
    }
    // Compressing takes long: it may have been protected meanwhile.
    if (auto refusal = archiveRefusal(path, desk)) {
        if (const auto place = guard.place(made->path)) {
            (void)lumo::platform::removeTree(*place);
        }
        return refused(std::move(*refusal));
    }
    Archived archived{.archive = made->path, .outcome = {}};
    archived.archiveBytes = lumo::FileTree::measure(made->path, registry).apparentBytes;
    archived.outcome = lumo::Archiver::setAside(*made, std::string(lumo::fileName(path)), bytes, guard,
                                                desk.now(), desk.caller)
                           .front();
    if (archived.outcome.status == lumo::CleanupStatus::failed && !lumo::platform::kindOf(made->path)) {
        // Somebody saved into the original, and the archive is no longer of it.
        return refused(archived.outcome.message.value_or(""));
    }
    return archived;
}

} // namespace tarvo
