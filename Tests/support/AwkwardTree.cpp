#include "Tests/support/AwkwardTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace tarvo::testing {

int makeChain(const std::string& root, int levels, bool hasSiblings) {
    int current = open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < levels; ++level) {
        EXPECT_EQ(mkdirat(current, "d", 0755), 0);
        if (hasSiblings) {
            EXPECT_EQ(mkdirat(current, "e", 0755), 0);
            EXPECT_EQ(mkdirat(current, "a", 0755), 0);
        }
        const int file = openat(current, "f", O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
        EXPECT_EQ(write(file, "x", 1), 1);
        close(file);
        const int next = openat(current, "d", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        close(current);
        current = next;
    }
    return current;
}

Outcome withMounts(const std::vector<Mount>& mounts, const std::function<bool()>& work) {
    return inChild([&] {
        const bool canMount =
            unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
            std::ranges::all_of(mounts, [](const Mount& one) {
                const bool isEmpty = one.source.empty();
                return mount(isEmpty ? "none" : one.source.c_str(), one.target.c_str(),
                             isEmpty ? "tmpfs" : nullptr, isEmpty ? 0 : MS_BIND, nullptr) == 0;
            });
        if (!canMount) {
            return Outcome::notPossible;
        }
        return work() ? Outcome::held : Outcome::failed;
    });
}

} // namespace tarvo::testing
