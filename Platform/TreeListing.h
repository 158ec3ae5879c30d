#pragma once

#include "Platform/Folder.h"
#include "Platform/SystemError.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// Trees entry by entry, for whoever needs each name and not only the sums.
namespace lumo::platform {

/// One entry of a tree.
struct ListedEntry {
    std::string path; ///< Relative to the folder that holds the root, so it begins with the root's own name.
    EntryKind kind = EntryKind::other;
    std::int64_t bytes = 0;             ///< The length of a regular file; 0 for everything else.
    std::int64_t modified = 0;          ///< In nanoseconds since 1970.
    std::optional<SystemError> problem; ///< Why it cannot be read; EXDEV for another volume.

    friend bool operator==(const ListedEntry&, const ListedEntry&) = default;
};

/// Hands the root and everything below it to the visitor, folders before what they hold and otherwise in the
/// order of the disk, until one answers false. Links are not followed and other volumes not entered. Paths
/// beyond the system's length are entries with a problem. Fails when the walk could not begin or go on.
SystemResult<void> visitTree(const std::string& root,
                             const std::function<bool(const ListedEntry& entry)>& visitor);

} // namespace lumo::platform
