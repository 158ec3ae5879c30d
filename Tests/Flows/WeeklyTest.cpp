#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/SettingChange.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Flows/WeeklySwitch.h"
#include "Tests/support/FakeSystemd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace tarvo;
using namespace tarvo::testing;
using namespace ::testing;
using lumo::Language;
using lumo::platform::isMissing;

namespace {

bool isStoredOn(const TempHome& home) {
    return Preferences::load(home.path()).value(preference::autoCleanWeekly);
}

WeeklyTimer::State timerOf(const TempHome& home) {
    return WeeklyTimer::state(home.path());
}

} // namespace

TEST(WeeklySwitch, TurnsPreferenceAndTimerOnAndOffTogether) {
    const TempHome home;
    const Desk desk = Desk::ofThisMachine(home.path(), "tests");
    const std::string program = home.program("my bin/100% tarvo", "true");
    home.program(".local/bin/systemctl", fakeSystemctl);
    ASSERT_TRUE(WeeklyTimer::set(home.path(), program));
    EXPECT_EQ(timerOf(home), WeeklyTimer::State::set);
    EXPECT_THAT(contentOf(WeeklyTimer::servicePath(home.path())),
                HasSubstr("ExecStart=\"" + home.path("my bin/100%% tarvo") + "\" --idioma "));
    EXPECT_THAT(callsOf(home), ElementsAre("show --property=Version", "daemon-reload",
                                           "show --property=LoadState --property=FragmentPath "
                                           "tarvo-weekly.service",
                                           "enable --now tarvo-weekly.timer"));
    std::filesystem::remove(program);
    EXPECT_EQ(timerOf(home), WeeklyTimer::State::broken) << "the program has moved";

    const auto on = setWeeklyCleanup(desk, true, TimerWish::needed);
    ASSERT_TRUE(on) << on.error().message;
    EXPECT_TRUE(isStoredOn(home));
    const auto off = setWeeklyCleanup(desk, false, TimerWish::needed);
    ASSERT_TRUE(off);
    EXPECT_EQ(off->timerProblem, std::nullopt);
    EXPECT_FALSE(isStoredOn(home));
    EXPECT_THAT(lumo::platform::namesIn(home.path(".config/systemd/user")),
                ElementsAre("timers.target.wants"));
    EXPECT_EQ(timerOf(home), WeeklyTimer::State::none);
    EXPECT_THAT(callsOf(home).back(), "daemon-reload");
}

TEST(WeeklySwitch, LeavesNothingHalfDoneWhereSystemdDoesNotDoIt) {
    const TempHome home;
    const Desk desk = Desk::ofThisMachine(home.path(), "tests");
    const auto refused = [&](const std::string& script,
                             std::chrono::milliseconds patience = WeeklyTimer::Asking().patience) {
        home.program(".local/bin/systemctl", script);
        const auto on = setWeeklyCleanup(desk, true, TimerWish::needed, {.patience = patience});
        EXPECT_FALSE(on) << script;
        EXPECT_FALSE(isStoredOn(home)) << script;
        EXPECT_TRUE(isMissing(WeeklyTimer::servicePath(home.path()))) << script;
        EXPECT_TRUE(isMissing(WeeklyTimer::timerPath(home.path()))) << script;
        EXPECT_EQ(timerOf(home), WeeklyTimer::State::none) << script;
        return on ? "" : on.error().message;
    };
    // Each answers until the step that fails.
    const std::string fake = fakeSystemctl;
    EXPECT_THAT(refused("echo 'Failed to connect to bus: No medium found' >&2; exit 1"),
                HasSubstr("No medium found"));
    EXPECT_THAT(refused("exit 127"), HasSubstr("systemd"));
    EXPECT_THAT(refused("sleep 30", std::chrono::milliseconds(10)), HasSubstr("systemd"));
    EXPECT_THAT(refused("case $* in *FragmentPath*) echo FragmentPath=/elsewhere; exit;; esac\n" + fake),
                HasSubstr(home.path(".config/systemd/user")));
    EXPECT_THAT(refused("case $* in *FragmentPath*) echo LoadState=bad-setting; echo "
                        "FragmentPath=$HOME/.config/systemd/user/tarvo-weekly.service; exit;; esac\n" +
                        fake),
                HasSubstr("bad-setting"));
    EXPECT_THAT(refused("case $* in *enable*) echo no; exit 1;; esac\n" + fake), HasSubstr("(systemd: no)"));
    EXPECT_THAT(refused(fake + "\ncase $* in *enable*) sleep 30;; esac", std::chrono::seconds(2)),
                HasSubstr("systemd"));

    // A window does it, too: there the switch holds, and the reason is told.
    home.program(".local/bin/systemctl", "exit 1");
    const auto welcome = setWeeklyCleanup(desk, true, TimerWish::welcome);
    ASSERT_TRUE(welcome);
    EXPECT_TRUE(welcome->timerProblem);
    EXPECT_TRUE(isStoredOn(home));
}

