#include "LumoCore/Scanning/FileTree.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace lumo;
using platform::BreakdownLimits;
using platform::TreeBreakdown;
using platform::TreeParts;
using platform::TreePolicy;
using platform::TreeRequest;
using platform::TreeSums;
using namespace tarvo::testing;

namespace {

auto valuesOf(const TreeSums& sums) {
    return std::tuple(sums.allocatedBytes, sums.apparentBytes, sums.fileCount, sums.unreadableCount,
                      sums.lastModified, sums.lastDatedChange, sums.setAside);
}

std::string described(const TreeParts& parts, const std::string& indent) {
    std::string text =
        indent + std::to_string(parts.restCount) + " more, " + std::to_string(parts.restBytes) + "\n";
    for (const auto& part : parts.largest) {
        text += indent + part.name + (part.isFolder ? "/ " : " ") + std::to_string(part.allocatedBytes) +
                "\n" + described(part.parts, indent + "  ");
    }
    return text;
}

std::string described(const TreeBreakdown& breakdown) {
    std::string text = testing::PrintToString(valuesOf(breakdown.sums)) + described(breakdown.parts, "");
    for (const auto& [extension, bytes] : breakdown.extensions) {
        text += extension + " " + std::to_string(bytes) + "\n";
    }
    return text;
}

/// What the parts of a level take with what was left out of them.
std::int64_t totalOf(const TreeParts& parts) {
    std::int64_t total = parts.restBytes;
    for (const auto& part : parts.largest) {
        total += part.allocatedBytes;
    }
    return total;
}

TreeBreakdown breakDown(const std::string& path, const BreakdownLimits& limits, bool isPortable = false) {
    HardLinkRegistry registry;
    const auto context = FileTree::contextOf(registry, {});
    return isPortable ? breakDownTreePortably({path}, limits, context)
                      : breakDownTree({path}, limits, context);
}

TreeSums walk(const TreeRequest& request, bool isPortable = false) {
    HardLinkRegistry registry;
    const auto context = FileTree::contextOf(registry, {});
    return (isPortable ? platform::walkTreesPortably({&request, 1}, context)
                       : platform::walkTrees({&request, 1}, context))
        .front();
}

/// Lets both walkers measure and gives what the fast one said.
std::vector<TreeSums> walkBoth(const std::vector<TreeRequest>& requests) {
    HardLinkRegistry registry;
    HardLinkRegistry another;
    std::vector<TreeSums> fast = platform::walkTrees(requests, FileTree::contextOf(registry, {}));
    const auto portable = platform::walkTreesPortably(requests, FileTree::contextOf(another, {}));
    for (std::size_t index = 0; index < requests.size(); ++index) {
        EXPECT_EQ(valuesOf(fast[index]), valuesOf(portable[index])) << requests[index].path;
    }
    return fast;
}

TreeSums walkBoth(const TreeRequest& request) {
    return walkBoth(std::vector{request}).front();
}

/// Lets one walk keep every other tree, and another in the opposite order count these without reading them.
void expectAlikeFromKept(const std::vector<TreeRequest>& requests) {
    for (decltype(platform::walkTrees)* const walk : {platform::walkTrees, platform::walkTreesPortably}) {
        std::vector<TreeRequest> turned(requests.rbegin(), requests.rend());
        std::vector<platform::MeasuredTree> kept(turned.size());
        const std::vector<TreeSums> expected = walkBoth(turned);
        for (std::size_t index = 0; index < turned.size(); index += 2) {
            turned[index].kept = &kept[index];
        }
        HardLinkRegistry first;
        walk(std::vector(turned.rbegin(), turned.rend()), FileTree::contextOf(first, {}), nullptr);
        for (std::size_t index = 0; index < turned.size(); index += 2) {
            turned[index].known = std::exchange(turned[index].kept, nullptr);
        }
        HardLinkRegistry second;
        const auto sums = walk(turned, FileTree::contextOf(second, {}), nullptr);
        for (std::size_t index = 0; index < turned.size(); ++index) {
            EXPECT_EQ(valuesOf(sums[index]), valuesOf(expected[index])) << turned[index].path;
        }
    }
}

Usage measure(const std::string& path) {
    HardLinkRegistry registry;
    return FileTree::measure(path, registry);
}

void makeSocket(const std::string& path) {
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(descriptor, static_cast<sockaddr*>(static_cast<void*>(&address)), sizeof address), 0);
    close(descriptor);
}

