#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "Tests/support/RunTarvo.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using lumo::CleanupOutcome;
using lumo::JsonValue;
using tarvo::testing::json;
using tarvo::testing::jsonOf;
using tarvo::testing::Ran;
using tarvo::testing::runTarvo;
using tarvo::testing::TempHome;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using Words = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

/// Something that recreates itself, something that needs a look, and something of the user's.
void furnish(const TempHome& home) {
    home.file(".cache/uv/wheel", 50000);
    home.file("Downloads/old.dmg", 10000);
    home.file("Documents/letter", 10000);
}

std::vector<CleanupOutcome> outcomesOf(const JsonValue& document) {
    return lumo::decode<std::vector<CleanupOutcome>>(document).value();
}

/// A saved plan of one action that takes items.
std::string planOf(const std::string& safety, const std::string& path) {
    return R"([{"action": {"id": "x", "title": "X", "safety": ")" + safety +
           R"(", "estimatedBytes": 10, "method": {"trashItems": {"_0": [")" + path +
           R"("]}}, "measuredPaths": [], "fallbackContents": []}}])";
}

} // namespace

TEST(CleanCommand, CleansUndoesAndEmpties) {
    const TempHome home;
    furnish(home);
    ASSERT_TRUE(lumo::decode<std::vector<lumo::PlanEntry>>(jsonOf(home, {"clean", "--dry-run"})));
    EXPECT_TRUE(fs::exists(home.path(".cache/uv/wheel"))) << "a dry run";
    EXPECT_FALSE(fs::exists(home.path("Library/Application Support/TarvoAI/historial.jsonl")));

    const auto outcomes = outcomesOf(jsonOf(home, {"limpiar", "--yes"}));
    EXPECT_THAT(outcomes, Not(IsEmpty()));
    EXPECT_FALSE(fs::exists(home.path(".cache/uv/wheel")));
    EXPECT_TRUE(fs::exists(home.path("Documents/letter")));

    home.fileWith("plan.json", planOf("review", home.path("Documents/letter")));
    ASSERT_THAT(outcomesOf(jsonOf(home, {"clean", "--plan", home.path("plan.json"), "--yes"})), SizeIs(1));
    EXPECT_FALSE(fs::exists(home.path("Documents/letter")));
    EXPECT_THAT(std::get<JsonValue::Array>(jsonOf(home, {"holding"}).value), SizeIs(1));
    EXPECT_EQ(jsonOf(home, {"deshacer"}), json(R"({"done": 1, "failures": []})"));
    EXPECT_TRUE(fs::exists(home.path("Documents/letter")));
    EXPECT_EQ(jsonOf(home, {"undo"}), json(R"({"done": 0, "failures": []})"));

    jsonOf(home, {"clean", "--plan", home.path("plan.json"), "--yes"});
    EXPECT_EQ(jsonOf(home, {"restore", home.path("Documents/letter")}),
              json(R"({"done": 1, "failures": []})"));
    const Ran again = runTarvo(home, {"restaurar", home.path("Documents/letter"), "--json"});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_THAT(again.output, HasSubstr("letter: ya no está apartado"));

    jsonOf(home, {"clean", "--plan", home.path("plan.json"), "--yes"});
    EXPECT_EQ(jsonOf(home, {"empty", "--expired"}), json(R"({"freed": 0, "failures": []})"));
    EXPECT_NE(jsonOf(home, {"vaciar", "--yes"}), json(R"({"freed": 0, "failures": []})"));
    EXPECT_THAT(std::get<JsonValue::Array>(jsonOf(home, {"apartado"}).value), IsEmpty());
    const JsonValue history = jsonOf(home, {"historial"});
    EXPECT_GE(std::get<std::int64_t>(history.find("total")->value), 50000);
    EXPECT_GE(std::get<JsonValue::Array>(history.find("outcomes")->value).size(), 4U);
}

TEST(CleanCommand, TouchesNothingThatWasNotConfirmed) {
    const TempHome home;
    furnish(home);
    for (const Words& words : {Words{"clean"}, Words{"limpiar", "--json"}, Words{"empty"}, Words{"vaciar"}}) {
        const Ran ran = runTarvo(home, words);
        EXPECT_EQ(ran.exitCode, 2) << testing::PrintToString(words);
        EXPECT_THAT(ran.error, HasSubstr("--yes"));
        EXPECT_EQ(ran.output, "");
    }
    for (const auto& [answer, exitCode] : std::vector<std::pair<std::string, int>>{
             {"\n", 1}, {"no\n", 1}, {"x04", 1}, {"yess\n", 1}, {"SÍ\n", 0}}) {
        const Ran ran =
            tarvo::testing::runTarvoOnTerminal(home, {"clean"}, answer == "x04" ? "\x04" : answer);
        EXPECT_EQ(ran.exitCode, exitCode) << answer;
        EXPECT_THAT(ran.output,
                    testing::AllOf(HasSubstr("Todo lo marcado se regenera solo"), HasSubstr("[s/N]")));
        EXPECT_EQ(fs::exists(home.path(".cache/uv/wheel")), exitCode != 0) << answer;
    }
}

