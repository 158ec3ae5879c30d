#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/Preferences.h"
#include "Tests/support/FakeSystemd.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tarvo::testing;
using namespace testing;
using lumo::platform::isMissing;

namespace {

constexpr std::size_t worthIt = 201000000;

/// A `busctl` that writes down what it was asked.
void giveBus(const TempHome& home) {
    home.program(".local/bin/busctl", R"(printf '%s|' "$@" >"$HOME/notified")");
}

} // namespace

TEST(WeeklyCommand, IsTurnedOnAndOffInEitherLanguage) {
    const TempHome home;
    home.program(".local/bin/systemctl", fakeSystemctl);
    EXPECT_EQ(jsonOf(home, {"weekly"}), json(R"({"on": false})"));
    EXPECT_THAT(runTarvo(home, {"semanal"}).output, HasSubstr("tarvo semanal activar"));
    const Ran on = runTarvo(home, {"weekly", "on"}, {"TARVO_IDIOMA=en"});
    EXPECT_EQ(on.exitCode, 0) << on.error;
    EXPECT_THAT(on.output, AllOf(StartsWith("Weekly cleanup: today\n"), HasSubstr("enable-linger")));
    EXPECT_THAT(contentOf(home.path(".config/systemd/user/tarvo-weekly.service")),
                HasSubstr("ExecStart=\"" + tarvoProgram() + "\" --idioma en --quiet weekly run\n"));
    EXPECT_EQ(*jsonOf(home, {"semanal", "estado"}).find("on"), lumo::JsonValue{true});
    EXPECT_EQ(*jsonOf(home, {"settings"}).find("limpiezaSemanal"), lumo::JsonValue{true}) << "one switch";
    EXPECT_EQ(jsonOf(home, {"semanal", "desactivar"}), json(R"({"on": false})"));
    EXPECT_TRUE(isMissing(home.path(".config/systemd/user/tarvo-weekly.timer")));

    ASSERT_EQ(runTarvo(home, {"settings", "set", "limpiezaSemanal", "true"}).exitCode, 0);
    EXPECT_THAT(runTarvo(home, {"weekly"}).output, HasSubstr("Sin temporizador"));
}

TEST(WeeklyCommand, SaysPlainlyThatThereIsNoSystemdAndStaysOff) {
    const TempHome home;
    home.program(".local/bin/systemctl", "exit 127");
    const Ran ran = runTarvo(home, {"weekly", "on"});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_THAT(ran.error, StartsWith("tarvo: Aquí no hay systemd"));
    EXPECT_EQ(jsonOf(home, {"weekly"}), json(R"({"on": false})"));
    EXPECT_TRUE(isMissing(home.path(".config/systemd")));
}

TEST(WeeklyCommand, CleansOnceAWeekWhatRecreatesItselfAndSaysSo) {
    const TempHome home;
    giveBus(home);
    const std::string cache = home.file(".npm/_npx/tool", worthIt);
    const std::string whisper = home.file(".cache/whisper/model", 3000000);
    EXPECT_EQ(jsonOf(home, {"weekly", "run"}), json("[]")) << "it is off";
    EXPECT_FALSE(isMissing(cache));
    ASSERT_EQ(runTarvo(home, {"settings", "set", "limpiezaSemanal", "true"}).exitCode, 0);
    const lumo::JsonValue outcomes = jsonOf(home, {"weekly", "run"});
    EXPECT_EQ(std::get<lumo::JsonValue::Array>(outcomes.value).size(), 1U);
    EXPECT_TRUE(isMissing(cache));
    EXPECT_FALSE(isMissing(whisper)) << "needs a look";
    EXPECT_THAT(contentOf(home.path("notified")),
                AllOf(StartsWith("--user|--quiet|--|call|org.freedesktop.Notifications|"),
                      HasSubstr("|Limpieza semanal: 201 MB liberados|"), EndsWith("|ai.tarvo.TarvoAI|-1|")));
    const lumo::JsonValue status = jsonOf(home, {"weekly"});
    EXPECT_EQ(status.find("freedBytes") != nullptr, true);
    EXPECT_NE(status.find("last"), nullptr);

    home.file(".npm/_npx/tool", worthIt);
    EXPECT_EQ(jsonOf(home, {"weekly", "run"}), json("[]")) << "not due for a week";
    EXPECT_FALSE(isMissing(cache));
    EXPECT_EQ(runTarvo(home, {"weekly", "run", "--now"}).exitCode, 0);
    EXPECT_TRUE(isMissing(cache));
    EXPECT_THAT(runTarvo(home, {"weekly", "run", "--now"}).output, HasSubstr("no se ha borrado nada"));
}

TEST(WeeklyCommand, DoesNothingWhileTheSettingsAreDamaged) {
    const TempHome home;
    const std::string cache = home.file(".npm/_npx/tool", worthIt);
    home.fileWith(".config/TarvoAI/preferencias.json", "{");
    EXPECT_EQ(runTarvo(home, {"weekly", "run", "--now"}).exitCode, 1);
    EXPECT_EQ(runTarvo(home, {"weekly"}).exitCode, 1);
    EXPECT_FALSE(isMissing(cache));
}
