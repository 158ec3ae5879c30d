#include "Platform/linux/MountTable.h"

#include "LumoCore/Basics/Path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace lumo::platform {

namespace {

struct Mount {
    std::string device; ///< "major:minor": equal for all views of one file system.
    std::string root;   ///< The part of the file system that is shown.
    MountedDisk disk;
};

std::vector<std::string_view> parts(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) {
            parts.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// Blanks, line feeds and backslashes stand as three octal digits in the table.
std::string unescaped(std::string_view text) {
    const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
    std::string plain;
    while (!text.empty()) {
        if (text.size() >= 4 && text[0] == '\\' && std::ranges::all_of(text.substr(1, 3), isOctal)) {
            plain += static_cast<char>((text[1] - '0') * 64 + (text[2] - '0') * 8 + (text[3] - '0'));
            text.remove_prefix(4);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

/// A file system with a device is a disk unless it is an image that a package runs from. Without a device
/// those are disks that lie on a server, or on the machine that this one is a guest of, and pools of drives.
bool isDisk(std::string_view fileSystem, std::string_view source) {
    static constexpr auto images = std::to_array<std::string_view>({"cramfs", "erofs", "squashfs"});
    static constexpr auto withoutDevice = std::to_array<std::string_view>({"9p",
                                                                           "afs",
                                                                           "ceph",
                                                                           "cifs",
                                                                           "davfs",
                                                                           "fuse.davfs",
                                                                           "fuse.davfs2",
                                                                           "fuse.glusterfs",
                                                                           "fuse.rclone",
                                                                           "fuse.sshfs",
                                                                           "fuse.vmhgfs-fuse",
                                                                           "glusterfs",
                                                                           "ncpfs",
                                                                           "nfs",
                                                                           "nfs4",
                                                                           "prl_fs",
                                                                           "smb3",
                                                                           "smbfs",
                                                                           "vboxsf",
                                                                           "virtiofs",
                                                                           "zfs"});
    if (std::ranges::find(withoutDevice, fileSystem) != withoutDevice.end()) {
        return true;
    }
    // Programs that show something as files open this device, and are no disk themselves.
    return source.starts_with("/dev/") && source != "/dev/fuse" &&
           std::ranges::find(images, fileSystem) == images.end();
}

/// "36 35 98:0 / /mnt/a rw,noatime shared:1 - ext4 /dev/sdb1 rw": the optional fields end with "-".
std::optional<Mount> mountOf(std::string_view line) {
    const std::vector<std::string_view> fields = parts(line, ' ');
    const auto end = std::ranges::find(fields, "-");
    constexpr std::ptrdiff_t before = 6;
    constexpr std::ptrdiff_t after = 3;
    if (end - fields.begin() < before || fields.end() - end < after) {
        return std::nullopt;
    }
    const std::string source = unescaped(end[2]);
    if (!isDisk(end[1], source)) {
        return std::nullopt;
    }
    return Mount{std::string(fields[2]), unescaped(fields[3]), {unescaped(fields[4]), source}};
}

/// Of two views of one file system the start-up disk is the truer one, then the one that shows more.
bool isBetter(const Mount& mount, const Mount& known) {
    if (known.disk.path == "/" || mount.disk.path == "/") {
        return mount.disk.path == "/";
    }
    return mount.root.size() < known.root.size();
}

} // namespace

std::vector<MountedDisk> disksIn(std::string_view table) {
    std::vector<Mount> mounts;
    for (const std::string_view line : parts(table, '\n')) {
        std::optional<Mount> mount = mountOf(line);
        if (!mount) {
            continue;
        }
        const auto known = std::ranges::find(mounts, mount->device, &Mount::device);
        if (known == mounts.end()) {
            mounts.push_back(*std::move(mount));
        } else if (isBetter(*mount, *known)) {
            *known = *std::move(mount);
        }
    }
    std::vector<MountedDisk> disks;
    disks.reserve(mounts.size());
    for (Mount& mount : mounts) {
        disks.push_back(std::move(mount.disk));
    }
    return disks;
}

std::vector<std::string> mountNamesIn(std::string_view table) {
    constexpr std::size_t placeField = 4;
    std::vector<std::string> names;
    for (const std::string_view line : parts(table, '\n')) {
        const std::vector<std::string_view> fields = parts(line, ' ');
        if (fields.size() > placeField) {
            names.emplace_back(fileName(unescaped(fields[placeField])));
        }
    }
    std::ranges::sort(names);
    names.erase(std::ranges::unique(names).begin(), names.end());
    return names;
}

} // namespace lumo::platform
