#include "LumoCore/History/GrowthTracker.h"

#include "LumoCore/Basics/LargestFirst.h"

#include <limits>
#include <ranges>

namespace lumo::GrowthTracker {

bool countsFromZero(const std::string& id, const DiskSnapshot& snapshot) {
    const auto kind = inventoryKindOfID(id);
    return kind ? snapshot.sizes.contains(std::string(idPrefixOf(*kind)))
                : id.starts_with(artifactIDPrefix) || id.starts_with(unclassifiedIDPrefix);
}

std::int64_t difference(std::int64_t current, std::int64_t previous) {
    std::int64_t delta = 0;
    if (!__builtin_sub_overflow(current, previous, &delta)) {
        return delta;
    }
    using Limits = std::numeric_limits<std::int64_t>;
    return current > previous ? Limits::max() : Limits::min();
}

std::optional<DiskSnapshot> baseline(const std::vector<DiskSnapshot>& snapshots, Date now,
                                     std::chrono::seconds age) {
    // Keeps the snapshot of a scan from being its own baseline.
    constexpr std::chrono::seconds closest{60};
    const DiskSnapshot* chosen = nullptr;
    for (const DiskSnapshot& snapshot : std::views::reverse(snapshots)) {
        if (now - snapshot.date <= closest) {
            continue;
        }
        chosen = &snapshot;
        if (now - snapshot.date >= age) {
            break;
        }
    }
    return chosen != nullptr ? std::optional(*chosen) : std::nullopt;
}

std::vector<GrowthItem> compare(const DiskSnapshot& now, const DiskSnapshot& baseline, std::int64_t minimum) {
    std::vector<GrowthItem> items;
    for (const auto& [id, current] : now.sizes) {
        const auto known = baseline.sizes.find(id);
        if (known == baseline.sizes.end() && !countsFromZero(id, baseline)) {
            continue;
        }
        const std::int64_t delta = difference(current, known != baseline.sizes.end() ? known->second : 0);
        if (delta >= minimum) {
            const auto name = now.names.find(id);
            items.push_back({id, name != now.names.end() ? name->second : id, delta, current});
        }
    }
    sortLargestFirst(items, &GrowthItem::delta);
    return items;
}

Growth growthOf(const DiskSnapshot& now, const std::vector<DiskSnapshot>& stored) {
    const auto since = baseline(stored, now.date, baselineAge);
    if (!since) {
        return {};
    }
    return {since->date, compare(now, *since, smallestGrowth)};
}

} // namespace lumo::GrowthTracker
