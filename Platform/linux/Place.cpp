#include "Platform/Place.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Folder.h"
#include "Platform/posix/EntryMode.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

namespace lumo::platform {

namespace {

/// Opens a real folder for resolving names in it: one that may not be listed will do.
SystemResult<Descriptor> openFolder(int parent, const std::string& name) {
    Descriptor folder(openat(parent, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (folder.isOpen()) {
        return folder;
    }
    if (errno != ENOTDIR) {
        return failed(errno);
    }
    struct stat status = {};
    if (fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return failed(errno);
    }
    // What is a folder now was a link a moment ago, and no reason to take its items for missing.
    return failed(S_ISLNK(status.st_mode) || S_ISDIR(status.st_mode) ? ELOOP : ENOTDIR);
}

} // namespace

SystemResult<BaseFolder> BaseFolder::open(const std::string& path) {
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) {
        return failed(EINVAL);
    }
    const SystemResult<std::string> real = withoutLinks(path);
    if (!real) {
        return std::unexpected(real.error());
    }
    BaseFolder base;
    base.folder_ = Descriptor(::open(real->c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!base.folder_.isOpen()) {
        return failed(errno);
    }
    base.path_ = *real == "/" ? std::string() : *real;
    return base;
}

SystemResult<Place> BaseFolder::placeWithoutLinks(std::string_view relative) const {
    if (relative.starts_with('/') || !isSpeltOut(relative)) {
        return failed(EINVAL);
    }
    Place place{.folder = Descriptor(fcntl(folder_.number(), F_DUPFD_CLOEXEC, 0)), .folderPath = path_};
    if (!place.folder.isOpen()) {
        return failed(errno);
    }
    for (;;) {
        const std::size_t end = relative.find('/');
        const std::string name(relative.substr(0, end));
        if (end == std::string_view::npos) {
            place.name = name;
            return place;
        }
        SystemResult<Descriptor> next = openFolder(place.folder.number(), name);
        if (!next) {
            return std::unexpected(next.error());
        }
        place.folder = std::move(*next);
        place.folderPath += "/" + name;
        relative.remove_prefix(end + 1);
    }
}

SystemResult<Place> BaseFolder::place(std::string_view relative) const {
    SystemResult<Place> place = placeWithoutLinks(relative);
    if (place || place.error().code != ELOOP) {
        return place;
    }
    // A link stands on the way. Where it leads is asked once; the way there is then walked without any.
    const std::size_t slash = relative.rfind('/');
    const SystemResult<std::string> folder = withoutLinks(joined(path_, relative.substr(0, slash)));
    if (!folder) {
        return std::unexpected(folder.error());
    }
    if (*folder != path_ && !folder->starts_with(path_ + "/")) {
        return failed(EXDEV);
    }
    const std::string real = *folder + std::string(relative.substr(slash));
    return placeWithoutLinks(std::string_view(real).substr(path_.size() + 1));
}

SystemResult<Place> BaseFolder::placeWithFolders(std::string_view relative, unsigned mode) const {
    SystemResult<Place> standing = place(relative);
    if (standing || !standing.error().isMissing()) {
        return standing;
    }
    for (std::size_t slash = relative.find('/'); slash != std::string_view::npos;
         slash = relative.find('/', slash + 1)) {
        const SystemResult<Place> folder = place(relative.substr(0, slash));
        if (!folder) {
            return std::unexpected(folder.error());
        }
        // Whatever stands there already is judged when it is walked through: it may be a link that stays.
        if (mkdirat(folder->folder.number(), folder->name.c_str(), static_cast<mode_t>(mode)) != 0 &&
            errno != EEXIST) {
            return failed(errno);
        }
    }
    return place(relative);
}

SystemResult<BaseFolder> BaseFolder::openAt(const Place& place) {
    SystemResult<Descriptor> folder = openFolder(place.folder.number(), place.name);
    if (!folder) {
        return std::unexpected(folder.error());
    }
    BaseFolder base;
    base.folder_ = std::move(*folder);
    base.path_ = place.path();
    return base;
}

SystemResult<std::vector<std::string>> BaseFolder::names() const {
    const int listed = openat(folder_.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (listed < 0) {
        return failed(errno);
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(fdopendir(listed), &closedir);
    if (!folder) {
        const int code = errno;
        ::close(listed);
        return failed(code);
    }
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
        errno = 0;
    }
    return errno == 0 ? SystemResult<std::vector<std::string>>(std::move(names)) : failed(errno);
}

void BaseFolder::makePrivate() const {
    struct stat status = {};
    constexpr mode_t others = 077;
    if (fstat(folder_.number(), &status) == 0 && status.st_uid == geteuid() &&
        (status.st_mode & others) != 0) {
        fchmodat(folder_.number(), ".", 0700, 0);
    }
}

SystemResult<EntryKind> kindAt(const Place& place) {
    struct stat status = {};
    if (fstatat(place.folder.number(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return failed(errno);
    }
    return kindOfMode(status.st_mode);
}

SystemResult<EntryIdentity> entryAt(const Place& place) {
    struct statx status = {};
    if (statx(place.folder.number(), place.name.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT,
              STATX_TYPE | STATX_INO | STATX_BTIME, &status) != 0) {
        return failed(errno);
    }
    constexpr std::int64_t second = 1'000'000'000;
    const bool isBirthKnown = (status.stx_mask & STATX_BTIME) != 0;
    return EntryIdentity{
        .entry = {.device = makedev(status.stx_dev_major, status.stx_dev_minor), .inode = status.stx_ino},
        .kind = kindOfMode(status.stx_mode),
        .born = isBirthKnown ? status.stx_btime.tv_sec * second + status.stx_btime.tv_nsec : 0};
}

SystemResult<FolderIdentity> identityAt(const Place& place) {
    struct stat status = {};
    if (fstatat(place.folder.number(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return failed(errno);
    }
    return FolderIdentity{.device = status.st_dev, .inode = status.st_ino};
}

SystemResult<std::vector<FolderIdentity>> foldersAround(const Place& place) {
    std::vector<FolderIdentity> folders;
    std::optional<FolderStatus> below;
    Descriptor above;
    int folder = place.folder.number();
    for (;;) {
        const SystemResult<FolderStatus> status = statusOf(folder);
        if (!status) {
            return std::unexpected(status.error());
        }
        // The root is the one folder that is above itself.
        if (below && below->isSameFolderAs(*status)) {
            return folders;
        }
        below = *status;
        folders.push_back(status->identity());
        Descriptor next(openat(folder, "..", O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!next.isOpen()) {
            return failed(errno);
        }
        above = std::move(next);
        folder = above.number();
    }
}

std::vector<FolderIdentity> identitiesUpFrom(const std::string& path) {
    std::vector<FolderIdentity> folders;
    std::string real = withoutLinks(path).value_or("");
    for (struct stat status = {}; !real.empty() && stat(real.c_str(), &status) == 0;
         real = real == "/"            ? ""
                : real.rfind('/') == 0 ? "/"
                                       : std::string(parentOf(real))) {
        folders.push_back({.device = status.st_dev, .inode = status.st_ino});
    }
    return folders;
}

SystemResult<unsigned> ownerOf(const std::string& folder) {
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0) {
        return failed(errno);
    }
    return status.st_uid;
}

unsigned currentUser() {
    return geteuid();
}

SystemResult<void> makeFolderAt(const Place& place, unsigned mode) {
    if (mkdirat(place.folder.number(), place.name.c_str(), static_cast<mode_t>(mode)) == 0) {
        return {};
    }
    if (errno != EEXIST) {
        return failed(errno);
    }
    const SystemResult<EntryKind> kind = kindAt(place);
    if (!kind) {
        return std::unexpected(kind.error());
    }
    return *kind == EntryKind::folder ? SystemResult<void>() : failed(ENOTDIR);
}

SystemResult<void> moveWithoutReplacing(const Place& from, const Place& to) {
    const int moved = renameat2(from.folder.number(), from.name.c_str(), to.folder.number(), to.name.c_str(),
                                RENAME_NOREPLACE);
    return moved == 0 ? SystemResult<void>() : failed(errno);
}

SystemResult<void> removeEmptyFolder(const Place& place) {
    const int removed = unlinkat(place.folder.number(), place.name.c_str(), AT_REMOVEDIR);
    return removed == 0 ? SystemResult<void>() : failed(errno);
}

} // namespace lumo::platform
