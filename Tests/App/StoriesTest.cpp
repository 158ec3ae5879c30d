#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/History/SnapshotStore.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Flows/WeeklySwitch.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <filesystem>
#include <latch>
#include <map>
#include <memory>
#include <thread>

using namespace std::chrono_literals;
using namespace tarvo;
using namespace tarvo::testing;
using lumo::CleanupAction;
using lumo::CleanupOutcome;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

namespace {

constexpr std::int64_t gigabyte = 1'000'000'000;

/// An application that has been used before and has something to clean.
void settle(AppStory& story) {
    story.addCache(2'000'000);
    story.addOwn(1'000'000);
    story.app().settings()->setWelcomeSeen(true);
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
}

bool cleanSelected(AppStory& story) {
    story.app().cleaning()->requestClean();
    story.app().question()->accept();
    return story.app().activity()->isBusy() && story.waitUntilIdle();
}

std::vector<CleanupOutcome> logOf(const AppStory& story) {
    return lumo::HistoryLog::outcomes(lumo::OwnFiles::historyLog(story.home.path())).value();
}

std::vector<std::string> titlesOf(const std::vector<Notification>& notices) {
    std::vector<std::string> titles;
    for (const Notification& notice : notices) {
        titles.push_back(notice.id + "|" + notice.title);
    }
    return titles;
}

/// Carries out the actions, and lets each of them wait until somebody stops it.
auto waitingForTheStop(std::latch& hasBegun) {
    return [&hasBegun](const std::vector<CleanupAction>& actions, const lumo::PathGuard& guard,
                       lumo::CleanupExecutor::Control control) {
        control.onBegin = [&hasBegun, stop = control.stop](std::size_t) {
            hasBegun.count_down();
            while (!stop.stop_requested()) {
                std::this_thread::yield();
            }
        };
        return usualCarryOut(actions, guard, control);
    };
}

} // namespace

TEST(AppStories, TheWelcomeHoldsTheFirstScanBackOnce) {
    AppStory story;
    story.addCache(2'000'000);
    story.app().start();
    EXPECT_TRUE(story.app().showsWelcome());
    EXPECT_FALSE(story.app().activity()->isBusy());
    std::vector<Kinds::Phase> phases;
    QObject::connect(story.app().activity(), &Activity::phaseChanged, &story.app(),
                     [&] { phases.push_back(story.app().activity()->kind()); });
    story.app().finishWelcome();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_THAT(phases,
                ElementsAre(Kinds::Phase::Scanning, Kinds::Phase::ScanningFolders, Kinds::Phase::Idle));
    EXPECT_TRUE(story.app().ticked()->plan().selection().contains(AppStory::cacheKey));
    EXPECT_THAT(story.app().growth()->growth(), IsEmpty()) << "there is nothing to compare with yet";
    EXPECT_THAT(lumo::SnapshotStore(story.home.path()).load(), SizeIs(1));
    story.quit();
    EXPECT_FALSE(story.app().showsWelcome()) << "was seen before the restart";
    story.app().start();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(story.app().scanning()->hasReport());
}

// The window praised a tidy disk, and told of another volume.
TEST(AppStories, AHomeThatIsGoneIsNoTidyDisk) {
    AppStory story;
    story.addCache(2'000'000);
    const auto scan = [&] {
        story.app().scanning()->scan();
        EXPECT_TRUE(story.waitUntilIdle());
    };
    scan();
    bool isStored = false;
    QObject::connect(story.app().settings(), &Settings::stored, &story.app(), [&] { isStored = true; });
    story.app().settings()->setTextScale(1.3);
    ASSERT_TRUE(story.waitUntil([&] { return isStored; }));
    const std::string away = story.home.path() + " away";
    std::filesystem::rename(story.home.path(), away);
    scan();
    EXPECT_FALSE(story.app().scanning()->hasSeenHome());
    EXPECT_EQ(story.app().explaining()->summaryText(), "") << "nothing is known of the disk";
    EXPECT_EQ(story.app().activity()->notice(), shown(*homeProblem(story.services.desk)));
    EXPECT_THAT(bytesOf(story.app().activity()->notice()), HasSubstr(story.home.path()));
    EXPECT_EQ(story.app().settings()->textScale(), 1.3) << "what is stored could not be seen";
    std::filesystem::rename(away, story.home.path());
    scan();
    EXPECT_TRUE(story.app().scanning()->hasSeenHome());
    EXPECT_NE(story.app().explaining()->summaryText(), "");
    EXPECT_TRUE(story.app().ticked()->plan().canSelect(AppStory::cacheKey));
}

TEST(AppStories, WhatIsUntickedDuringTheSecondPassStaysSo) {
    AppStory story;
    story.addCache(2'000'000);
    story.app().scanning()->scan();
    ASSERT_TRUE(
        story.waitUntil([&] { return story.app().activity()->kind() == Kinds::Phase::ScanningFolders; }));
    EXPECT_TRUE(story.app().scanning()->hasReport()) << "the first pass is shown";
    story.app().ticked()->toggle(AppStory::cacheKey);
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_THAT(story.app().ticked()->plan().selection(), IsEmpty());
    story.app().ticked()->selectSafe();
    EXPECT_TRUE(story.app().ticked()->plan().selection().contains(AppStory::cacheKey));
}

