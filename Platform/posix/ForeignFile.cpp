#include "Platform/ForeignFile.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Descriptor.h"
#include "Platform/Folder.h"
#include "Platform/LogFile.h"
#include "Platform/StateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

namespace lumo::platform {

namespace {

/// A file's content and what else has to outlive its replacement.
struct Content {
    std::string bytes;
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;

    friend bool operator==(const Content&, const Content&) = default;
};

/// Where the path leads when final links are followed, also to a file that is still to be made.
SystemResult<std::string> followed(std::string path) {
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks; ++links) {
        const std::optional<std::string> target = linkTarget(path);
        if (!target) {
            return path;
        }
        path = target->starts_with('/') ? *target : std::string(parentOf(path)) + "/" + *target;
    }
    return failed(ELOOP);
}

/// What the file holds; absent when there is none.
SystemResult<std::optional<Content>> contentOf(const std::string& path, std::size_t limit) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    if (!file.isOpen()) {
        const SystemError error{errno};
        return error.isMissing() ? SystemResult<std::optional<Content>>(std::nullopt)
                                 : std::unexpected(error);
    }
    struct stat status = {};
    if (fstat(file.number(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return std::unexpected(SystemError{S_ISDIR(status.st_mode) ? EISDIR : EINVAL});
    }
    SystemResult<std::string> bytes = readDescriptor(file.number(), limit);
    if (!bytes) {
        return std::unexpected(bytes.error());
    }
    constexpr mode_t permissions = 07777;
    return Content{.bytes = std::move(*bytes),
                   .mode = status.st_mode & permissions,
                   .owner = status.st_uid,
                   .group = status.st_gid};
}

/// Gives the open file the mode and owner of another one.
SystemResult<void> likeBefore(int descriptor, const Content& before) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) {
        return failed(errno);
    }
    // Only root may give files away, so nobody is asked to for nothing. The mode comes last: a new owner
    // takes bits from it.
    const bool hasOther = status.st_uid != before.owner || status.st_gid != before.group;
    if (hasOther && fchown(descriptor, before.owner, before.group) != 0) {
        return failed(errno);
    }
    return fchmod(descriptor, before.mode) == 0 ? SystemResult<void>() : failed(errno);
}

/// A temporary file beside the path, with the mode and owner of what was there before.
SystemResult<std::string> prepared(const std::string& path, std::string_view bytes,
                                   const std::optional<Content>& before) {
    return writeTemporary(path, bytes, 0600, [&](int descriptor) {
        return before ? likeBefore(descriptor, *before) : SystemResult<void>();
    });
}

SystemResult<void> keepBackup(const Content& content, const std::string& backup) {
    const SystemResult<std::string> temporary = prepared(backup, content.bytes, content);
    if (!temporary) {
        return std::unexpected(temporary.error());
    }
    // A link in the backup's place goes too: what it leads to is nobody's backup.
    if (rename(temporary->c_str(), backup.c_str()) != 0) {
        const SystemError error{errno};
        unlink(temporary->c_str());
        return std::unexpected(error);
    }
    return syncFolder(std::string(parentOf(backup)));
}

enum class Attempt { done, overtaken };

/// Puts the prepared file in its place when nothing has changed there.
SystemResult<Attempt> putInPlace(const std::string& temporary, const std::string& target,
                                 const std::optional<Content>& before, std::size_t limit) {
    const SystemResult<std::optional<Content>> now = contentOf(target, limit);
    if (!now) {
        return std::unexpected(now.error());
    }
    if (*now != before) {
        return Attempt::overtaken;
    }
    if (!before) {
        const SystemResult<void> placed = renameAside(temporary, target);
        if (!placed && placed.error().code == EEXIST) {
            return Attempt::overtaken;
        }
        return placed ? SystemResult<Attempt>(Attempt::done) : std::unexpected(placed.error());
    }
    return rename(temporary.c_str(), target.c_str()) == 0 ? SystemResult<Attempt>(Attempt::done)
                                                          : failed(errno);
}

SystemResult<Attempt> tryToRewrite(const std::string& path, const std::string& backup, std::size_t limit,
                                   const ForeignEdit& edit) {
    const SystemResult<std::string> target = followed(path);
    if (!target) {
        return std::unexpected(target.error());
    }
    const SystemResult<std::optional<Content>> before = contentOf(*target, limit);
    if (!before) {
        return std::unexpected(before.error());
    }
    const auto present = *before ? std::optional((*before)->bytes) : std::nullopt;
    const std::optional<std::string> wanted = edit(present);
    if (!wanted || wanted == present) {
        return Attempt::done;
    }
    // A renamed file needs no right to write on the old one, but whoever took that away meant it.
    if (*before && access(target->c_str(), W_OK) != 0) {
        return failed(errno);
    }
    if (const auto kept =
            *before ? keepBackup(**before, backup) : makePrivateFolder(std::string(parentOf(path)));
        !kept) {
        return std::unexpected(kept.error());
    }
    const SystemResult<std::string> temporary = prepared(*target, *wanted, *before);
    if (!temporary) {
        return std::unexpected(temporary.error());
    }
    SystemResult<Attempt> placed = putInPlace(*temporary, *target, *before, limit);
    if (!placed || *placed == Attempt::overtaken) {
        unlink(temporary->c_str());
        return placed;
    }
    const SystemResult<void> synced = syncFolder(std::string(parentOf(*target)));
    return synced ? placed : std::unexpected(synced.error());
}

void sweepBeside(const std::string& path) {
    sweepTemporaries(std::string(parentOf(path)), std::string(fileName(path)));
}

} // namespace

SystemResult<void> rewriteForeign(const std::string& path, const std::string& backup, std::size_t limit,
                                  const ForeignEdit& edit) {
    constexpr int mostAttempts = 5;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const SystemResult<Attempt> tried = tryToRewrite(path, backup, limit, edit);
        if (!tried) {
            return std::unexpected(tried.error());
        }
        if (*tried == Attempt::done) {
            return {};
        }
    }
    return failed(ESTALE);
}

void sweepForeign(const std::string& path, const std::string& backup) {
    sweepBeside(backup);
    if (const SystemResult<std::string> target = followed(path)) {
        sweepBeside(*target);
    }
}

} // namespace lumo::platform
