#include "TarvoApp/App/TileList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tarvo;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

Tile tile(const std::string& id, std::int64_t bytes) {
    Tile made;
    made.id = id;
    made.kind = Tile::Kind::item;
    made.label = id;
    made.bytes = bytes;
    return made;
}

} // namespace

// Each look at the disk finds some bytes more in a cache. All tiles were told anew then, in all they say.
TEST(TileListTest, AfterAnotherLookOnlyWhatCanBeSeenIsTold) {
    const QSizeF size(400, 300);
    TileList tiles([](const TileList&, const LaidTile&, int) { return QVariant(); }, 10);
    tiles.take({tile("pip", 6'000'000'000), tile("npm", 3'000'000'000), tile("go", 1'000'000'000)}, size);
    std::vector<std::pair<int, QList<int>>> told;
    QObject::connect(&tiles, &TileList::dataChanged,
                     [&](const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) {
                         for (int row = first.row(); row <= last.row(); ++row) {
                             told.emplace_back(row, roles);
                         }
                     });
    const std::vector<Rect> before = tiles.places();
    tiles.take({tile("pip", 6'000'000'000), tile("npm", 3'000'000'000), tile("go", 1'000'000'000)}, size);
    EXPECT_THAT(told, IsEmpty());
    tiles.take({tile("pip", 6'000'100'000), tile("npm", 3'000'000'000), tile("go", 1'000'000'000)}, size);
    EXPECT_THAT(told, ElementsAre(std::pair(0, QList<int>())));
    EXPECT_EQ(tiles.places(), before);
    // Little by little it comes to something.
    for (std::int64_t grown = 1; grown <= 100; ++grown) {
        tiles.take({tile("pip", 6'000'000'000 + grown * 10'000'000), tile("npm", 3'000'000'000),
                    tile("go", 1'000'000'000)},
                   size);
    }
    EXPECT_NEAR(tiles.places().front().width, 400.0 * 7 / 11, 0.3);
    told.clear();
    tiles.take({tile("pip", 8'000'000'000), tile("npm", 3'000'000'000), tile("go", 1'000'000'000)}, size);
    const QList<int> where{TileList::placeRole, TileList::nestedRole};
    EXPECT_THAT(told, ElementsAre(std::pair(0, QList<int>()), std::pair(1, where), std::pair(2, where)));
}