TEST(WeeklySwitch, KeepsAnEarlierTimerWhenANewOneIsRefusedAndTakesOneAwayWithoutSystemd) {
    const TempHome home;
    const Desk desk = Desk::ofThisMachine(home.path(), "tests");
    home.program(".local/bin/systemctl", fakeSystemctl);
    ASSERT_TRUE(setWeeklyCleanup(desk, true, TimerWish::needed));
    const std::string before = contentOf(WeeklyTimer::servicePath(home.path()));
    home.program(".local/bin/systemctl", "case $* in *enable*) exit 1;; esac\n" + std::string(fakeSystemctl));
    EXPECT_FALSE(WeeklyTimer::set(home.path(), "/other/tarvo"));
    EXPECT_EQ(contentOf(WeeklyTimer::servicePath(home.path())), before);
    EXPECT_EQ(timerOf(home), WeeklyTimer::State::set);
    home.program(".local/bin/systemctl", "exit 1");
    ASSERT_TRUE(setWeeklyCleanup(desk, false, TimerWish::needed));
    EXPECT_EQ(timerOf(home), WeeklyTimer::State::none);

    // Somebody has put something else there: it stays.
    home.program(".local/bin/systemctl", fakeSystemctl);
    home.file(".config/systemd/user/tarvo-weekly.service/mine");
    EXPECT_FALSE(setWeeklyCleanup(desk, true, TimerWish::needed));
    EXPECT_FALSE(isMissing(home.path(".config/systemd/user/tarvo-weekly.service/mine")));
    EXPECT_TRUE(isMissing(WeeklyTimer::timerPath(home.path())));
}

TEST(WeeklyTimer, WritesProgramsAsSystemdReadsThem) {
    using Case = std::pair<std::string_view, std::string_view>;
    for (const auto& [program, word] :
         {Case{"/opt/Tarvo AI/tarvo", R"("/opt/Tarvo AI/tarvo")"}, Case{"/a/100%/$x/b", R"("/a/100%%/$x/b")"},
          Case{R"(/a"b\c)", R"("/a\"b\\c")"}}) {
        EXPECT_THAT(WeeklyTimer::serviceText(program, Language::en),
                    HasSubstr("\nExecStart=" + std::string(word) + " --idioma en --quiet weekly run\n"));
    }
    const TempHome home;
    home.program(".local/bin/systemctl", fakeSystemctl);
    EXPECT_FALSE(WeeklyTimer::set(home.path(), "/a\nExecStart=/b")) << "would write a line of its own";
    EXPECT_FALSE(WeeklyTimer::set(home.path(), ""));
}

TEST(WeeklyCleanup, IsNotPutOffByADateOfAClockThatWasWrong) {
    // A cleanup stored while the clock stood in 2040 put the next one off until then.
    const TempHome home;
    const lumo::Date now = lumo::platform::now();
    auto preferences = Preferences::load(home.path());
    const auto isWantedAfter = [&](std::chrono::seconds age) {
        EXPECT_TRUE(preferences.set(preference::lastWeeklyCleanup, now - age));
        return WeeklyCleanup::isWanted(preferences, now);
    };
    EXPECT_FALSE(WeeklyCleanup::isWanted(preferences, now)) << "off";
    ASSERT_TRUE(preferences.set(preference::autoCleanWeekly, true));
    EXPECT_TRUE(WeeklyCleanup::isWanted(preferences, now)) << "never done";
    EXPECT_TRUE(isWantedAfter(WeeklyCleanup::interval));
    EXPECT_FALSE(isWantedAfter(WeeklyCleanup::interval - std::chrono::seconds(1)));
    EXPECT_FALSE(isWantedAfter(-std::chrono::hours(24))) << "clocks are put right by hours";
    EXPECT_TRUE(isWantedAfter(-std::chrono::hours(25)));
    EXPECT_EQ(WeeklyCleanup::next({.last = now + std::chrono::hours(25), .bytes = {}}, now), now);
}

TEST(WeeklyTimer, IsTakenBySystemdItself) {
    const TempHome home;
    home.folder("run");
    home.setMode("run", 0700);
    const auto problemsWith = [&](const std::string& program) {
        home.program(program, "true");
        const Ran ran =
            runProgram("systemd-analyze",
                       {"verify", "--user", "--man=no",
                        home.fileWith("tarvo-weekly.service", WeeklyTimer::serviceText(home.path(program))),
                        home.fileWith("tarvo-weekly.timer", WeeklyTimer::timerText())},
                       {"PATH=/usr/bin:/bin", "HOME=" + home.path(), "XDG_RUNTIME_DIR=" + home.path("run")});
        return ran.exitCode == 127 ? "absent" : ran.error;
    };
    const std::string refused = problemsWith("my\"bin/tarvo");
    if (refused == "absent") {
        GTEST_SKIP() << "there is no systemd here";
    }
    EXPECT_THAT(refused, HasSubstr("special characters"))
        << "the reason why it is asked before it is switched on";
    EXPECT_EQ(problemsWith("my bin/100% $x {y};/tarvo"), "");
}
