#pragma once

#include "Platform/Place.h"
#include "Platform/SystemError.h"

#include <span>

namespace lumo::platform {

/// Removes what stands at the place and everything in it, for good. Nothing there is success, also when
/// another program takes things away meanwhile.
///
/// Everything is reached through open folders, one name at a time: a link is removed and its target left
/// alone, whatever is swapped while this runs. A folder on another mount than the place's folder is never
/// entered; a mount point stays as it is and fails with EBUSY. Depth and width have no limit: at most 64
/// descriptors are open, and memory grows with the depth alone.
///
/// A failure stops nothing: the rest of the tree is removed all the same, and the first reason is returned.
/// Before that, unless only mounts were in the way, a second try gives folders of the current user at and
/// below the place the owner's rights that they lack. What could not be removed stays, with those rights.
/// It ends at once, with ECANCELED, at one of the folders to be spared, wherever and however it is reached.
/// ESTALE means that a folder was moved away while something in it was being removed; the try ended there.
SystemResult<void> removeTree(const Place& place, std::span<const FolderIdentity> spared = {});

/// Removes everything in the folder that stands at the place, in the same way, and leaves the folder. A link
/// there has no contents of its own and fails with ELOOP; what is no folder has none and is a success.
SystemResult<void> removeContents(const Place& place, std::span<const FolderIdentity> spared = {});

} // namespace lumo::platform
