#include "TarvoModel/Showing/ItemRows.h"
#include "TarvoModel/Flows/Finding.h"
#include "TarvoModel/Showing/Asked.h"
#include "TarvoModel/Showing/DemoItems.h"
#include "TarvoModel/Showing/RowFacts.h"
#include "TarvoModel/Showing/RowView.h"
#include "TarvoModel/Showing/TickedPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using namespace tarvo;
using namespace ::testing;

namespace {

Inventory inventoryOf(InventoryKind kind, std::vector<DetailItem> items) {
    return {.kind = kind, .items = std::move(items), .unavailable = {}, .unreadableCount = 0};
}

DetailItem file(const std::string& id, const std::string& path, std::int64_t bytes) {
    return itemToSetAside(id, path, {path}, bytes, "film");
}

KindSums sumsOf(const Inventory* found) {
    return found == nullptr ? KindSums()
                            : shownItems({*found}, "/h").sums[static_cast<std::size_t>(found->kind)];
}

std::vector<std::string> tiled(const std::vector<Row>& rows) {
    std::vector<std::string> ids;
    for (const Row& row : rows) {
        if (row.hasTile) {
            ids.push_back(row.id);
        }
    }
    return ids;
}

} // namespace

TEST(ItemRows, StandBelowTheNameOfTheirKindAndSayWhatStaysAndWhatToRun) {
    DetailItem copy = file("copia:b//a", "/home/u/b", 5000000);
    copy.kept = "/home/u/a";
    const DetailItem shown = itemToShow("sistema:apt", "apt", 3000000, "packages",
                                        needsAdministrator("sudo apt clean", Language::en));
    const ShownItems items = shownItems(
        {inventoryOf(InventoryKind::duplicates, {copy, copy}), inventoryOf(InventoryKind::system, {shown})},
        "/home/u");
    ASSERT_EQ(items.rows.size(), 2U) << "each id once";
    const Row& row = items.rows[0];
    EXPECT_EQ(headOf(row, Language::es), "Archivos duplicados");
    EXPECT_THAT(factsOf(row, &items.entries[0], Language::en),
                Contains(ExplanationLine{.label = "Stays", .text = "/home/u/a"}));
    EXPECT_FALSE(row.command);
    EXPECT_EQ(items.rows[1].command, "sudo apt clean");
    EXPECT_THAT(factsOf(items.rows[1], &items.entries[1], Language::en), IsEmpty()) << "not freed from here";
    EXPECT_EQ(amountWith(items.rows[1], items.rows, Language::en), "0 MB · 3 MB not now");
    EXPECT_EQ(bytesOf(row.group, items.rows), 0) << "no part of what the scan found";
    EXPECT_THAT(rowsIn({}, items.rows), IsEmpty());
    EXPECT_THAT(rowsIn({.kind = InventoryKind::system}, items.rows), ElementsAre(items.rows[1]));
}

// Two copies of one name could not be told apart, neither in the list nor in the question.
TEST(ItemRows, SayInWhichFolderAFileLiesOfWhichOnlyTheNameIsKnown) {
    const DetailItem here = itemToSetAside("copia:1", "db.bin", {"/home/u/Downloads/db.bin"}, 9, "a copy");
    const DetailItem there = itemToSetAside("copia:2", "db.bin", {"/home/u/old/db.bin"}, 8, "");
    DetailItem image = itemForTool("docker:i", "image", {"docker"}, 4, "tagged");
    const std::vector<Row> rows =
        shownItems({inventoryOf(InventoryKind::duplicates, {here, there, image})}, "/home/u").rows;
    EXPECT_EQ(rows[0].detail, "~/Downloads · a copy");
    EXPECT_EQ(rows[1].detail, "~/old");
    EXPECT_EQ(rows[2].detail, "tagged");
    const DetailItem film =
        itemToSetAside("archivo:1", "film",
                       {"/home/u/a/film", "/home/u/b/film", "/home/u/c", "/home/u/d", "/home/u/e"}, 7, "");
    lumo::CleanupAction cache = here.action;
    cache.title = "Caches";
    const QuestionTexts asked =
        textsOf(asked::Clean{.actions = {here.action, there.action, film.action, cache}, .shown = {}},
                "/home/u", Language::en);
    std::vector<std::string> places;
    for (const GoingItem& item : asked.groups.front().items) {
        places.push_back(item.title + "|" + item.place);
    }
    EXPECT_THAT(places,
                UnorderedElementsAre("db.bin|~/Downloads", "db.bin|~/old",
                                     "film|~/a; also called ~/b/film, ~/c, ~/d and 1 more", "Caches|"));
}