/// A tree whose every choice follows from the seed.
class RandomTree final {
  public:
    RandomTree(const TempHome& home, unsigned seed) : home_(home), random_(seed) { fill("", 0); }

  private:
    unsigned upTo(unsigned most) { return static_cast<unsigned>(random_() % (most + 1)); }

    std::string freshName() {
        static const std::array<std::string, 14> odd{
            "con espacios", "línea\nnueva", "\xFF\xFE roto", "café", "cafe\u0301", ".oculto",  "node_modules",
            ".git",         ".DS_Store",    "target",        "-rf",  "日本",       "foto.JPG", "a.tar.gz"};
        const std::string number = std::to_string(++made_);
        return upTo(3) == 0 ? odd[upTo(odd.size() - 1)] + (upTo(1) == 0 ? "" : number) : "n" + number;
    }

    void fill(const std::string& folder, int depth) {
        home_.folder(folder.empty() ? "." : folder);
        for (unsigned count = upTo(9); count > 0; --count) {
            const std::string name = folder + "/" + freshName();
            if (faccessat(AT_FDCWD, home_.path(name).c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
                continue;
            }
            make(name, depth);
        }
    }

    void make(const std::string& name, int depth) {
        const unsigned kind = upTo(8);
        if (kind < 3 && depth < 6) {
            fill(name, depth + 1);
        } else if (kind == 3) {
            home_.sparseFile(name, 1 + upTo(1000000));
        } else if (kind == 4 && !files_.empty()) {
            home_.hardLink(name, files_[upTo(static_cast<unsigned>(files_.size()) - 1)]);
        } else if (kind == 5) {
            home_.link(name, upTo(1) == 0 ? "." : "nowhere");
        } else if (kind == 6) {
            home_.fifo(name);
        } else if (kind > 6) {
            home_.file(name, upTo(20000));
            home_.setModified(name, 1000000000 + upTo(600000000));
            files_.push_back(name);
        }
    }

    const TempHome& home_;
    std::mt19937 random_;
    unsigned made_ = 0;
    std::vector<std::string> files_;
};

} // namespace

TEST(FileTree, ChargesBlocksOfEveryEntryButCountsOnlyFiles) {
    const TempHome home;
    home.folder("a/b");
    home.file("a/ten", 10000);
    home.sparseFile("a/b/holes", 5000000);
    home.link("a/link", "b");
    home.link("a/dangling", "nowhere");
    home.fifo("a/fifo");
    home.setModified("a/ten", 1700000000);
    home.setModified("a/b/holes", 1600000000);
    std::int64_t expected = 0;
    for (const char* name : {"a", "a/b", "a/ten", "a/b/holes", "a/link", "a/dangling", "a/fifo"}) {
        expected += allocatedBytes(home.path(name));
    }
    const Usage usage = measure(home.path("a"));
    EXPECT_EQ(usage.allocatedBytes, expected);
    EXPECT_EQ(usage.apparentBytes, 5010000);
    EXPECT_EQ(usage.fileCount, 2);
    EXPECT_EQ(usage.unreadableCount, 0);
    EXPECT_EQ(usage.lastModified, Date(std::chrono::seconds(1700000000)));
}

TEST(FileTree, CountsAHardLinkedFileOnceInARegistryAndAgainInAnother) {
    const TempHome home;
    home.file("one/original", 100000);
    home.hardLink("one/again", "one/original");
    home.hardLink("two/elsewhere", "one/original");
    const std::int64_t file = allocatedBytes(home.path("one/original"));
    const std::int64_t one = allocatedBytes(home.path("one"));
    const std::int64_t two = allocatedBytes(home.path("two"));
    EXPECT_EQ(measure(home.path("one")).allocatedBytes, one + file);
    EXPECT_EQ(measure(home.path("one")).fileCount, 1);
    EXPECT_EQ(measure(home.path("two")).allocatedBytes, two + file);

    HardLinkRegistry shared;
    const std::vector<std::string> paths{home.path("one"), home.path("two")};
    const std::vector<Usage> usages = FileTree::measureAll({paths.begin(), paths.end()}, shared);
    EXPECT_EQ(usages[0].allocatedBytes + usages[1].allocatedBytes, one + two + file);
    EXPECT_EQ(usages[0].fileCount + usages[1].fileCount, 1);
}

