#include "Platform/QuietFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <xxhash.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

namespace lumo::platform {

namespace {

/// What is read at a time: long enough for a disk, short enough for a cache.
constexpr std::size_t pieceBytes = std::size_t{256} * 1024;
constexpr std::size_t endBytes = 4096;
constexpr std::int64_t blockBytes = 512;

Timestamp timestampOf(const timespec& time) {
    return Timestamp(std::chrono::duration_cast<Timestamp::duration>(std::chrono::seconds(time.tv_sec) +
                                                                     std::chrono::nanoseconds(time.tv_nsec)));
}

FileStatus fileStatusOf(const struct stat& status, bool keepsOpenings) {
    FileStatus made{.identity = {static_cast<std::int32_t>(status.st_dev), status.st_ino},
                    .bytes = status.st_size,
                    .allocatedBytes = status.st_blocks * blockBytes,
                    .links = status.st_nlink,
                    .modified = timestampOf(status.st_mtim)};
    if (keepsOpenings) {
        made.opened = timestampOf(status.st_atim);
    }
    return made;
}

bool keepsOpenings(const struct statvfs& volume) {
#ifdef ST_NOATIME
    return (volume.f_flag & ST_NOATIME) == 0;
#else
    return (volume.f_flag & ST_RDONLY) == 0;
#endif
}

} // namespace

SystemResult<FileStatus> statusOfFile(const std::string& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    struct statvfs volume = {};
    return fileStatusOf(status, statvfs(path.c_str(), &volume) == 0 && keepsOpenings(volume));
}

SystemResult<QuietFile> QuietFile::open(const std::string& path) {
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    bool leavesTrace = true;
    int number = -1;
#ifdef O_NOATIME
    number = ::open(path.c_str(), flags | O_NOATIME);
    leavesTrace = number < 0;
#endif
    if (number < 0) {
        number = ::open(path.c_str(), flags);
    }
    Descriptor descriptor(number);
    struct stat status = {};
    if (!descriptor.isOpen() || fstat(descriptor.number(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    return QuietFile(std::move(descriptor), fileStatusOf(status, true), leavesTrace);
}

QuietFile::~QuietFile() {
    struct stat now = {};
    if (!leavesTrace_ || !descriptor_.isOpen() || fstat(descriptor_.number(), &now) != 0) {
        return;
    }
    const Timestamp opened = timestampOf(now.st_atim);
    if (status_.opened && opened != *status_.opened) {
        const auto since = status_.opened->time_since_epoch();
        const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
        const std::array<timespec, 2> times{
            timespec{.tv_sec = seconds.count(),
                     .tv_nsec =
                         std::chrono::duration_cast<std::chrono::nanoseconds>(since - seconds).count()},
            timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT}};
        // Of a file that is somebody else's this fails, and then nothing can be done.
        (void)futimens(descriptor_.number(), times.data());
    }
}

SystemResult<std::size_t> QuietFile::read(std::int64_t offset, std::span<char> buffer) const {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = untilNotInterrupted([&] {
            return pread(descriptor_.number(), buffer.data() + done, buffer.size() - done,
                         offset + static_cast<std::int64_t>(done));
        });
        if (count < 0) {
            return failed(errno);
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

void QuietFile::announceReading() const {
#ifdef POSIX_FADV_SEQUENTIAL
    posix_fadvise(descriptor_.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
}

SystemResult<std::string> quietBeginning(const std::string& path, std::size_t mostBytes) {
    const SystemResult<QuietFile> file = QuietFile::open(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    std::string bytes(std::min<std::size_t>(mostBytes, static_cast<std::size_t>(
                                                           std::max<std::int64_t>(file->status().bytes, 0))),
                      '\0');
    const SystemResult<std::size_t> length = file->read(0, bytes);
    if (!length) {
        return std::unexpected(length.error());
    }
    bytes.resize(*length);
    return bytes;
}

Digest digestOf(std::span<const char> bytes) {
    const XXH128_hash_t hash = XXH3_128bits(bytes.data(), bytes.size());
    return {hash.high64, hash.low64};
}

SystemResult<Digest> digestOfEnds(const QuietFile& file) {
    std::array<char, 2 * endBytes> ends;
    const std::span<char> all(ends);
    if (file.status().bytes <= static_cast<std::int64_t>(all.size())) {
        const SystemResult<std::size_t> whole =
            file.read(0, all.first(static_cast<std::size_t>(std::max<std::int64_t>(file.status().bytes, 0))));
        return whole ? SystemResult<Digest>(digestOf(all.first(*whole))) : std::unexpected(whole.error());
    }
    const SystemResult<std::size_t> first = file.read(0, all.first(endBytes));
    if (!first) {
        return std::unexpected(first.error());
    }
    const std::int64_t lastOffset =
        std::max<std::int64_t>(file.status().bytes - static_cast<std::int64_t>(endBytes), 0);
    const SystemResult<std::size_t> last = file.read(lastOffset, all.subspan(*first, endBytes));
    return last ? SystemResult<Digest>(digestOf(all.first(*first + *last))) : std::unexpected(last.error());
}

SystemResult<Digest> digestOfFile(const QuietFile& file, const std::stop_token& stop,
                                  const OnBytes& onBytes) {
    struct FreeState {
        void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
    };
    const std::unique_ptr<XXH3_state_t, FreeState> state(XXH3_createState());
    if (!state || XXH3_128bits_reset(state.get()) != XXH_OK) {
        return failed(ENOMEM);
    }
    file.announceReading();
    thread_local std::vector<char> piece(pieceBytes);
    for (std::int64_t offset = 0;;) {
        if (stop.stop_requested()) {
            return failed(ECANCELED);
        }
        const SystemResult<std::size_t> count = file.read(offset, piece);
        if (!count) {
            return std::unexpected(count.error());
        }
        XXH3_128bits_update(state.get(), piece.data(), *count);
        offset += static_cast<std::int64_t>(*count);
        if (onBytes) {
            onBytes(static_cast<std::int64_t>(*count));
        }
        if (*count < piece.size()) {
            const XXH128_hash_t hash = XXH3_128bits_digest(state.get());
            return Digest{hash.high64, hash.low64};
        }
    }
}

SystemResult<std::vector<char>> haveBytesOf(const QuietFile& first, std::span<const QuietFile* const> others,
                                            const std::stop_token& stop, const OnBytes& onBytes) {
    // Kept from one call to the next: clearing new memory takes as long as reading into it.
    thread_local std::vector<char> ofFirst(pieceBytes);
    thread_local std::vector<char> ofOther(pieceBytes);
    std::vector<char> isSame(others.size(), 1);
    for (std::size_t index = 0; index < others.size(); ++index) {
        isSame[index] = others[index]->status().bytes == first.status().bytes ? 1 : 0;
    }
    for (std::int64_t offset = 0; offset < first.status().bytes && std::ranges::count(isSame, 1) > 0;) {
        if (stop.stop_requested()) {
            return failed(ECANCELED);
        }
        const auto length = static_cast<std::size_t>(
            std::min<std::int64_t>(first.status().bytes - offset, static_cast<std::int64_t>(pieceBytes)));
        const std::span<char> piece = std::span(ofFirst).first(length);
        const SystemResult<std::size_t> count = first.read(offset, piece);
        if (!count || *count < length) {
            return failed(count ? ESTALE : count.error().code);
        }
        std::int64_t readBytes = static_cast<std::int64_t>(length);
        for (std::size_t index = 0; index < others.size(); ++index) {
            if (isSame[index] != 0) {
                const auto read = others[index]->read(offset, std::span(ofOther).first(length));
                isSame[index] =
                    read && *read == length && std::memcmp(ofOther.data(), piece.data(), length) == 0 ? 1 : 0;
                readBytes += static_cast<std::int64_t>(length);
            }
        }
        if (onBytes) {
            onBytes(readBytes);
        }
        offset += static_cast<std::int64_t>(length);
    }
    return isSame;
}

SystemResult<bool> haveSameBytes(const QuietFile& left, const QuietFile& right, const std::stop_token& stop,
                                 const OnBytes& onBytes) {
    const std::array<const QuietFile*, 1> others{&right};
    const auto same = haveBytesOf(left, others, stop, onBytes);
    return same ? SystemResult<bool>(same->front() != 0) : std::unexpected(same.error());
}

} // namespace lumo::platform
