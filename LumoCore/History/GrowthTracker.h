#pragma once

#include "LumoCore/History/DiskSnapshot.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// An item that takes more than it did at the baseline.
struct GrowthItem {
    std::string id;         ///< The item's identifier in the snapshots.
    std::string name;       ///< For a person.
    std::int64_t delta = 0; ///< Bytes since the baseline.
    std::int64_t now = 0;   ///< Bytes that it takes now.

    static constexpr auto fields =
        std::tuple{field("id", &GrowthItem::id), field("name", &GrowthItem::name),
                   field("delta", &GrowthItem::delta), field("now", &GrowthItem::now)};
    friend bool operator==(const GrowthItem&, const GrowthItem&) = default;
};

/// What grew, and since when.
struct Growth {
    std::optional<Date> since; ///< The baseline's; absent when there is none.
    std::vector<GrowthItem> items;

    static constexpr auto fields = std::tuple{field("since", &Growth::since), field("items", &Growth::items)};
    friend bool operator==(const Growth&, const Growth&) = default;
};

/// What has grown since about a day ago: functions of their arguments.
namespace GrowthTracker {

/// The age from which a snapshot serves as a baseline: somewhat less than a day, so that yesterday's scan at
/// a later hour is one.
inline constexpr std::chrono::seconds baselineAge{72000};
/// What grew by fewer bytes is not worth a person's attention.
inline constexpr std::int64_t smallestGrowth = 200000000;
/// How many snapshots are stored.
inline constexpr std::size_t snapshotsKept = 60;

/// Of snapshots in the order of the store, the newest that is at least that old, or else the oldest one;
/// absent when none was taken more than a minute before `now`.
std::optional<DiskSnapshot> baseline(const std::vector<DiskSnapshot>& snapshots, Date now,
                                     std::chrono::seconds age);

/// True for what took nothing where that snapshot does not know it: an artifact or an unclassified folder,
/// and an item of a kind that was looked for. A rule that is new in a release finds what was there all the
/// time.
bool countsFromZero(const std::string& id, const DiskSnapshot& snapshot);

/// The difference, or the number nearest to it when it does not fit: sizes may come from anybody's file.
std::int64_t difference(std::int64_t current, std::int64_t previous);

/// The items that grew by `minimum` bytes or more, largest growth first, equal ones by identifier. What the
/// baseline does not know counts from zero, or is left out when it does not, see `countsFromZero`.
std::vector<GrowthItem> compare(const DiskSnapshot& now, const DiskSnapshot& baseline, std::int64_t minimum);

/// What grew since the baseline among the stored snapshots, by the limits above.
Growth growthOf(const DiskSnapshot& now, const std::vector<DiskSnapshot>& stored);

} // namespace GrowthTracker

} // namespace lumo
