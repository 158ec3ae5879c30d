#pragma once

#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// What the first of two passes over a home has measured, for the second, which begins at once when the first
/// has ended. It outlasts the two no longer, and is used by one at a time.
///
/// What it gives is what the second pass would measure: files with several names are kept apart from the rest
/// of a tree, and each pass decides anew where they are charged; trees with clones, or with more names than
/// are kept, are measured again. The second pass locates everything anew, so what is gone or new is so for
/// it, too; a path at which something else stands now, or whose own status has changed since, is measured
/// again. What changed meanwhile deeper in a tree is seen by the next scan, as if it had happened after this
/// one.
class ScanMemory final {
  public:
    ScanMemory() = default;
    ScanMemory(const ScanMemory&) = delete;
    ScanMemory& operator=(const ScanMemory&) = delete;

    /// What `FileTree::measureAll` gives, without measuring again what can be given from memory.
    std::vector<Usage> measureAll(const std::vector<std::string_view>& paths, HardLinkRegistry& registry,
                                  const FileTree::Watch& watch);

  private:
    struct Measured {
        platform::EntryMark mark;
        platform::MeasuredTree tree;
    };

    std::map<std::string, Measured, std::less<>> measured_;
};

} // namespace lumo
