#include "Platform/LogFile.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace lumo::platform {

namespace {

/// An open log and what was found in it.
struct OpenLog {
    Descriptor file;
    std::int64_t length = 0;
    bool isNew = false;
};

SystemResult<OpenLog> openToAppend(const std::string& path) {
    constexpr int flags = O_RDWR | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    OpenLog log;
    log.file = Descriptor(open(path.c_str(), flags));
    if (!log.file.isOpen() && errno == ENOENT) {
        log.isNew = true;
        log.file = Descriptor(open(path.c_str(), flags | O_CREAT | O_EXCL, 0600));
    }
    struct stat status = {};
    if (!log.file.isOpen() || fstat(log.file.number(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    log.length = status.st_size;
    return log;
}

SystemResult<bool> endsInsideLine(const OpenLog& log) {
    if (log.length == 0) {
        return false;
    }
    char last = 0;
    const ssize_t count = pread(log.file.number(), &last, 1, log.length - 1);
    if (count != 1) {
        return failed(count < 0 ? errno : EIO);
    }
    return last != '\n';
}

SystemResult<void> writeAtOnce(int file, std::string_view bytes) {
    const ssize_t written = untilNotInterrupted([&] { return write(file, bytes.data(), bytes.size()); });
    if (written < 0) {
        return failed(errno);
    }
    // Only a full disk takes a part of what is written to a file.
    return static_cast<std::size_t>(written) == bytes.size() ? SystemResult<void>() : failed(ENOSPC);
}

SystemResult<void> writeDurably(const OpenLog& log, std::string_view bytes, const std::string& path) {
    if (auto written = writeAtOnce(log.file.number(), bytes); !written) {
        return written;
    }
    if (fsync(log.file.number()) != 0) {
        return failed(errno);
    }
    return log.isNew ? syncFolder(std::string(parentOf(path))) : SystemResult<void>();
}

} // namespace

SystemResult<void> syncFolder(const std::string& folder) {
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that may not be listed cannot be opened, and some file systems cannot sync folders and answer
    // EINVAL: the name is as durable there as it gets.
    if (!descriptor.isOpen()) {
        return errno == EACCES ? SystemResult<void>() : failed(errno);
    }
    if (fsync(descriptor.number()) != 0 && errno != EINVAL) {
        return failed(errno);
    }
    return {};
}

SystemResult<std::int64_t> appendLines(const std::string& path, std::string_view lines) {
    const SystemResult<OpenLog> log = openToAppend(path);
    if (!log) {
        return std::unexpected(log.error());
    }
    const SystemResult<bool> isTorn = endsInsideLine(*log);
    if (!isTorn) {
        return std::unexpected(isTorn.error());
    }
    const std::string healed = *isTorn ? "\n" + std::string(lines) : std::string();
    if (const auto written = writeDurably(*log, *isTorn ? healed : lines, path); !written) {
        // Whether this succeeds or not there is nothing better to do: a torn line costs itself alone.
        (void)!ftruncate(log->file.number(), log->length);
        return std::unexpected(written.error());
    }
    return log->length;
}

SystemResult<void> cutBack(const std::string& path, std::int64_t length) {
    if (length == 0) {
        if (unlink(path.c_str()) != 0 && errno != ENOENT) {
            return failed(errno);
        }
        return syncFolder(std::string(parentOf(path)));
    }
    const Descriptor file(open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen() || ftruncate(file.number(), length) != 0 || fsync(file.number()) != 0) {
        return failed(errno);
    }
    return {};
}

SystemResult<void> visitLines(const std::string& path, std::size_t mostLineBytes,
                              const std::function<void(std::string_view)>& visitor) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.number(), &status) != 0) {
        return errno == ENOENT || errno == ENOTDIR ? SystemResult<void>() : failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    std::string line;
    bool isTooLong = false;
    const auto add = [&](std::string_view part) {
        isTooLong = isTooLong || line.size() + part.size() > mostLineBytes;
        if (!isTooLong) {
            line.append(part);
        }
    };
    const auto end = [&] {
        if (!isTooLong && !line.empty()) {
            visitor(line);
        }
        line.clear();
        isTooLong = false;
    };
    std::array<char, 65536> buffer = {};
    for (;;) {
        const ssize_t count =
            untilNotInterrupted([&] { return read(file.number(), buffer.data(), buffer.size()); });
        if (count < 0) {
            return failed(errno);
        }
        if (count == 0) {
            end();
            return {};
        }
        std::string_view chunk(buffer.data(), static_cast<std::size_t>(count));
        for (std::size_t feed = chunk.find('\n'); feed != std::string_view::npos; feed = chunk.find('\n')) {
            add(chunk.substr(0, feed));
            end();
            chunk.remove_prefix(feed + 1);
        }
        add(chunk);
    }
}

} // namespace lumo::platform
