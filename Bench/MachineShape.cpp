#include "MachineShape.h"

#include <array>
#include <cstdint>
#include <fmt/format.h>
#include <fstream>
#include <sys/utsname.h>
#include <sys/vfs.h>
#include <unistd.h>
#include <utility>

namespace tarvo::bench {

namespace {

double memoryGibibytes() {
    std::ifstream file("/proc/meminfo");
    std::string key;
    std::string unit;
    for (std::int64_t kibibytes = 0; file >> key >> kibibytes;) {
        if (key == "MemTotal:") {
            return static_cast<double>(kibibytes) / (1024 * 1024);
        }
        std::getline(file, unit);
    }
    return 0;
}

/// The numbers are those of the kernel's linux/magic.h.
std::string fileSystemOf(const std::string& folder) {
    constexpr std::array<std::pair<std::uint32_t, const char*>, 9> names{{{0x0000ef53, "ext4"},
                                                                          {0x01021994, "tmpfs"},
                                                                          {0x9123683e, "btrfs"},
                                                                          {0x58465342, "xfs"},
                                                                          {0x794c7630, "overlayfs"},
                                                                          {0x2fc12fc1, "zfs"},
                                                                          {0xf2f52010, "f2fs"},
                                                                          {0x00006969, "nfs"},
                                                                          {0x65735546, "fuse"}}};
    struct statfs status{};
    if (::statfs(folder.c_str(), &status) != 0) {
        return "unknown";
    }
    const auto magic = static_cast<std::uint32_t>(status.f_type);
    for (const auto& [number, name] : names) {
        if (number == magic) {
            return name;
        }
    }
    return fmt::format("{:#x}", magic);
}

} // namespace

MachineShape machineShapeAt(const std::string& folder) {
    utsname system{};
    ::uname(&system);
    return {
        .cores = ::sysconf(_SC_NPROCESSORS_ONLN),
        .memoryGibibytes = memoryGibibytes(),
        .kernel = fmt::format("{} {}", system.sysname, system.release),
        .fileSystem = fileSystemOf(folder),
    };
}

} // namespace tarvo::bench