// A rescan took what only the second pass sees off the list for a moment, and ticked it again afterwards.
TEST(AppStories, AProjectThatWasUntickedStaysSoThroughARescan) {
    AppStory story;
    settle(story);
    story.home.file("work/site/node_modules/all", 2'000'000);
    story.home.file("work/site/package.json", 10);
    for (const char* old : {"work/site/package.json", "work/site"}) {
        story.home.setModified(old, 1'600'000'000);
    }
    AppModel& app = story.app();
    app.scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    const QString key = "proyecto:work/site/node_modules";
    ASSERT_TRUE(app.ticked()->plan().selection().contains(idOf(key)));
    app.ticked()->toggle(key);
    app.scanning()->scan();
    ASSERT_TRUE(story.waitUntil([&] { return app.activity()->kind() == Kinds::Phase::ScanningFolders; }));
    EXPECT_GE(app.rows()->indexOf(key), 0);
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_FALSE(app.ticked()->plan().selection().contains(idOf(key)));
    app.ticked()->toggle(key);
    app.cleaning()->requestClean();
    app.question()->accept();
    ASSERT_TRUE(story.waitUntil([&] { return app.activity()->kind() == Kinds::Phase::ScanningFolders; }));
    EXPECT_EQ(app.rows()->indexOf(key), -1) << "was cleaned";
    ASSERT_TRUE(story.waitUntilIdle());
}

TEST(AppStories, ACleanupIsConfirmedDoneUndoneAndEmptied) {
    AppStory story;
    settle(story);
    AppModel& app = story.app();
    app.question()->accept();
    EXPECT_FALSE(app.activity()->isBusy()) << "nobody was asked";
    app.ticked()->toggle(AppStory::ownKey);
    app.cleaning()->requestClean();
    ASSERT_TRUE(app.question()->isConfirming());
    EXPECT_THAT(bytesOf(app.question()->message()),
                HasSubstr(" of your files go to Recently Cleaned for 7 days"));
    app.ticked()->deselectAll();
    app.question()->accept();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_FALSE(story.hasCache()) << "the user agreed to it before the ticks were taken back";
    EXPECT_FALSE(story.hasOwn());
    EXPECT_THAT(bytesOf(app.scanning()->statusText()),
                StartsWith("Cleanup done: 2 MB freed and 1 MB in Recently Cleaned"));
    EXPECT_FALSE(app.celebrating()->isCelebrating()) << "so little is no reason";
    ASSERT_TRUE(app.holding()->canUndo());

    app.holding()->undoLastCleanup();
    EXPECT_EQ(bytesOf(app.scanning()->statusText()), "Putting back…");
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(story.hasOwn());
    EXPECT_EQ(bytesOf(app.activity()->notice()), "Restored 1 item from Recently Cleaned");
    EXPECT_FALSE(app.holding()->canUndo());

    // What stood in the way for a moment took the way back off until the next scan.
    app.ticked()->toggle(AppStory::ownKey);
    ASSERT_TRUE(cleanSelected(story));
    story.addOwn(10);
    app.holding()->undoLastCleanup();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(app.holding()->canUndo());
    std::filesystem::remove_all(story.home.path(".cache/whisper"));
    app.holding()->undoLastCleanup();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(story.hasOwn());
    EXPECT_FALSE(app.holding()->canUndo());

    app.ticked()->toggle(AppStory::ownKey);
    ASSERT_TRUE(cleanSelected(story));
    ASSERT_GT(app.holding()->holdingBytes(), 0);
    app.question()->accept();
    EXPECT_FALSE(app.activity()->isBusy()) << "nobody was asked";
    app.holding()->requestEmpty(false);
    app.question()->accept();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(bytesOf(app.activity()->notice()), "Freed 1 MB: Recently Cleaned was emptied");
    EXPECT_EQ(app.holding()->holdingBytes(), 0);
    EXPECT_FALSE(story.hasOwn());
}

// A folder of the user's that was put back was still ticked, and the next cleanup took it again; the emptied
// folder of a cache stayed in the list as a ticked row of nothing.
TEST(AppStories, WhatWasCleanedIsNeitherTickedNorShownUntilThereIsSomethingAgain) {
    AppStory story;
    settle(story);
    AppModel& app = story.app();
    const auto shows = [&](const char* key) { return app.rows()->indexOf(key) >= 0; };
    app.ticked()->toggle(AppStory::ownKey);
    ASSERT_TRUE(cleanSelected(story));
    EXPECT_THAT(app.ticked()->plan().selection(), IsEmpty());
    EXPECT_FALSE(shows(AppStory::cacheKey) || shows(AppStory::ownKey));
    app.holding()->undoLastCleanup();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(shows(AppStory::ownKey));
    EXPECT_FALSE(shows(AppStory::cacheKey));
    EXPECT_THAT(app.ticked()->plan().selection(), IsEmpty());
    story.addCache(3'000'000);
    app.scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_THAT(app.ticked()->plan().selection(), ElementsAre(AppStory::cacheKey)) << "as at the first start";

    app.ticked()->toggle(AppStory::ownKey);
    app.places()->protect({AppStory::ownKey});
    ASSERT_TRUE(story.waitUntil([&] { return app.ticked()->plan().selection().size() == 1; }));
    EXPECT_EQ(app.ticked()->plan().stateOf(AppStory::ownKey), TileState::blocked);
    // The sentence at the top went on with what had been free to go.
    EXPECT_FALSE(app.explaining()->summaryText().contains(" 0 MB"));
    app.places()->protect({AppStory::cacheKey});
    EXPECT_TRUE(story.waitUntil([&] { return app.explaining()->summaryText().contains(" 0 MB"); }));
}

// Rows and tiles of what was gone stayed until the scan that follows, and could be ticked.
TEST(AppStories, WhatACleanupTookIsGoneBeforeTheNextScanHasLooked) {
    AppStory story;
    settle(story);
    AppModel& app = story.app();
    const std::string own = app.map()->pathsOf(AppStory::ownKey).front();
    std::vector<std::string> left;
    QObject::connect(app.ticked(), &TickedDesk::taken, &app, [&] {
        for (const char* key : {AppStory::cacheKey, AppStory::ownKey}) {
            app.ticked()->toggle(key);
            if (app.rows()->indexOf(key) >= 0 || app.ticked()->plan().stateOf(key) != TileState::info) {
                left.emplace_back(key);
            }
        }
    });
    app.cleaning()->requestClean();
    app.question()->accept();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_FALSE(story.hasCache());
    EXPECT_THAT(left, ElementsAre(AppStory::ownKey)) << "which was not cleaned";
    // What is set aside by its path goes with the row that stands for it.
    left.clear();
    app.ticked()->deselectAll();
    app.cleaning()->requestAside({own});
    ASSERT_TRUE(story.waitUntil([&] { return app.question()->isOpen(); }));
    app.question()->accept();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_FALSE(story.hasOwn());
    EXPECT_THAT(left, IsEmpty());
}

// What failed was hidden with the rest while the cleanup went on.
TEST(AppStories, WhatCouldNotBeCleanedIsShownAgainAtOnce) {
    AppStory story;
    settle(story);
    AppModel& app = story.app();
    app.ticked()->toggle(AppStory::ownKey);
    const CleanupOutcome failed{.id = AppStory::ownKey, .title = "x", .status = lumo::CleanupStatus::failed};
    const CleanupOutcome done{.id = AppStory::cacheKey, .title = "y", .freedBytes = 1};
    app.ticked()->hide({AppStory::ownKey, AppStory::cacheKey});
    EXPECT_EQ(app.rows()->indexOf(AppStory::ownKey), -1);
    app.ticked()->takeOut({failed, done});
    EXPECT_GE(app.rows()->indexOf(AppStory::ownKey), 0);
    EXPECT_EQ(app.rows()->indexOf(AppStory::cacheKey), -1);
    EXPECT_THAT(app.ticked()->plan().selection(), ElementsAre(AppStory::ownKey)) << "as it was";
}

TEST(AppStories, WhatIsProtectedBetweenQuestionAndAnswerStays) {
    AppStory story;
    settle(story);
    story.app().cleaning()->requestClean();
    ASSERT_TRUE(story.app().question()->isConfirming());
    // Another program stores it: this one has not heard of it.
    Preferences preferences = Preferences::load(story.home.path());
    ASSERT_TRUE(preferences.set(preference::protectedFolders, {story.home.path(".npm")}));
    story.app().question()->accept();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(story.hasCache());
    EXPECT_EQ(bytesOf(story.app().activity()->notice()),
              "“npx temporary packages” was left as it was: it's in a folder protected in Settings");
    EXPECT_EQ(story.app().ticked()->selectedBytes(), 0) << "the new plan knows";
}

TEST(AppStories, WhatAToolLeftIsTold) {
    // pip left the folder of a newer pip where it was and was done, and the window said nothing.
    AppStory story;
    story.home.program(".local/bin/pip", "true");
    story.home.file(".cache/pip/http-v2/x", 3000000);
    settle(story);
    story.app().cleaning()->requestClean();
    story.app().question()->accept();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(
        bytesOf(story.app().activity()->notice()),
        "pip cache: the tool freed nothing here. It is no longer selected: quit the program that uses it and "
        "try again, or leave it as it is.");
    EXPECT_FALSE(story.hasCache());
    // It was ticked again at once, and to be cleaned with the same result for ever.
    EXPECT_FALSE(story.app().ticked()->hasTicked());
    EXPECT_GE(story.app().rows()->indexOf("pip-cache"), 0) << "it can be ticked";
}

TEST(AppStories, ACelebrationOpensFromHalfAGigabyteOn) {
    for (const std::int64_t freed : {499'999'999, 500'000'000}) {
        AppStory story;
        story.services.carryOut = [&](const std::vector<CleanupAction>& actions, const lumo::PathGuard& guard,
                                      const lumo::CleanupExecutor::Control& control) {
            std::vector<CleanupOutcome> outcomes = usualCarryOut(actions, guard, control);
            outcomes.front().freedBytes = freed;
            return outcomes;
        };
        settle(story);
        ASSERT_TRUE(cleanSelected(story));
        EXPECT_EQ(story.app().celebrating()->lastShare()->freedBytes, freed);
        const bool opens = freed >= 500'000'000;
        EXPECT_EQ(story.waitUntil([&] { return story.app().celebrating()->isCelebrating() || !opens; }),
                  true);
        EXPECT_EQ(story.app().celebrating()->isCelebrating(), opens) << freed;
    }
}

TEST(AppStories, LowSpaceIsToldOnceADayAndAgainAfterItWasMended) {
    AppStory story;
    settle(story);
    const auto noticesAfterLook = [&](std::int64_t free) {
        story.setFree(free);
        EXPECT_TRUE(story.lookAround());
        return story.notices.size();
    };
    EXPECT_EQ(noticesAfterLook(10 * gigabyte), 0U);
    EXPECT_EQ(noticesAfterLook(10 * gigabyte - 1), 1U);
    EXPECT_EQ(noticesAfterLook(10 * gigabyte - 1), 1U);
    story.pass(23h);
    EXPECT_EQ(noticesAfterLook(11 * gigabyte), 1U) << "between the limits nothing is forgotten";
    EXPECT_EQ(noticesAfterLook(9 * gigabyte), 1U);
    story.pass(2h);
    EXPECT_EQ(noticesAfterLook(9 * gigabyte), 2U);
    EXPECT_EQ(noticesAfterLook(12 * gigabyte), 2U);
    EXPECT_EQ(noticesAfterLook(9 * gigabyte), 3U) << "there was more in between";
    story.app().settings()->setNotifyLowSpace(false);
    story.pass(48h);
    EXPECT_EQ(noticesAfterLook(gigabyte), 3U);
    EXPECT_THAT(titlesOf(story.notices).front(), "poco-espacio|Only 10.0 GB free");
}

TEST(AppStories, LowSpaceThatNobodyCouldShowIsToldWhenSomebodyCan) {
    // At login the desktop's service came seconds later, and the warning of the day was lost.
    AppStory story;
    settle(story);
    story.showsNotices = false;
    story.setFree(9 * gigabyte);
    ASSERT_TRUE(story.lookAround());
    story.showsNotices = true;
    ASSERT_TRUE(story.lookAround());
    ASSERT_TRUE(story.lookAround());
    EXPECT_THAT(story.notices, SizeIs(1));
}

// The warning at a start was sent before the scan had seen anything, could not say what would help, and kept
// silent for a day. On a disk that is full the first words were about a preferences file.
TEST(AppStories, TheWarningOfAStartTellsWhatCanBeRecoveredAndNothingElseIsSaid) {
    AppStory story;
    story.addCache(501'000'000);
    story.home.folder(".config");
    std::filesystem::create_symlink("nowhere/to/write", story.home.path(".config/TarvoAI"));
    story.setFree(9 * gigabyte);
    story.app().start();
    story.app().finishWelcome();
    ASSERT_TRUE(story.waitUntil([&] { return !story.notices.empty(); }));
    EXPECT_THAT(story.notices.front().body, StartsWith("You can recover 501 MB with no risk."));
    ASSERT_TRUE(story.lookAround());
    EXPECT_THAT(story.notices, SizeIs(1)) << "remembered, although it cannot be stored";
    EXPECT_EQ(bytesOf(story.app().activity()->notice()), "");
    story.app().ticked()->raiseGoal();
    EXPECT_TRUE(story.waitUntil([&] { return !story.app().activity()->notice().isEmpty(); }))
        << "the user changed that";
}

TEST(AppStories, TheWeeklyCleanupTakesWhatHasGatheredSinceTheLastScan) {
    // It relied on the scan of minutes before, found too little there, and the week counted as done.
    AppStory story;
    settle(story);
    story.addCache(201'000'000);
    story.pass(4min);
    story.app().settings()->setAutoCleanWeekly(true);
    ASSERT_TRUE(story.waitUntil(
        [&] { return Preferences::load(story.home.path()).value(preference::autoCleanWeekly); }));
    ASSERT_TRUE(story.lookAround());
    EXPECT_TRUE(story.hasCache()) << "first it scans";
    story.pass(1min);
    ASSERT_TRUE(story.lookAround());
    EXPECT_FALSE(story.hasCache());
    EXPECT_THAT(titlesOf(story.notices), ElementsAre("limpieza-semanal|Weekly cleanup: 201 MB freed"));
}

// Only the log knew what it had not been able to clean.
TEST(AppStories, TheWeeklyCleanupSaysWhatItLeft) {
    AppStory story;
    story.services.carryOut = [](const auto& actions, const auto& guard, const auto& control) {
        auto outcomes = usualCarryOut(actions, guard, control);
        outcomes.front().status = lumo::CleanupStatus::failed;
        outcomes.front().message = "in use";
        return outcomes;
    };
    story.addCache(201'000'000);
    settle(story);
    story.app().settings()->setAutoCleanWeekly(true);
    ASSERT_TRUE(story.waitUntil(
        [&] { return Preferences::load(story.home.path()).value(preference::autoCleanWeekly); }));
    ASSERT_TRUE(story.lookAround());
    EXPECT_THAT(bytesOf(story.app().activity()->notice()), HasSubstr("in use"));
}

TEST(AppStories, AMonthOfWeeklyCleanupsTakesOnlyWhatRecreatesItself) {
    AppStory story;
    settle(story);
    story.app().settings()->setAutoCleanWeekly(true);
    // It is written in the background, and a cleanup that nobody wants yet is not run.
    ASSERT_TRUE(story.waitUntil(
        [&] { return Preferences::load(story.home.path()).value(preference::autoCleanWeekly); }));
    std::vector<int> days;
    for (int day = 0; day < 30; ++day) {
        story.addCache(201'000'000);
        // The first look finds the report too old, the next one has a new report.
        ASSERT_TRUE(story.lookAround());
        ASSERT_TRUE(story.lookAround());
        if (!story.hasCache()) {
            days.push_back(day);
        }
        story.pass(24h);
    }
    EXPECT_THAT(days, ElementsAre(7, 14, 21, 28)) << "the report of the first day knew of too little";
    EXPECT_TRUE(story.hasOwn());
    EXPECT_THAT(titlesOf(story.notices), ::testing::Each("limpieza-semanal|Weekly cleanup: 201 MB freed"));
    EXPECT_THAT(story.notices, SizeIs(4));
    EXPECT_THAT(bytesOf(story.app().monitor()->autoCleanStatusText()),
                HasSubstr(" · the last one freed 201 MB"));
    EXPECT_THAT(lumo::SnapshotStore(story.home.path()).load(), SizeIs(::testing::Le(60U)));
}

TEST(AppStories, AVolumeThatCannotBeReadLeavesTheMapAsItWas) {
    AppStory story;
    const std::string folder(lumo::platform::volumeFolders().front());
    story.services.mountedVolumes = [&] {
        return std::vector<Volume>{{.path = folder + "/Backup", .name = "Backup", .total = 10, .free = 5}};
    };
    settle(story);
    story.app().volumes()->refreshVolumes();
    ASSERT_TRUE(story.waitUntil([&] { return !story.app().volumes()->otherVolumeList().empty(); }));
    story.app().volumes()->openVolume(0);
    ASSERT_TRUE(story.waitUntil([&] { return !story.app().activity()->notice().isEmpty(); }));
    EXPECT_THAT(bytesOf(story.app().activity()->notice()), StartsWith("I couldn't read Backup."));
    EXPECT_EQ(story.app().map()->depth(), 0);
}

TEST(AppStories, QuittingWhileCleaningEndsAfterTheActionInHand) {
    AppStory story;
    std::latch hasBegun(1);
    story.services.carryOut = waitingForTheStop(hasBegun);
    settle(story);
    story.app().ticked()->toggle(AppStory::ownKey);
    story.app().cleaning()->requestClean();
    story.app().question()->accept();
    hasBegun.wait();
    story.quit();
    EXPECT_THAT(logOf(story), SizeIs(1));
    EXPECT_NE(story.hasCache(), story.hasOwn()) << "one of the two was in hand";
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(story.app().activity()->notice(), "") << "the home is in order and nobody holds its lock";
}

// It said that the cleanup was done, and nowhere that something was left.
TEST(AppStories, ACleanupThatIsStoppedSaysHowMuchWasLeft) {
    AppStory story;
    std::latch hasBegun(1);
    story.services.carryOut = waitingForTheStop(hasBegun);
    settle(story);
    story.app().ticked()->toggle(AppStory::ownKey);
    story.app().cleaning()->requestClean();
    story.app().question()->accept();
    hasBegun.wait();
    story.app().activity()->stop();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_NE(story.hasCache(), story.hasOwn()) << "one of the two was in hand";
    EXPECT_EQ(story.app().activity()->notice(), shown(stoppedText(1)));
    EXPECT_THAT(bytesOf(story.app().scanning()->statusText()), StartsWith("Cleanup done: "));
}

// What closer looks had found meanwhile took the home off the map after a rescan.
TEST(AppStories, AHomeWithNothingToTickShowsItselfAlsoAfterARescan) {
    AppStory story;
    story.home.file("Videos/wedding.mkv", 3'000'000);
    story.services.look = [desk = story.services.desk](lumo::InventoryKind kind,
                                                       const std::stop_token& stop) {
        const bool isOfFiles = kind == lumo::InventoryKind::large;
        return isOfFiles ? lookedAt({.kinds = {kind}, .minimumBytes = 1000}, desk, {.stop = stop})
                         : CloserLook{.found = {.kind = kind}};
    };
    for (int scan = 0; scan < 3; ++scan) {
        story.app().scanning()->scan();
        ASSERT_TRUE(story.waitUntilIdle());
        ASSERT_TRUE(story.waitUntil([&] { return !story.app().items()->isLooking(); }));
        ASSERT_TRUE(story.waitUntil([&] { return !story.app().map()->isZoomLoading(); }));
        EXPECT_EQ(story.app().map()->depth(), 1) << scan;
    }
    EXPECT_FALSE(story.app().ticked()->rows().empty()) << "the film is found by the closer look";
}

TEST(AppStories, StoppingAScanKeepsWhatIsShownAndCleaningMayCutItShort) {
    AppStory story;
    settle(story);
    const auto shownBefore = story.app().scanning()->report();
    story.app().scanning()->scan();
    story.app().scanning()->scan();
    story.app().holding()->undoLastCleanup();
    EXPECT_EQ(story.app().activity()->kind(), Kinds::Phase::Scanning) << "one thing at a time";
    story.app().activity()->stop();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(story.app().scanning()->report(), shownBefore);

    story.app().scanning()->scan();
    ASSERT_TRUE(
        story.waitUntil([&] { return story.app().activity()->kind() == Kinds::Phase::ScanningFolders; }));
    story.app().cleaning()->requestClean();
    story.app().question()->accept();
    ASSERT_TRUE(story.waitUntil([&] { return !story.hasCache() && !story.app().activity()->isBusy(); }));
    EXPECT_THAT(logOf(story), SizeIs(1));
}

// A second question during the wait for the scan to stop replaced what was agreed to.
TEST(AppStories, OnlyTheAnswerToTheQuestionThatWasAskedCounts) {
    AppStory story;
    settle(story);
    AppModel& app = story.app();
    app.scanning()->scan();
    ASSERT_TRUE(story.waitUntil([&] { return app.activity()->kind() == Kinds::Phase::ScanningFolders; }));
    app.cleaning()->requestClean();
    app.question()->accept();
    app.ticked()->toggle(AppStory::ownKey);
    app.cleaning()->requestClean();
    EXPECT_FALSE(app.question()->isConfirming()) << "one is answered and not yet begun";
    ASSERT_TRUE(story.waitUntil([&] { return !story.hasCache() && !app.activity()->isBusy(); }));
    EXPECT_TRUE(story.hasOwn());

    app.cleaning()->requestClean();
    ASSERT_TRUE(app.question()->isConfirming());
    story.pass(4h);
    ASSERT_TRUE(story.lookAround());
    EXPECT_EQ(app.activity()->kind(), Kinds::Phase::Idle) << "nothing begins behind a question";
    app.question()->cancel();
    EXPECT_TRUE(story.hasOwn());
}

TEST(AppStories, AClockThatWasSetAheadEndsNothing) {
    AppStory story;
    settle(story);
    story.app().ticked()->toggle(AppStory::ownKey);
    ASSERT_TRUE(cleanSelected(story));
    const qint64 held = story.app().holding()->holdingBytes();
    ASSERT_GT(held, 0);
    story.setClockAhead(std::chrono::days(9));
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(story.app().holding()->holdingBytes(), held);
    story.pass(std::chrono::hours(2));
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(story.app().holding()->holdingBytes(), 0) << "its time is over by any clock now";
}

TEST(AppStories, DamagedPreferencesLetNothingBeTicked) {
    AppStory story;
    story.addCache(2'000'000);
    story.home.folder(".config/TarvoAI");
    story.home.fileWith(".config/TarvoAI/preferencias.json", "{torn");
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(story.app().settings()->goalBytes(), 24 * gigabyte);
    EXPECT_THAT(story.app().ticked()->plan().selection(), IsEmpty());
    story.app().ticked()->toggle(AppStory::cacheKey);
    story.app().cleaning()->requestClean();
    EXPECT_FALSE(story.app().question()->isConfirming());
    // Any change wrote a new store without the protected folders, and everything could be ticked again.
    story.app().finishWelcome();
    story.app().ticked()->raiseGoal();
    ASSERT_TRUE(story.waitUntil([&] { return !story.app().activity()->notice().isEmpty(); }));
    EXPECT_THAT(bytesOf(story.app().activity()->notice()), HasSubstr("mend the file or delete it"));
    story.quit();
    EXPECT_EQ(contentOf(story.home.path(".config/TarvoAI/preferencias.json")), "{torn");
}

TEST(AppStories, TheDemoTouchesNothing) {
    AppStory story({.isDemo = true});
    story.app().settings()->setWelcomeSeen(true);
    story.app().finishWelcome();
    AppModel& app = story.app();
    ASSERT_TRUE(app.scanning()->hasReport());
    EXPECT_FALSE(app.monitor()->isMonitoring());
    EXPECT_THAT(app.growth()->growth(), ::testing::Not(IsEmpty()));
    // Under the pointer an unknown folder had its path alone, although it was known what it is.
    const MapModel& map = *app.map();
    ASSERT_TRUE(story.waitUntil([&] { return map.count() > 0; }));
    std::string unknown;
    for (int row = 0; row < map.count(); ++row) {
        unknown += map.tile(row, TileList::unknownRole).toBool()
                       ? bytesOf(map.tile(row, TileList::detailRole).toString()) + ";"
                       : "";
    }
    for (const lumo::Explanation& explanation : DemoDisk::explanations({})) {
        EXPECT_THAT(unknown, ::testing::HasSubstr(explanation.whatItIs + " · "));
    }
    app.cleaning()->requestClean();
    EXPECT_FALSE(app.question()->isConfirming());
    EXPECT_EQ(bytesOf(app.activity()->notice()), DemoDisk::notice());
    EXPECT_TRUE(story.waitUntil([&] { return app.celebrating()->isCelebrating(); }));
    app.holding()->undoLastCleanup();
    app.ticked()->raiseGoal();
    EXPECT_EQ(app.settings()->goalBytes(), 25 * gigabyte);
    story.quit();
    EXPECT_TRUE(std::filesystem::is_empty(story.home.path()));
    EXPECT_THAT(story.notices, IsEmpty());
}

TEST(AppStories, TheMapOpensFoldersFromWhatWasListedAndForgetsThemWithANewScan) {
    AppStory story;
    std::atomic<int> listings = 0;
    story.services.folders.list = [&, list = story.services.folders.list](
                                      const std::vector<std::string>& paths, const std::stop_token& end) {
        ++listings;
        return list(paths, end);
    };
    story.home.files({".npm/_npx/a/one", ".npm/_npx/b/two"}, 60'000);
    settle(story);
    MapModel& map = *story.app().map();
    map.setWidth(600);
    map.setHeight(400);
    map.zoomInto(AppStory::cacheKey);
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    EXPECT_EQ(map.count(), 3);
    map.zoomInto("no such tile");
    EXPECT_EQ(map.depth(), 1);
    map.zoomOut(0);
    ASSERT_TRUE(story.waitUntil([&] { return listings == 2; })) << "both rows were listed ahead of time";
    map.zoomInto(AppStory::cacheKey);
    EXPECT_EQ(map.depth(), 1) << "at once";
    EXPECT_EQ(map.zoomTitles().front(), "npx temporary packages");
    story.app().scanning()->scan();
    EXPECT_EQ(map.depth(), 0);
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_TRUE(story.waitUntil([&] { return listings == 4; }));
}

// A click on a folder that holds nothing did nothing, as often as one liked, and the way to a folder inside a
// tile left out the tile's.
TEST(AppStories, TheMapSaysWhatCannotBeOpenedAndNamesTheWholeWay) {
    AppStory story;
    const std::string sealed = story.home.path("Videos/sealed");
    // Who may read everything would read that, too.
    story.services.folders.canOpen =
        [&, canOpen = story.services.folders.canOpen](const std::vector<std::string>& paths) {
            return canOpen(paths) && paths.front() != sealed;
        };
    settle(story);
    story.home.files({"Videos/2024/a", "Videos/2025/b"}, 90'000);
    story.home.folder("Videos/empty");
    story.home.folder("Videos/sealed");
    AppModel& app = story.app();
    MapModel& map = *app.map();
    map.setWidth(900);
    map.setHeight(600);
    app.places()->openFolder(story.home.path());
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    map.zoomInto(keyOf("dentro:" + story.home.path("Videos/2024")));
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 2; }));
    EXPECT_EQ(bytesOf(map.zoomTitles().back()), "Videos › 2024");
    map.zoomOut(0);
    app.places()->openFolder(story.home.path("Videos"));
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    // It was said to open on a click until one had tried.
    std::map<std::string, std::string> statuses;
    for (int at = 0; at < map.count(); ++at) {
        statuses[bytesOf(map.tile(at, TileList::labelRole).toString())] =
            bytesOf(map.tile(at, TileList::statusRole).toString());
    }
    EXPECT_EQ(statuses["sealed"], "Folder");
    EXPECT_EQ(statuses["2024"], "Folder · click to see what's inside");
    const std::string empty = "dentro:" + story.home.path("Videos/empty");
    map.zoomInto(keyOf(empty));
    ASSERT_TRUE(story.waitUntil([&] { return !app.activity()->notice().isEmpty(); }));
    EXPECT_THAT(bytesOf(app.activity()->notice()), StartsWith("There is nothing to see in “empty”"));
}

