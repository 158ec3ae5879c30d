#include "LumoCore/Scanning/FileTree.h"

#include <cstdio>
#include <string_view>

// Our single measurement of a whole tree, without anything around it, for the benchmark. With --portable as
// the first argument, by the portable walk.
int main(int count, char** arguments) {
    const bool isPortable = count > 2 && std::string_view(arguments[1]) == "--portable";
    if (count < 2) {
        std::fputs("usage: measure-tree [--portable] DIR\n", stderr);
        return 2;
    }
    const lumo::platform::TreeRequest request{.path = arguments[count - 1]};
    lumo::HardLinkRegistry registry;
    const lumo::platform::WalkContext context = lumo::FileTree::contextOf(registry, {});
    const auto sums = isPortable ? lumo::platform::walkTreesPortably({&request, 1}, context)
                                 : lumo::platform::walkTrees({&request, 1}, context);
    const lumo::Usage usage = lumo::FileTree::usageOf(sums.front());
    std::printf("%lld bytes, %lld apparent, %lld files, %lld unreadable\n",
                static_cast<long long>(usage.allocatedBytes), static_cast<long long>(usage.apparentBytes),
                static_cast<long long>(usage.fileCount), static_cast<long long>(usage.unreadableCount));
    return 0;
}
