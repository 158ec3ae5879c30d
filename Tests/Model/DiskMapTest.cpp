#include "TarvoModel/Showing/DiskMapSvg.h"
#include "TarvoModel/Showing/TickedPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using lumo::Language;
using lumo::Safety;
using tarvo::Rect;
using tarvo::Row;
using tarvo::RowGroup;
using tarvo::TickedPlan;
using tarvo::Tile;
using tarvo::TileState;
using tarvo::ZoomLevel;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
namespace DiskMap = tarvo::DiskMap;
namespace Squarify = tarvo::Squarify;

namespace {

MATCHER_P4(IsAt, x, y, width, height, "") {
    constexpr double close = 1e-9;
    return std::abs(arg.x - x) < close && std::abs(arg.y - y) < close &&
           std::abs(arg.width - width) < close && std::abs(arg.height - height) < close;
}

std::vector<Row> rows(std::size_t count, std::int64_t bytes = 10) {
    std::vector<Row> rows;
    for (std::size_t number = 0; number < count; ++number) {
        rows.push_back({.id = std::to_string(number),
                        .title = "t",
                        .detail = "d",
                        .bytes = bytes,
                        .safety = Safety::safe,
                        .skipReason = {},
                        .paths = {}});
    }
    return rows;
}

lumo::PlanEntry entry(const std::string& id, std::optional<std::string> reason) {
    lumo::PlanEntry entry;
    entry.action.id = id;
    entry.skipReason = std::move(reason);
    return entry;
}

} // namespace

TEST(Squarify, LaysTheClassicExampleOut) {
    EXPECT_THAT(Squarify::layout({6, 6, 4, 3, 2, 2, 1}, {0, 0, 6, 4}),
                ElementsAre(IsAt(0, 0, 3, 2), IsAt(0, 2, 3, 2), IsAt(3, 0, 12.0 / 7, 7.0 / 3),
                            IsAt(3 + 12.0 / 7, 0, 9.0 / 7, 7.0 / 3), IsAt(3, 7.0 / 3, 1.2, 5.0 / 3),
                            IsAt(4.2, 7.0 / 3, 1.2, 5.0 / 3), IsAt(5.4, 7.0 / 3, 0.6, 5.0 / 3)));
    EXPECT_THAT(Squarify::layout({5}, {1, 2, 3, 4}), ElementsAre(IsAt(1, 2, 3, 4)));
    EXPECT_THAT(Squarify::layout({}, {0, 0, 1, 1}), IsEmpty());
    for (const Rect& none : {Rect{0, 0, 0, 4}, Rect{0, 0, 4, -1}}) {
        EXPECT_THAT(Squarify::layout({5, 1}, none), ElementsAre(Rect(), Rect()));
    }
    EXPECT_THAT(Squarify::layout({0, 0}, {0, 0, 4, 4}), ElementsAre(Rect(), Rect()));
}

TEST(Squarify, FillsThePlaceWithoutOverlapInProportionToTheValues) {
    std::vector<double> values;
    for (int number = 151; number > 0; --number) {
        values.push_back(number * number);
    }
    double area = 0;
    const std::vector<Rect> placed = Squarify::layout(values, {0, 0, 1200, 800});
    for (std::size_t index = 0; index < placed.size(); ++index) {
        const Rect& rect = placed[index];
        area += rect.width * rect.height;
        EXPECT_NEAR(rect.width * rect.height / values[index], placed[0].width * placed[0].height / values[0],
                    1e-9);
        EXPECT_GE(rect.x, -1e-6);
        EXPECT_LE(rect.x + rect.width, 1200 + 1e-6);
        EXPECT_LE(rect.y + rect.height, 800 + 1e-6);
    }
    EXPECT_NEAR(area, 1200.0 * 800, 1e-3);
}

TEST(DiskMap, HasATileForEachOfTheLargestRowsAndOneForTheRest) {
    EXPECT_THAT(DiskMap::tiles(rows(150), {}, false, Language::en), SizeIs(150));
    const auto made = [](lumo::System system) {
        return DiskMap::tiles(rows(151), {}, false, Language::es, system);
    };
    const std::vector<Tile> more = made(lumo::System::macos);
    ASSERT_EQ(more.size(), 151U);
    EXPECT_EQ(more.back().id, "_otros");
    EXPECT_EQ(more.back().label, "Otros 1 elementos");
    EXPECT_EQ(made(lumo::System::linux).back().label, "Otro elemento");
    EXPECT_EQ(more.back().bytes, 10);
    EXPECT_THAT(DiskMap::tiles(rows(3, 0), {}, false, Language::en), IsEmpty());
    std::vector<Row> mixed = rows(2);
    mixed[1].bytes = 20;
    EXPECT_EQ(DiskMap::tiles(mixed, {}, false, Language::en).front().id, "1");
}

