#include "Platform/MountedVolumes.h"
#include "Platform/linux/MountTable.h"

#include <gtest/gtest.h>

using lumo::platform::disksIn;
using lumo::platform::MountedDisk;

TEST(MountTable, ListsWhatAPersonWouldCallADiskOnce) {
    const std::string table = "21 1 8:2 /hosts /etc/hosts rw - ext4 /dev/sda2 rw\n"
                              "22 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw\n"
                              "23 22 0:5 / /dev rw - devtmpfs udev rw\n"
                              "24 22 0:21 / /proc rw shared:12 master:3 - proc proc rw\n"
                              "25 22 0:30 / /run rw - tmpfs tmpfs rw\n"
                              "26 22 7:1 / /snap/core/1 ro - squashfs /dev/loop1 ro\n"
                              "27 22 0:50 / /var/lib/merged rw - overlay overlay rw\n"
                              "28 22 0:44 / /run/user/1000/doc rw - fuse.portal portal rw\n"
                              "29 22 0:45 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
                              "30 22 8:17 / /media/ana/My\\040stick\\134a rw shared:9 - vfat /dev/sdb1 rw\n"
                              "31 22 8:17 /photos /home/ana/photos rw - vfat /dev/sdb1 rw\n"
                              "32 22 0:61 / /mnt/nas rw - nfs4 box:/all\\040things rw,addr=10.0.0.2\n"
                              "33 22 0:62 / /mnt/auto rw - autofs systemd-1 rw\n"
                              "34 22 8:2 /home /mnt/again rw - ext4 /dev/sda2 rw\n"
                              "35 22 8:33 / /run/media/ana/Win rw - fuseblk /dev/sdc1 rw\n"
                              "36 22 8:34\n"
                              "37 22 8:35 / /mnt/cut rw - ext4\n";
    EXPECT_EQ(disksIn(table), (std::vector<MountedDisk>{{"/", "/dev/sda2"},
                                                        {"/media/ana/My stick\\a", "/dev/sdb1"},
                                                        {"/mnt/nas", "box:/all things"},
                                                        {"/run/media/ana/Win", "/dev/sdc1"}}));
}

TEST(MountTable, TakesTheStartUpDiskForItselfWhateverElseShowsIt) {
    // One file system with several volumes in it: the whole of it is mounted beside the one that was started.
    const std::string table = "22 1 0:30 /@ / rw - btrfs /dev/sda2 rw,subvol=/@\n"
                              "23 22 0:30 /@home /home rw - btrfs /dev/sda2 rw,subvol=/@home\n"
                              "24 22 0:30 / /mnt/all rw - btrfs /dev/sda2 rw,subvol=/";
    EXPECT_EQ(disksIn(table), (std::vector<MountedDisk>{{"/", "/dev/sda2"}}));
}

TEST(MountedVolumes, HaveANameAndASize) {
    for (const auto& volume : lumo::platform::mountedVolumes()) {
        EXPECT_FALSE(volume.name.empty()) << volume.path;
        EXPECT_TRUE(volume.free >= 0 && volume.total >= volume.free) << volume.path;
    }
}
