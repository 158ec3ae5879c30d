#include "Tests/faults/Ground.h"

#include "Tests/support/Child.h"

#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace tarvo::faults {

using testing::Arguments;
using testing::Child;

namespace {

Ground& ownGround() {
    static Ground made;
    return made;
}

void writeInto(const std::string& path, const std::string& line) {
    std::ofstream(path) << line;
}

std::string because(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

/// Namespaces of our own, as root or as the root of a user namespace. Returns why not.
std::string enterNamespaces() {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (geteuid() == 0 && unshare(CLONE_NEWNS | CLONE_NEWPID) == 0) {
        return {};
    }
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS | CLONE_NEWPID) != 0) {
        return because("no mount namespace");
    }
    writeInto("/proc/self/setgroups", "deny");
    writeInto("/proc/self/uid_map", "0 " + user + " 1");
    writeInto("/proc/self/gid_map", "0 " + group + " 1");
    return {};
}

std::string mountAll() {
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", ownGround().folder.c_str(), "tmpfs", 0, "mode=0755") != 0) {
        return because("no file system can be mounted");
    }
    // Some containers forbid this one; all processes are to be seen then.
    mount("proc", "/proc", "proc", 0, nullptr);
    return {};
}

bool works(const Arguments& words) {
    return Child(words, {"PATH=/usr/bin:/bin"}).wait().exitCode == 0;
}

/// Finds out what may be done and makes it known to those who ask.
void prepare() {
    const Arguments withoutRights{"setpriv", "--securebits", "+noroot,+noroot_locked", "--"};
    Arguments attempt = withoutRights;
    attempt.emplace_back("true");
    if (geteuid() == 0 && works(attempt)) {
        ownGround().asOrdinaryUser = withoutRights;
    }
    if (!works({"strace", "-f", "-qq", "-o", "/dev/null", "-e", "trace=close", "true"})) {
        ownGround().whyNoTracing = "strace is missing or may not trace here";
    }
}

/// The first process of a process namespace; the others end with it.
int runAsFirstProcess(const std::function<int()>& tests) {
    const pid_t first = fork();
    if (first == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        ownGround().whyNoMounts = mountAll();
        prepare();
        const int result = tests();
        std::fflush(nullptr);
        _exit(result);
    }
    int status = 0;
    waitpid(first, &status, 0);
    umount2(ownGround().folder.c_str(), MNT_DETACH);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

} // namespace

int runTests(const std::function<int()>& tests) {
    const bool hasSharedMemory = access("/dev/shm", W_OK) == 0;
    ownGround().folder = std::string(hasSharedMemory ? "/dev/shm" : "/tmp") + "/tarvo-faults-XXXXXX";
    if (mkdtemp(ownGround().folder.data()) == nullptr) {
        std::perror(ownGround().folder.c_str());
        return 1;
    }
    const char* form = std::getenv("TARVO_FAULTS");
    ownGround().isLong = form != nullptr && std::string(form) == "long";
    setenv("TMPDIR", ownGround().folder.c_str(), 1);
    ownGround().whyNoMounts = enterNamespaces();
    int result = 0;
    if (ownGround().whyNoMounts.empty()) {
        result = runAsFirstProcess(tests);
    } else {
        prepare();
        result = tests();
    }
    std::error_code ignored;
    std::filesystem::remove(ownGround().folder, ignored);
    return result;
}

const Ground& ground() {
    return ownGround();
}

} // namespace tarvo::faults
