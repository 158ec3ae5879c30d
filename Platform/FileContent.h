#pragma once

#include "Platform/SystemError.h"

#include <cstdint>
#include <stop_token>
#include <string>
#include <string_view>

/// What the bytes of regular files come to. Links are not followed, and a FIFO never blocks: what is no
/// regular file fails with EINVAL. Nothing looks opened afterwards (see `QuietFile`).
namespace lumo::platform {

/// Some bytes of a file, and what they shrink to.
struct Sample {
    std::int64_t readBytes = 0;
    std::int64_t deflatedBytes = 0; ///< By zlib at its usual level; never more than was read.
};

/// Reads a file of at most that many bytes whole, and of a longer one that many in pieces spread over it.
SystemResult<Sample> sampleFile(const std::string& path, std::int64_t mostBytes);

/// The CRC-32 that zip archives keep. A requested stop fails with ECANCELED.
SystemResult<std::uint32_t> checksumOfFile(const std::string& path, const std::stop_token& stop = {});
std::uint32_t checksumOf(std::string_view bytes);

} // namespace lumo::platform
