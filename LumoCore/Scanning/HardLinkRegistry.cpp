#include "LumoCore/Scanning/HardLinkRegistry.h"

namespace lumo {

bool HardLinkRegistry::claimLink(FileID file) {
    const std::lock_guard<std::mutex> lock(seenMutex_);
    return seen_.insert(file).second;
}

bool HardLinkRegistry::claimClone(FileID family) {
    const std::lock_guard<std::mutex> lock(clonesMutex_);
    return clones_.insert(family).second;
}

} // namespace lumo
