#include "LumoCore/Scanning/FileTree.h"
#include "Platform/AnnotatedMutex.h"
#include "Platform/Folder.h"
#include "Platform/WalkCollector.h"
#include "Tests/support/AwkwardTree.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <unistd.h>

using namespace lumo;
using namespace lumo::platform;
using namespace tarvo::testing;

namespace {

/// Lists all that a walk tells, by whole paths put together from the names alone, and lets a test act at any
/// of them.
class Listing final : public WalkCollection {
  public:
    explicit Listing(std::function<void(const std::string& path)> atEach = {}) : atEach_(std::move(atEach)) {}

    std::unique_ptr<WalkCollector> collector() override;

    [[nodiscard]] bool looksFirst() const override { return accepts != nullptr; }
    void settle(FileIdentity, std::optional<std::int64_t>) override {}

    void tell(const std::string& path) {
        const Locked locked(mutex_);
        paths.push_back(path);
        if (atEach_) {
            atEach_(path);
        }
    }

    std::vector<std::string> paths;
    std::function<bool(std::span<const std::string_view> names)> accepts;

  private:
    const std::function<void(const std::string& path)> atEach_;
    AnnotatedMutex mutex_;
};

struct PathClaim final : FolderClaim {
    explicit PathClaim(std::string claimed) : path(std::move(claimed)) {}
    const std::string path;
};

class ListingCollector final : public WalkCollector {
  public:
    explicit ListingCollector(Listing& listing) : listing_(listing) {}
    ~ListingCollector() override { EXPECT_TRUE(around_.empty()) << "every folder is left again"; }

    void add(const WalkedEntry& entry) override {
        const std::string path = pathOf(entry.name);
        EXPECT_EQ(path, std::string(entry.folder).append(entry.name));
        listing_.tell(path);
    }
    void enter(const EnteredFolder& folder) override {
        const std::string path = pathOf(folder.name);
        around_.push_back(path);
        listing_.tell(path);
    }
    bool accepts(std::span<const std::string_view> names) override { return listing_.accepts(names); }
    void leave() override { around_.pop_back(); }
    void miss(std::string_view name) override {
        listing_.tell("missed " + (name.empty() ? around_.back() : pathOf(name)));
    }
    std::unique_ptr<FolderClaim> share(std::size_t level) override {
        return std::make_unique<PathClaim>(around_.at(level));
    }
    void resume(std::unique_ptr<FolderClaim> claim) override {
        EXPECT_TRUE(around_.empty());
        around_.push_back(static_cast<const PathClaim&>(*claim).path);
    }

  private:
    [[nodiscard]] std::string pathOf(std::string_view name) const {
        return (around_.empty() ? "" : around_.back() + "/").append(name);
    }

    Listing& listing_;
    std::vector<std::string> around_;
};

std::unique_ptr<WalkCollector> Listing::collector() {
    return std::make_unique<ListingCollector>(*this);
}

TreeSums walk(const std::string& path, Listing& listing, const std::stop_token& stop = {},
              decltype(walkTrees)* by = walkTrees) {
    HardLinkRegistry registry;
    const TreeRequest request{path};
    return by({&request, 1}, FileTree::contextOf(registry, {.stop = stop}), &listing).front();
}

std::size_t openDescriptors() {
    return namesIn("/proc/self/fd").size();
}

} // namespace

TEST(WalkCollectors, HearOfEveryEntryOnceWithTheFolderItLiesIn) {
    const TempHome home;
    for (int number = 0; number < 3000; ++number) {
        const std::string name = std::to_string(number);
        home.file("wide/" + name);
        if (number % 10 == 0) {
            home.file("wide/" + name + "-folder/in/deep/file");
            home.link("deep/" + name + "/a/b/c/link", "nowhere");
        }
    }
    std::vector<std::string> expected{home.path()};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home.path())) {
        expected.push_back(entry.path());
    }
    std::ranges::sort(expected);
    for (decltype(walkTrees)* const by : {walkTrees, walkTreesPortably}) {
        Listing listing;
        walk(home.path(), listing, {}, by);
        std::ranges::sort(listing.paths);
        EXPECT_EQ(listing.paths, expected);
    }
}

