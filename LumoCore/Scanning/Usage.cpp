#include "LumoCore/Scanning/Usage.h"

#include "LumoCore/Basics/CheckedSum.h"

#include <algorithm>

namespace lumo {

Usage& Usage::operator+=(const Usage& other) {
    allocatedBytes = checkedSum(allocatedBytes, other.allocatedBytes);
    apparentBytes = saturatedSum(apparentBytes, other.apparentBytes);
    fileCount = checkedSum(fileCount, other.fileCount);
    unreadableCount = checkedSum(unreadableCount, other.unreadableCount);
    lastModified = std::max(lastModified, other.lastModified); // An absent date comes before every other.
    return *this;
}

} // namespace lumo
