#pragma once

#include "TarvoModel/Showing/DiskMap.h"

#include <cstddef>
#include <vector>

/// What a row or a tile offers to whoever clicks on it.
namespace tarvo {

/// What a menu has to know of a row or tile.
struct Place {
    TileState state = TileState::info;
    std::size_t paths = 0;    ///< How many things on the disk it stands for.
    bool canZoom = false;     ///< It is a folder that can be opened on the map.
    bool hasRow = false;      ///< The list has a row about it.
    bool isPart = false;      ///< It is in what that row is about.
    bool isProtected = false; ///< All of it is in the preferences already.
};

/// What goes on around it.
struct Occasion {
    /// The disk is made up, or a report tells of another home: nothing of it can be handed to another
    /// program.
    bool isElsewhere = false;
    bool isBusy = false;
};

/// What can be done; each is true where it would do something.
struct PlaceOffers {
    bool tick = false; ///< Or untick.
    bool zoom = false;
    bool explain = false;
    bool preview = false;
    bool open = false;  ///< With the desktop's program, or shown there.
    bool aside = false; ///< To be set aside whole, as what no cleanup is about.
    bool archive = false;
    bool protect = false;
    bool copy = false; ///< Its paths.

    friend bool operator==(const PlaceOffers&, const PlaceOffers&) = default;
};

PlaceOffers offersFor(const Place& place, const Occasion& occasion);
/// What can be done with all of these together. What is about one thing is not offered of several.
PlaceOffers offersForAll(const std::vector<Place>& places, const Occasion& occasion);

/// What a click on a tile does. No tile that stands for something has nothing to say.
enum class TileClick {
    tick,
    zoom,
    explain,  ///< Shows all that the list knows of it.
    preview,  ///< Of a file, or a folder that cannot be opened on the map.
    listRest, ///< Shows the rows, or the entries of the folder, that have no tile of their own.
    home,     ///< Shows the home, where the rest of the disk is to be looked for.
    nothing,
};
TileClick clickOn(const Tile& tile, TileState state, bool canZoom);

} // namespace tarvo
