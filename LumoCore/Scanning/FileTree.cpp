#include "LumoCore/Scanning/FileTree.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace lumo::FileTree {

namespace {

/// The extensions with all their letters in lower case, which may make several of the walk's one.
std::vector<NamedSize> namedExtensions(const platform::TreeBreakdown& tree, Language language) {
    std::map<std::string, std::int64_t> sums;
    for (const platform::ExtensionSum& sum : tree.extensions) {
        std::int64_t& bytes = sums[lowerCased(sum.extension)];
        bytes = checkedSum(bytes, sum.allocatedBytes);
    }
    std::vector<NamedSize> named;
    for (const auto& [extension, bytes] : sums) {
        named.push_back(
            {extension.empty() ? Words{"sin extensión", "no extension"}.in(language) : extension, bytes});
    }
    sortLargestFirst(named, &NamedSize::bytes);
    return named;
}

std::vector<NamedSize> extensionsOf(const platform::TreeBreakdown& tree, Language language) {
    std::vector<NamedSize> named = namedExtensions(tree, language);
    std::int64_t others = tree.otherExtensionsBytes;
    while (named.size() > mostListed) {
        others = checkedSum(others, named.back().bytes);
        named.pop_back();
    }
    if (others > 0) {
        named.push_back({Words{"otras extensiones", "other extensions"}.in(language), others});
        sortLargestFirst(named, &NamedSize::bytes);
    }
    return named;
}

} // namespace

Usage measure(const std::string& path, HardLinkRegistry& registry, const Watch& watch) {
    return measureAll({path}, registry, watch).front();
}

std::vector<Usage> measureAll(const std::vector<std::string_view>& paths, HardLinkRegistry& registry,
                              const Watch& watch) {
    std::vector<platform::TreeRequest> requests;
    requests.reserve(paths.size());
    for (const std::string_view path : paths) {
        requests.push_back({.path = path});
    }
    return measureAll(requests, registry, watch);
}

std::vector<Usage> measureAll(std::span<const platform::TreeRequest> requests, HardLinkRegistry& registry,
                              const Watch& watch) {
    std::vector<Usage> usages;
    usages.reserve(requests.size());
    std::ranges::transform(platform::walkTrees(requests, contextOf(registry, watch)),
                           std::back_inserter(usages), usageOf);
    return usages;
}

Breakdown breakdown(const std::string& path, const Watch& watch, Language language) {
    HardLinkRegistry registry;
    return breakdownOf(platform::breakDownTree({path}, {.mostParts = mostListed}, contextOf(registry, watch)),
                       language);
}

Breakdown breakdownOf(const platform::TreeBreakdown& tree, Language language) {
    Breakdown breakdown{
        .usage = usageOf(tree.sums), .children = {}, .extensions = extensionsOf(tree, language)};
    breakdown.children.reserve(tree.parts.largest.size());
    for (const platform::TreePart& part : tree.parts.largest) {
        breakdown.children.push_back({part.name, part.allocatedBytes, part.isFolder});
    }
    return breakdown;
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
