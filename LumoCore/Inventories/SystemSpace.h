#pragma once

#include "LumoCore/Basics/Codec.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// What the system would free by itself when it runs short of space: why two programs may tell different
/// amounts of free space.
struct SystemSpace {
    std::int64_t purgeableBytes = 0; ///< Never negative; 0 on systems that keep no such space.
    std::vector<Date>
        localSnapshots; ///< When the volume's local Time Machine snapshots were made, oldest first.

    static constexpr auto fields = std::tuple{field("purgeableBytes", &SystemSpace::purgeableBytes),
                                              field("localSnapshots", &SystemSpace::localSnapshots)};

    /// Of the volume that holds the path. Never fails: what the system does not say counts as nothing. May
    /// take a moment.
    static SystemSpace measure(const std::string& path);

    /// The dates in the names of snapshots ("com.apple.TimeMachine.2025-03-14-093005.local") anywhere in the
    /// text, oldest first. A name whose date is none is passed over.
    static std::vector<Date> parseSnapshots(std::string_view text);

    friend bool operator==(const SystemSpace&, const SystemSpace&) = default;
};

} // namespace lumo
