#include "LumoCore/Scanning/NamedTree.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Tests/support/AwkwardTree.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <random>
#include <thread>

using namespace lumo;
using namespace tarvo::testing;
namespace fs = std::filesystem;

namespace {

std::unique_ptr<NamedTree> measured(const std::string& path) {
    auto tree = std::make_unique<NamedTree>(path);
    EXPECT_EQ(measureInto(*tree, path, NamedTree::root, nullptr, {}), 0);
    return tree;
}

std::int64_t bytesAt(const NamedTree& tree, const std::string& path) {
    const auto entry = tree.entryAt(path);
    return entry ? tree.entry(*entry).sums.bytes : -1;
}

/// Every path below the root, with what it holds for a folder; the sums of folders are compared on the way.
std::vector<std::string> pathsIn(const NamedTree& tree) {
    std::vector<std::string> paths;
    std::vector<EntryIndex> left{NamedTree::root};
    while (!left.empty()) {
        const NamedEntry folder = tree.entry(left.back());
        left.pop_back();
        std::int64_t bytes = 0;
        std::uint32_t items = 0;
        for (const NamedEntry& entry : tree.entriesOf(folder.index)) {
            bytes += entry.sums.bytes;
            items += 1 + entry.sums.items;
            paths.push_back(tree.pathOf(entry.index));
            if (entry.is(EntryTraits::folder)) {
                left.push_back(entry.index);
            }
        }
        EXPECT_EQ(folder.sums.items, items) << tree.pathOf(folder.index);
        EXPECT_EQ(folder.sums.bytes - bytes, allocatedBytes(tree.pathOf(folder.index)));
    }
    std::ranges::sort(paths);
    return paths;
}

std::vector<std::string> pathsOnDisk(const std::string& root) {
    std::vector<std::string> paths;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    return paths;
}

/// Some thousand entries, deep and wide enough that threads share them.
void makeMany(const TempHome& home) {
    std::minstd_rand random(7);
    std::string folder = "top";
    for (int number = 0; number < 6000; ++number) {
        if (number % 40 == 0) {
            folder =
                random() % 3 == 0 ? "top/" + std::to_string(number) : folder + "/" + std::to_string(number);
        }
        home.file(folder + "/f" + std::to_string(number), random() % 5000);
    }
}

} // namespace

TEST(NamedTree, ListsEveryEntryOfARealTreeWithTheSumsThatMeasuringGives) {
    const TempHome home;
    makeMany(home);
    home.files({"top/\xFF\x1B[31m\n", "top/\"q\\\t", "top/ñandú"}, 5000);
    home.link("top/link", "/etc");
    home.fifo("top/fifo");
    home.sparseFile("top/sparse", 1 << 30);
    const auto tree = measured(home.path());
    EXPECT_EQ(pathsIn(*tree), pathsOnDisk(home.path()));
    HardLinkRegistry registry;
    EXPECT_EQ(bytesAt(*tree, home.path()), FileTree::measure(home.path(), registry).allocatedBytes);
    EXPECT_TRUE(tree->entry(*tree->entryAt(home.path("top/link"))).is(EntryTraits::link));
}

TEST(NamedTree, ChargesAFileWithSeveralNamesToTheFirstPathAndWhatGoesWithIt) {
    const TempHome home;
    home.file("b/one", 9000);
    home.hardLink("a/two", "b/one");
    home.file("b/lone", 5000);
    const auto tree = measured(home.path());
    const std::int64_t shared = allocatedBytes(home.path("b/one"));
    EXPECT_EQ(bytesAt(*tree, home.path("a/two")), shared);
    EXPECT_EQ(bytesAt(*tree, home.path("b/one")), 0);
    const auto a = *tree->entryAt(home.path("a"));
    const auto b = *tree->entryAt(home.path("b"));
    EXPECT_EQ(tree->freedWithout(std::vector{a}), allocatedBytes(home.path("a"))) << "its other name stays";
    EXPECT_EQ(tree->freedWithout(std::vector{a, b}),
              bytesAt(*tree, home.path()) - allocatedBytes(home.path()));

    const std::int64_t before = bytesAt(*tree, home.path());
    tree->detach(a);
    tree->chargeLinked();
    EXPECT_EQ(bytesAt(*tree, home.path("b/one")), shared) << "the name that is left is charged";
    EXPECT_EQ(bytesAt(*tree, home.path()), before - allocatedBytes(home.path("a")));
}

