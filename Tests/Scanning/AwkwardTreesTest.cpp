#include "LumoCore/Scanning/FileTree.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Folder.h"
#include "Tests/support/AwkwardTree.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>
#include <unistd.h>

using namespace lumo;
using namespace tarvo::testing;

namespace {

Usage measure(const std::string& path) {
    HardLinkRegistry registry;
    return FileTree::measure(path, registry);
}

/// How many there are of "fd" or "task", descriptors or threads, of this process.
std::size_t countOf(const std::string& kind) {
    return lumo::platform::namesIn("/proc/self/" + kind).size();
}

} // namespace

TEST(AwkwardTrees, ATreeDeeperThanPathsAndDescriptorsReachIsMeasuredWhole) {
    for (const auto& [levels, hasSiblings, descriptors] :
         {std::tuple{20000, false, 1024}, {3000, true, 64}, {3000, true, 16}}) {
        const TempHome home;
        close(makeChain(home.path(), levels, hasSiblings));
        const DescriptorLimit limit(static_cast<rlim_t>(descriptors));
        const Usage usage = measure(home.path());
        EXPECT_EQ(usage.fileCount, levels) << descriptors;
        EXPECT_EQ(usage.unreadableCount, 0) << descriptors;
        EXPECT_EQ(usage.allocatedBytes,
                  (levels * (hasSiblings ? 3 : 1) + 1) * allocatedBytes(home.path("d")) +
                      levels * allocatedBytes(home.path("f")));
    }
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
    const std::size_t descriptors = countOf("fd");
    for (int round = 0; round < 60; ++round) {
        const Usage usage = measure(home.path());
        EXPECT_GE(usage.allocatedBytes, 10000);
        EXPECT_LE(usage.fileCount, 601);
    }
    EXPECT_EQ(countOf("fd"), descriptors);
    isOver = true;
    mover.join();
}

TEST(AwkwardTrees, NeitherAnotherVolumeNorAMountedPartOfThisOneIsEntered) {
    const TempHome home;
    home.file("inside/file", 10000);
    home.folders({"mounted", "bound", "other/loop"});
    // The device tells nothing of a folder of the same disk; it was counted twice, and refused by the
    // remover.
    home.file("other/shown/project/package.json");
    const Outcome outcome = withMounts(
        {{"", home.path("mounted")},
         {home.path("other/shown"), home.path("bound")},
         {home.path("other"), home.path("other/loop")}},
        [&] {
            home.file("mounted/elsewhere", 50000);
            const std::string path = home.path();
            const platform::TreeRequest request{path};
            HardLinkRegistry registry;
            const auto context = FileTree::contextOf(registry, {});
            const auto fast = platform::walkTrees({&request, 1}, context).front();
            const auto portable = platform::walkTreesPortably({&request, 1}, context).front();
            EXPECT_EQ(fast.allocatedBytes, portable.allocatedBytes);
            for (const auto& sums : {fast, portable}) {
                EXPECT_EQ(sums.fileCount, 2);
                EXPECT_EQ(sums.unreadableCount, 0);
            }
            EXPECT_EQ(Scanner::discoverProjects(path, 5), std::vector{home.path("other/shown/project")});
            return !testing::Test::HasFailure();
        });
    expectHeld(outcome);
}

TEST(AwkwardTrees, AStopEndsTheWalkWithinMomentsAndLeavesNothingBehind) {
    const TempHome home;
    for (int index = 0; index < 400; ++index) {
        home.file("a/" + std::to_string(index % 20) + "/" + std::to_string(index) + "/file");
    }
    std::thread([] {}).join(); // A sanitizer starts one of its own beside the first.
    const std::size_t threads = countOf("task");
    const std::size_t descriptors = countOf("fd");
    for (int round = 0; round < 50; ++round) {
        HardLinkRegistry registry;
        platform::WalkProgress progress;
        std::stop_source stop;
        std::thread measuring([&] {
            const std::vector<std::string_view> again(2000, home.path());
            FileTree::measureAll(again, registry, {&progress, stop.get_token()});
        });
        while (progress.entries < round * 20) {
            std::this_thread::yield();
        }
        stop.request_stop();
        measuring.join();
        EXPECT_LT(progress.entries, 800'000) << "half of what is there";
    }
    // The kernel lists a thread for a moment after it was waited for.
    for (int moment = 0; moment < 1000 && countOf("task") != threads; ++moment) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_EQ(countOf("task"), threads);
    EXPECT_EQ(countOf("fd"), descriptors);
}
