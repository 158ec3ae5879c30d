#pragma once

#include "Platform/Folder.h"

#include <sys/stat.h>

namespace lumo::platform {

/// What the mode of a status says of the kind.
inline EntryKind kindOfMode(mode_t mode) {
    if (S_ISDIR(mode)) {
        return EntryKind::folder;
    }
    if (S_ISREG(mode)) {
        return EntryKind::file;
    }
    return S_ISLNK(mode) ? EntryKind::link : EntryKind::other;
}

} // namespace lumo::platform
