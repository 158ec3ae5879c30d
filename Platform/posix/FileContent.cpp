#include "Platform/FileContent.h"

#include "Platform/QuietFile.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>
#include <vector>

namespace lumo::platform {

namespace {

/// As the compression library takes them.
const unsigned char* bytesFor(std::span<const char> bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

/// Memory that is too short for the library means that nothing shrinks.
std::size_t deflatedLength(const std::vector<char>& bytes, std::size_t length) {
    std::vector<unsigned char> deflated(compressBound(length));
    uLongf deflatedLength = deflated.size();
    const int done =
        compress2(deflated.data(), &deflatedLength, bytesFor(bytes), length, Z_DEFAULT_COMPRESSION);
    return done == Z_OK ? std::min<std::size_t>(deflatedLength, length) : length;
}

} // namespace

SystemResult<Sample> sampleFile(const std::string& path, std::int64_t mostBytes) {
    const SystemResult<QuietFile> file = QuietFile::open(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    Sample sample;
    const std::int64_t length = file->status().bytes;
    if (mostBytes <= 0 || length <= 0) {
        return sample;
    }
    constexpr std::int64_t mostPieces = 4;
    const std::int64_t pieces = length <= mostBytes || mostBytes < mostPieces ? 1 : mostPieces;
    const std::int64_t pieceBytes = std::min(length, mostBytes) / pieces;
    // The first piece is at the beginning and the last one at the end: both differ from the middle most.
    const std::int64_t distance = pieces == 1 ? 0 : (length - pieceBytes) / (pieces - 1);
    std::vector<char> buffer(static_cast<std::size_t>(pieceBytes));
    for (std::int64_t piece = 0; piece < pieces; ++piece) {
        const SystemResult<std::size_t> count = file->read(piece * distance, buffer);
        if (!count) {
            return std::unexpected(count.error());
        }
        sample.readBytes += static_cast<std::int64_t>(*count);
        sample.deflatedBytes += static_cast<std::int64_t>(deflatedLength(buffer, *count));
    }
    return sample;
}

SystemResult<std::uint32_t> checksumOfFile(const std::string& path, const std::stop_token& stop) {
    const SystemResult<QuietFile> file = QuietFile::open(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    file->announceReading();
    std::uint32_t checksum = checksumOf({});
    std::array<char, std::size_t{256} * 1024> buffer;
    for (std::int64_t offset = 0;;) {
        if (stop.stop_requested()) {
            return failed(ECANCELED);
        }
        const SystemResult<std::size_t> count = file->read(offset, buffer);
        if (!count) {
            return std::unexpected(count.error());
        }
        if (*count == 0) {
            return checksum;
        }
        checksum = static_cast<std::uint32_t>(crc32_z(checksum, bytesFor(buffer), *count));
        offset += static_cast<std::int64_t>(*count);
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
