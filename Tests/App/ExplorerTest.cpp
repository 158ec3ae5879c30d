#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "Tests/App/AppStory.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <latch>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;
namespace fs = std::filesystem;

namespace {

std::string read(ExplorerDesk& explorer, int row, int role) {
    const ExplorerList& list = *explorer.entries();
    return bytesOf(list.data(list.index(row), role).toString());
}

std::vector<std::string> names(ExplorerDesk& explorer) {
    std::vector<std::string> names;
    for (int row = 0; row < explorer.entries()->count(); ++row) {
        names.push_back(read(explorer, row, ExplorerList::nameRole));
    }
    return names;
}

int rowNamed(ExplorerDesk& explorer, const std::string& name) {
    const std::vector<std::string> all = names(explorer);
    const auto found = std::ranges::find(all, name);
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

/// An application that has looked at a home with videos, one of them with a name that is no text.
class ExplorerInTheWindow : public ::testing::Test {
  protected:
    ExplorerInTheWindow() {
        story.home.file("Videos/film", 4'000'000);
        story.home.file("Videos/trip/odd \xff\n", 2'000'000);
        story.home.file("Videos/trip/b", 1'000'000);
        story.home.file("Music/song", 500'000);
        story.app().settings()->setWelcomeSeen(true);
        story.app().scanning()->scan();
        EXPECT_TRUE(story.waitUntilIdle());
        // With nothing to clean the map shows the home.
        EXPECT_TRUE(mapShows(story.home.path()));
    }

    ExplorerDesk& open() {
        ExplorerDesk& explorer = *story.app().explorer();
        explorer.setOpen(true);
        EXPECT_TRUE(story.waitUntil([&] { return !explorer.facts().contains("measuring"); }));
        return explorer;
    }
    /// Waits until the map shows that folder.
    bool mapShows(const std::string& path) {
        return story.waitUntil([&] {
            const auto& levels = story.app().map()->zoomStack();
            return !levels.empty() && levels.back().paths == std::vector{path};
        });
    }

    AppStory story;
};

} // namespace

TEST_F(ExplorerInTheWindow, MeasuresOnlyWhenSomebodyExplores) {
    std::atomic<int> measured = 0;
    AppStory quiet;
    quiet.services.measure = [&](lumo::NamedTree&, lumo::platform::WalkProgress&, const std::stop_token&) {
        ++measured;
        return std::int64_t{0};
    };
    quiet.app().settings()->setWelcomeSeen(true);
    quiet.app().scanning()->scan();
    ASSERT_TRUE(quiet.waitUntilIdle());
    EXPECT_EQ(measured, 0);
    quiet.app().explorer()->setOpen(true);
    EXPECT_TRUE(quiet.waitUntil([&] { return measured == 1; }));
}

TEST_F(ExplorerInTheWindow, WalksInAndOutSortsAndFilters) {
    ExplorerDesk& explorer = open();
    EXPECT_THAT(names(explorer), Contains("Videos"));
    EXPECT_EQ(names(explorer).front(), "Videos") << "the largest first";
    EXPECT_THAT(read(explorer, 0, ExplorerList::factsRole), HasSubstr("4 items"));
    ASSERT_TRUE(explorer.enter(0));
    EXPECT_EQ(explorer.path(), story.home.path("Videos"));
    EXPECT_THAT(names(explorer), ElementsAre("film", "trip"));
    EXPECT_FALSE(explorer.enter(0)) << "a file";
    explorer.setOrder(static_cast<int>(ExplorerOrder::items));
    EXPECT_THAT(names(explorer), ElementsAre("trip", "film"));
    explorer.setFilter("FIL");
    EXPECT_THAT(names(explorer), ElementsAre("film"));
    explorer.setFilter("none");
    EXPECT_FALSE(explorer.emptyText().isEmpty());
    explorer.setFilter("");
    ASSERT_TRUE(explorer.enter(rowNamed(explorer, "trip")));
    // A line feed in a name would have made two lines of it.
    EXPECT_THAT(names(explorer), Each(Not(HasSubstr("\n"))));
    EXPECT_EQ(explorer.titles(), (QStringList{"Videos", "trip"}));
    explorer.leaveTo(1);
    EXPECT_EQ(explorer.current(), rowNamed(explorer, "trip"));
    explorer.leave();
    EXPECT_EQ(explorer.path(), story.home.path());
}

TEST_F(ExplorerInTheWindow, LeavesOutOfANarrowRowWhatIsNeededLeastButNeverTheDay) {
    ExplorerDesk& explorer = open();
    const auto variants = [&] {
        const ExplorerList& list = *explorer.entries();
        return list.data(list.index(rowNamed(explorer, "Videos")), ExplorerList::lineRole)
            .toString()
            .split(QChar(0x9C));
    };
    ASSERT_EQ(variants().size(), 4);
    EXPECT_TRUE(variants()[0].contains("%") && variants()[0].contains("4 items"));
    const QString day = variants().back();
    for (const QString& line : variants()) {
        EXPECT_TRUE(line.endsWith(day)) << bytesOf(line);
    }
    EXPECT_TRUE(variants()[1].contains("4 items") && !variants()[1].contains("%"));
    explorer.setOrder(static_cast<int>(ExplorerOrder::items));
    EXPECT_TRUE(variants()[2].startsWith("4 items"));
}

TEST_F(ExplorerInTheWindow, ShowsWhatIsNeverTouchedAndSaysSoInsteadOfMarkingIt) {
    // Nothing was seen of it, and the folder could be marked.
    ExplorerDesk& explorer = open();
    const auto is = [&](const char* name, int role) {
        return explorer.entries()->data(explorer.entries()->index(rowNamed(explorer, name)), role).toBool();
    };
    explorer.toggleMark(rowNamed(explorer, "Videos"));
    EXPECT_EQ(explorer.togetherWith(rowNamed(explorer, "Music")), 1) << "that alone";
    explorer.toggleMark(rowNamed(explorer, "Music"));
    EXPECT_EQ(explorer.togetherWith(rowNamed(explorer, "Music")), 2);
    const QString key =
        explorer.entries()
            ->data(explorer.entries()->index(rowNamed(explorer, "Videos")), ExplorerList::keyRole)
            .toString();
    story.app().places()->protect({key});
    EXPECT_THAT(bytesOf(story.app().activity()->notice()),
                StartsWith("“Videos” will never be touched. You can change that in Settings"));
    EXPECT_FALSE(is("Videos", ExplorerList::protectedRole)) << "the disk was asked while the window waits";
    ASSERT_TRUE(story.waitUntil([&] { return is("Videos", ExplorerList::protectedRole); }));
    EXPECT_FALSE(is("Videos", ExplorerList::markedRole));
    EXPECT_TRUE(is("Music", ExplorerList::markedRole));
    EXPECT_THAT(read(explorer, rowNamed(explorer, "Videos"), ExplorerList::factsRole),
                HasSubstr("never touched"));
    explorer.toggleMark(rowNamed(explorer, "Videos"));
    EXPECT_EQ(bytesOf(story.app().activity()->notice()), "Videos: it's in a folder protected in Settings");
    EXPECT_FALSE(is("Videos", ExplorerList::markedRole));
    story.app().settings()->unprotect(0);
    EXPECT_TRUE(story.waitUntil([&] { return !is("Videos", ExplorerList::protectedRole); }));
    ASSERT_TRUE(story.waitUntilIdle());
}

// Such a link could be marked, and only the cleanup refused it.
TEST_F(ExplorerInTheWindow, UnmarksALinkToWhatIsNeverTouched) {
    story.home.link("shortcut", story.home.path("Videos/trip"));
    story.app().settings()->protectPaths({story.home.path("Music/../Videos/trip")});
    ExplorerDesk& explorer = open();
    explorer.toggleMark(rowNamed(explorer, "Music"));
    explorer.toggleMark(rowNamed(explorer, "shortcut"));
    const auto is = [&](int role) {
        return explorer.entries()
            ->data(explorer.entries()->index(rowNamed(explorer, "shortcut")), role)
            .toBool();
    };
    ASSERT_TRUE(story.waitUntil([&] { return is(ExplorerList::protectedRole); }));
    EXPECT_FALSE(is(ExplorerList::markedRole));
    EXPECT_EQ(bytesOf(story.app().activity()->notice()), "shortcut: it's in a folder protected in Settings");
    EXPECT_THAT(bytesOf(explorer.markedText()), StartsWith("1 marked: "));
    ASSERT_TRUE(story.waitUntilIdle());
}

TEST_F(ExplorerInTheWindow, SetsAsideWhatIsMarkedAfterAQuestionAndFollowsTheUndo) {
    ExplorerDesk& explorer = open();
    explorer.goTo(story.home.path("Videos/trip"));
    const std::string odd = story.home.path("Videos/trip/odd \xff\n");
    explorer.toggleMark(0);
    EXPECT_THAT(bytesOf(explorer.markedText()), StartsWith("1 marked: 2"));
    explorer.setAside(-1);
    QuestionDesk& question = *story.app().question();
    ASSERT_TRUE(story.waitUntil([&] { return question.isOpen(); }));
    EXPECT_THAT(bytesOf(question.lines().at(1).toMap()["title"].toString()), StartsWith("odd "));
    EXPECT_TRUE(fs::exists(odd));
    question.accept();
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 1; }));
    EXPECT_FALSE(fs::exists(odd));
    EXPECT_TRUE(fs::exists(story.home.path("Videos/trip/b")));
    EXPECT_THAT(bytesOf(explorer.markedText()), IsEmpty());
    EXPECT_EQ(explorer.path(), story.home.path("Videos/trip")) << "the scan that follows leads nowhere";
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(explorer.path(), story.home.path("Videos/trip"));
    story.app().holding()->undoLastCleanup();
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 2; }));
    EXPECT_TRUE(fs::exists(odd));
    ASSERT_TRUE(story.waitUntilIdle());
}

