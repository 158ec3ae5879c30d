#pragma once

#include "LumoCore/History/DiskSnapshot.h"
#include "Platform/SystemError.h"

#include <cstddef>
#include <string>
#include <vector>

namespace lumo {

/// The snapshots that are kept for one home folder, in one file that is replaced whole. A file that is no
/// list counts as empty; of a list, what is no snapshot is passed over, so that one damaged snapshot costs
/// itself alone.
class SnapshotStore final {
  public:
    /// Reads and writes files of that size at most.
    explicit SnapshotStore(const std::string& home, std::size_t mostBytes = mostJsonBytes);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// The snapshots in their order, oldest first; none when there is no file. Fails when it is there and
    /// cannot be read: it may hold a history all the same.
    [[nodiscard]] platform::SystemResult<std::vector<DiskSnapshot>> read() const;

    /// The same, with no history where it cannot be read.
    [[nodiscard]] std::vector<DiskSnapshot> load() const;

    /// Adds a snapshot at the end and keeps that many of the last ones, or fewer: what is written is never
    /// too large to be read again. Of a snapshot that is very large itself the smallest items are left out. A
    /// file that cannot be read is not replaced, but for one that is too large to be ours; whatever fails,
    /// the file holds the old list or the new one, whole. The caller holds the home folder's lock: of two
    /// snapshots that are added at once, one would be lost.
    [[nodiscard]] platform::SystemResult<void> append(const DiskSnapshot& snapshot, std::size_t keep) const;

  private:
    std::string path_;
    std::size_t mostBytes_;
};

} // namespace lumo
