#include "Platform/FileContent.h"

#include "Platform/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

namespace lumo::platform {

namespace {

struct OpenFile {
    Descriptor descriptor;
    std::int64_t length = 0;
};

SystemResult<OpenFile> openRegular(const std::string& path) {
    OpenFile file{.descriptor =
                      Descriptor(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC))};
    struct stat status = {};
    if (!file.descriptor.isOpen() || fstat(file.descriptor.number(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    file.length = status.st_size;
    return file;
}

/// As many bytes from there as the buffer takes; fewer at the end of the file.
template <class Buffer>
SystemResult<std::size_t> readAt(const OpenFile& file, std::int64_t offset, Buffer& buffer) {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = untilNotInterrupted([&] {
            return pread(file.descriptor.number(), buffer.data() + done, buffer.size() - done,
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

/// Memory that is too short for the library means that nothing shrinks.
std::size_t deflatedLength(const std::vector<unsigned char>& bytes, std::size_t length) {
    std::vector<unsigned char> deflated(compressBound(length));
    uLongf deflatedLength = deflated.size();
    const int done = compress2(deflated.data(), &deflatedLength, bytes.data(), length, Z_DEFAULT_COMPRESSION);
    return done == Z_OK ? std::min<std::size_t>(deflatedLength, length) : length;
}

} // namespace

SystemResult<Sample> sampleFile(const std::string& path, std::int64_t mostBytes) {
    const SystemResult<OpenFile> file = openRegular(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    Sample sample;
    if (mostBytes <= 0 || file->length <= 0) {
        return sample;
    }
    constexpr std::int64_t mostPieces = 4;
    const std::int64_t pieces = file->length <= mostBytes || mostBytes < mostPieces ? 1 : mostPieces;
    const std::int64_t pieceBytes = std::min(file->length, mostBytes) / pieces;
    // The first piece is at the beginning and the last one at the end: both differ from the middle most.
    const std::int64_t distance = pieces == 1 ? 0 : (file->length - pieceBytes) / (pieces - 1);
    std::vector<unsigned char> buffer(static_cast<std::size_t>(pieceBytes));
    for (std::int64_t piece = 0; piece < pieces; ++piece) {
        const SystemResult<std::size_t> length = readAt(*file, piece * distance, buffer);
        if (!length) {
            return std::unexpected(length.error());
        }
        sample.readBytes += static_cast<std::int64_t>(*length);
        sample.deflatedBytes += static_cast<std::int64_t>(deflatedLength(buffer, *length));
    }
    return sample;
}

SystemResult<std::string> beginningOfFile(const std::string& path, std::size_t mostBytes) {
    const SystemResult<OpenFile> file = openRegular(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    std::string bytes(mostBytes, '\0');
    const SystemResult<std::size_t> length = readAt(*file, 0, bytes);
    if (!length) {
        return std::unexpected(length.error());
    }
    bytes.resize(*length);
    return bytes;
}

SystemResult<std::uint32_t> checksumOfFile(const std::string& path, const std::stop_token& stop) {
    const SystemResult<OpenFile> file = openRegular(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    posix_fadvise(file->descriptor.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    std::uint32_t checksum = checksumOf({});
    std::array<unsigned char, std::size_t{256} * 1024> buffer;
    for (;;) {
        if (stop.stop_requested()) {
            return failed(ECANCELED);
        }
        const ssize_t count = untilNotInterrupted(
            [&] { return read(file->descriptor.number(), buffer.data(), buffer.size()); });
        if (count < 0) {
            return failed(errno);
        }
        if (count == 0) {
            return checksum;
        }
        checksum = static_cast<std::uint32_t>(
            crc32_z(checksum, buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0));
    }
}

std::uint32_t checksumOf(std::string_view bytes) {
    uLong checksum = crc32_z(0, nullptr, 0);
    std::array<unsigned char, 4096> piece;
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.size(), piece.size());
        std::copy_n(bytes.begin(), length, piece.begin());
        checksum = crc32_z(checksum, piece.data(), length);
        bytes.remove_prefix(length);
    }
    return static_cast<std::uint32_t>(checksum);
}

} // namespace lumo::platform
