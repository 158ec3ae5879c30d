#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;

namespace {

/// Something that recreates itself, something that needs a look, and something of the user's.
void furnish(const TempHome& home) {
    home.file(".cache/uv/wheel", 50000);
    home.files({"Downloads/old.dmg", "Documents/letter", "Desktop/Screenshot 1"}, 10000);
}

std::vector<CleanupOutcome> outcomesOf(const JsonValue& document) {
    return decode<std::vector<CleanupOutcome>>(document).value();
}

/// A saved plan of one action that takes a screenshot, or something else under its name.
std::string planOf(const std::string& safety, const std::string& path) {
    return R"([{"action": {"id": "desktop-screenshots", "title": "X", "safety": ")" + safety +
           R"(", "estimatedBytes": 10, "method": {"trashItems": {"_0": [")" + path +
           R"("]}}, "measuredPaths": [], "fallbackContents": []}}])";
}

} // namespace

TEST(CleanCommand, CleansUndoesAndEmpties) {
    const TempHome home;
    furnish(home);
    ASSERT_TRUE(decode<std::vector<PlanEntry>>(jsonOf(home, {"clean", "--dry-run"})));
    EXPECT_TRUE(fs::exists(home.path(".cache/uv/wheel"))) << "a dry run";
    EXPECT_FALSE(fs::exists(home.path("Library/Application Support/TarvoAI/historial.jsonl")));

    const auto outcomes = outcomesOf(jsonOf(home, {"limpiar", "--yes"}));
    EXPECT_THAT(outcomes, Not(IsEmpty()));
    EXPECT_FALSE(fs::exists(home.path(".cache/uv/wheel")));
    EXPECT_TRUE(fs::exists(home.path("Documents/letter")));

    home.fileWith("plan.json", planOf("review", home.path("Desktop/Screenshot 1")));
    ASSERT_THAT(outcomesOf(jsonOf(home, {"clean", "--plan", home.path("plan.json"), "--yes"})), SizeIs(1));
    EXPECT_FALSE(fs::exists(home.path("Desktop/Screenshot 1")));
    EXPECT_THAT(std::get<JsonValue::Array>(jsonOf(home, {"holding"}).value), SizeIs(1));
    EXPECT_EQ(jsonOf(home, {"deshacer"}), json(R"({"done": 1, "failures": []})"));
    EXPECT_TRUE(fs::exists(home.path("Desktop/Screenshot 1")));
    EXPECT_EQ(jsonOf(home, {"undo"}), json(R"({"done": 0, "failures": []})"));

    jsonOf(home, {"clean", "--plan", home.path("plan.json"), "--yes"});
    EXPECT_EQ(jsonOf(home, {"restore", home.path("Desktop/Screenshot 1")}),
              json(R"({"done": 1, "failures": []})"));
    const Ran again = runTarvo(home, {"restaurar", home.path("Desktop/Screenshot 1"), "--json"});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_THAT(again.output, HasSubstr("Screenshot 1: ya no está apartado"));

    jsonOf(home, {"clean", "--plan", home.path("plan.json"), "--yes"});
    EXPECT_EQ(jsonOf(home, {"empty", "--expired"}), json(R"({"freed": 0, "failures": []})"));
    EXPECT_NE(jsonOf(home, {"vaciar", "--yes"}), json(R"({"freed": 0, "failures": []})"));
    EXPECT_THAT(std::get<JsonValue::Array>(jsonOf(home, {"apartado"}).value), IsEmpty());
    const JsonValue history = jsonOf(home, {"historial"});
    EXPECT_GE(std::get<std::int64_t>(history.find("total")->value), 50000);
}

TEST(CleanCommand, TouchesNothingThatWasNotConfirmed) {
    const TempHome home;
    furnish(home);
    for (const char* line : {"clean", "limpiar --json", "empty", "vaciar"}) {
        const Ran ran = runTarvo(home, wordsIn(line));
        EXPECT_EQ(ran.exitCode, 2) << line;
        EXPECT_THAT(ran.error, HasSubstr("--yes"));
        EXPECT_EQ(ran.output, "");
    }
    for (const auto& [answer, exitCode] :
         {std::pair{"\n", 1}, {"no\n", 1}, {"\x04", 1}, {"yess\n", 1}, {"SÍ\n", 0}}) {
        const Ran ran = runTarvoOnTerminal(home, {"clean"}, answer);
        EXPECT_EQ(ran.exitCode, exitCode) << answer;
        EXPECT_THAT(ran.output, AllOf(HasSubstr("Todo lo marcado se regenera solo"), HasSubstr("[s/N]")));
        EXPECT_EQ(fs::exists(home.path(".cache/uv/wheel")), exitCode != 0) << answer;
    }
}

