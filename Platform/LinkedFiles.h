#pragma once

#include "Platform/TreeWalk.h"

#include <cstddef>
#include <functional>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace lumo::platform {

struct HashOfIdentity {
    std::size_t operator()(const FileIdentity& file) const noexcept;
};

/// The files with several names that one walk has met. Threads reach the names in any order, so it is settled
/// at the end who is charged with a file: of the requests that reach it the first. Nothing is kept of a file
/// but its numbers. The meetings may come from several threads at once.
class LinkedFiles final {
  public:
    /// Notes that the request has reached a name of the file. True for the first name of it.
    bool meet(const LinkedFile& file, std::size_t request);

    /// Nobody will be charged with the file, of which a clone has been counted.
    void waive(const FileIdentity& identity);

    /// What is told of each file in the end: its bytes when this walk is charged with it, otherwise nothing.
    using Settled = std::function<void(FileIdentity file, std::optional<std::int64_t> bytes)>;

    /// Adds every file to the sums of its request, unless an earlier walk has claimed it.
    void settle(std::vector<TreeSums>& sums, const WalkContext& context, const Settled& settled = {}) const;

  private:
    struct File {
        std::size_t request = 0;
        std::int64_t allocatedBytes = 0;
        std::int64_t apparentBytes = 0;
        Timestamp modified = {};
        bool isWaived = false;
    };

    std::mutex mutex_; ///< Guards the files while they are met.
    std::unordered_map<FileIdentity, File, HashOfIdentity> files_;
};

} // namespace lumo::platform
