#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <unordered_set>

namespace lumo {

/// Identifies what several names may share on one volume: an inode for hard links, a clone identifier for
/// clones.
struct FileID {
    std::int32_t device = 0;
    std::uint64_t inode = 0;

    friend bool operator==(const FileID&, const FileID&) = default;
};

} // namespace lumo

template <>
struct std::hash<lumo::FileID> {
    std::size_t operator()(const lumo::FileID& file) const noexcept {
        // Inode numbers are dense; the constant is 2^64 divided by the golden ratio.
        constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;
        return (file.inode ^ (static_cast<std::uint64_t>(static_cast<std::uint32_t>(file.device)) << 32)) *
               spread;
    }
};

namespace lumo {

/// Files that one scan has already counted, shared by all its measurements so that each is charged once. It
/// holds nothing for files that only one name can reach. All operations may be called from any thread.
class HardLinkRegistry final {
  public:
    HardLinkRegistry() = default;
    HardLinkRegistry(const HardLinkRegistry&) = delete;
    HardLinkRegistry& operator=(const HardLinkRegistry&) = delete;

    /// True the first time that a file with several hard links is reached.
    bool claimLink(FileID file);

    /// True the first time that a member of a clone family is reached.
    bool claimClone(FileID family);

  private:
    std::mutex seenMutex_;
    std::unordered_set<FileID> seen_;
    std::mutex clonesMutex_;
    std::unordered_set<FileID> clones_;
};

} // namespace lumo
