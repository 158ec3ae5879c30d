#include "LumoCore/Scanning/FileTree.h"
#include "LumoCore/Scanning/NamedTree.h"

#include <cstdio>
#include <string_view>

namespace {

lumo::Usage measured(std::string_view way, const char* path) {
    if (way == "--breakdown") {
        return lumo::FileTree::breakdown(path).usage;
    }
    if (way == "--names") {
        lumo::NamedTree tree(path);
        const std::int64_t unreadable = lumo::measureInto(tree, path, lumo::NamedTree::root, nullptr, {});
        const lumo::EntrySums sums = tree.entry(lumo::NamedTree::root).sums;
        return {.allocatedBytes = sums.bytes, .fileCount = sums.items, .unreadableCount = unreadable};
    }
    const lumo::platform::TreeRequest request{.path = path};
    lumo::HardLinkRegistry registry;
    const lumo::platform::WalkContext context = lumo::FileTree::contextOf(registry, {});
    const auto sums = way == "--portable" ? lumo::platform::walkTreesPortably({&request, 1}, context)
                                          : lumo::platform::walkTrees({&request, 1}, context);
    return lumo::FileTree::usageOf(sums.front());
}

} // namespace

// Our single measurement of a whole tree, without anything around it, for the benchmark. With --portable as
// the first argument, by the portable walk; with --breakdown, by children and extensions as well; with
// --names, into a tree of all entries, which are then what is counted.
int main(int count, char** arguments) {
    if (count < 2) {
        std::fputs("usage: measure-tree [--portable | --breakdown | --names] DIR\n", stderr);
        return 2;
    }
    const lumo::Usage usage = measured(count > 2 ? arguments[1] : "", arguments[count - 1]);
    std::printf("%lld bytes, %lld apparent, %lld files, %lld unreadable\n",
                static_cast<long long>(usage.allocatedBytes), static_cast<long long>(usage.apparentBytes),
                static_cast<long long>(usage.fileCount), static_cast<long long>(usage.unreadableCount));
    return 0;
}
