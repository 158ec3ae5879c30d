#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Scanning/FolderContents.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoModel/Showing/Rows.h"
#include "TarvoModel/Showing/Shared.h"
#include "TarvoModel/Showing/Squarify.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The picture of the disk: which tiles there are, in which order, where, and what they say.
namespace tarvo {

/// One rectangle of the map.
struct Tile {
    enum class Kind {
        item,   ///< A row of the list.
        inside, ///< An entry of a folder that was zoomed into.
        rest,   ///< What is too small to stand alone, or is never cleaned.
        free,   ///< Free space.
    };

    std::string id; ///< The row's; "dentro:" and the path of an entry; or one of the fixed ones below.
    std::string label;
    std::string detail; ///< The second line.
    std::int64_t bytes = 0;
    Kind kind = Kind::item;
    std::optional<lumo::Safety> safety; ///< Of an item or entry; absent when it is not known.
    std::vector<lumo::FolderContents::Item> children = {}; ///< Shown as tiles in this one.
    bool isFolder = false;                                 ///< Of an entry.
    std::string known = {};                                ///< What an entry is, where somebody knows.

    friend bool operator==(const Tile&, const Tile&) = default;
};

/// Ids of tiles that are no row.
namespace TileID {
inline constexpr std::string_view others = "_otros";
inline constexpr std::string_view restOfDisk = "_resto";
inline constexpr std::string_view freeSpace = "_libre";
inline constexpr std::string_view insidePrefix = "dentro:";
} // namespace TileID

enum class TileState { selected, unselected, blocked, info };

/// What is known of an entry of a folder that is no row's.
struct KnownEntry {
    std::optional<lumo::Safety> safety;
    std::string whatItIs;

    friend bool operator==(const KnownEntry&, const KnownEntry&) = default;
};

/// One step of the way into a folder.
struct ZoomLevel {
    std::string title;
    SharedPaths paths;                             ///< What is shown.
    std::optional<lumo::Safety> safety;            ///< Of the row that was zoomed into.
    std::vector<lumo::FolderContents::Item> items; ///< Largest first.
    std::vector<std::string> skipped;              ///< Folders that were opened through.
    Rect place = {};                               ///< On the map of the level above.
    /// No row's, such as the home: what is known of each entry stands for itself.
    bool isApart = false;
    std::map<std::string, KnownEntry> known = {}; ///< By path.
};

namespace DiskMap {

/// How many rows and how many entries of a folder have a tile of their own.
inline constexpr std::size_t mostRows = 150;
/// Those of the rows, all other rows together, the rest of the disk and what is free.
inline constexpr std::size_t mostTiles = mostRows + 3;
inline constexpr std::size_t mostEntries = 40;

/// The tiles of the rows, largest first; with the whole disk also the rest of it and its free space.
std::vector<Tile> tiles(const std::vector<Row>& rows, const lumo::VolumeInfo& volume, bool isWholeDisk,
                        lumo::Language language = lumo::currentLanguage(),
                        lumo::System system = lumo::currentSystem());

/// The id of the tile of an entry, or of an entry in it.
std::string insideID(const std::string& path);

/// What all entries of the level take.
std::int64_t totalOf(const ZoomLevel& level);

/// What is known of the entries that have tiles: by the row that they belong to, and otherwise by `know`,
/// which explains what nobody needs to guess about.
std::map<std::string, KnownEntry> knownEntries(
    const std::vector<lumo::FolderContents::Item>& items, const std::vector<Row>& rows,
    const std::function<std::map<std::string, lumo::Explanation>(const std::vector<lumo::UnclassifiedItem>&)>&
        know);

/// What the level that shows the whole home is called.
std::string homeTitle(lumo::Language language = lumo::currentLanguage());

/// The tiles of a folder that was zoomed into.
std::vector<Tile> tiles(const ZoomLevel& level, lumo::Language language = lumo::currentLanguage(),
                        lumo::System system = lumo::currentSystem());

/// Where the tiles are on a map of that size, in their order. The largest come first on the map, wherever
/// they are among the tiles: what comes after smaller ones would be a sliver.
std::vector<Rect> layout(const std::vector<Tile>& tiles, double width, double height);

/// The part of a tile's place that is drawn: a gap of 4 is left between two tiles.
Rect drawn(const Rect& place);

/// Where the folder's entries are in a tile of that drawn size, relative to it: below a band for the tile's
/// texts, where there is room for one. None where the tile is too small for any.
std::vector<Rect> nestedLayout(const std::vector<lumo::FolderContents::Item>& children, double width,
                               double height, double textScale);

/// The place that lies next to that one in a direction, each of `dx` and `dy` being -1, 0 or 1; absent at the
/// edge. What lies straight ahead is nearer than what lies aside.
std::optional<std::size_t> neighbour(const std::vector<Rect>& places, std::size_t from, int dx, int dy);

/// The entry is the plan's for that id, if it has one.
TileState stateOf(const std::string& id, const std::set<std::string>& selection,
                  const lumo::PlanEntry* entry);

/// What the tile's card says about it.
std::string statusOf(const Tile& tile, TileState state, const lumo::PlanEntry* entry,
                     lumo::Language language = lumo::currentLanguage(),
                     lumo::System system = lumo::currentSystem());

/// The same of a folder inside that cannot be opened.
std::string closedFolderText(lumo::Language language = lumo::currentLanguage());

/// Red, green and blue from 0 to 1.
using Color = std::array<double, 3>;

/// The color of the tile; absent for the neutral gray of what is only there for context.
std::optional<Color> colorOf(const Tile& tile);

/// True when near-black is easier to read on the color than near-white.
bool wantsDarkInk(const Color& color);

} // namespace DiskMap

} // namespace tarvo

namespace lumo {

template <>
struct EnumNames<tarvo::Tile::Kind> {
    static constexpr std::array<std::string_view, 4> values{"item", "inside", "rest", "free"};
};

template <>
struct EnumNames<tarvo::TileState> {
    static constexpr std::array<std::string_view, 4> values{"selected", "unselected", "blocked", "info"};
};

} // namespace lumo