TEST(CleanCommand, RefusesFilesThatBringTheirOwnCommandsOrMakeNoSense) {
    const TempHome home;
    furnish(home);
    std::string report = runTarvo(home, {"scan", "--json"}).output;
    home.fileWith("report.json", report);
    const std::string stolen = report.replace(report.find("\"cleanup\": {"), 12,
                                              "\"cleanup\": {\"command\": {\"_0\": \"rm -rf /\"}}, \"x\": {");
    home.fileWith("stolen.json", stolen);
    home.fileWith("keep.json", planOf("keep", home.path("Documents/letter")));
    home.fileWith(
        "command.json",
        R"([{"action": {"id": "npm", "title": "X", "safety": "safe", "estimatedBytes": 10, "method": )"
        R"({"command": {"_0": ["touch", "x"]}}, "measuredPaths": [], "fallbackContents": []}}])");
    home.fileWith("other.json", R"({"no": "plan"})");
    for (const Words& words :
         {Words{"--plan", home.path("keep.json")}, Words{"--plan", home.path("command.json")},
          Words{"--plan", home.path("other.json")}, Words{"--plan", home.path("missing")},
          Words{"--report", home.path("stolen.json")}, Words{"--report", home.path("other.json")},
          Words{"--report", home.path("report.json"), "--home", home.folder("other")},
          Words{"--report", home.path("report.json"), "--plan", home.path("keep.json")}}) {
        Words all{"clean", "--yes"};
        all.insert(all.end(), words.begin(), words.end());
        const Ran ran = runTarvo(home, all);
        EXPECT_EQ(ran.exitCode, 2) << testing::PrintToString(words);
        EXPECT_THAT(ran.error, testing::StartsWith("tarvo: "));
        EXPECT_TRUE(fs::exists(home.path(".cache/uv/wheel")));
    }
    EXPECT_EQ(runTarvo(home, {"clean", "--yes", "--report", home.path("report.json")}).exitCode, 0);
    EXPECT_FALSE(fs::exists(home.path(".cache/uv/wheel")));
}

TEST(CleanCommand, LeavesProtectedFoldersAloneAlsoInASavedPlan) {
    const TempHome home;
    furnish(home);
    home.fileWith("plan.json", planOf("safe", home.path("Documents/letter")));
    const Ran ran = runTarvo(home, {"clean", "--yes", "--json", "--plan", home.path("plan.json"), "--protect",
                                    home.path("Documents")});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_TRUE(fs::exists(home.path("Documents/letter")));
}

TEST(CleanCommand, AnswersOneWhenSomethingFailedAndNamesIt) {
    const TempHome home;
    home.fileWith("plan.json", planOf("safe", "/etc/hostname"));
    for (const Words& words : {Words{"clean", "--yes", "--plan", home.path("plan.json")},
                               Words{"clean", "--yes", "--json", "--plan", home.path("plan.json")}}) {
        const Ran ran = runTarvo(home, words);
        EXPECT_EQ(ran.exitCode, 1);
        EXPECT_THAT(ran.output, HasSubstr("fuera de tu carpeta personal: /etc/hostname"));
    }
}

TEST(CleanCommand, AScanPurgesWhatExpiredFirstAndStoresASnapshotUnlessToldNotTo) {
    const TempHome home;
    furnish(home);
    const std::string own = "Library/Application Support/TarvoAI/";
    home.file(own + "Apartado/20200101-000000/item", 9000);
    EXPECT_THAT(runTarvo(home, {"scan", "--quick"}).output,
                HasSubstr("Se ha borrado lo apartado hace más de 7 días"));
    EXPECT_FALSE(fs::exists(home.path(own + "Apartado/20200101-000000")));
    jsonOf(home, {"scan", "--no-snapshot"});
    EXPECT_FALSE(fs::exists(home.path(own + "instantaneas.json")));
    jsonOf(home, {"scan"});
    EXPECT_TRUE(fs::exists(home.path(own + "instantaneas.json")));
}
