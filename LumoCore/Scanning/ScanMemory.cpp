#include "LumoCore/Scanning/ScanMemory.h"

#include <utility>

namespace lumo {

std::vector<Usage> ScanMemory::measureAll(const std::vector<std::string_view>& paths,
                                          HardLinkRegistry& registry, const FileTree::Watch& watch) {
    std::vector<Measured> met(paths.size());
    std::vector<platform::TreeRequest> requests(paths.size());
    for (std::size_t index = 0; index < paths.size(); ++index) {
        met[index].mark = platform::markOf(std::string(paths[index]));
        requests[index].path = paths[index];
        const auto known = measured_.find(paths[index]);
        if (known != measured_.end() && known->second.mark == met[index].mark) {
            requests[index].known = &known->second.tree;
        } else {
            requests[index].kept = &met[index].tree;
        }
    }
    std::vector<Usage> usages = FileTree::measureAll(requests, registry, watch);
    if (!watch.stop.stop_requested()) { // What it has left in the middle is no measure.
        for (std::size_t index = 0; index < paths.size(); ++index) {
            if (requests[index].kept != nullptr && met[index].tree.isWhole) {
                measured_.insert_or_assign(std::string(paths[index]), std::move(met[index]));
            }
        }
    }
    return usages;
}

} // namespace lumo
