#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Showing/LowSpaceAlert.h"
#include "TarvoModel/Showing/ScanCycle.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

using lumo::Date;
using lumo::Language;
using lumo::Safety;
using std::chrono::microseconds;
using std::chrono::seconds;
using namespace tarvo;

namespace {

constexpr Date now{seconds(1790000000)};

std::vector<lumo::PlanEntry> safeEntries(std::int64_t bytes) {
    std::vector<lumo::PlanEntry> entries(4);
    for (lumo::PlanEntry& entry : entries) {
        entry.action.safety = Safety::safe;
        entry.action.estimatedBytes = 100000000;
    }
    entries[0].action.id = "cache";
    entries[1].action.id = "logs";
    entries[1].action.estimatedBytes = bytes - 100000000;
    entries[2].skipReason = "quit it first";
    entries[3].action.safety = Safety::review;
    return entries;
}

} // namespace

TEST(LowSpaceAlert, IsSentOnceADayAndForgottenOnlyWhenThereIsClearlyMoreSpace) {
    enum class Then { nothing, forgets, sends };
    struct Case {
        std::optional<std::int64_t> free;
        std::optional<Date> sent;
        Then then;
    };
    const std::int64_t threshold = 10000000000;
    const std::vector<Case> cases{
        {threshold - 1, {}, Then::sends},
        {threshold - 1, now - seconds(60), Then::nothing},
        {threshold - 1, now - seconds(86400) + microseconds(1), Then::nothing},
        {threshold - 1, now - seconds(86400), Then::sends},
        {threshold - 1, now + seconds(60), Then::sends}, // The clock was set back.
        {threshold, {}, Then::nothing},
        {threshold, now - seconds(90000), Then::nothing},
        {threshold + LowSpaceAlert::gap - 1, now - seconds(90000), Then::nothing},
        {threshold + LowSpaceAlert::gap, now - seconds(60), Then::forgets},
        {threshold + LowSpaceAlert::gap, {}, Then::nothing},
        {{}, {}, Then::nothing},
    };
    for (const Case& each : cases) {
        const auto decision =
            LowSpaceAlert::decide({.freeBytes = each.free, .sent = each.sent, .now = now}, Language::en);
        SCOPED_TRACE(each.free.value_or(-1));
        EXPECT_EQ(decision.forgetsDate, each.then == Then::forgets);
        EXPECT_EQ(decision.notification.has_value(), each.then == Then::sends);
    }
}

TEST(LowSpaceAlert, PromisesSpaceOnlyWhenThereIsEnoughToRecover) {
    const auto sent = [](std::int64_t recoverable, Language language) {
        return LowSpaceAlert::decide({.freeBytes = 1200000000, .recoverable = recoverable, .now = now},
                                     language)
            .notification.value();
    };
    EXPECT_EQ(sent(500000000, Language::es),
              (Notification{"poco-espacio", "Te queda 1,2 GB libres", "Pulsa para ver qué ocupa tu disco."}));
    EXPECT_EQ(sent(500000001, Language::en),
              (Notification{"poco-espacio", "Only 1.2 GB free",
                            "You can recover 500 MB with no risk. Click to see it."}));
}

TEST(WeeklyCleanup, RunsOnceAWeekWhenItIsOnAndNothingElseGoesOn) {
    const WeeklyCleanup::Situation due{
        .isOn = true, .hasReport = true, .last = now - seconds(604800), .now = now};
    EXPECT_TRUE(WeeklyCleanup::isDue(due));
    const auto with = [&](auto change) {
        WeeklyCleanup::Situation situation = due;
        change(situation);
        return WeeklyCleanup::isDue(situation);
    };
    EXPECT_TRUE(with([](auto& each) { each.last = {}; }));
    EXPECT_FALSE(with([](auto& each) { *each.last += microseconds(1); }));
    EXPECT_FALSE(with([](auto& each) { each.last = now; }));
    EXPECT_FALSE(with([](auto& each) { each.isOn = false; }));
    EXPECT_FALSE(with([](auto& each) { each.hasReport = false; }));
    EXPECT_FALSE(with([](auto& each) { each.phase = phase::ScanningFolders{}; }));
    EXPECT_FALSE(with([](auto& each) { each.mode = RunMode::from({"tarvo", "--demo"}); }));
    EXPECT_FALSE(with([](auto& each) { each.mode = RunMode::from({"tarvo", "--captura"}); }));
}

TEST(WeeklyCleanup, ScansFirstUnlessTheReportIsOfNow) {
    for (const auto& [lastScan, needsScan] :
         {std::pair{std::optional<lumo::Date>(), true}, std::pair{std::optional(now), false},
          std::pair{std::optional(now - seconds(120)), false},
          std::pair{std::optional(now - seconds(121)), true},
          std::pair{std::optional(now + seconds(1)), true}}) {
        EXPECT_EQ(WeeklyCleanup::needsScan(lastScan, now), needsScan);
    }
}