TEST(DiskMap, ShowsTheRestOfTheDiskWhenAsked) {
    const auto made = [](lumo::System system) {
        return DiskMap::tiles(rows(1), {100, 30}, true, Language::en, system);
    };
    const std::vector<Tile> whole = made(lumo::System::macos);
    ASSERT_EQ(whole.size(), 3U);
    EXPECT_EQ(whole[1].label, "System, apps and your files");
    EXPECT_EQ(whole[1].bytes, 60);
    EXPECT_EQ(whole[1].detail, "macOS, apps and your documents: not touched");
    EXPECT_EQ(made(lumo::System::linux)[1].detail,
              "the system, applications and your documents: not touched");
    EXPECT_EQ(whole[2].kind, Tile::Kind::free);
    EXPECT_EQ(whole[2].bytes, 30);
    EXPECT_THAT(DiskMap::tiles(rows(1, 90), {100, 30}, true, Language::en), SizeIs(2)) << "more than is used";
}

// The rest of the disk and its free space come last among the tiles and were laid out last: slivers, and so
// was everything else.
TEST(DiskMap, LaysTheLargestOutFirstWhereverTheyComeAmongTheTiles) {
    const std::vector<Tile> tiles = DiskMap::tiles(rows(30), {100'000, 40'000}, true, Language::en);
    ASSERT_EQ(tiles.back().kind, Tile::Kind::free);
    const std::vector<Rect> places = DiskMap::layout(tiles, 600, 400);
    const Rect& rest = places[places.size() - 2];
    EXPECT_EQ(rest.x + rest.y, 0);
    for (const Rect& large : {rest, places.back()}) {
        EXPECT_LT(std::max(large.width / large.height, large.height / large.width), 2);
    }
}

TEST(DiskMap, DividesAFolderAmongItsEntries) {
    ZoomLevel level{.title = "Caja", .paths = {}, .safety = Safety::review, .items = {}, .skipped = {}};
    for (int number = 0; number < 41; ++number) {
        level.items.push_back({.name = "n",
                               .path = "/p" + std::to_string(number),
                               .bytes = number == 0 ? 1000 : 1,
                               .isDirectory = number == 0,
                               .children = {},
                               .via = {}});
    }
    const std::vector<Tile> tiles = DiskMap::tiles(level, Language::es, lumo::System::macos);
    ASSERT_EQ(tiles.size(), 41U);
    EXPECT_EQ(tiles[0].id, "dentro:/p0");
    EXPECT_EQ(tiles[0].detail, "96 % de Caja");
    EXPECT_EQ(tiles[0].safety, Safety::review);
    EXPECT_EQ(tiles[1].detail, "Menos del 1 % de Caja");
    EXPECT_EQ(tiles[40].label, "Otros 1 elementos");
    EXPECT_EQ(DiskMap::tiles(level, Language::en)[0].detail, "96% of Caja");
}

TEST(DiskMap, SaysOfEachTileWhatItIsIn) {
    TickedPlan plan;
    plan.take({.entries = {entry("a", {}), entry("b", "ábrelo"), entry("c", {})}, .defaults = {"a"}});
    struct Case {
        const char* id;
        TileState state;
        const char* status;
    };
    for (const Case& expected :
         {Case{"a", TileState::selected, "Marcado: entra en la limpieza"},
          Case{"b", TileState::blocked, "Ábrelo"},
          Case{"c", TileState::unselected, "Sin marcar · pincha para marcarlo"},
          Case{"sin:/x", TileState::info, "Sin clasificar: pulsa «Explicar con IA»"},
          Case{"_libre", TileState::info, "Solo para que veas el disco entero"},
          Case{"photos", TileState::info, "Tus datos: solo se enseña"},
          Case{"dentro:/x", TileState::info, "Archivo · clic derecho para verlo en el Finder"}}) {
        const Tile tile{.id = expected.id, .label = {}, .detail = {}, .safety = {}};
        EXPECT_EQ(plan.stateOf(tile.id), expected.state) << expected.id;
        EXPECT_EQ(
            DiskMap::statusOf(tile, expected.state, plan.entry(tile.id), Language::es, lumo::System::macos),
            expected.status);
    }
    EXPECT_EQ(TickedPlan().stateOf("a"), TileState::info);
}

TEST(DiskMapSvg, EscapesNamesAndLeavesLabelsOffWhatIsTooSmall) {
    std::vector<DiskMap::PlacedTile> tiles;
    for (const Tile& tile : DiskMap::tiles(rows(1, 1500000000), {}, false)) {
        tiles.push_back({tile, TileState::selected, {0, 0, 300, 200}});
    }
    tiles[0].tile.label = "<a&b>\n";
    EXPECT_THAT(DiskMap::svg(tiles, 300, 200), HasSubstr(">✓ &lt;a&amp;b&gt;\\n</text>"));
    tiles[0].place = {0, 0, 20, 20};
    EXPECT_THAT(DiskMap::svg(tiles, 300, 200), Not(HasSubstr("</text>")));
    tiles[0].tile.id = "sin:/x";
    EXPECT_THAT(DiskMap::svg(tiles, 300, 200), HasSubstr("url(#stripes)"));
}
