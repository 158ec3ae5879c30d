#include "TarvoModel/Showing/RowView.h"
#include "TarvoModel/Showing/Goal.h"
#include "TarvoModel/Showing/PlaceOffers.h"
#include "TarvoModel/Showing/RowFacts.h"
#include "TarvoModel/Showing/TickedPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Language;
using lumo::Safety;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::UnorderedElementsAre;
using namespace tarvo;
namespace method = lumo::method;

namespace {

constexpr lumo::Date now{std::chrono::seconds(1790000000)};

Row row(const std::string& title, std::int64_t bytes, std::optional<Safety> safety, int daysAgo = 0) {
    Row row;
    row.id = title;
    row.title = title;
    row.bytes = bytes;
    row.safety = safety;
    row.group = safety ? groupOf(*safety) : RowGroup::unclassified;
    row.paths = {"/home/u/" + title};
    if (daysAgo > 0) {
        row.lastChange = now - std::chrono::days(daysAgo);
    }
    return row;
}

/// Group by group, the largest first.
std::vector<Row> someRows() {
    return {row("beta", 50, Safety::safe, 3), row("Álamo", 40, Safety::safe),
            row("gamma", 30, Safety::safe, 90), row("models", 80, Safety::review, 9),
            row("odd", 70, std::nullopt)};
}

std::vector<std::string> idsIn(const RowView& view) {
    std::vector<std::string> ids;
    std::ranges::transform(rowsIn(view, someRows()), std::back_inserter(ids), &Row::id);
    return ids;
}

Tile inside(const std::string& name, std::optional<Safety> safety, std::vector<std::string> children = {}) {
    Tile tile{.id = DiskMap::insideID("/home/u/" + name),
              .label = name,
              .detail = {},
              .bytes = 1,
              .kind = Tile::Kind::inside,
              .safety = safety};
    for (const std::string& child : children) {
        tile.children.push_back(
            {.name = child, .path = "/home/u/" + name + "/" + child, .children = {}, .via = {}});
    }
    return tile;
}

lumo::CleanupAction action(Safety safety, lumo::Method how) {
    lumo::CleanupAction action;
    action.safety = safety;
    action.method = std::move(how);
    return action;
}

} // namespace

TEST(RowView, SortsWithinTheGroupsAndNarrowsToOne) {
    EXPECT_THAT(idsIn({}), ElementsAre("beta", "Álamo", "gamma", "models", "odd"));
    EXPECT_THAT(idsIn({.order = RowOrder::name}), ElementsAre("Álamo", "beta", "gamma", "models", "odd"));
    EXPECT_THAT(idsIn({.order = RowOrder::date}), ElementsAre("gamma", "beta", "Álamo", "models", "odd"));
    EXPECT_THAT(idsIn({.group = RowGroup::safe, .order = RowOrder::name}),
                ElementsAre("Álamo", "beta", "gamma"));
    EXPECT_THAT(idsIn({.searched = "AMM", .group = RowGroup::safe}), ElementsAre("gamma"));
    // A film that the map lit was in no list, and nothing was said.
    std::vector<Row> withFilm = someRows();
    withFilm.push_back(row("gamma film", 5, Safety::review));
    withFilm.back().kind = lumo::InventoryKind::large;
    const auto found = [&](const RowView& view) {
        std::vector<std::string> ids;
        std::ranges::transform(rowsIn(view, withFilm), std::back_inserter(ids), &Row::id);
        return ids;
    };
    EXPECT_THAT(found({}), ElementsAre("beta", "Álamo", "gamma", "models", "odd"));
    EXPECT_THAT(found({.searched = "gamma", .order = RowOrder::name}), ElementsAre("gamma", "gamma film"));
    EXPECT_THAT(found({.searched = "gamma", .group = RowGroup::review}), IsEmpty());
    EXPECT_THAT(idsBetween("models", "gamma", someRows()), ElementsAre("gamma", "models"));
    EXPECT_THAT(idsBetween("models", "gone", someRows()), IsEmpty());
    EXPECT_EQ(rowWith("/home/u/odd/deep/file", someRows())->id, "odd");
    EXPECT_EQ(rowWith("/home/u/oddity", someRows()), nullptr);
}

