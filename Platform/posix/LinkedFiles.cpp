#include "Platform/LinkedFiles.h"

#include "LumoCore/Basics/CheckedSum.h"

#include <algorithm>

namespace lumo::platform {

std::size_t HashOfIdentity::operator()(const FileIdentity& file) const noexcept {
    // Inode numbers are dense; the constant is 2^64 divided by the golden ratio.
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;
    const auto device = static_cast<std::uint64_t>(static_cast<std::uint32_t>(file.device));
    return (file.object ^ (device << 32)) * spread;
}

bool LinkedFiles::meet(const LinkedFile& file, std::size_t request) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto [met, isFirst] = files_.try_emplace(file.identity);
    File& known = met->second;
    if (isFirst) {
        known = {.request = request,
                 .allocatedBytes = file.allocatedBytes,
                 .apparentBytes = file.apparentBytes,
                 .modified = file.modified};
    }
    known.request = std::min(known.request, request);
    return isFirst;
}

void LinkedFiles::waive(const FileIdentity& identity) {
    const std::lock_guard<std::mutex> lock(mutex_);
    files_[identity].isWaived = true;
}

void LinkedFiles::settle(std::vector<TreeSums>& sums, const WalkContext& context,
                         const Settled& settled) const {
    for (const auto& [identity, file] : files_) {
        const bool isCharged = context.claimLink(identity) && !file.isWaived;
        if (isCharged) {
            TreeSums& tree = sums[file.request];
            tree.allocatedBytes = checkedSum(tree.allocatedBytes, file.allocatedBytes);
            tree.apparentBytes = saturatedSum(tree.apparentBytes, file.apparentBytes);
            ++tree.fileCount;
            tree.lastModified = std::max(tree.lastModified, std::optional(file.modified));
        }
        if (isCharged && context.progress != nullptr) {
            context.progress->bytes.fetch_add(file.allocatedBytes, std::memory_order_relaxed);
        }
        if (settled) {
            settled(identity, isCharged ? std::optional(file.allocatedBytes) : std::nullopt);
        }
    }
}

} // namespace lumo::platform