TEST(FileTree, ChargesASharedFileToTheFirstRequestOfTheFirstMeasurementAndUnderItsFirstPath) {
    // The thread that came first decided, so that two scans of an unchanged home differed.
    const TempHome home;
    home.file("quick/shared.txt", 100000);
    for (int number = 0; number < 40; ++number) {
        home.hardLink("slow/" + std::to_string(number) + "/a/b/c/d/e/f.bin", "quick/shared.txt");
    }
    const std::vector<std::string> paths{home.path("slow"), home.path("quick")};
    for (int round = 0; round < 30; ++round) {
        HardLinkRegistry registry;
        const auto usages = FileTree::measureAll({paths.begin(), paths.end()}, registry);
        ASSERT_EQ(usages[0].apparentBytes, 100000);
        ASSERT_EQ(usages[1], (Usage{.allocatedBytes = allocatedBytes(paths[1]), .lastModified = {}}));
        ASSERT_EQ(FileTree::measure(paths[0], registry).fileCount, 0);

        const TreeBreakdown whole = breakDown(home.path(), {.mostParts = 1, .mostPartsBelow = 1});
        ASSERT_EQ(whole.parts.largest.front().name, "slow") << "its folders take more than the file";
        ASSERT_EQ(whole.extensions.front().extension, "txt") << "quick comes before slow";
        const TreeBreakdown slow = breakDown(paths[0], {});
        ASSERT_EQ(slow.parts.largest.front().name, "0");
    }
}

TEST(FileTree, MeasuresPathsThatAreNoFolders) {
    const TempHome home;
    home.file("file", 5000);
    home.link("link", "file");
    EXPECT_EQ(measure(home.path("file")).allocatedBytes, allocatedBytes(home.path("file")));
    EXPECT_EQ(measure(home.path("file")).fileCount, 1);
    EXPECT_EQ(measure(home.path("link")).allocatedBytes, allocatedBytes(home.path("link")));
    EXPECT_EQ(measure(home.path("link")).fileCount, 0);
    EXPECT_EQ(measure(home.path("missing")), (Usage{.unreadableCount = 1, .lastModified = {}}));
    EXPECT_EQ(measure(""), Usage());
}

TEST(Walkers, AgreeOnRandomTrees) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const TempHome home;
        const RandomTree tree(home, seed);
        const TreeRequest plain{.path = home.path()};
        walkBoth(plain);
        const TreePolicy policy{
            .setsAside = [](std::string_view name) { return name.starts_with("node_modules"); },
            .undatedFiles = {".DS_Store"},
            .undatedFolders = {".git"}};
        const TreeRequest project{home.path(), &policy};
        walkBoth(project);
        std::vector<std::string> paths;
        for (const auto& entry : std::filesystem::directory_iterator(home.path())) {
            paths.push_back(entry.path());
        }
        paths.push_back(home.path());
        std::vector<TreeRequest> overlapping;
        for (const std::string& path : paths) {
            overlapping.push_back({path, seed % 2 == 0 ? &policy : &platform::plainTree()});
        }
        walkBoth(overlapping);
        expectAlikeFromKept(overlapping);
    }
}

TEST(Walkers, BreakATreeDownAlikeIntoPartsThatAddUpToWhatItMeasures) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const TempHome home;
        const RandomTree tree(home, seed);
        const TreeSums measured = walk({.path = home.path()});
        std::int64_t files = 0;
        for (const auto& [extension, bytes] : breakDown(home.path(), {}).extensions) {
            files += bytes;
        }
        EXPECT_LE(files, measured.allocatedBytes);
        for (const BreakdownLimits& limits : {BreakdownLimits{}, {.mostParts = 2}, {50, 50}, {4, 1}}) {
            const TreeBreakdown fast = breakDown(home.path(), limits);
            const TreeBreakdown portable = breakDown(home.path(), limits, true);
            EXPECT_EQ(valuesOf(fast.sums), valuesOf(measured)) << "seed " << seed;
            EXPECT_EQ(totalOf(fast.parts) + allocatedBytes(home.path()), measured.allocatedBytes);
            EXPECT_LE(fast.parts.largest.size(), limits.mostParts);
            for (const auto& part : fast.parts.largest) {
                const std::string path = home.path(part.name);
                EXPECT_TRUE(limits.mostPartsBelow == 0 || !part.isFolder ||
                            totalOf(part.parts) + allocatedBytes(path) == part.allocatedBytes);
            }
            EXPECT_EQ(described(fast), described(portable)) << "seed " << seed;
        }
    }
}