// The copy that was set aside took the bytes of the file, and the name that stays was shown with nothing.
TEST_F(ExplorerInTheWindow, ShowsWhatAFileTakesUnderTheNameThatStays) {
    story.home.file("Videos/twice/one.mkv", 3'000'000);
    story.home.hardLink("Videos/twice/two.mkv", "Videos/twice/one.mkv");
    ExplorerDesk& explorer = open();
    explorer.goTo(story.home.path("Videos/twice"));
    EXPECT_EQ(read(explorer, rowNamed(explorer, "two.mkv"), ExplorerList::bytesRole), "0 MB");
    explorer.setAside(rowNamed(explorer, "one.mkv"));
    QuestionDesk& question = *story.app().question();
    ASSERT_TRUE(story.waitUntil([&] { return question.isOpen(); }));
    EXPECT_THAT(bytesOf(question.message()), HasSubstr("3 MB of that stays on the disk"));
    question.accept();
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 1; }));
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(story.waitUntil(
        [&] { return read(explorer, rowNamed(explorer, "two.mkv"), ExplorerList::bytesRole) == "3 MB"; }));
    EXPECT_THAT(bytesOf(explorer.amounts().back()), "3 MB");
    explorer.setAside(rowNamed(explorer, "two.mkv"));
    ASSERT_TRUE(story.waitUntil([&] { return question.isOpen(); }));
    EXPECT_THAT(bytesOf(question.message()), Not(HasSubstr("stays on the disk"))) << "that goes, too, later";
    question.cancel();
}

