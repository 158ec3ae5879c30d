#include "Fuzz/Check.h"
#include "LumoCore/Basics/Date.h"
#include "TarvoModel/Exploring/UsageExport.h"

// What was read of an export can be written, and what was written is read as the same.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using lumo::NamedTree;
    const auto tree = tarvo::treeFromExport(text(data, size), NamedTree::Lengths::kept);
    if (tree) {
        std::string written;
        tarvo::exportUsage(**tree, "1", lumo::Date(), [&](std::string_view piece) {
            written += piece;
            return true;
        });
        check(written.find('\x1B') == std::string::npos);
        const auto again = tarvo::treeFromExport(written, NamedTree::Lengths::kept);
        check(again.has_value());
        check((*again)->entry(NamedTree::root).sums.items == (*tree)->entry(NamedTree::root).sums.items);
    }
    return 0;
}