TEST(Walkers, BreakDownALargeFolderThatThreadsShareAndStopWhenAsked) {
    const TempHome home;
    std::int64_t expected = 0;
    for (int number = 0; number < 6000; ++number) {
        home.file("wide/f" + std::to_string(number) + ".x", number < 5 ? 100000 : 0);
    }
    const TreeBreakdown breakdown = breakDown(home.path("wide"), {.mostParts = 5});
    for (const auto& part : breakdown.parts.largest) {
        expected += allocatedBytes(home.path("wide/" + part.name));
    }
    EXPECT_EQ(walkBoth({.path = home.path("wide")}).fileCount, 6000);
    EXPECT_EQ(breakdown.parts.restCount, 5995);
    EXPECT_EQ(totalOf(breakdown.parts), expected);
    EXPECT_EQ(breakdown.extensions.front().allocatedBytes, expected);

    std::stop_source stop;
    stop.request_stop();
    HardLinkRegistry registry;
    const auto context = FileTree::contextOf(registry, {.stop = stop.get_token()});
    EXPECT_EQ(breakDownTree({home.path("wide")}, {}, context).parts.largest.size(), 0U);
    EXPECT_EQ(breakDownTreePortably({home.path("wide")}, {}, context).parts.largest.size(), 0U);
}

TEST(Walkers, AgreeOnFixedOddities) {
    const TempHome home;
    makeSocket(home.path("socket"));
    home.link("loop/a", "b");
    home.link("loop/b", "a");
    home.link("loop/up", "..");
    home.file(std::string(255, 'n'), 100);
    home.file("early", 1);
    home.setModified("early", -5000000000);
    home.file("future/late", 1);
    home.setModified("future/late", 8000000000);
    const TreeRequest request{.path = home.path()};
    walkBoth(request);
    for (const char* name : {"socket", "loop/a", "missing", "early"}) {
        const std::string path = home.path(name);
        const TreeRequest single{.path = path};
        walkBoth(single);
        EXPECT_EQ(described(breakDown(path, {})), described(breakDown(path, {}, true))) << name;
    }
}

TEST(Walkers, CountAnUnreadableFolderAsItsOwnBlocksAndOneUnreadableEntry) {
    const TempHome home;
    expectHeld(asOrdinaryUser(home.path(), [&] {
        home.file("open/file", 5000);
        home.file("closed/inside", 5000);
        home.file("listable/inside", 5000);
        home.file("listable/another", 5000);
        std::int64_t expected = allocatedBytes(home.path());
        for (const char* name : {"open", "open/file", "closed", "listable"}) {
            expected += allocatedBytes(home.path(name));
        }
        home.setMode("closed", 0000);
        home.setMode("listable", 0400); // Names can be read, statuses cannot.
        const TreeSums sums = walkBoth({.path = home.path()});
        return !HasFailure() && sums.allocatedBytes == expected && sums.unreadableCount == 3 &&
               sums.fileCount == 1;
    }));
}

TEST(Walkers, BreakDownFoldersThatCannotBeOpenedWhereTheyLie) {
    // One that could not be given away counted for the part that its thread had come to.
    const TempHome home;
    expectHeld(asOrdinaryUser(home.path(), [&] {
        for (int number = 0; number < 40; ++number) {
            const std::string name = std::to_string(number);
            for (int file = 0; file < 150; ++file) {
                home.file("part" + name + "/in/" + std::to_string(file % 3) + "/" + std::to_string(file));
            }
            for (const char* folder : {"", "/", "/in/"}) {
                const std::string closed = (*folder == '\0' ? "" : "part" + name) + folder + "closed" + name;
                home.folder(closed);
                home.setMode(closed, 0000);
            }
        }
        const std::string expected = described(breakDown(home.path(), {50, 50}, true));
        for (int round = 0; round < 20; ++round) {
            EXPECT_EQ(described(breakDown(home.path(), {50, 50})), expected);
        }
        return !HasFailure();
    }));
}

TEST(Walkers, DateAProjectByItsOwnFilesAlone) {
    const TempHome home;
    home.file("src/main.c", 10);
    home.setModified("src/main.c", 1500000000);
    for (const char* name : {".git/objects/ab/1", "src/.git/index", ".DS_Store", "src/.DS_Store"}) {
        home.file(name, 10);
        home.setModified(name, 1600000000);
    }
    const TreePolicy policy{.undatedFiles = {".DS_Store"}, .undatedFolders = {".git"}};
    const TreeSums sums = walk({home.path(), &policy});
    EXPECT_EQ(sums.lastDatedChange, Date(std::chrono::seconds(1500000000)));
    EXPECT_EQ(sums.lastModified, Date(std::chrono::seconds(1600000000)));
    EXPECT_EQ(sums.fileCount, 5);
}