TEST_F(ExplorerInTheWindow, ShowsOnlyWhatIsOldAndSetsAsideNothingNewerWithIt) {
    const auto ago = [&](int days) {
        const auto moment = story.now() - std::chrono::days(days);
        return std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch().count();
    };
    for (const char* name : {"Videos/old/x", "Videos/mixed/old"}) {
        story.home.file(name, 300'000);
        story.home.setModified(name, ago(200));
    }
    story.home.file("Videos/mixed/new", 200'000);
    ExplorerDesk& explorer = open();
    explorer.goTo(story.home.path("Videos"));
    explorer.showNextAge();
    EXPECT_THAT(names(explorer), UnorderedElementsAre("mixed", "old"));
    EXPECT_THAT(bytesOf(explorer.ageText()), StartsWith("Unchanged for 6 months: 1 MB"));
    explorer.setAside(rowNamed(explorer, "mixed"));
    EXPECT_THAT(bytesOf(story.app().activity()->notice()), StartsWith("“mixed” also holds newer things"));
    explorer.setAside(rowNamed(explorer, "old"));
    ASSERT_TRUE(story.waitUntil([&] { return story.app().question()->isOpen(); }));
    story.app().question()->accept();
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 1; }));
    EXPECT_FALSE(fs::exists(story.home.path("Videos/old")));
    EXPECT_TRUE(fs::exists(story.home.path("Videos/mixed/old")));
    ASSERT_TRUE(story.waitUntilIdle());
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(explorer.age(), 1) << "it stays with a new tree";
    EXPECT_THAT(names(explorer), ElementsAre("mixed"));
    explorer.setAge(static_cast<int>(explorer.ages().size()) - 1);
    EXPECT_EQ(bytesOf(explorer.emptyText()), "Nothing that old.");
    explorer.showNextAge();
    EXPECT_THAT(names(explorer), Contains("film"));
}

