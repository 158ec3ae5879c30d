#include "LumoCore/Scanning/ScanMemory.h"

namespace lumo {

std::vector<Usage> ScanMemory::measureAll(const std::vector<std::string_view>& paths,
                                          HardLinkRegistry& registry, const FileTree::Watch& watch) {
    std::vector<Usage> usages(paths.size());
    std::vector<std::string_view> unknown;
    std::vector<std::size_t> places;
    std::vector<platform::EntryMark> marks;
    for (std::size_t index = 0; index < paths.size(); ++index) {
        const platform::EntryMark mark = platform::markOf(std::string(paths[index]));
        const auto known = measured_.find(paths[index]);
        if (known != measured_.end() && known->second.mark == mark) {
            usages[index] = known->second.usage;
        } else {
            unknown.push_back(paths[index]);
            places.push_back(index);
            marks.push_back(mark);
        }
    }
    const std::vector<platform::TreeSums> sums = FileTree::walkAll(unknown, registry, watch);
    for (std::size_t index = 0; index < places.size(); ++index) {
        usages[places[index]] = FileTree::usageOf(sums[index]);
    }
    if (!watch.stop.stop_requested()) {
        remember(unknown, marks, sums);
    }
    return usages;
}

void ScanMemory::remember(const std::vector<std::string_view>& paths,
                          const std::vector<platform::EntryMark>& marks,
                          const std::vector<platform::TreeSums>& sums) {
    for (std::size_t index = 0; index < paths.size(); ++index) {
        if (!sums[index].hasSharedFiles) {
            measured_.insert_or_assign(std::string(paths[index]),
                                       Measured{marks[index], FileTree::usageOf(sums[index])});
        }
    }
}

} // namespace lumo
