#include "LumoCore/Scanning/FileTree.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Tests/support/AwkwardTree.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

using lumo::HardLinkRegistry;
using lumo::Usage;
using tarvo::testing::allocatedBytes;
using tarvo::testing::makeChain;
using tarvo::testing::Outcome;
using tarvo::testing::TempHome;

namespace {

Usage measure(const std::string& path) {
    HardLinkRegistry registry;
    return lumo::FileTree::measure(path, registry);
}

std::size_t openDescriptors() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count;
}

std::size_t runningThreads() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
        ++count;
    }
    return count;
}

/// Lowers the limit of descriptors while it lives.
class DescriptorLimit final {
  public:
    explicit DescriptorLimit(rlim_t most) {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit lower{most, before_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &lower);
    }
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &before_); }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

  private:
    rlimit before_ = {};
};

} // namespace

TEST(AwkwardTrees, ATreeDeeperThanAnyPathIsMeasuredWhole) {
    const TempHome home;
    constexpr int levels = 20000;
    close(makeChain(home.path(), levels, false));
    const Usage usage = measure(home.path());
    EXPECT_EQ(usage.fileCount, levels);
    EXPECT_EQ(usage.unreadableCount, 0);
    EXPECT_EQ(usage.allocatedBytes,
              (levels + 1) * allocatedBytes(home.path("d")) + levels * allocatedBytes(home.path("f")));
}

TEST(AwkwardTrees, FoldersThatLostTheirDescriptorAreFoundAgain) {
    const TempHome home;
    constexpr int levels = 3000;
    close(makeChain(home.path(), levels, true));
    for (const rlim_t most : {rlim_t{64}, rlim_t{24}}) {
        const DescriptorLimit limit(most);
        const Usage usage = measure(home.path());
        EXPECT_EQ(usage.fileCount, levels) << most;
        EXPECT_EQ(usage.unreadableCount, 0) << most;
        EXPECT_EQ(usage.allocatedBytes,
                  (3 * levels + 1) * allocatedBytes(home.path("d")) + levels * allocatedBytes(home.path("f")))
            << most;
    }
}

TEST(AwkwardTrees, AFlatFolderOfManyEntriesIsSharedBetweenThreads) {
    const TempHome home;
    constexpr int entries = 30000;
    const int folder = open(home.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int index = 0; index < entries; ++index) {
        const std::string name = "entry-with-a-rather-long-name-" + std::to_string(index);
        if (index % 3 == 0) {
            ASSERT_EQ(mkdirat(folder, name.c_str(), 0755), 0);
        } else {
            close(openat(folder, name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
        }
    }
    close(folder);
    const Usage usage = measure(home.path());
    EXPECT_EQ(usage.fileCount, entries - entries / 3);
    EXPECT_EQ(usage.unreadableCount, 0);
    EXPECT_EQ(usage.allocatedBytes,
              allocatedBytes(home.path()) +
                  entries / 3 * allocatedBytes(home.path("entry-with-a-rather-long-name-0")));
}

TEST(AwkwardTrees, EntriesThatVanishOrChangeKindMeanwhileDoNoHarm) {
    const TempHome home;
    home.file("steady/file", 10000);
    for (int index = 0; index < 300; ++index) {
        home.file("moving/" + std::to_string(index) + "/file", 10);
    }
    std::atomic<bool> isOver = false;
    std::thread mover([&] {
        // Folders become links to the root and come back, so that following one would never end.
        for (int index = 0; !isOver; index = (index + 1) % 300) {
            const std::string path = home.path("moving/" + std::to_string(index));
            const std::string aside = path + "-aside";
            std::filesystem::rename(path, aside);
            std::filesystem::create_directory_symlink("/", path);
            std::filesystem::remove(path);
            std::filesystem::rename(aside, path);
        }
    });
    const std::size_t descriptors = openDescriptors();
    for (int round = 0; round < 60; ++round) {
        const Usage usage = measure(home.path());
        EXPECT_GE(usage.allocatedBytes, 10000);
        EXPECT_LE(usage.fileCount, 601);
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    isOver = true;
    mover.join();
}

TEST(AwkwardTrees, AMountInsideIsNotEntered) {
    const TempHome home;
    home.file("inside/file", 10000);
    home.folder("mounted");
    const Outcome outcome = tarvo::testing::withMounts({{"", home.path("mounted")}}, [&] {
        home.file("mounted/elsewhere", 50000);
        const Usage usage = measure(home.path());
        const auto projects = lumo::Scanner::discoverProjects(home.path(), 5);
        return usage.fileCount == 1 && usage.unreadableCount == 0 && projects.empty();
    });
    if (outcome == Outcome::notPossible) {
        GTEST_SKIP() << "cannot mount here";
    }
    EXPECT_EQ(outcome, Outcome::held);
}

TEST(AwkwardTrees, AStopEndsTheWalkWithinMomentsAndLeavesNothingBehind) {
    const TempHome home;
    for (int index = 0; index < 400; ++index) {
        home.file("a/" + std::to_string(index % 20) + "/" + std::to_string(index) + "/file");
    }
    std::thread([] {}).join(); // A sanitizer starts one of its own beside the first.
    const std::size_t threads = runningThreads();
    const std::size_t descriptors = openDescriptors();
    for (int round = 0; round < 50; ++round) {
        HardLinkRegistry registry;
        lumo::platform::WalkProgress progress;
        std::stop_source stop;
        std::thread measuring([&] {
            const std::vector<std::string_view> again(2000, home.path());
            lumo::FileTree::measureAll(again, registry, {&progress, stop.get_token()});
        });
        while (progress.entries < round * 20) {
            std::this_thread::yield();
        }
        const auto asked = std::chrono::steady_clock::now();
        stop.request_stop();
        measuring.join();
        // Generous enough for a sanitizer on a busy machine; without the stop this takes far longer.
        EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::milliseconds(500));
    }
    EXPECT_EQ(runningThreads(), threads);
    EXPECT_EQ(openDescriptors(), descriptors);
}