TEST(ItemRows, HaveATileWhereNoOtherOneStandsForThem) {
    std::vector<Row> items =
        shownItems(
            {inventoryOf(InventoryKind::large,
                         {file("archivo:a", "/home/u/Videos/a", 9),
                          file("archivo:b", "/home/u/Downloads/b", 8), file("archivo:c", "/mnt/c", 7),
                          file("archivo:d", "/home/u/Work/d", 6)}),
             inventoryOf(InventoryKind::leftovers, {file("resto:a", "/home/u/Videos", 9)}),
             inventoryOf(InventoryKind::docker, {itemForTool("docker:i", "image", {"docker"}, 4, "")})},
            "/home/u")
            .rows;
    const std::vector<Row> found{{.id = "downloads", .paths = {"/home/u/Downloads"}},
                                 {.id = "inner", .paths = {"/home/u/Work/d/cache"}}};
    giveTiles(items, found, "/home/u");
    EXPECT_THAT(tiled(items), ElementsAre("archivo:a"));
    const std::vector<Tile> tiles = DiskMap::tiles(items, {}, false, Language::en, System::linux);
    ASSERT_EQ(tiles.size(), 1U);
    EXPECT_THAT(litTiles({.kind = InventoryKind::large}, tiles, items), Optional(ElementsAre("archivo:a")));
}

TEST(ItemRows, JoinThePlanAndNothingCountsTwice) {
    ShownItems found = shownItems(
        {inventoryOf(InventoryKind::large,
                     {file("archivo:a", "/home/u/Videos/a", 9), file("archivo:b", "/home/u/.cache/b", 8)}),
         inventoryOf(InventoryKind::docker, {itemForTool("docker:i", "image", {"docker"}, 4, "")})},
        "/home/u");
    const ShownPlan planned{
        .entries = {PlanEntry{file("cache", "/home/u/.cache", 20).action, {}},
                    PlanEntry{file("held", "/home/u/.held", 70).action, "quit it first"}},
        .rows = {{.id = "cache", .paths = {"/home/u/.cache"}}, {.id = "held", .paths = {"/home/u/.held"}}}};
    const auto whole =
        std::make_shared<const WholePlan>(std::make_shared<const ShownPlan>(planned),
                                          std::make_shared<const ShownItems>(std::move(found)), "/home/u");
    EXPECT_EQ(whole->reachable(), 20 + 9 + 4) << "one of the items lies in the cache";
    EXPECT_THAT(tiled(whole->rows()), ElementsAre("cache", "held", "archivo:a"));
    ASSERT_EQ(whole->entries().size(), 5U);
    EXPECT_EQ(whole->entry("docker:i"), whole->entries().back());
    EXPECT_EQ(whole->entry("none"), nullptr);
    const auto rest = whole->without({"cache"});
    EXPECT_THAT(tiled(rest->rows()), ElementsAre("held", "archivo:a")) << "no tile for what lay in it";
    EXPECT_EQ(rest->plan(), whole->plan());
}

TEST(ItemRows, AreNotTickedTogetherWithWhatHoldsThem) {
    // A model and the folder of all models counted twice.
    TickedPlan plan;
    const auto entry = [](const std::string& id, const std::string& path) {
        return PlanEntry{file(id, path, 5).action, {}};
    };
    plan.take({.entries = {entry("ollama", "/home/u/.ollama"), entry("cache", "/home/u/.cache"),
                           entry("modelo:x", "/home/u/.ollama/blobs/x"),
                           entry("modelo:y", "/home/u/.ollama/blobs/y")},
               .defaults = {"ollama", "cache"}});
    EXPECT_TRUE(plan.toggle("modelo:x"));
    EXPECT_TRUE(plan.toggle("modelo:y"));
    EXPECT_THAT(plan.selection(), ElementsAre("cache", "modelo:x", "modelo:y"));
    EXPECT_TRUE(plan.toggleAll({"ollama", "cache"}));
    EXPECT_THAT(plan.selection(), ElementsAre("cache", "ollama"));
    EXPECT_EQ(plan.shares().total, 10);
}

TEST(ItemRows, AreAsTickedAsWhatTakesThemAlong) {
    // Archives that the next cleanup was to take were shown as if it left them alone.
    const auto entry = [](const std::string& id, const std::string& path) {
        return PlanEntry{file(id, path, 5).action, {}};
    };
    PlanEntry used = entry("installers", "/home/u/Downloads/a.zip");
    used.action.measuredPaths.emplace_back("/home/u/Downloads/b.zip");
    PlanEntry tool = entry("tool", "/home/u/.tool");
    tool.action.method = lumo::method::Command{};
    const ShownItems items{.entries = {entry("archivo:a", "/home/u/Downloads/a.zip"),
                                       entry("archivo:b", "/home/u/Downloads/b.zip"),
                                       entry("archivo:c", "/home/u/Downloads/c.zip"),
                                       entry("archivo:t", "/home/u/.tool/x")}};
    TickedPlan plan;
    plan.take(
        std::make_shared<const WholePlan>(std::make_shared<const ShownPlan>(ShownPlan{
                                              .entries = {used, tool}, .defaults = {"installers", "tool"}}),
                                          std::make_shared<const ShownItems>(items), "/home/u"));
    EXPECT_EQ(plan.stateOf("archivo:a"), TileState::selected);
    EXPECT_EQ(plan.stateOf("archivo:c"), TileState::unselected);
    EXPECT_EQ(plan.stateOf("archivo:t"), TileState::unselected) << "who knows what a tool takes";
    EXPECT_EQ(plan.count({"archivo:a", "archivo:b", "archivo:c"}), (TickedPlan::Count{3, 2}));
    EXPECT_EQ(plan.shares().total, 10) << "nothing counts twice";
    ASSERT_NE(plan.takenAlongBy("archivo:b"), nullptr);
    EXPECT_TRUE(plan.toggle("archivo:b"));
    EXPECT_THAT(plan.selection(), ElementsAre("tool"));
    EXPECT_EQ(plan.stateOf("archivo:a"), TileState::unselected);
    EXPECT_TRUE(plan.toggle("archivo:a"));
    EXPECT_THAT(plan.selection(), ElementsAre("archivo:a", "tool"));
}

