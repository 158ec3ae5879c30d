#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;

namespace {

std::vector<Inventory> inventoriesOf(const JsonValue& document) {
    return decode<std::vector<Inventory>>(document).value();
}

std::vector<std::string> idsIn(const Inventory& inventory) {
    return eachOf<decltype(inventory.items), std::string>(inventory.items, &DetailItem::id);
}

} // namespace

TEST(FindCommand, FindsByEitherNameInTheFoldersGiven) {
    const TempHome home;
    home.files({"Videos/a.mkv", "Music/b.flac"}, 20000);
    const auto found =
        inventoriesOf(jsonOf(home, {"find", "grandes", "large", "--min", "1000", home.path("Music")}));
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(idsIn(found[0]), ElementsAre("archivo:Music/b.flac"));
    const auto all = inventoriesOf(jsonOf(home, {"buscar"}));
    EXPECT_THAT((eachOf<decltype(all), InventoryKind>(all, &Inventory::kind)),
                AllOf(SizeIs(8), Not(Contains(InventoryKind::duplicates))));
    EXPECT_TRUE(all.back().unavailable) << "the cloud, on Linux";
    EXPECT_EQ(runTarvo(home, {"find", "nonsense"}).exitCode, 2);
}

TEST(FindCommand, SetsAsideWhatIsPickedByNumberOrNamedByID) {
    const TempHome home;
    home.files({"a", "b", "c", "d"}, 20000);
    const std::vector<std::string> find{"find", "large", "--min", "1000", "--pick"};
    EXPECT_EQ(runTarvoOnTerminal(home, find, "\n").exitCode, 1);
    EXPECT_EQ(runTarvoOnTerminal(home, find, "5\n").exitCode, 2);
    EXPECT_EQ(runTarvoOnTerminal(home, find, "1\nn\n").exitCode, 1);
    EXPECT_TRUE(fs::exists(home.path("a")) && fs::exists(home.path("d")));
    EXPECT_EQ(runTarvoOnTerminal(home, find, "1 3-4\ns\n").exitCode, 0);
    EXPECT_FALSE(fs::exists(home.path("a")) || fs::exists(home.path("c")) || fs::exists(home.path("d")));
    EXPECT_TRUE(fs::exists(home.path("b")));
    EXPECT_EQ(runTarvo(home, {"clean", "--item", "archivo:b", "--yes"}).exitCode, 0);
    EXPECT_FALSE(fs::exists(home.path("b")));
    EXPECT_EQ(runTarvo(home, {"undo"}).exitCode, 0);
    EXPECT_EQ(runTarvo(home, {"undo"}).exitCode, 0);
    for (const char* name : {"a", "b", "c", "d"}) {
        EXPECT_EQ(contentOf(home.path(name)).size(), 20000U) << name;
    }
    EXPECT_EQ(runTarvo(home, {"find", "--item", "archivo:gone", "--yes"}).exitCode, 2);
}

TEST(FindCommand, NeverTakesTheLastCopy) {
    const TempHome home;
    home.files({"a", "b/a"}, 20000);
    home.file(".cache/uv/wheel", 5000000);
    // Each id keeps the other's file; together they would leave none.
    const Ran both =
        runTarvo(home, {"clean", "--item", "copia:a//b/a", "--item", "copia:b/a//a", "--yes", "--json"});
    EXPECT_EQ(both.output, "[]\n");
    // The copy that stays is also a large file, which was asked for by its own id.
    runTarvo(home, {"clean", "--item", "archivo:a", "--item", "copia:b/a//a", "--yes"});
    EXPECT_TRUE(fs::exists(home.path("a")));
    EXPECT_FALSE(fs::exists(home.path("b/a")));
    EXPECT_TRUE(fs::exists(home.path(".cache/uv/wheel"))) << "items alone were asked for";
}

TEST(FindCommand, CarriesOutASavedPlanOnlyAsTheInventoryHasIt) {
    const TempHome home;
    home.files({"a", ".ssh/key"}, 20000);
    const Ran planned = runTarvo(home, {"plan", "--item", "archivo:a", "--json"});
    const std::string file = home.fileWith("plan.json", planned.output);
    // What a person sets aside would have been deleted at once.
    std::string forged = planned.output;
    forged.replace(forged.find("review"), 6, "safe");
    const std::string forgedFile = home.fileWith("forged.json", forged);
    EXPECT_EQ(runTarvo(home, {"clean", "--plan", forgedFile, "--yes"}).exitCode, 1);
    EXPECT_TRUE(fs::exists(home.path("a")));
    std::string elsewhere = planned.output;
    for (auto at = elsewhere.find(home.path("a")); at != std::string::npos;
         at = elsewhere.find(home.path("a"))) {
        elsewhere.replace(at, home.path("a").size(), home.path(".ssh/key"));
    }
    EXPECT_EQ(runTarvo(home, {"clean", "--plan", home.fileWith("e.json", elsewhere), "--yes"}).exitCode, 1);
    EXPECT_TRUE(fs::exists(home.path(".ssh/key")));
    EXPECT_EQ(runTarvo(home, {"clean", "--plan", file, "--yes"}).exitCode, 0);
    EXPECT_FALSE(fs::exists(home.path("a")));
    EXPECT_EQ(runTarvo(home, {"undo"}).exitCode, 0);
    const std::string command =
        home.fileWith("c.json", R"([{"action": {"id": "docker:image:x", "title": "X", "safety": "review",
            "estimatedBytes": 1, "method": {"command": {"_0": ["rm", "-rf", "x"]}}, "measuredPaths": [],
            "fallbackContents": []}}])");
    EXPECT_EQ(runTarvo(home, {"clean", "--plan", command, "--yes"}).exitCode, 2);
}
