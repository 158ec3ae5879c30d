#include "LumoCore/Cleanup/PathGuard.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"

#include <algorithm>
#include <cerrno>

namespace lumo {

using platform::BaseFolder;
using platform::EntryKind;
using platform::FolderIdentity;
using platform::Place;
using platform::SystemError;
using platform::SystemResult;

namespace {

constexpr std::string_view applications = "/Applications/";

SystemResult<BaseFolder> openApplications() {
    SystemResult<BaseFolder> folder = BaseFolder::open("/Applications");
    // A link there would make anything an application.
    if (folder && folder->path() != "/Applications") {
        return std::unexpected(SystemError{EXDEV});
    }
    return folder;
}

SystemResult<ResolvedPath> meaningOf(const Place& place) {
    const SystemResult<platform::FolderStatus> folder = platform::statusOf(place.folder.number());
    if (!folder) {
        return std::unexpected(folder.error());
    }
    ResolvedPath meaning{.path = place.path(), .folder = folder->identity()};
    if (const SystemResult<platform::EntryIdentity> item = platform::entryAt(place)) {
        meaning.item = *item;
    } else if (!item.error().isMissing()) {
        return std::unexpected(item.error());
    }
    return meaning;
}

} // namespace

PathGuard::PathGuard(std::string home, std::vector<std::string> protectedFolders)
    : home_(std::move(home)), protectedFolders_(std::move(protectedFolders)) {
    for (const std::string& folder : protectedFolders_) {
        const std::vector<FolderIdentity> found = platform::identitiesUpFrom(folder);
        withSpared_.insert(found.begin(), found.end());
        if (!found.empty()) {
            spared_.push_back(found.front());
        }
    }
    SystemResult<BaseFolder> base = BaseFolder::open(home_);
    if (!base || base->path().empty() || home_.ends_with('/')) {
        return;
    }
    base_ = std::move(*base);
    ownFolders_.push_back(OwnFiles::support(home_));
    if (const SystemResult<BaseFolder> own = ApplicationFolders::openSupport(*base_)) {
        ownFolders_.push_back(own->path());
    }
}

std::string PathGuard::outside(const std::string& path, Language language) {
    return Words{"fuera de tu carpeta personal: ", "outside your home folder: "}.in(language) + path;
}

bool PathGuard::isApplication(const std::string& path) const {
    const std::string_view name = std::string_view(path).substr(std::min(applications.size(), path.size()));
    return base_ && path.starts_with(applications) && name.ends_with(".app") && name.size() > 4 &&
           name.find('/') == std::string_view::npos && name.find("..") == std::string_view::npos;
}

std::optional<std::string> PathGuard::relative(const std::string& path) const {
    if (!base_ || !path.starts_with(home_ + "/")) {
        return std::nullopt;
    }
    return path.substr(home_.size() + 1);
}

bool PathGuard::touchesOwnFolder(const std::string& path, const std::string& found) const {
    return std::ranges::any_of(ownFolders_, [&](const std::string& own) {
        return isInside(path, own) || isInside(own, path) || isInside(found, own) || isInside(own, found);
    });
}

SystemResult<Place> PathGuard::place(const std::string& path) const {
    const std::optional<std::string> inHome = relative(path);
    if (!inHome && !isApplication(path)) {
        return std::unexpected(SystemError{EXDEV});
    }
    SystemResult<Place> place = std::unexpected(SystemError{EXDEV});
    if (inHome) {
        place = base_->place(*inHome);
    } else if (const SystemResult<BaseFolder> folder = openApplications()) {
        place = folder->placeWithoutLinks(path.substr(applications.size()));
    } else {
        place = std::unexpected(folder.error());
    }
    if (place ? touchesOwnFolder(path, place->path())
              : place.error().code == EINVAL || touchesOwnFolder(path, path)) {
        return std::unexpected(SystemError{EXDEV});
    }
    return place;
}

SystemResult<Place> PathGuard::placeWithFolders(const std::string& path) const {
    const std::optional<std::string> inHome = relative(path);
    if (!inHome) {
        return place(path);
    }
    constexpr unsigned usual = 0755;
    return base_->placeWithFolders(*inHome, usual);
}

SystemResult<Place> PathGuard::item(const std::string& path) const {
    SystemResult<Place> found = place(path);
    if (found || found.error().isMissing()) {
        if (CleanupPlanner::touchesProtected({path}, protectedFolders_)) {
            return std::unexpected(SystemError{ECANCELED});
        }
    }
    if (found) {
        if (const SystemResult<void> allowed = mayTake(*found); !allowed) {
            return std::unexpected(allowed.error());
        }
    }
    return found;
}

bool PathGuard::isSpared(std::span<const FolderIdentity> folders) const {
    return std::ranges::find_first_of(folders, spared_) != folders.end();
}

bool PathGuard::leadsToSpared(const std::string& path) const {
    const std::vector<FolderIdentity> folders = platform::identitiesUpFrom(path);
    return !folders.empty() && (isSpared(folders) || withSpared_.contains(folders.front()));
}

SystemResult<void> PathGuard::mayTake(const Place& place) const {
    if (spared_.empty()) {
        return {};
    }
    const SystemResult<std::vector<FolderIdentity>> around = platform::foldersAround(place);
    if (!around) {
        return std::unexpected(around.error());
    }
    const SystemResult<FolderIdentity> itself = platform::identityAt(place);
    // A tool follows the link that its cache is.
    const bool isLink = platform::kindAt(place) == EntryKind::link;
    const bool isProtected = isSpared(*around) || (itself && withSpared_.contains(*itself)) ||
                             (isLink && leadsToSpared(place.path()));
    return isProtected ? std::unexpected(SystemError{ECANCELED}) : SystemResult<void>();
}

ResolvedPaths PathGuard::resolve(const std::vector<std::string>& paths) const {
    ResolvedPaths resolved;
    for (const std::string& path : paths) {
        const SystemResult<Place> found = item(path);
        if (const auto meaning = found ? meaningOf(*found) : std::unexpected(found.error())) {
            resolved.emplace(path, *meaning);
        }
    }
    return resolved;
}

bool PathGuard::isAsResolved(const std::string& path, const Place& place, const ResolvedPaths& resolved) {
    const auto then = resolved.find(path);
    const SystemResult<ResolvedPath> now = meaningOf(place);
    return then != resolved.end() && now && now->path == then->second.path &&
           now->folder == then->second.folder && (!now->item || now->item == then->second.item);
}

std::optional<std::string> PathGuard::protectedRefusal(const std::vector<std::string>& paths,
                                                       Language language) const {
    const bool isProtected = CleanupPlanner::touchesProtected(paths, protectedFolders_) ||
                             std::ranges::any_of(paths, [this](const std::string& path) {
                                 return !spared_.empty() && leadsToSpared(path);
                             });
    return isProtected ? std::optional(CleanupPlanner::protectedReason(language)) : std::nullopt;
}

std::optional<std::string> PathGuard::refusal(const std::vector<std::string>& paths,
                                              Language language) const {
    for (const std::string& path : paths) {
        const SystemResult<Place> found = item(path);
        if (found || found.error().isMissing()) {
            continue;
        }
        if (found.error().code == ECANCELED) {
            return CleanupPlanner::protectedReason(language);
        }
        if (found.error().code == EXDEV) {
            return outside(path, language);
        }
        return std::string(fileName(path)) + ": " + reasonText(found.error(), language);
    }
    return std::nullopt;
}

} // namespace lumo
