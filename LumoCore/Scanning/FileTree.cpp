#include "LumoCore/Scanning/FileTree.h"

namespace lumo::FileTree {

Usage measure(const std::string& path, HardLinkRegistry& registry, const Watch& watch) {
    return measureAll({path}, registry, watch).front();
}

std::vector<Usage> measureAll(const std::vector<std::string_view>& paths, HardLinkRegistry& registry,
                              const Watch& watch) {
    std::vector<platform::TreeRequest> requests;
    requests.reserve(paths.size());
    for (const std::string_view path : paths) {
        requests.push_back({path});
    }
    std::vector<Usage> usages;
    usages.reserve(paths.size());
    for (const platform::TreeSums& sums : platform::walkTrees(requests, contextOf(registry, watch))) {
        usages.push_back(usageOf(sums));
    }
    return usages;
}

platform::WalkContext contextOf(HardLinkRegistry& registry, const Watch& watch) {
    using platform::FileIdentity;
    return {.claimLink = [&](FileIdentity file) { return registry.claimLink({file.device, file.object}); },
            .claimClone =
                [&](FileIdentity family) { return registry.claimClone({family.device, family.object}); },
            .progress = watch.progress,
            .stop = watch.stop};
}

Usage usageOf(const platform::TreeSums& sums) {
    return {.allocatedBytes = sums.allocatedBytes,
            .apparentBytes = sums.apparentBytes,
            .fileCount = sums.fileCount,
            .unreadableCount = sums.unreadableCount,
            .lastModified = sums.lastModified};
}

} // namespace lumo::FileTree
