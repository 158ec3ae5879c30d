#include "Platform/Folder.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Descriptor.h"
#include "Platform/TreeTally.h"
#include "Platform/posix/EntryMode.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

namespace lumo::platform {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

EntryKind kindOfEntry(int folder, const dirent& entry) {
    switch (entry.d_type) {
    case DT_DIR:
        return EntryKind::folder;
    case DT_REG:
        return EntryKind::file;
    case DT_LNK:
        return EntryKind::link;
    case DT_UNKNOWN: {
        // Some file systems do not tell the kind with the name.
        struct stat status = {};
        const bool isKnown = fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
        return isKnown ? kindOfMode(status.st_mode) : EntryKind::other;
    }
    default:
        return EntryKind::other;
    }
}

/// Lists an open folder, which it takes over. False when the descriptor is no folder.
bool visitOpen(int descriptor, const std::function<bool(std::string_view, EntryKind)>& visitor) {
    const std::unique_ptr<DIR, CloseFolder> folder(fdopendir(descriptor));
    if (!folder) {
        close(descriptor);
        return false;
    }
    while (const dirent* entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && !visitor(name, kindOfEntry(descriptor, *entry))) {
            break;
        }
    }
    return true;
}

bool isCompiledProgram(int folder, const std::string& name) {
    struct stat status = {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode) ||
        (status.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)) == 0) {
        return false;
    }
    const Descriptor file(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    constexpr std::string_view magic = "\177ELF";
    std::array<char, magic.size()> beginning = {};
    return file.isOpen() &&
           pread(file.number(), beginning.data(), beginning.size(), 0) == std::ssize(beginning) &&
           std::string_view(beginning.data(), beginning.size()) == magic;
}

/// The path without "." and doubled or final slashes.
std::string withoutEmptyParts(std::string_view path) {
    std::string plain;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, end);
        if (!part.empty() && part != ".") {
            plain.append("/").append(part);
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return plain.empty() ? "/" : plain;
}

} // namespace

EntryMark markOf(const std::string& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        return {};
    }
#ifdef __APPLE__
    const timespec& changed = status.st_ctimespec;
#else
    const timespec& changed = status.st_ctim;
#endif
    return {.object = {.device = static_cast<std::uint64_t>(status.st_dev), .inode = status.st_ino},
            .changedSeconds = changed.tv_sec,
            .changedNanoseconds = changed.tv_nsec};
}

bool isMissing(const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) != 0 && SystemError{errno}.isMissing();
}

std::optional<EntryKind> kindOf(const std::string& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return kindOfMode(status.st_mode);
}

std::optional<Timestamp> modificationDate(const std::string& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return modificationDateOf(status);
}

bool isFolderThroughLinks(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isProgram(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return names;
    }
    visitOpen(descriptor, [&](std::string_view name, EntryKind) {
        names.emplace_back(name);
        return true;
    });
    std::ranges::sort(names);
    return names;
}

bool canList(const std::string& folder) {
    return Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).isOpen();
}

bool holdsCompiledProgram(const std::string& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    bool isFound = false;
    if (descriptor >= 0) {
        visitOpen(descriptor, [&](std::string_view name, EntryKind kind) {
            isFound = kind == EntryKind::file && isCompiledProgram(descriptor, std::string(name));
            return !isFound;
        });
    }
    return isFound;
}

std::optional<FolderStatus> visitFolder(const std::string& folder,
                                        const std::function<bool(std::string_view, EntryKind)>& visitor) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    const auto status = statusOf(descriptor);
    if (!status) {
        close(descriptor);
        return std::nullopt;
    }
    if (!visitOpen(descriptor, visitor)) {
        return std::nullopt;
    }
    return *status;
}

std::optional<std::string> linkTarget(const std::string& path) {
    std::array<char, PATH_MAX> target = {};
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0) {
        return std::nullopt;
    }
    return std::string(target.data(), static_cast<std::size_t>(length));
}

SystemResult<std::string> resolvedPath(const std::string& path, FinalLink last) {
    std::string absolute = path;
    if (!path.starts_with('/')) {
        std::array<char, PATH_MAX> folder = {};
        if (getcwd(folder.data(), folder.size()) == nullptr) {
            return failed(errno);
        }
        absolute = joined(folder.data(), path);
    }
    std::string real; // Without links as far as it goes, so that ".." is what stands before it.
    std::vector<std::string_view> names = components(absolute);
    std::erase_if(names, [](std::string_view name) { return name.empty() || name == "."; });
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (names[index] == "..") {
            real = std::string(parentOf(real));
            continue;
        }
        real = joined(real, names[index]);
        const bool follows = index + 1 < names.size() || last == FinalLink::followed;
        if (follows && kindOf(real) == EntryKind::link) {
            real = withoutLinks(real).value_or(real);
            real = real == "/" ? std::string() : real;
        }
    }
    return real.empty() ? "/" : real;
}

SystemResult<std::string> absolutePath(const std::string& path) {
    std::string absolute = path;
    if (!absolute.starts_with('/')) {
        std::array<char, PATH_MAX> folder = {};
        if (getcwd(folder.data(), folder.size()) == nullptr) {
            return failed(errno);
        }
        absolute = std::string(folder.data()) + "/" + absolute;
    }
    // Only the disk knows where ".." leads, since the folder before it may be a link.
    if ((absolute + "/").find("/../") != std::string::npos) {
        return withoutLinks(absolute);
    }
    return withoutEmptyParts(absolute);
}

SystemResult<std::string> withoutLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr), &std::free);
    return resolved ? SystemResult<std::string>(resolved.get()) : failed(errno);
}

bool isSamePlace(const std::string& left, const std::string& right) {
    const auto real = withoutLinks(left);
    return left == right || (real && real == withoutLinks(right));
}

} // namespace lumo::platform
