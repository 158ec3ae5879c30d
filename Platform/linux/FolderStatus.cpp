#include "Platform/FolderStatus.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cerrno>
#include <string>

namespace lumo::platform {

SystemResult<FolderStatus> statusOf(int folder) {
    struct statx status = {};
    if (statx(folder, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_MNT_ID, &status) != 0) {
        return failed(errno);
    }
    // Kernels before 5.8 do not know the mount and leave its bit out.
    const bool isMountKnown = (status.stx_mask & STATX_MNT_ID) != 0;
    return FolderStatus{.device = makedev(status.stx_dev_major, status.stx_dev_minor),
                        .inode = status.stx_ino,
                        .mount = isMountKnown ? status.stx_mnt_id : 0,
                        .owner = status.stx_uid,
                        .mode = status.stx_mode & 07777U};
}

SystemResult<Descriptor> openWithoutRights(int parent, const char* name) {
    Descriptor folder(openat(parent, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder.isOpen()) {
        return failed(errno);
    }
    return folder;
}

SystemResult<void> addOwnerRights(int folder, const FolderStatus& status) {
    // fchmod refuses a descriptor that was opened without rights; its entry in /proc leads to the very folder
    // that is open, whatever its name stands for by now.
    const std::string itself = "/proc/self/fd/" + std::to_string(folder);
    if (chmod(itself.c_str(), status.mode | S_IRWXU) != 0) {
        return failed(errno);
    }
    return {};
}

} // namespace lumo::platform
