#include "Tests/faults/Ground.h"

#include "Tests/faults/Child.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace tarvo::faults::ground {

namespace {

struct Ground {
    std::string folder;
    std::string whyNoMounts;
    std::string whyNoTracing;
    std::vector<std::string> asOrdinaryUser;
};

Ground& ground() {
    static Ground made;
    return made;
}

void writeInto(const std::string& path, const std::string& line) {
    std::ofstream(path) << line;
}

/// Mounts of our own, as root or as the root of a user namespace. Returns why not.
std::string enterPrivateMounts() {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (geteuid() != 0 || unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return std::string("no mount namespace: ") + std::strerror(errno);
        }
        writeInto("/proc/self/setgroups", "deny");
        writeInto("/proc/self/uid_map", "0 " + user + " 1");
        writeInto("/proc/self/gid_map", "0 " + group + " 1");
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", ground().folder.c_str(), "tmpfs", 0, "mode=0755") != 0) {
        return std::string("no file system can be mounted: ") + std::strerror(errno);
    }
    return {};
}

bool works(const std::vector<std::string>& words) {
    return Child(words, {"PATH=/usr/bin:/bin"}).wait().exitCode == 0;
}

} // namespace

void prepare() {
    const bool hasSharedMemory = access("/dev/shm", W_OK) == 0;
    std::string shape = std::string(hasSharedMemory ? "/dev/shm" : "/tmp") + "/tarvo-faults-XXXXXX";
    if (mkdtemp(shape.data()) == nullptr) {
        std::perror(shape.c_str());
        std::abort();
    }
    ground().folder = shape;
    ground().whyNoMounts = enterPrivateMounts();
    setenv("TMPDIR", shape.c_str(), 1);
    const std::vector<std::string> withoutRights{"setpriv", "--securebits", "+noroot,+noroot_locked", "--"};
    std::vector<std::string> attempt = withoutRights;
    attempt.emplace_back("true");
    if (geteuid() == 0 && works(attempt)) {
        ground().asOrdinaryUser = withoutRights;
    }
    if (!works({"strace", "-f", "-qq", "-o", "/dev/null", "-e", "trace=close", "true"})) {
        ground().whyNoTracing = "strace is missing or may not trace here";
    }
}

void leave() {
    umount2(ground().folder.c_str(), MNT_DETACH);
    std::error_code ignored;
    std::filesystem::remove(ground().folder, ignored);
}

const std::string& whyNoMounts() {
    return ground().whyNoMounts;
}

const std::string& whyNoTracing() {
    return ground().whyNoTracing;
}

const std::vector<std::string>& asOrdinaryUser() {
    return ground().asOrdinaryUser;
}

bool isLong() {
    const char* form = std::getenv("TARVO_FAULTS");
    return form != nullptr && std::string(form) == "long";
}

} // namespace tarvo::faults::ground
