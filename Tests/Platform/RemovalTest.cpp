#include "Platform/Removal.h"
#include "Tests/support/AwkwardTree.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using lumo::platform::BaseFolder;
using lumo::platform::namesIn;
using namespace tarvo::testing;
using Names = std::vector<std::string>;

namespace {

/// Removes what is at that name; 0, or why it failed.
int errorRemoving(const TempHome& home, std::string_view name) {
    const auto removed = removeTree(*BaseFolder::open(home.path())->placeWithoutLinks(name));
    return removed ? 0 : removed.error().code;
}

unsigned modeOf(const std::string& path) {
    return static_cast<unsigned>(std::filesystem::symlink_status(path).permissions());
}

bool giveToOrdinaryUser(const std::string& path) {
    return lchown(path.c_str(), 65534, 65534) == 0;
}

/// A folder beside the tree that must stay as it is, though an ordinary user could empty it.
class Canary final {
  public:
    explicit Canary(const TempHome& home) : home_(home) {
        home.file("canary/kept", 7);
        for (const char* name : {"canary/kept", "canary"}) {
            giveToOrdinaryUser(home.path(name));
            home.setModified(name, 1'700'000'000);
        }
        home.setMode("canary", 0500);
    }
    ~Canary() {
        EXPECT_EQ(namesIn(path()), Names{"kept"});
        for (const std::string& each : {path(), path() + "/kept"}) {
            struct stat status = {};
            EXPECT_EQ(lstat(each.c_str(), &status), 0);
            EXPECT_EQ(status.st_mtime, 1'700'000'000) << each;
        }
        EXPECT_EQ(modeOf(path()), 0500U);
    }
    Canary(const Canary&) = delete;
    Canary& operator=(const Canary&) = delete;

    [[nodiscard]] std::string path() const { return home_.path("canary"); }

  private:
    const TempHome& home_;
};

/// Far more entries than one thread keeps to itself: so many folders of ten folders of ten files each.
void makeLargeTree(const TempHome& home, int folders, const std::string& root = "tree") {
    for (int index = 0; index < folders * 100; ++index) {
        home.file(root + "/" + std::to_string(index % folders) + "/" + std::to_string(index / 10 % 10) + "/" +
                  std::to_string(index));
    }
}

} // namespace

TEST(Removal, TakesEveryKindOfEntryAndLeavesAloneWhatLinksLeadTo) {
    const TempHome home;
    const Canary canary(home);
    home.link("tree/to-folder", canary.path());
    home.link("tree/to-file", "../canary/kept");
    home.link("tree/dangling", "nowhere");
    home.hardLink("tree/a/b/hard", "canary/kept");
    home.fifo("tree/a/fifo");
    home.file("tree/a/\xff\n*");
    home.folder("tree/a/empty");
    home.link("link", "canary");
    home.fifo("fifo");
    for (const char* name : {"tree", "link", "fifo", "missing"}) {
        EXPECT_EQ(errorRemoving(home, name), 0) << name;
    }
    EXPECT_EQ(namesIn(home.path()), Names{"canary"});
}

TEST(Removal, OfContentsLeavesTheFolderAndTakesNoneFromALink) {
    const TempHome home;
    const Canary canary(home);
    home.files({"folder/sub/file", "folder/.hidden"});
    home.link("link", canary.path());
    const auto error = [&](std::string_view name) {
        const auto removed = removeContents(*BaseFolder::open(home.path())->placeWithoutLinks(name));
        return removed ? 0 : removed.error().code;
    };
    EXPECT_EQ(error("folder"), 0);
    EXPECT_TRUE(std::filesystem::is_empty(home.path("folder")));
    EXPECT_EQ(error("folder"), 0) << "an empty one";
    EXPECT_EQ(error("missing"), 0);
    EXPECT_EQ(error("link"), ELOOP);
}

TEST(Removal, GoesFurtherDownThanDescriptorsAndPathsReach) {
    const TempHome home;
    close(makeChain(home.folder("deep"), 20000, false));
    close(makeChain(home.folder("wide"), 3000, true));
    expectHeld(inChild([&] {
        const int firstFree = dup(STDIN_FILENO);
        close(firstFree);
        for (const auto& [name, most] : {std::pair{"deep", 64}, std::pair{"wide", 20}}) {
            const auto end = static_cast<rlim_t>(firstFree + most);
            const rlimit limit{end, end};
            setrlimit(RLIMIT_NOFILE, &limit);
            EXPECT_EQ(errorRemoving(home, name), 0) << name;
        }
        return testing::Test::HasFailure() ? Outcome::failed : Outcome::held;
    }));
    EXPECT_EQ(namesIn(home.path()), Names{});
}

TEST(Removal, NeitherFollowsNorEntersWhereTheSystemDoesNotTellWhatStandsThere) {
    // Where the folder around may not be written, that is all that the system says about its entries.
    const TempHome home;
    const Canary canary(home);
    home.link("fixed/to-canary", canary.path());
    home.file("fixed/own/file");
    home.folder("fixed/bound");
    if (!giveToOrdinaryUser(home.path("fixed/own"))) {
        GTEST_SKIP() << "needs root";
    }
    home.setMode("fixed/own", 0500);
    expectHeld(withMounts({{canary.path(), home.path("fixed/bound")}}, [&] {
        return Outcome::held == asOrdinaryUser(home.path(), [&] {
                   EXPECT_EQ(errorRemoving(home, "fixed/to-canary"), EACCES);
                   EXPECT_EQ(errorRemoving(home, "fixed/bound"), EBUSY);
                   EXPECT_NE(errorRemoving(home, "fixed"), 0);
                   EXPECT_EQ(namesIn(home.path("fixed/own")), Names{});
                   return !HasFailure();
               });
    }));
}

TEST(Removal, GivesOwnFoldersTheRightsTheyLackFromTheItemDownwards) {
    const TempHome home;
    expectHeld(asOrdinaryUser(home.path(), [&] {
        for (const char* mode : {"000", "100", "200", "300", "400", "500", "600"}) {
            const std::string folder = std::string("tree/") + mode;
            home.file(folder + "/inner/file");
            const auto bits = static_cast<unsigned>(std::stoul(mode, nullptr, 8));
            home.setMode(folder + "/inner", bits);
            home.setMode(folder, bits);
        }
        home.setMode("tree", 0);
        EXPECT_EQ(errorRemoving(home, "tree"), 0);
        EXPECT_EQ(namesIn(home.path()), Names{});
        home.file("around/item/file");
        home.setMode("around", 0555);
        EXPECT_EQ(errorRemoving(home, "around/item"), EACCES);
        EXPECT_EQ(modeOf(home.path("around")), 0555U);
        return !HasFailure();
    }));
}

TEST(Removal, LeavesFoldersOfOthersAloneAndRemovesTheRestHoweverDeep) {
    const TempHome home;
    std::string path = "tree";
    constexpr int levels = 150;
    for (int level = 0; level < levels; ++level, path += "/d") {
        home.file(path + "/a/file");
        home.file(path + "/other/kept");
        home.setMode(path + "/other", 0555);
        home.file(path + "/x/file");
        for (const char* name : {"", "/a", "/x"}) {
            if (!giveToOrdinaryUser(home.path(path + name))) {
                GTEST_SKIP() << "needs root";
            }
        }
    }
    expectHeld(asOrdinaryUser(home.path(), [&] { return errorRemoving(home, "tree") == EACCES; }));
    int folders = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home.path("tree"))) {
        const std::string name = entry.path().filename();
        EXPECT_TRUE(name == "d" || name == "other" || name == "kept") << entry.path();
        EXPECT_TRUE(name != "other" || modeOf(entry.path()) == 0555U);
        folders += name == "other" ? 1 : 0;
    }
    EXPECT_EQ(folders, levels);
}