TEST(CleanCommand, RefusesFilesThatBringTheirOwnCommandsOrMakeNoSense) {
    const TempHome home;
    furnish(home);
    std::string report = runTarvo(home, {"scan", "--json"}).output;
    home.fileWith("report.json", report);
    home.fileWith("stolen.json", report.replace(report.find("\"cleanup\": {"), 12,
                                                R"("cleanup": {"command": {"_0": "rm -rf /"}}, "x": {)"));
    std::string plan = planOf("keep", home.path("Documents/letter"));
    home.fileWith("keep.json", plan);
    home.fileWith("command.json", plan.replace(plan.find("trashItems"), 10, "command"));
    home.fileWith("other.json", R"({"no": "plan"})");
    home.folder("other");
    for (const char* line : {"--plan keep.json", "--plan command.json", "--plan other.json", "--plan missing",
                             "--report stolen.json", "--report other.json",
                             "--report report.json --home other", "--report report.json --plan keep.json"}) {
        Arguments words{"clean", "--yes"};
        for (const std::string& word : wordsIn(line)) {
            words.push_back(word.starts_with("--") ? word : home.path(word));
        }
        const Ran ran = runTarvo(home, words);
        EXPECT_EQ(ran.exitCode, 2) << line;
        EXPECT_THAT(ran.error, StartsWith("tarvo: "));
        // What was wrong with a file was told in the parser's English.
        EXPECT_THAT(ran.error, Not(HasSubstr("document"))) << line;
        EXPECT_TRUE(fs::exists(home.path(".cache/uv/wheel")));
    }
    EXPECT_EQ(runTarvo(home, {"clean", "--yes", "--report", home.path("report.json")}).exitCode, 0);
    EXPECT_FALSE(fs::exists(home.path(".cache/uv/wheel")));
}

// The question named the amounts of the day on which the plan was saved.
TEST(CleanCommand, AsksForASavedPlanWithTheAmountsOfNow) {
    const TempHome home;
    home.file(".cache/uv/wheel", 5'000'000);
    home.fileWith("plan.json", runTarvo(home, {"plan", "--json"}).output);
    home.file(".cache/uv/wheel", 2'000'000);
    const auto bytes = [&](const JsonValue& document) {
        return decode<std::vector<PlanEntry>>(document).value().front().action.estimatedBytes;
    };
    const auto now = bytes(jsonOf(home, {"plan"}));
    EXPECT_EQ(bytes(jsonOf(home, {"clean", "--dry-run", "--plan", home.path("plan.json")})), now);
    EXPECT_LT(now, 3'000'000);
    EXPECT_THAT(outcomesOf(jsonOf(home, {"clean", "--yes", "--plan", home.path("plan.json")})), SizeIs(1));
    EXPECT_FALSE(fs::exists(home.path(".cache/uv/wheel")));
}

TEST(CleanCommand, LeavesProtectedFoldersAloneAndAnswersOneWhenSomethingFailed) {
    const TempHome home;
    furnish(home);
    home.fileWith("plan.json", planOf("review", home.path("Desktop/Screenshot 1")));
    jsonOf(home, {"clean", "--yes", "--plan", home.path("plan.json"), "--protect", home.path("Desktop")});
    EXPECT_TRUE(fs::exists(home.path("Desktop/Screenshot 1")));
    // A file of the user's was taken because it stood under the id of a rule.
    const std::string letter = home.path("Documents/letter");
    for (const auto& [path, reason] :
         {std::pair{std::string("/etc/hostname"), std::string("fuera de tu carpeta personal: /etc/hostname")},
          {letter, letter + ": no es un sitio que se limpie con"}}) {
        home.fileWith("plan.json", planOf("review", path));
        for (const char* option : {"--yes", "--json"}) {
            const Ran ran = runTarvo(home, {"clean", "--yes", option, "--plan", home.path("plan.json")});
            EXPECT_EQ(ran.exitCode, 1);
            EXPECT_THAT(ran.output, HasSubstr(reason));
        }
        const Ran dry = runTarvo(home, {"clean", "--dry-run", "--plan", home.path("plan.json")});
        EXPECT_THAT(dry.output, HasSubstr(reason));
    }
    EXPECT_TRUE(fs::exists(letter));
}

TEST(CleanCommand, ASavedPlanLeavesAProjectAloneThatWasWorkedOnSince) {
    // What was planned of a project that had lain untouched was deleted, whatever had happened since.
    const TempHome home;
    home.files({"app/package.json", "app/main.js", "app/node_modules/x"}, 2000000);
    for (const char* name : {"app/package.json", "app/main.js"}) {
        home.setModified(name, 1000000000);
    }
    home.fileWith("plan.json", runTarvo(home, {"plan", "--json"}).output);
    home.setModified("app/main.js", static_cast<std::int64_t>(std::time(nullptr)));
    const Ran ran = runTarvo(home, {"clean", "--plan", home.path("plan.json"), "--yes"});
    EXPECT_THAT(ran.output, HasSubstr("proyecto con cambios hoy"));
    EXPECT_TRUE(fs::exists(home.path("app/node_modules/x")));
}

TEST(CleanCommand, AScanThatStoresNothingLeavesNoTrace) {
    // It left a folder and a lock in a home that nobody had ever cleaned.
    const TempHome home;
    furnish(home);
    for (const char* line : {"scan --quick", "scan --no-snapshot", "plan", "summary", "holding"}) {
        EXPECT_EQ(runTarvo(home, wordsIn(line)).exitCode, 0) << line;
        EXPECT_FALSE(fs::exists(home.path("Library"))) << line;
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