TEST(AppStories, AnItemIsArchivedAfterItsEstimateAndCanComeBack) {
    AppStory story;
    settle(story);
    story.home.file("Documents/Thesis/draft", 300'000);
    AppModel& app = story.app();
    app.question()->accept();
    EXPECT_FALSE(app.activity()->isBusy()) << "nobody was asked";
    app.archiving()->requestArchive(AppStory::ownKey);
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_FALSE(app.question()->isAsking());
    EXPECT_EQ(bytesOf(app.question()->title()), "This can't be archived");
    EXPECT_FALSE(app.question()->message().isEmpty());
    app.archiving()->requestArchive(keyOf("dentro:" + story.home.path("Documents/Thesis")));
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_EQ(bytesOf(app.question()->title()), "Archive “Thesis”?");
    // The question once showed the two line feeds between its parts as "\\n\\n".
    EXPECT_TRUE(app.question()->message().contains("\n\n"));
    app.question()->accept();
    EXPECT_THAT(bytesOf(app.scanning()->statusText()), StartsWith("Archiving “Thesis”"));
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_THAT(bytesOf(app.activity()->notice()), StartsWith("Archived as ~/Documents/Thesis.zip"));
    EXPECT_FALSE(std::filesystem::exists(story.home.path("Documents/Thesis")));
    app.holding()->undoLastCleanup();
    ASSERT_TRUE(story.waitUntilIdle());
    EXPECT_TRUE(std::filesystem::exists(story.home.path("Documents/Thesis/draft")));
}

TEST(AppStories, TheWholeHomeCanBeLookedInto) {
    AppStory story;
    settle(story);
    story.home.file("Videos/holiday", 3'000'000);
    MapModel& map = *story.app().map();
    story.app().places()->openHome();
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    EXPECT_EQ(map.zoomTitles().front(), "Your home folder");
    EXPECT_EQ(bytesOf(map.tile(0, TileList::labelRole).toString()), "Videos");
    EXPECT_TRUE(map.tile(0, TileList::canZoomRole).toBool());
    map.zoomOut(0);
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    story.app().places()->openHome();
    ASSERT_TRUE(map.isZoomLoading());
    map.zoomOut(0);
    EXPECT_FALSE(map.isZoomLoading());
    story.app().places()->open({.path = story.home.path(), .name = "Home again"});
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    EXPECT_EQ(map.zoomTitles().front(), "Home again") << "what was stopped opens nothing";
    // A folder that the application was started with was ignored.
    story.app().scanning()->scan();
    story.app().places()->openFolder(story.home.path("Videos"));
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1 && map.zoomTitles().front() == "Videos"; }));
}

