#include "TarvoModel/Flows/Archiving.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Scanning/FileTree.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

namespace tarvo {

using lumo::PathGuard;

namespace {

std::unexpected<NotArchived> refused(std::string reason) {
    return std::unexpected(NotArchived{.reason = std::move(reason)});
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
    return lumo::CleanupPlanner::touchesProtected({path}, protectedFolders(preferences, desk.home))
               ? std::optional(lumo::CleanupPlanner::protectedReason())
               : std::nullopt;
}

std::expected<Archived, NotArchived> archive(const std::string& path, const Desk& desk,
                                             const lumo::Archiver::ArchiveControl& control) {
    const PathGuard guard(desk.home);
    const auto lock = lockHome(guard, desk);
    if (!lock) {
        return refused(lock.error().message);
    }
    // The user may have protected it since the question.
    if (auto refusal = archiveRefusal(path, desk)) {
        return refused(std::move(*refusal));
    }
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
    Archived archived{.archive = *made, .outcome = {}};
    archived.archiveBytes = lumo::FileTree::measure(*made, registry).apparentBytes;
    archived.outcome = lumo::Archiver::setAside(path, std::string(lumo::fileName(path)), bytes, guard,
                                                desk.now(), desk.caller)
                           .front();
    return archived;
}

} // namespace tarvo