// A folder of a million entries kept the window from drawing for seconds, whenever it was read.
TEST_F(ExplorerInTheWindow, ReadsAFolderOfVeryManyInTheBackground) {
    for (int number = 0; number < 12'000; ++number) {
        story.home.file("Videos/many/" + std::to_string(number));
    }
    ExplorerDesk& explorer = open();
    explorer.goTo(story.home.path("Videos"));
    ASSERT_TRUE(explorer.enter(rowNamed(explorer, "many")));
    EXPECT_EQ(explorer.entries()->count(), 0) << "nobody waits for them";
    EXPECT_EQ(bytesOf(explorer.emptyText()), "Nothing yet…");
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 12'000; }));
    explorer.moveTo(11'999);
    explorer.setOrder(static_cast<int>(ExplorerOrder::name));
    EXPECT_EQ(explorer.current(), 0);
    explorer.setFilter("1199");
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 12; }));
    EXPECT_EQ(names(explorer).front(), "11199") << "the latest wish alone";
    explorer.leave();
    explorer.goTo(story.home.path("Videos/many/77"));
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 12'000; }));
    EXPECT_EQ(explorer.current(), rowNamed(explorer, "77")) << "on what was gone to";
}

TEST(ExplorerOfVeryMany, ReadsThemWhileWhatIsCertainOfSomeIsStillLookedFor) {
    // Each row that came into sight took a thread of its own for that, until sorting waited for two minutes.
    std::latch isKnown(1); // Outlives the thread that waits for it.
    AppStory story;
    for (int number = 0; number < 12'000; ++number) {
        story.home.file("many/" + std::to_string(number));
    }
    story.services.folders.know = [&](const auto&) {
        isKnown.wait();
        return std::map<std::string, lumo::Explanation>();
    };
    ExplorerDesk& explorer = *story.app().explorer();
    explorer.setOpen(true);
    explorer.goTo(story.home.path("many"));
    EXPECT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 12'000; }));
    for (int row = 0; row < 20; ++row) {
        EXPECT_EQ(read(explorer, row, ExplorerList::groupRole), "-1");
        QCoreApplication::processEvents();
    }
    explorer.setFilter("1199");
    EXPECT_TRUE(story.waitUntil([&] { return explorer.entries()->count() == 12; }));
    isKnown.count_down();
}

TEST_F(ExplorerInTheWindow, SeesWithANewScanWhatOthersHaveDoneAndStaysWhereItIsWithItsMarks) {
    ExplorerDesk& explorer = open();
    explorer.goTo(story.home.path("Videos/trip"));
    explorer.toggleMark(rowNamed(explorer, "b"));
    fs::remove(story.home.path("Videos/trip/odd \xff\n"));
    story.home.file("Videos/trip/new", 1000);
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntil([&] { return rowNamed(explorer, "new") >= 0; }));
    EXPECT_THAT(names(explorer), ElementsAre("b", "new"));
    EXPECT_EQ(explorer.path(), story.home.path("Videos/trip"));
    EXPECT_THAT(bytesOf(explorer.markedText()), StartsWith("1 marked: 1"));
    ASSERT_TRUE(story.waitUntilIdle());
}

TEST_F(ExplorerInTheWindow, SaysWhyAThingStays) {
    story.home.file("Library/Application Support/TarvoAI/notes", 1000);
    ExplorerDesk& explorer = open();
    explorer.goTo(story.home.path("Library/Application Support"));
    explorer.setAside(rowNamed(explorer, "TarvoAI"));
    ASSERT_TRUE(story.waitUntil([&] { return !story.app().activity()->notice().isEmpty(); }));
    EXPECT_THAT(bytesOf(story.app().activity()->notice()), StartsWith("TarvoAI: "));
    EXPECT_FALSE(story.app().question()->isAsking());
}