// A copy that was set aside took the bytes, since its path comes before, and what stays was shown with none.
TEST(NamedTree, ChargesTheNameThatStaysAndKnowsWhatIsKeptByOne) {
    const TempHome home;
    home.file("held/one", 9000);
    home.hardLink("videos/two", "held/one");
    home.hardLink("videos/three", "held/one");
    home.file("videos/lone", 5000);
    NamedTree tree(home.path());
    tree.chargeLast(home.path("held"));
    measureInto(tree, home.path(), NamedTree::root, nullptr, {});
    const std::int64_t shared = allocatedBytes(home.path("held/one"));
    EXPECT_EQ(bytesAt(tree, home.path("held/one")), 0);
    EXPECT_EQ(bytesAt(tree, home.path("videos/three")), shared);
    const auto kept = [&](std::initializer_list<std::string_view> names, bool withHeld) {
        std::vector<EntryIndex> entries;
        for (const std::string_view name : names) {
            entries.push_back(*tree.entryAt(home.path(name)));
        }
        return tree.keptWithout(entries, withHeld ? tree.entryAt(home.path("held")) : std::nullopt);
    };
    EXPECT_EQ(kept({"videos/two"}, false), shared) << "although another name is charged";
    EXPECT_EQ(kept({"videos/two", "videos/three", "videos/lone"}, false), shared) << "once";
    EXPECT_EQ(kept({"videos/two"}, true), shared);
    EXPECT_EQ(kept({"videos"}, true), 0) << "nothing but what is set aside already";
    tree.detach(*tree.entryAt(home.path("videos")));
    tree.chargeLinked();
    EXPECT_EQ(bytesAt(tree, home.path("held/one")), shared);
}

// The folders around something kept its date when it was taken out, so that they passed for newer than they
// are.
TEST(NamedTree, DatesGoBackWhenTheNewestIsTakenOut) {
    const TempHome home;
    const std::vector<std::pair<std::string, std::int64_t>> dated{
        {"a/b/newest", 5000}, {"a/b/old", 1000}, {"a/newer", 3000}, {"a/c/same", 3000}};
    for (const auto& [name, seconds] : dated) {
        home.file(name);
        home.setModified(name, seconds);
    }
    const auto tree = measured(home.path());
    const auto datesWithout = [&](const std::string& name) {
        tree->detach(*tree->entryAt(home.path(name)));
        std::vector<std::uint32_t> dates;
        for (const std::string& folder : {home.path(), home.path("a"), home.path("a/b")}) {
            dates.push_back(tree->entry(*tree->entryAt(folder)).sums.modified);
        }
        return dates;
    };
    EXPECT_EQ(datesWithout("a/b/newest"), (std::vector<std::uint32_t>{3000, 3000, 1000}));
    EXPECT_EQ(datesWithout("a/newer"), (std::vector<std::uint32_t>{3000, 3000, 1000}))
        << "another one is as new";
    EXPECT_EQ(datesWithout("a/c"), (std::vector<std::uint32_t>{1000, 1000, 1000}));
    EXPECT_EQ(datesWithout("a/b/old"), (std::vector<std::uint32_t>{0, 0, 0}));
}

TEST(NamedTree, CanBeReadAndCutWhileManyThreadsFillIt) {
    const TempHome home;
    makeMany(home);
    NamedTree tree(home.path());
    std::atomic<bool> isDone = false;
    std::jthread filling([&] {
        measureInto(tree, home.path(), NamedTree::root, nullptr, {});
        isDone = true;
    });
    std::size_t reads = 0;
    while (!isDone || reads == 0) {
        tree.askForNews();
        for (const NamedEntry& entry : tree.entriesOf(NamedTree::root)) {
            EXPECT_EQ(tree.pathOf(entry.index), home.path(entry.name));
            for (const NamedEntry& below : tree.entriesOf(entry.index)) {
                EXPECT_FALSE(below.name.empty());
            }
        }
        ++reads;
    }
    filling.join();
    EXPECT_EQ(pathsIn(tree), pathsOnDisk(home.path()));

    NamedTree cut(home.path());
    std::jthread again([&] { measureInto(cut, home.path(), NamedTree::root, nullptr, {}); });
    std::optional<EntryIndex> top;
    while (!(top = cut.entryNamed(NamedTree::root, "top"))) {
        cut.askForNews();
    }
    cut.detach(*top);
    again.join();
    EXPECT_EQ(bytesAt(cut, home.path()), allocatedBytes(home.path()))
        << "what was found later stays out, too";
    EXPECT_EQ(cut.entry(NamedTree::root).sums.items, 0U);
}

TEST(NamedTree, KeepsNamesOfAnyLengthAndEqualOnesOnce) {
    NamedTree tree("/" + std::string(5000, 'r'));
    TreeBatch batch;
    std::vector<std::string> names;
    for (int number = 0; number < 40000; ++number) {
        names.push_back(
            std::string(static_cast<std::size_t>(number % 300 + 1), static_cast<char>(number % 256)));
        batch.add({NamedTree::root, false}, names.back(), {}, 0);
    }
    const EntryIndex base = tree.add(batch);
    for (std::size_t number = 0; number < names.size(); ++number) {
        ASSERT_EQ(tree.entry(base + static_cast<EntryIndex>(number)).name, names[number]);
    }
    EXPECT_EQ(tree.pathOf(NamedTree::root).size(), 5001U);
}
