#include "LumoCore/Inventories/SystemSpace.h"

#include "LumoCore/Basics/Text.h"
#include "Platform/LocalSnapshots.h"
#include "Platform/Volume.h"

#include <algorithm>

namespace lumo {

SystemSpace SystemSpace::measure(const std::string& path) {
    const platform::VolumeCapacity capacity =
        platform::volumeCapacity(path).value_or(platform::VolumeCapacity());
    return {.purgeableBytes = std::max<std::int64_t>(capacity.availableForImportant - capacity.available, 0),
            .localSnapshots = parseSnapshots(platform::localSnapshotNames(path))};
}

std::vector<Date> SystemSpace::parseSnapshots(std::string_view text) {
    constexpr std::size_t prefix = std::string_view("com.apple.TimeMachine.").size();
    std::vector<Date> dates;
    for (const std::string& name : matchesOf(R"(com\.apple\.TimeMachine\.\d{4}-\d{2}-\d{2}-\d{6})", text)) {
        // As in our own stamps, but for the two dashes in the day.
        std::string stamp = name.substr(prefix);
        stamp.erase(7, 1).erase(4, 1);
        if (const std::optional<Date> date = dateFromStampText(stamp)) {
            dates.push_back(*date);
        }
    }
    std::ranges::sort(dates);
    return dates;
}

} // namespace lumo
