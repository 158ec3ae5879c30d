#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/ScanPass.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Flows/SettingChange.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

using namespace tarvo;
using namespace tarvo::testing;
using lumo::CleanupAction;
using lumo::PlanEntry;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

std::shared_ptr<const lumo::ScanReport> reportOf(const Desk& desk) {
    return std::make_shared<const lumo::ScanReport>(
        scanned(rulesFor(ScanPass::full, desk.home), optionsFor(ScanPass::full, desk.home), desk).value());
}

PlanEntry entry(const std::string& id, std::int64_t bytes, std::optional<std::string> reason = {}) {
    return {.action = {.id = id, .title = id, .estimatedBytes = bytes}, .skipReason = std::move(reason)};
}

} // namespace

TEST(Planning, NamesIdsThatAreNobodysAndThoseThereAre) {
    // A mistyped identifier was passed over without a word.
    const TempHome home;
    home.file(".cache/whisper/model", 2000000);
    home.files({"app/package.json", "app/node_modules/x"}, 2000000);
    const Desk desk = Desk::ofThisMachine(home.path(), "tests");
    const auto report = reportOf(desk);
    EXPECT_THAT(unknownIDs({.report = report, .include = {"nonsense"}}).value_or(""),
                AllOf(HasSubstr("nonsense"), HasSubstr("whisper"), HasSubstr("proyecto:app/node_modules")));
    EXPECT_TRUE(unknownIDs({.report = report, .only = {{"photos-library"}}})) << "is kept";
    EXPECT_FALSE(unknownIDs({.report = report, .include = {"whisper", "huggingface"}}))
        << "what the catalogue knows and this home has not is no mistake";
}

TEST(Planning, ProtectsWhatTheAskerHasNotStoredYetBesidesWhatIsStored) {
    const TempHome home;
    home.file(".npm/_npx/tool", 2000000);
    home.file(".cache/uv/wheel", 2000000);
    home.fileWith(".config/TarvoAI/preferencias.json", R"({"carpetasProtegidas": ["~/.npm/"]})");
    const Desk desk = Desk::ofThisMachine(home.path(), "tests");
    const PlanRequest request{.report = reportOf(desk), .protectedBesides = {home.path(".cache/uv")}};
    for (const PlanEntry& each : planned(request, desk).entries) {
        EXPECT_EQ(each.skipReason, lumo::CleanupPlanner::protectedReason()) << each.action.id;
    }
    EXPECT_GT(recoverableBytes(request.report, desk), 2000000) << "by what is stored alone";
}

TEST(Cleaning, LeavesOutWhatIsGoneWhatHasChangedAndWhatHasAReason) {
    std::vector<CleanupAction> agreed;
    for (const char* id : {"same", "gone", "grown", "held"}) {
        agreed.push_back(entry(id, 1).action);
    }
    const std::vector<LeftOut> left = leftOutNow(
        agreed, {.entries = {entry("same", 1), entry("grown", 2), entry("held", 1, "quit it first")}});
    EXPECT_THAT(eachOf(left, &LeftOut::id), ElementsAre("gone", "grown", "held"));
    EXPECT_EQ(left.back().reason, "quit it first");
    EXPECT_THAT(left.front().reason, Not(left[1].reason));
}

TEST(WeeklyCleanup, ThatCannotBeginStoresNothingAndMayBeTriedAgain) {
    // One that found the home locked stored "found nothing" and waited a week.
    const TempHome home;
    home.sparseFile(".npm/_npx/none", 1);
    home.fileWith(".config/TarvoAI/preferencias.json", R"({"limpiezaSemanal": true})");
    const Desk desk = Desk::ofThisMachine(home.path(), "tests");
    const PlanRequest request{.report = reportOf(desk), .reviews = Reviews::all};
    const auto stored = [&] { return WeeklyCleanup::storedRecord(Preferences::load(home.path())); };
    {
        const auto other =
            lumo::HomeLock::take(lumo::PathGuard(home.path()), {.program = "x", .now = desk.now()});
        EXPECT_FALSE(WeeklyCleanup::run(request, desk, {}));
    }
    EXPECT_EQ(stored(), WeeklyCleanup::Record());
    ASSERT_TRUE(WeeklyCleanup::run(request, desk, {}));
    EXPECT_TRUE(stored().last);
    EXPECT_EQ(stored().bytes, 0) << "too little to be worth it";
    EXPECT_FALSE(WeeklyCleanup::run(request, desk, {})) << "once a week, whoever asks";
}

TEST(WeeklyCleanup, AtOnceNeedsNoSwitchAndHasStoredItsBeginningBeforeItCleans) {
    const TempHome home;
    const Desk desk = Desk::ofThisMachine(home.path(), "tests");
    std::optional<lumo::Date> storedByThen;
    const CleanupWatch watch{.carryOut = [&](const auto&, const auto&, const auto&) {
        storedByThen = WeeklyCleanup::storedRecord(Preferences::load(home.path())).last;
        return std::vector<lumo::CleanupOutcome>();
    }};
    ASSERT_TRUE(WeeklyCleanup::runAtOnce({.report = reportOf(desk)}, desk, watch));
    EXPECT_TRUE(storedByThen) << "one that is killed would begin again the next day";
    EXPECT_FALSE(WeeklyCleanup::run({.report = reportOf(desk)}, desk, watch)) << "it is off";
}

TEST(Settings, AreNotLostWhenTwoProgramsChangeThemAtOnce) {
    const TempHome home;
    std::vector<std::jthread> programs;
    for (int program = 0; program < 8; ++program) {
        programs.emplace_back([&, program] {
            const auto add = [&](const Preferences& preferences) {
                auto folders = preferences.value(preference::protectedFolders);
                folders.push_back("/folder" + std::to_string(program));
                return Preferences::asJson(folders);
            };
            EXPECT_TRUE(changeSetting(preference::protectedFolders, add, home.path()));
        });
    }
    programs.clear();
    EXPECT_EQ(Preferences::load(home.path()).value(preference::protectedFolders).size(), 8U);
}