TEST(Removal, StaysInTheTreeWhileFoldersAndLinksChangePlaces) {
    const TempHome home;
    const Canary canary(home);
    const char* faults = std::getenv("TARVO_FAULTS");
    const int rounds = faults != nullptr && faults == std::string("long") ? 10000 : 500;
    std::atomic<bool> isOver = false;
    std::atomic<int> exchanges = 0;
    std::thread swapper([&, inside = home.path("tree/a/b"), outside = home.path("link")] {
        while (!isOver) {
            exchanges += renameat2(AT_FDCWD, inside.c_str(), AT_FDCWD, outside.c_str(), RENAME_EXCHANGE) == 0;
        }
    });
    for (int round = 0; round < rounds; ++round) {
        std::error_code ignored; // The swapper may be quicker.
        std::filesystem::create_directory_symlink("canary", home.path("link"), ignored);
        std::filesystem::create_directories(home.path("tree/a/b/c"), ignored);
        std::filesystem::create_directory(home.path("tree/a/d"), ignored);
        errorRemoving(home, "tree");
        errorRemoving(home, "link");
    }
    isOver = true;
    swapper.join();
    EXPECT_GT(exchanges, rounds / 10);
    EXPECT_EQ(errorRemoving(home, "tree"), 0);
}

TEST(Removal, DoesNotComeBackIntoAnotherFolderWhenOneIsMovedAwayMeanwhile) {
    const TempHome home;
    const Canary canary(home);
    home.setMode("canary", 0700);
    const int deepest = makeChain(home.folder("tree"), 2000, false);
    std::thread remover([&] { EXPECT_EQ(errorRemoving(home, "tree"), 0); });
    // Once the deepest is gone the remover is on its way up, through folders whose descriptors it gave away.
    struct stat status = {};
    while (fstat(deepest, &status) == 0 && status.st_nlink > 0) {
        std::this_thread::yield();
    }
    std::error_code late;
    std::filesystem::rename(home.path("tree/d/d/d"), canary.path() + "/moved", late);
    remover.join();
    close(deepest);
    EXPECT_FALSE(late);
    EXPECT_EQ(errorRemoving(home, "canary/moved"), 0);
    home.setModified("canary", 1'700'000'000);
    home.setMode("canary", 0500);
}

TEST(Removal, TwoAtOnceOnOneTreeBothSucceed) {
    const TempHome home;
    for (int round = 0; round < 3; ++round) {
        makeLargeTree(home, 10);
        close(makeChain(home.path("tree"), 300, true));
        std::thread other([&] { EXPECT_EQ(errorRemoving(home, "tree"), 0); });
        EXPECT_EQ(errorRemoving(home, "tree"), 0);
        other.join();
        EXPECT_EQ(namesIn(home.path()), Names{});
    }
}

TEST(Removal, EndsAlsoWhileAnotherProgramKeepsWriting) {
    const TempHome home;
    home.folder("tree/busy");
    std::atomic<bool> isOver = false;
    std::thread writer([&, path = home.path("tree/busy/")] {
        for (int index = 0; !isOver; ++index) {
            close(open((path + std::to_string(index)).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
        }
    });
    errorRemoving(home, "tree");
    isOver = true;
    writer.join();
    EXPECT_EQ(errorRemoving(home, "tree"), 0);
}

TEST(Removal, EndsAtAFolderThatIsToBeSparedAlsoWhereItIsEmpty) {
    // A protected folder that was moved into a cache after the last look was deleted with it.
    const TempHome home;
    const auto base = BaseFolder::open(home.path());
    for (const char* name : {"tree/full", "tree/empty"}) {
        // What the disk lists before the spared folder is gone each time.
        home.file("tree/full/x");
        home.folder("tree/empty");
        const std::vector spared{*identityAt(*base->placeWithoutLinks(name))};
        for (const auto removal : {lumo::platform::removeTree, lumo::platform::removeContents}) {
            for (const char* target : {name, "tree"}) {
                EXPECT_EQ(removal(*base->placeWithoutLinks(target), spared),
                          lumo::platform::failed(ECANCELED))
                    << target;
            }
        }
        EXPECT_TRUE(std::filesystem::exists(home.path(name)));
    }
}

TEST(Removal, OfALargeTreeByManyThreadsEndsAsWholeAtAFolderToBeSpared) {
    const TempHome home;
    const auto base = BaseFolder::open(home.path());
    for (const char* name : {"tree/7/3/deep/spared", "tree/0", "tree/39/9"}) {
        makeLargeTree(home, 40);
        home.file(std::string(name) + "/kept");
        const std::vector spared{*identityAt(*base->placeWithoutLinks(name))};
        EXPECT_EQ(lumo::platform::removeTree(*base->placeWithoutLinks("tree"), spared),
                  lumo::platform::failed(ECANCELED));
        EXPECT_TRUE(std::filesystem::exists(home.path(std::string(name) + "/kept"))) << name;
    }
    EXPECT_EQ(errorRemoving(home, "tree"), 0);
}

TEST(Removal, OfALargeTreeByManyThreadsKeepsWithinItsDescriptorsAndLeavesOnlyWhatItMust) {
    const TempHome home;
    const Canary canary(home);
    makeLargeTree(home, 40);
    for (int folder = 0; folder < 40; ++folder) {
        const std::string inner = "tree/" + std::to_string(folder);
        home.link(inner + "/link", canary.path());
        close(makeChain(home.folder(inner + "/chain"), 60, true));
    }
    home.file("tree/11/5/other/kept");
    home.setMode("tree/11/5/other", 0555);
    home.setMode("tree/23", 0500);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home.path("tree"))) {
        if (entry.path().parent_path().filename() != "other" && entry.path().filename() != "other" &&
            !giveToOrdinaryUser(entry.path())) {
            GTEST_SKIP() << "needs root";
        }
    }
    giveToOrdinaryUser(home.path("tree"));
    expectHeld(asOrdinaryUser(home.path(), [&] {
        const int firstFree = dup(STDIN_FILENO);
        close(firstFree);
        const DescriptorLimit limit(static_cast<rlim_t>(firstFree + 64));
        return errorRemoving(home, "tree") == EACCES;
    }));
    EXPECT_EQ(namesIn(home.path("tree")), Names{"11"});
    EXPECT_EQ(namesIn(home.path("tree/11")), Names{"5"});
    EXPECT_EQ(namesIn(home.path("tree/11/5")), Names{"other"});
    EXPECT_EQ(namesIn(home.path("tree/11/5/other")), Names{"kept"});
}

TEST(Removal, OfALargeTreeByManyThreadsStaysInItWhileFoldersAndLinksChangePlaces) {
    const TempHome home;
    const Canary canary(home);
    home.link("link", canary.path());
    std::atomic<bool> isOver = false;
    std::thread swapper([&] {
        for (int index = 0; !isOver; ++index) {
            const std::string inside =
                home.path("tree/" + std::to_string(index % 20) + "/" + std::to_string(index / 20 % 10));
            renameat2(AT_FDCWD, inside.c_str(), AT_FDCWD, home.path("link").c_str(), RENAME_EXCHANGE);
        }
    });
    for (int round = 0; round < 5; ++round) {
        makeLargeTree(home, 20, "new");
        std::filesystem::rename(home.path("new"), home.path("tree"));
        int code = ENOTEMPTY; // The swapper may bring something back at the last moment.
        for (int attempt = 0; attempt < 100 && code == ENOTEMPTY; ++attempt) {
            code = errorRemoving(home, "tree");
        }
        EXPECT_EQ(code, 0);
        errorRemoving(home, "link");
        std::error_code ignored; // The swapper may be quicker.
        std::filesystem::create_directory_symlink("canary", home.path("link"), ignored);
    }
    isOver = true;
    swapper.join();
    EXPECT_EQ(errorRemoving(home, "tree"), 0);
}

TEST(Removal, OfALargeTreeThatIsKilledHasTouchedNothingElseAndIsFinishedByTheNext) {
    const TempHome home;
    const Canary canary(home);
    for (const std::size_t left : {19U, 12U, 5U}) {
        makeLargeTree(home, 20);
        for (int folder = 0; folder < 20; ++folder) {
            home.link("tree/" + std::to_string(folder) + "/link", canary.path());
        }
        const pid_t remover = fork();
        if (remover == 0) {
            errorRemoving(home, "tree");
            _exit(0);
        }
        while (namesIn(home.path("tree")).size() > left) {
            std::this_thread::yield();
        }
        kill(remover, SIGKILL);
        waitpid(remover, nullptr, 0);
        EXPECT_EQ(errorRemoving(home, "tree"), 0);
        EXPECT_EQ(namesIn(home.path()), Names{"canary"});
    }
}