// With nothing that a rule knows, a disk full of films was called in order, and no map was shown of it.
TEST(AppStories, WithNothingToCleanTheMapShowsTheHome) {
    AppStory story;
    story.home.file("Videos/holiday", 3'000'000);
    story.home.file("Music/song", 1'000'000);
    story.setFree(9 * gigabyte);
    story.app().finishWelcome();
    MapModel& map = *story.app().map();
    ASSERT_TRUE(story.waitUntil([&] { return map.depth() == 1; }));
    EXPECT_EQ(map.zoomTitles().front(), "Your home folder");
    EXPECT_EQ(bytesOf(map.tile(0, TileList::labelRole).toString()), "Videos");
    ASSERT_TRUE(story.waitUntil([&] { return story.app().volumes()->isSpaceLow(); }));
    story.app().settings()->setLowSpaceGB(5);
    EXPECT_FALSE(story.app().volumes()->isSpaceLow());
}

TEST(AppStories, AThingShowsWhatItHoldsAndAFolderWhatItsExplanationRestsOn) {
    AppStory story;
    settle(story);
    const std::string letter = story.home.fileWith("Documents/Letters/a.txt", "dear all\n");
    AppModel& app = story.app();
    PreviewDesk& preview = *app.preview();
    app.places()->showPreview(keyOf("dentro:" + letter));
    app.places()->showPreview(keyOf("dentro:" + story.home.path("Documents/Letters")));
    ASSERT_TRUE(story.waitUntil([&] { return !preview.isBusy(); }));
    EXPECT_EQ(bytesOf(preview.title()), "Letters") << "the later one counts";
    EXPECT_EQ(preview.kind(), PreviewDesk::Kind::Folder);
    EXPECT_EQ(bytesOf(preview.largest().front().toMap()["name"].toString()), "a.txt");
    preview.forget();
    EXPECT_EQ(preview.largest().size(), 0);
    EXPECT_FALSE(app.places()->canPreview("_libre"));

    const RowList& rows = *app.rows();
    const auto evidence = [&](const char* key) {
        return rows.data(rows.index(rows.indexOf(key)), RowList::evidenceRole).toString();
    };
    app.places()->gatherEvidence(AppStory::ownKey);
    ASSERT_TRUE(story.waitUntil([&] { return evidence(AppStory::ownKey).contains("1 file"); }));
    EXPECT_TRUE(evidence(AppStory::cacheKey).isEmpty()) << "nobody asked";
}

