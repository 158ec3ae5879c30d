#pragma once

#include "TarvoModel/Showing/DiskMap.h"

#include <string>
#include <vector>

namespace tarvo::DiskMap {

/// One tile in its place.
struct PlacedTile {
    Tile tile;
    TileState state = TileState::info;
    Rect place;
};

/// The map as a picture of that size (SVG 1.1). Safety is told by more than color: ticked tiles have a mark,
/// blocked ones a lock, unclassified ones stripes. A tile that is too small for its label shows none.
std::string svg(const std::vector<PlacedTile>& tiles, double width, double height);

} // namespace tarvo::DiskMap
