#include "Platform/TreeListing.h"

#include <fcntl.h>
#include <fts.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string_view>

namespace lumo::platform {

namespace {

struct CloseWalk {
    void operator()(FTS* walk) const { fts_close(walk); }
};

EntryKind kindOfEntry(const FTSENT& entry) {
    switch (entry.fts_info) {
    case FTS_D:
    case FTS_DNR:
        return EntryKind::folder;
    case FTS_F:
        return EntryKind::file;
    case FTS_SL:
    case FTS_SLNONE:
        return EntryKind::link;
    default:
        return EntryKind::other;
    }
}

std::optional<SystemError> problemOf(const FTSENT& entry, dev_t volume) {
    switch (entry.fts_info) {
    case FTS_DNR:
    case FTS_NS:
    case FTS_ERR:
        return SystemError{entry.fts_errno};
    case FTS_D:
        return entry.fts_statp->st_dev == volume ? std::nullopt : std::optional(SystemError{EXDEV});
    case FTS_F:
        return faccessat(AT_FDCWD, entry.fts_accpath, R_OK, AT_EACCESS) == 0
                   ? std::nullopt
                   : std::optional(SystemError{errno});
    default:
        return std::nullopt;
    }
}

ListedEntry listed(const FTSENT& entry, std::size_t folderLength, dev_t volume) {
    ListedEntry made;
    made.path = std::string_view(entry.fts_path, entry.fts_pathlen).substr(folderLength);
    made.kind = kindOfEntry(entry);
    made.problem = problemOf(entry, volume);
    if (entry.fts_info != FTS_NS && entry.fts_info != FTS_ERR) {
        const struct stat& status = *entry.fts_statp;
        constexpr std::int64_t second = 1'000'000'000;
        made.bytes = made.kind == EntryKind::file ? status.st_size : 0;
        made.modified = status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec;
    }
    return made;
}

} // namespace

SystemResult<void> visitTree(const std::string& root,
                             const std::function<bool(const ListedEntry& entry)>& visitor) {
    // The walk takes mutable strings although it copies them.
    std::string path = root;
    char* roots[] = {path.data(), nullptr};
    const std::unique_ptr<FTS, CloseWalk> walk(
        fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR | FTS_XDEV, nullptr));
    if (!walk) {
        return failed(errno);
    }
    const std::size_t folderLength = root.rfind('/') + 1;
    std::optional<dev_t> volume;
    for (errno = 0; FTSENT* entry = fts_read(walk.get()); errno = 0) {
        if (!volume) {
            volume = entry->fts_info == FTS_NS ? 0 : entry->fts_statp->st_dev;
        }
        if (entry->fts_info != FTS_DP && !visitor(listed(*entry, folderLength, *volume))) {
            return {};
        }
    }
    return errno == 0 ? SystemResult<void>() : failed(errno);
}

} // namespace lumo::platform