TEST(WalkCollectors, TurnAFolderDownByAllTheNamesInIt) {
    const TempHome home;
    for (int number = 0; number < 3000; ++number) {
        home.file("kept/wide/" + std::to_string(number));
        home.file("refused/wide/" + std::to_string(number), 1);
    }
    home.folders({"refused/mark", "kept/empty"});
    home.link("kept/link", "mark");
    for (decltype(walkTrees)* const by : {walkTrees, walkTreesPortably}) {
        Listing listing;
        listing.accepts = [](std::span<const std::string_view> names) {
            return std::ranges::find(names, "mark") == names.end();
        };
        const TreeSums sums = walk(home.path(), listing, {}, by);
        EXPECT_EQ(listing.paths.size(), 1U + 2 + 3 + 3000) << "the refused one, and nothing in it";
        EXPECT_EQ(sums.fileCount, 3000);
        EXPECT_EQ(sums.apparentBytes, 0);
    }
}

TEST(WalkCollectors, HearWhatCouldNotBeRead) {
    // Folders that could not be read looked empty, and entries without a status were nowhere.
    const TempHome home;
    home.files({"shut/x", "blind/y", "open/z"});
    home.setMode("shut", 0);
    home.setMode("blind", 0444);
    expectHeld(asOrdinaryUser(home.path(), [&] {
        for (decltype(walkTrees)* const by : {walkTrees, walkTreesPortably}) {
            Listing listing;
            const TreeSums sums = walk(home.path(), listing, {}, by);
            std::erase_if(listing.paths, [](const std::string& path) { return !path.starts_with("missed"); });
            std::ranges::sort(listing.paths);
            Listing none;
            walk(home.path("none"), none, {}, by);
            if (sums.unreadableCount != 2 || none.paths != std::vector{"missed " + home.path("none")} ||
                listing.paths !=
                    std::vector{"missed " + home.path("blind/y"), "missed " + home.path("shut")}) {
                return false;
            }
        }
        return true;
    }));
    home.setMode("shut", 0755);
    home.setMode("blind", 0755);
}

TEST(WalkCollectors, NeverSeeMoreDescriptorsThanHalfOfThoseAllowed) {
    const TempHome home;
    home.folder("chain");
    close(makeChain(home.path("chain"), 600, true));
    for (int number = 0; number < 400; ++number) {
        home.file("wide/" + std::to_string(number) + "/in/in/in/in/in/file");
    }
    const std::size_t before = openDescriptors();
    for (const auto& [allowed, most] : {std::pair<rlim_t, std::size_t>{16, 8}, {64, 32}, {1024, 256}}) {
        const DescriptorLimit limit(allowed);
        std::size_t peak = 0;
        std::size_t told = 0;
        Listing listing(
            [&](const std::string&) { peak = ++told % 20 == 0 ? std::max(peak, openDescriptors()) : peak; });
        EXPECT_EQ(walk(home.path(), listing).unreadableCount, 0) << allowed;
        EXPECT_LE(peak, before + most) << allowed;
        EXPECT_EQ(openDescriptors(), before);
    }
}

TEST(WalkCollectors, FindAParentByItsNameWhenTheFolderInItHasBeenMovedAway) {
    // Only ".." leads back to a folder that is closed; after the move that is a stranger, and with it what
    // was still to be read would be lost.
    const TempHome home;
    std::string deepest = "tree";
    for (int level = 0; level < 30; ++level) {
        home.file(deepest + "/before/file");
        home.file(deepest + "/z/file");
        deepest += "/on";
    }
    home.folders({deepest + "/last", "elsewhere/before", "elsewhere/z"});
    const std::string moved = home.path("tree/on/on/on/on/on/on/on/on/on/on");
    const DescriptorLimit limit(16); // One thread, with few descriptors.
    Listing listing([&](const std::string& path) {
        if (path == home.path(deepest + "/last")) {
            std::filesystem::rename(moved, home.path("elsewhere/moved"));
        }
    });
    const TreeSums sums = walk(home.path("tree"), listing);
    EXPECT_EQ(sums.fileCount, 60);
    EXPECT_EQ(sums.unreadableCount, 0);
    EXPECT_THAT(listing.paths, testing::Contains(home.path(deepest + "/last")));
}

TEST(WalkCollectors, HearOfFewEntriesAfterAStopHoweverLargeTheFolder) {
    const TempHome home;
    for (int number = 0; number < 6000; ++number) {
        home.file("wide/" + std::to_string(number));
    }
    std::stop_source stop;
    std::size_t after = 0;
    Listing listing([&](const std::string&) {
        after += stop.stop_requested() ? 1U : 0U;
        if (listing.paths.size() == 3000) {
            stop.request_stop();
        }
    });
    walk(home.path(), listing, stop.get_token());
    EXPECT_LT(after, 16U * 32U) << "of each thread those up to its next look";
    EXPECT_GE(listing.paths.size(), 3000U);
}
