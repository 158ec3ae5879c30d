#include "Platform/StateFile.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Descriptor.h"
#include "Platform/Folder.h"
#include "Platform/LogFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

namespace lumo::platform {

namespace {

constexpr std::string_view temporaryMark = ".nuevo-"; ///< Between the file's name and the process.

SystemResult<void> writeBytes(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written =
            untilNotInterrupted([&] { return write(descriptor, bytes.data(), bytes.size()); });
        if (written < 0) {
            return failed(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

/// A file to be replaced: where it is when links are followed, and its mode if it is there.
struct Replaced {
    std::string path;
    std::optional<mode_t> mode;
};

SystemResult<Replaced> fileToReplace(const std::string& path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            return std::unexpected(SystemError{S_ISDIR(status.st_mode) ? EISDIR : EINVAL});
        }
        const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr),
                                                                   &std::free);
        if (!resolved) {
            return failed(errno);
        }
        constexpr mode_t permissions = 07777;
        return Replaced{resolved.get(), status.st_mode & permissions};
    }
    if (errno != ENOENT) {
        return failed(errno);
    }
    // A link to a file that is still to be made is followed one step.
    const std::optional<std::string> target = linkTarget(path);
    if (!target) {
        return Replaced{path, std::nullopt};
    }
    return Replaced{target->starts_with('/') ? *target : joined(parentOf(path), *target), std::nullopt};
}

/// Makes the file, which `fill` writes.
SystemResult<void> writeSynced(const std::string& path, unsigned mode,
                               const std::function<SystemResult<void>(int descriptor)>& fill) {
    const Descriptor file(
        open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, static_cast<mode_t>(mode)));
    if (file.number() < 0) {
        return failed(errno);
    }
    if (const auto filled = fill(file.number()); !filled) {
        return filled;
    }
    if (fsync(file.number()) != 0) {
        return failed(errno);
    }
    return {};
}

SystemResult<std::string> makeTemporary(const std::string& path, unsigned mode,
                                        const std::function<SystemResult<void>(int descriptor)>& fill) {
    std::string temporary = path + std::string(temporaryMark) + std::to_string(getpid());
    unlink(temporary.c_str()); // Left by a process that died under the same number.
    if (const auto written = writeSynced(temporary, mode, fill); !written) {
        unlink(temporary.c_str());
        return std::unexpected(written.error());
    }
    return temporary;
}

SystemResult<void> replaceBy(const std::string& path, unsigned mode,
                             const std::function<SystemResult<void>(int descriptor)>& fill) {
    const SystemResult<Replaced> replaced = fileToReplace(path);
    if (!replaced) {
        return std::unexpected(replaced.error());
    }
    const std::string& target = replaced->path;
    const std::string folder =
        target.find('/') == std::string::npos ? "." : std::string(parentOf(target)) + "/";
    const SystemResult<std::string> temporary = makeTemporary(target, mode, fill);
    if (!temporary) {
        return std::unexpected(temporary.error());
    }
    SystemResult<void> done;
    if (replaced->mode && chmod(temporary->c_str(), *replaced->mode) != 0) {
        done = failed(errno);
    }
    if (done && rename(temporary->c_str(), target.c_str()) != 0) {
        done = failed(errno);
    }
    if (!done) {
        unlink(temporary->c_str());
        return done;
    }
    return syncFolder(folder);
}

} // namespace

void sweepTemporaries(const std::string& folder, std::string_view file) {
    for (const std::string& name : namesIn(folder)) {
        const std::size_t mark = name.rfind(temporaryMark);
        if (mark == std::string::npos || (!file.empty() && name.substr(0, mark) != file)) {
            continue;
        }
        const std::string digits = name.substr(mark + temporaryMark.size());
        pid_t process = 0;
        const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), process);
        const bool isNumber = parsed.ec == std::errc() && parsed.ptr == digits.data() + digits.size();
        if (isNumber && process > 0 && kill(process, 0) != 0 && errno == ESRCH) {
            unlink((folder + "/" + name).c_str());
        }
    }
}

bool hasTemporaries(const std::string& folder) {
    return std::ranges::any_of(namesIn(folder), [](const std::string& name) {
        return name.find(temporaryMark) != std::string::npos;
    });
}

SystemResult<std::string> readDescriptor(int descriptor, std::size_t limit) {
    std::string bytes;
    std::array<char, 16384> buffer = {};
    for (;;) {
        const ssize_t count =
            untilNotInterrupted([&] { return read(descriptor, buffer.data(), buffer.size()); });
        if (count == 0) {
            return bytes;
        }
        if (count < 0) {
            return failed(errno);
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
        if (bytes.size() > limit) {
            return failed(EFBIG);
        }
    }
}

SystemResult<std::string> readWhole(const std::string& path, std::size_t limit) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.number() < 0) {
        return failed(errno);
    }
    struct stat status = {};
    if (fstat(file.number(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return std::unexpected(SystemError{S_ISDIR(status.st_mode) ? EISDIR : EINVAL});
    }
    return readDescriptor(file.number(), limit);
}

SystemResult<std::string> writeTemporary(const std::string& path, std::string_view bytes, unsigned mode,
                                         const std::function<SystemResult<void>(int)>& prepare) {
    return makeTemporary(path, mode, [&](int descriptor) {
        const auto written = writeBytes(descriptor, bytes);
        return written && prepare ? prepare(descriptor) : written;
    });
}

SystemResult<void> replaceWhole(const std::string& path, std::string_view bytes, unsigned mode) {
    return replaceBy(path, mode, [&](int descriptor) { return writeBytes(descriptor, bytes); });
}

SystemResult<void> replaceInPieces(const std::string& path,
                                   const std::function<bool(const TakePiece& take)>& produce, unsigned mode) {
    return replaceBy(path, mode, [&](int descriptor) {
        SystemResult<void> written;
        const bool isWhole = produce([&](std::string_view piece) {
            written = writeBytes(descriptor, piece);
            return written.has_value();
        });
        return written && !isWhole ? failed(ECANCELED) : written;
    });
}

SystemResult<void> makePrivateFolder(const std::string& folder) {
    if (folder.empty() || mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) {
        return {};
    }
    if (errno != ENOENT) {
        return failed(errno);
    }
    if (const auto made = makePrivateFolder(std::string(parentOf(folder))); !made) {
        return made;
    }
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        return failed(errno);
    }
    return {};
}

SystemResult<void> renameAside(const std::string& path, const std::string& newPath) {
    // A hard link fails where the name is taken, which rename does not. Not every file system has them.
    if (link(path.c_str(), newPath.c_str()) == 0) {
        return unlink(path.c_str()) == 0 ? SystemResult<void>() : failed(errno);
    }
    if (errno != EPERM && errno != ENOTSUP) {
        return failed(errno);
    }
    if (kindOf(newPath)) {
        return failed(EEXIST);
    }
    return rename(path.c_str(), newPath.c_str()) == 0 ? SystemResult<void>() : failed(errno);
}

} // namespace lumo::platform
