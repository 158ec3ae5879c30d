#pragma once

#include "LumoCore/Basics/Codec.h"

#include <cstdint>
#include <optional>

namespace lumo {

/// What a file or a folder takes on disk. The zero value is the neutral element of `+=`.
struct Usage {
    std::int64_t allocatedBytes = 0;  ///< Blocks x 512 of every entry: what is shown, compared and sorted by.
    std::int64_t apparentBytes = 0;   ///< Lengths of the regular files.
    std::int64_t fileCount = 0;       ///< Regular files.
    std::int64_t unreadableCount = 0; ///< Entries that could not be read.
    std::optional<Date> lastModified; ///< Latest content change of a regular file; absent when there is none.

    static constexpr auto fields = std::tuple{
        field("allocatedBytes", &Usage::allocatedBytes), field("apparentBytes", &Usage::apparentBytes),
        field("fileCount", &Usage::fileCount), field("unreadableCount", &Usage::unreadableCount),
        field("lastModified", &Usage::lastModified)};

    /// Adds the counts and keeps the later date. Stops the process on overflow, but for the lengths, which
    /// stay at the largest number then.
    Usage& operator+=(const Usage& other);

    friend bool operator==(const Usage&, const Usage&) = default;
};

} // namespace lumo