// Beside the list the large files came to more than above it, once duplicates were looked for.
TEST(ItemRows, CountInOneKindOnlyAndTheOtherSaysWhereTheyAre) {
    DetailItem copy = itemToSetAside("copia:1", "film", {"/home/u/Downloads/film"}, 9, "");
    copy.kept = "/home/u/Videos/film";
    std::vector<Inventory> found{
        inventoryOf(InventoryKind::large, {file("archivo:a", "/home/u/Downloads/film", 9),
                                           file("archivo:b", "/home/u/Videos/film", 9),
                                           file("archivo:c", "/home/u/Videos/other", 5)}),
        inventoryOf(InventoryKind::duplicates, {copy})};
    EXPECT_EQ(leaveOutCopies(found), 2U);
    ShownItems shown = shownItems(found, "/home/u");
    KindSums& large = shown.sums[static_cast<std::size_t>(InventoryKind::large)];
    EXPECT_EQ(large, (KindSums{.items = 1, .tickable = 5}));
    large.copies = 2;
    EXPECT_EQ(shown.sums[static_cast<std::size_t>(InventoryKind::duplicates)].tickable, 9);
    EXPECT_EQ(kindNote(&found.front(), large, LookState::done, "/home/u", Language::es),
              "2 archivos más se ven en «Archivos duplicados», como copia o como el que se queda");
}

TEST(ItemRows, SayOfEachKindWhatItComesToOrWhyNothingIsKnown) {
    const auto line = [](const Inventory* found, LookState state) {
        const KindLine said = kindLine(found, sumsOf(found), state, Language::en);
        return said.amount + "|" + said.note;
    };
    Inventory found = inventoryOf(InventoryKind::large, {file("archivo:a", "/a", 5000000)});
    EXPECT_EQ(line(nullptr, LookState::unwanted), "|press to look");
    EXPECT_EQ(line(nullptr, LookState::wanted), "|waiting");
    EXPECT_EQ(line(&found, LookState::going), "5 MB|looking…");
    EXPECT_EQ(line(&found, LookState::done), "5 MB|");
    found.unreadableCount = 2;
    EXPECT_EQ(kindNote(&found, sumsOf(&found), LookState::done, "/h", Language::en),
              "2 places could not be looked at");
    found.unreadableCount = 0;
    found.miss("/h/a", "permission denied");
    EXPECT_EQ(kindNote(&found, sumsOf(&found), LookState::done, "/h", Language::es),
              "1 sitio no se ha podido mirar: ~/a (permission denied)");
    found.missIn("/var/b", 5, Language::en);
    found.missIn("/var/none", 0, Language::en);
    found.miss("/h/c");
    found.miss("/h/d");
    EXPECT_EQ(
        unreadText(found, "/h", Language::en),
        "8 places could not be looked at: ~/a (permission denied); /var/b (not all of it); ~/c; and others");
    found.items[0].blockedBecause = "running";
    EXPECT_EQ(line(&found, LookState::done), "|5 MB not from here");
    found.items.clear();
    EXPECT_EQ(line(&found, LookState::done), "|nothing");
    found.unavailable = "docker is not running";
    EXPECT_EQ(line(&found, LookState::done), "|cannot be told");
    EXPECT_EQ(kindNote(&found, sumsOf(&found), LookState::done, "/h", Language::en), "Docker is not running");
    // The made-up computer has something of most kinds, in both languages.
    for (std::size_t index = 0; index < inventoryKindCount; ++index) {
        const auto kind = static_cast<InventoryKind>(index);
        const Inventory made = DemoDisk::items(kind, Language::es);
        EXPECT_EQ(made.items.size(), DemoDisk::items(kind, Language::en).items.size());
        for (const DetailItem& item : made.items) {
            EXPECT_EQ(inventoryKindOfID(item.id), kind) << item.id;
        }
    }
}