// Inside a folder that was opened a search dimmed nothing.
TEST(RowView, LightsTheTilesOfWhatItShowsAlsoInsideFolders) {
    std::vector<Tile> top = DiskMap::tiles(someRows(), {}, false);
    EXPECT_EQ(litTiles({}, top, someRows()), std::nullopt);
    EXPECT_THAT(litTiles({.group = RowGroup::review}, top, someRows()),
                Optional(UnorderedElementsAre("models")));
    EXPECT_EQ(litTiles({.searched = "nothing"}, top, someRows()), std::nullopt) << "darkness says nothing";
    // A film of the map's amber went dark when only what needs a look was asked for.
    std::vector<Row> withFilm = someRows();
    withFilm.push_back(row("film", 5, Safety::review));
    withFilm.back().kind = lumo::InventoryKind::large;
    top.insert(top.begin(), Tile{.id = "film", .label = "film.mkv", .detail = {}, .safety = Safety::review});
    EXPECT_THAT(litTiles({.group = RowGroup::review}, top, withFilm),
                Optional(UnorderedElementsAre("models", "film")));
    EXPECT_THAT(litTiles({.group = RowGroup::safe}, top, withFilm),
                Optional(::testing::Not(::testing::Contains("film"))));
    top.erase(top.begin());
    top.pop_back();
    EXPECT_THAT(litTiles({.searched = "gamma"}, top, someRows()), Optional(UnorderedElementsAre("_otros")));

    const std::vector<Tile> level{inside("npm", Safety::safe),
                                  inside("code", Safety::keep, {"npm-cache", "notes"}),
                                  inside("rest", std::nullopt, {"notes"})};
    EXPECT_THAT(litTiles({.searched = "NPM"}, level, someRows()),
                Optional(UnorderedElementsAre("dentro:/home/u/npm", "dentro:/home/u/code",
                                              "dentro:/home/u/code/npm-cache")));
    EXPECT_THAT(litTiles({.searched = "npm", .group = RowGroup::safe}, level, {}),
                Optional(UnorderedElementsAre("dentro:/home/u/npm")));
    EXPECT_THAT(litTiles({.group = RowGroup::unclassified}, level, {}),
                Optional(UnorderedElementsAre("dentro:/home/u/rest", "dentro:/home/u/rest/notes")));
}

TEST(RowView, TicksSeveralRowsAtOnceButWhatIsHeldBack) {
    std::vector<lumo::PlanEntry> entries(3);
    for (std::size_t at = 0; at < entries.size(); ++at) {
        entries[at].action.id = std::string(1, static_cast<char>('a' + at));
        entries[at].action.estimatedBytes = 700'000'000;
    }
    entries[1].skipReason = "quit it first";
    TickedPlan plan;
    plan.take({.entries = entries, .defaults = {"a"}});
    const std::vector<std::string> ids{"a", "b", "c", "kept"};
    EXPECT_EQ(plan.count(ids), (TickedPlan::Count{.tickable = 2, .ticked = 1}));
    EXPECT_TRUE(plan.toggleAll(ids));
    EXPECT_THAT(plan.selection(), ElementsAre("a", "c"));
    EXPECT_TRUE(plan.toggleAll(ids));
    EXPECT_THAT(plan.selection(), IsEmpty());
    EXPECT_FALSE(plan.toggleAll({"b", "kept"}));
    EXPECT_EQ(chosenText(4, 2, 1, Language::en),
              "4 rows chosen · 1 of 2 selected · Space selects or deselects them");
    EXPECT_EQ(chosenText(2, 0, 0, Language::es), "2 filas elegidas · ninguna se puede marcar");
    EXPECT_EQ(chosenText(1, 1, 1, Language::es), "1 fila elegida · Espacio la desmarca");
    EXPECT_EQ(chosenText(0, 0, 0), "");
}