// Whoever left a folder by way of the map was put on the first row instead of on the folder's.
TEST_F(ExplorerInTheWindow, LeadsTheMapAndIsLedByIt) {
    ExplorerDesk& explorer = open();
    MapModel& map = *story.app().map();
    ASSERT_TRUE(explorer.enter(rowNamed(explorer, "Videos")));
    ASSERT_TRUE(mapShows(story.home.path("Videos")));
    ASSERT_TRUE(explorer.enter(rowNamed(explorer, "trip")));
    ASSERT_TRUE(mapShows(story.home.path("Videos/trip")));
    ASSERT_GE(map.depth(), 2) << "one more level, since it lies in the one that was shown";
    map.zoomOut(map.depth() - 1);
    EXPECT_EQ(explorer.path(), story.home.path("Videos"));
    EXPECT_EQ(explorer.current(), rowNamed(explorer, "trip"));
    map.zoomInto(keyOf(DiskMap::insideID(story.home.path("Videos/trip"))));
    ASSERT_TRUE(story.waitUntil([&] { return explorer.path() == story.home.path("Videos/trip"); }));
    explorer.leaveTo(0);
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 0; }));
    EXPECT_EQ(explorer.path(), story.home.path());
    // Nobody is led who has closed it.
    explorer.setOpen(false);
    story.app().places()->openFolder(story.home.path("Music"));
    ASSERT_TRUE(mapShows(story.home.path("Music")));
    EXPECT_EQ(explorer.path(), story.home.path());
    explorer.setOpen(true);
    EXPECT_EQ(explorer.path(), story.home.path("Music"));
}

// The map goes straight on through a folder with next to nothing but another one, and took the explorer
// along, which then could never be in the first.
TEST_F(ExplorerInTheWindow, StaysInAFolderThatTheMapGoesThrough) {
    story.home.file("Mail/all/box", 2'000'000);
    ExplorerDesk& explorer = open();
    ASSERT_TRUE(explorer.enter(rowNamed(explorer, "Mail")));
    ASSERT_TRUE(mapShows(story.home.path("Mail/all")));
    EXPECT_EQ(explorer.path(), story.home.path("Mail"));
}

TEST_F(ExplorerInTheWindow, TellsWhatIsCertainOfEntriesAndWhatAThingIs) {
    story.addCache(2'000'000);
    ExplorerDesk& explorer = open();
    const auto wordOf = [&](const std::string& name) {
        return read(explorer, rowNamed(explorer, name), ExplorerList::wordRole);
    };
    EXPECT_TRUE(story.waitUntil([&] { return wordOf("Videos") == groupTitle(RowGroup::keep); }));
    explorer.explain(rowNamed(explorer, "Videos"));
    ASSERT_TRUE(story.waitUntil([&] { return story.app().question()->isOpen(); }));
    EXPECT_EQ(story.app().question()->title(), "Videos");
    EXPECT_THAT(bytesOf(story.app().question()->message()), HasSubstr("\n"));
}

TEST(ExplorerOfTheDemo, ShowsTheMadeUpHomeWhoseSumsAddUp) {
    lumo::NamedTree tree{std::string(DemoDisk::home())};
    DemoDisk::fill(tree, {});
    std::int64_t below = 0;
    for (const lumo::NamedEntry& entry : tree.entriesOf(lumo::NamedTree::root)) {
        below += entry.sums.bytes;
    }
    EXPECT_EQ(tree.entry(lumo::NamedTree::root).sums.bytes, below);
    AppStory story({.isDemo = true});
    story.app().settings()->setWelcomeSeen(true);
    story.app().start();
    ExplorerDesk& explorer = *story.app().explorer();
    explorer.setOpen(true);
    ASSERT_TRUE(story.waitUntil([&] { return explorer.entries()->count() > 3; }));
    explorer.setAside(0);
    EXPECT_EQ(bytesOf(story.app().activity()->notice()), DemoDisk::notice());
    EXPECT_FALSE(story.app().question()->isAsking());
}