// It was told only when the switch was turned.
TEST(AppStories, ATimerOfTheWeeklyCleanupThatOthersHaveTakenAwayIsTold) {
    AppStory story;
    MonitorDesk& monitor = *story.app().monitor();
    monitor.refreshTimer();
    story.app().settings()->setAutoCleanWeekly(true);
    const auto isTold = [&](WeeklyTimer::State state) {
        monitor.refreshTimer();
        return story.waitUntil([&] { return bytesOf(monitor.autoCleanProblem()) == timerStateText(state); });
    };
    EXPECT_TRUE(isTold(WeeklyTimer::State::none));
    const std::string units = ".config/systemd/user/";
    story.home.fileWith(units + "tarvo-weekly.service",
                        WeeklyTimer::serviceText(story.home.path("bin/tarvo")));
    story.home.fileWith(units + "tarvo-weekly.timer", WeeklyTimer::timerText());
    story.home.link(units + "timers.target.wants/tarvo-weekly.timer", "../tarvo-weekly.timer");
    EXPECT_TRUE(isTold(WeeklyTimer::State::broken));
    story.app().settings()->setAutoCleanWeekly(false);
    EXPECT_TRUE(monitor.autoCleanProblem().isEmpty()) << "nobody misses it";
    story.app().settings()->setAutoCleanWeekly(true);
    story.home.program("bin/tarvo", "true");
    monitor.refreshTimer();
    EXPECT_TRUE(story.waitUntil([&] { return monitor.autoCleanProblem().isEmpty(); }));
}

// What a scan had found was freed, and all that came of it done, on the window's thread in one go.
TEST(Background, LetsOthersHaveTheirTurnAndFreesWhatAResultLeavesElsewhere) {
    Background background(1);
    std::vector<std::string> order;
    std::latch freed(1);
    std::thread::id freedBy;
    background.start([&](const std::stop_token&) -> Background::Apply {
        const std::shared_ptr<int> result(new int, [&](const int* found) {
            delete found;
            freedBy = std::this_thread::get_id();
            freed.count_down();
        });
        return [&order, result] {
            std::this_thread::sleep_for(10ms); // Longer than results are applied in one go.
            order.emplace_back("first");
        };
    });
    background.post([&] { order.emplace_back("posted"); });
    background.post([] { std::this_thread::sleep_for(10ms); });
    background.post([&] { order.emplace_back("last"); });
    QTimer::singleShot(1ms, [&] { order.emplace_back("other"); });
    while (order.size() < 4) {
        QCoreApplication::processEvents();
    }
    EXPECT_LT(std::ranges::find(order, "other"), std::ranges::find(order, "last"));
    freed.wait();
    EXPECT_NE(freedBy, std::this_thread::get_id());
}