TEST(Goal, BeyondWhatCanBeReachedOffersThat) {
    constexpr std::int64_t gigabyte = 1'000'000'000;
    EXPECT_THAT(Goal::offer(24 * gigabyte, 17 * gigabyte + 1), Optional(17 * gigabyte));
    EXPECT_EQ(Goal::offer(24 * gigabyte, 24 * gigabyte), std::nullopt);
    EXPECT_EQ(Goal::offer(24 * gigabyte, gigabyte - 1), std::nullopt) << "there is no smaller goal";
    EXPECT_EQ(Goal::beyondText(24 * gigabyte, 17'900'000'000, Language::en),
              "All that can be selected comes to 17.9 GB.");
    EXPECT_EQ(Goal::beyondText(gigabyte, gigabyte, Language::en), "");
    EXPECT_EQ(Goal::beyondText(gigabyte, 0, Language::en), "There is nothing that can be selected now.");
    EXPECT_EQ(Goal::offerText(17 * gigabyte, Language::es), "Fijar el objetivo en 17 GB");
}

TEST(RowFacts, SayHowItIsFreedHowManyFilesItHasAndWhenItChanged) {
    EXPECT_EQ(freeingText(action(Safety::safe, method::TrashItems{}), Language::en),
              "deleted at once; it recreates itself when it is needed");
    EXPECT_EQ(freeingText(action(Safety::review, method::TrashContents{}), Language::en),
              "set aside for 7 days: until then it can be put back");
    const method::Command prune{.words = {"/usr/bin/docker", "system", "prune"}};
    EXPECT_EQ(freeingText(action(Safety::safe, prune), Language::en),
              "at once, by its own tool: docker system prune");
    EXPECT_EQ(freeingText(action(Safety::review, prune), Language::es),
              "al momento, con su propia herramienta, y no se puede deshacer: docker system prune");
    EXPECT_EQ(freeingText(action(Safety::review, method::EvictFromICloud{}), Language::en),
              "the copy on this computer goes: the files stay in the cloud");

    Row known = row("models", 80, Safety::review, 9);
    known.files = 1204;
    lumo::PlanEntry entry;
    entry.action = action(Safety::review, method::TrashItems{});
    const std::string day = lumo::dayText(*known.lastChange, Language::en);
    EXPECT_THAT(factsOf(known, &entry, Language::en),
                ElementsAre(ExplanationLine{"Freed", "set aside for 7 days: until then it can be put back"},
                            ExplanationLine{"Holds", "1,204 files"},
                            ExplanationLine{"Changed", "last on " + day}));
    known.id = "proyecto:p/node_modules";
    known.files = 1;
    EXPECT_THAT(factsOf(known, nullptr, Language::en),
                ElementsAre(ExplanationLine{"Holds", "1 file"},
                            ExplanationLine{"Project", "last changed on " + day}));
    EXPECT_THAT(factsOf(row("odd", 1, std::nullopt), nullptr), IsEmpty());
    // What is only done by hand was said to be set aside.
    entry.skipReason = "by hand: tool delete-cache";
    EXPECT_THAT(factsOf(row("odd", 1, std::nullopt), &entry, Language::en), IsEmpty());
}

TEST(PlaceOffers, AreWhatWouldDoSomething) {
    const Place cache{.state = TileState::unselected, .paths = 1, .canZoom = true, .hasRow = true};
    EXPECT_EQ(offersFor(cache, {}), (PlaceOffers{true, true, true, true, true, false, true, true, true}))
        << "what is ticked goes with the cleanup";
    const PlaceOffers demo = offersFor(cache, {.isElsewhere = true});
    EXPECT_EQ(demo, (PlaceOffers{.tick = true, .zoom = true, .explain = true, .preview = true}));
    EXPECT_FALSE(offersFor(cache, {.isBusy = true}).archive);
    const Place several{.state = TileState::blocked, .paths = 3, .hasRow = true, .isProtected = true};
    EXPECT_EQ(offersFor(several, {}), (PlaceOffers{.explain = true, .preview = true, .copy = true}));
    EXPECT_EQ(offersFor({}, {}), PlaceOffers()) << "free space";
    EXPECT_TRUE(offersFor({.paths = 1}, {}).aside) << "a film";
    EXPECT_FALSE(offersFor({.paths = 1}, {.isElsewhere = true}).aside);
    const Place inACache{.state = TileState::selected, .paths = 1, .hasRow = true, .isPart = true};
    EXPECT_TRUE(offersFor(inACache, {}).aside);
    EXPECT_TRUE(offersFor({.paths = 30}, {}).protect);
    EXPECT_FALSE(offersFor({.paths = 600}, {}).protect) << "the list has a line for each";
}

// A click on an unclassified tile, a kept one or a file did nothing.
// The menu over several chosen rows was about one of them.
TEST(PlaceOffers, OfSeveralAreWhatMakesSenseForAllOfThem) {
    const Place cache{.state = TileState::selected, .paths = 1, .canZoom = true, .hasRow = true};
    const Place film{.paths = 1};
    const std::vector<Place> mixed{cache, film, {.state = TileState::blocked, .paths = 1}};
    EXPECT_EQ(offersForAll(mixed, {}), (PlaceOffers{.tick = true, .protect = true, .copy = true}));
    EXPECT_EQ(offersForAll({film, film}, {}), (PlaceOffers{.aside = true, .protect = true, .copy = true}));
    EXPECT_EQ(offersForAll(mixed, {.isElsewhere = true}), PlaceOffers{.tick = true});
    EXPECT_FALSE(offersForAll({{.paths = 16}, {.paths = 16}}, {}).protect) << "the list has a line for each";
    EXPECT_EQ(offersForAll(std::vector{cache}, {}), offersFor(cache, {}));
}

TEST(PlaceOffers, LeaveNoTileWithoutAnAnswer) {
    const Tile item{
        .id = "sin:/x", .label = {}, .detail = {}, .bytes = 1, .kind = Tile::Kind::item, .safety = {}};
    EXPECT_EQ(clickOn(item, TileState::info, true), TileClick::explain);
    EXPECT_EQ(clickOn(item, TileState::blocked, false), TileClick::explain);
    EXPECT_EQ(clickOn(item, TileState::selected, true), TileClick::tick);
    EXPECT_EQ(clickOn(inside("a", {}), TileState::info, true), TileClick::zoom);
    EXPECT_EQ(clickOn(inside("a", {}), TileState::info, false), TileClick::preview);
    const auto fixed = [&](std::string_view id, Tile::Kind kind) {
        Tile tile = item;
        tile.id = id;
        tile.kind = kind;
        return clickOn(tile, TileState::info, false);
    };
    EXPECT_EQ(fixed(TileID::others, Tile::Kind::rest), TileClick::listRest);
    EXPECT_EQ(fixed(TileID::restOfDisk, Tile::Kind::rest), TileClick::home);
    EXPECT_EQ(fixed(TileID::freeSpace, Tile::Kind::free), TileClick::nothing);
}

// All of the home was drawn in the color of what nobody knows.
TEST(DiskMap, ColoursWhatIsNoRowsByWhatIsKnownOfIt) {
    ZoomLevel level{.title = "Home", .paths = {}, .safety = {}, .items = {}, .skipped = {}, .isApart = true};
    for (const std::string name : {"models", "Videos", "odd", "new"}) {
        level.items.push_back(
            {.name = name, .path = "/home/u/" + name, .bytes = 25, .children = {}, .via = {}});
    }
    level.known = DiskMap::knownEntries(level.items, someRows(), [](const auto& asked) {
        EXPECT_EQ(asked.size(), 2U) << "what has a row is known by it";
        lumo::Explanation videos;
        videos.safety = Safety::keep;
        videos.whatItIs = "Your videos";
        return std::map<std::string, lumo::Explanation>{{"/home/u/Videos", videos}};
    });
    const std::vector<Tile> tiles = DiskMap::tiles(level, Language::en);
    EXPECT_EQ(tiles[0].safety, Safety::review);
    EXPECT_EQ(tiles[1].safety, Safety::keep);
    EXPECT_EQ(tiles[1].known, "Your videos");
    EXPECT_EQ(tiles[2].safety, std::nullopt);
    EXPECT_EQ(tiles[2].known, "odd");
    EXPECT_EQ(tiles[3].known, "");
    EXPECT_EQ(DiskMap::totalOf(level), 100);
}