TEST(WeeklyCleanup, TakesOnlySafeThingsAndOnlyWhenTheyAreWorthIt) {
    EXPECT_TRUE(WeeklyCleanup::actions(safeEntries(199999999)).empty());
    const auto actions = WeeklyCleanup::actions(safeEntries(200000000));
    ASSERT_EQ(actions.size(), 2U);
    EXPECT_EQ(actions[0].id + actions[1].id, "cachelogs");
    EXPECT_EQ(WeeklyCleanup::notice(0), std::nullopt);
    EXPECT_EQ(WeeklyCleanup::notification(0), std::nullopt);
    EXPECT_EQ(WeeklyCleanup::notice(3000000, Language::es), "Limpieza semanal: liberados 3 MB");
    EXPECT_EQ(WeeklyCleanup::notification(3000000, Language::en),
              (Notification{"limpieza-semanal", "Weekly cleanup: 3 MB freed",
                            "Only caches and files that recreate themselves. Your files weren't touched."}));
}

TEST(WeeklyCleanup, SaysWhenItRunsNextFromWhatIsStored) {
    const tarvo::testing::TempHome home;
    Preferences preferences = Preferences::load(home.path());
    const auto status = [&](Date at, Language language = Language::en) {
        const auto record = WeeklyCleanup::storedRecord(Preferences::load(home.path()));
        return WeeklyCleanup::autoCleanStatus(true, record, at, language);
    };
    const std::string next = "Weekly cleanup: " + lumo::dayText(now + seconds(604800), Language::en);
    EXPECT_EQ(WeeklyCleanup::autoCleanStatus(false, {}, now), std::nullopt);
    EXPECT_EQ(status(now), "Weekly cleanup: today");
    ASSERT_TRUE(preferences.set(preference::lastWeeklyCleanup, now));
    EXPECT_EQ(status(now), next);
    ASSERT_TRUE(preferences.set(preference::lastWeeklyCleanupBytes, 0));
    EXPECT_EQ(status(now + seconds(604799)), next + " · the last one found nothing");
    ASSERT_TRUE(preferences.set(preference::lastWeeklyCleanupBytes, 3000000));
    EXPECT_EQ(status(now + seconds(604800), Language::es), "Limpieza semanal: hoy · la última liberó 3 MB");
}

TEST(RunMode, LooksWithoutTouchingAndHoldsTheFirstScanBackForTheWelcome) {
    EXPECT_TRUE(RunMode::from({"tarvo-app"}).isForReal());
    EXPECT_FALSE(RunMode::from({"tarvo-app", "--demo"}).isForReal());
    const RunMode capturing = RunMode::from({"tarvo-app", "--captura", "--bienvenida"});
    EXPECT_FALSE(capturing.isForReal());
    EXPECT_TRUE(capturing.showsWelcome(true) && capturing.startsWithScan(true));
    EXPECT_TRUE(RunMode().showsWelcome(false));
    EXPECT_FALSE(RunMode().showsWelcome(true) || RunMode().startsWithScan(true));
}

TEST(ScanCycle, ScansAgainAfterThreeHoursAndOnlyWhenIdle) {
    EXPECT_FALSE(isRescanDue({}, phase::Idle{}, now));
    EXPECT_FALSE(isRescanDue(now - seconds(10800), phase::Idle{}, now));
    EXPECT_TRUE(isRescanDue(now - seconds(10801), phase::Idle{}, now));
    EXPECT_TRUE(isRescanDue(now + seconds(60), phase::Idle{}, now)) << "the clock was set back";
    EXPECT_FALSE(isRescanDue(now - seconds(90000), phase::Cleaning{}, now));
    EXPECT_FALSE(isRescanDue(now - seconds(90000), phase::Explaining{0, 3}, now));
}

TEST(ScanCycle, KnowsOtherDisksByWhereTheyAreMounted) {
    const std::vector<Volume> mounted{{"/", "Macintosh HD", 9, 1},
                                      {"/Volumes/Tapes", "Tapes", 9, 1},
                                      {"/Volumes", "x", 9, 1},
                                      {"/VolumesOld/A", "A", 9, 1},
                                      {"/Volumes/Backup", "Backup", 9, 1},
                                      {"/run/media/ana/Photos", "Photos", 9, 1},
                                      {"/mnt/nas", "Attic", 9, 1}};
    const auto in = [&](std::vector<std::string_view> folders) { return otherVolumes(mounted, folders); };
    EXPECT_EQ(in({"/Volumes"}), (std::vector<Volume>{mounted[4], mounted[1]}));
    EXPECT_EQ(in({"/media", "/run/media", "/mnt"}), (std::vector<Volume>{mounted[6], mounted[5]}));
    EXPECT_EQ(unreadableVolumeText(mounted[1], Language::en, lumo::System::macos),
              "I couldn't read Tapes. If macOS asked for permission for the drive, allow it and try again.");
    EXPECT_EQ(unreadableVolumeText(mounted[1], Language::en, lumo::System::linux),
              "I couldn't read Tapes. Check that it is still connected and that your user can read it.");
}
