#include "Fuzz/Check.h"
#include "Platform/ArchiveEntries.h"

// Whatever calls itself an archive is read within the limit or refused.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t most = 4096;
    std::size_t names = 0;
    const auto counts = [&](std::string_view) {
        ++names;
        return false;
    };
    check(!lumo::platform::entryOfArchiveIn(text(data, size), counts, most));
    std::size_t place = 0;
    const auto isLast = [&](std::string_view) { return ++place == names; };
    const auto last = lumo::platform::entryOfArchiveIn(text(data, size), isLast, most);
    check(!last || last->size() <= most);
    return 0;
}
