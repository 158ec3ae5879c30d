#include "TarvoModel/Showing/PlaceOffers.h"

namespace tarvo {

namespace {

/// More than these nobody could take off the list again, which has one line each.
constexpr std::size_t mostProtected = 30;

bool canTick(TileState state) {
    return state == TileState::selected || state == TileState::unselected;
}

} // namespace

PlaceOffers offersFor(const Place& place, const Occasion& occasion) {
    const bool isReal = place.paths > 0 && !occasion.isElsewhere;
    const bool isOne = isReal && place.paths == 1;
    return {.tick = canTick(place.state),
            .zoom = place.canZoom,
            .explain = place.hasRow,
            .preview = place.paths > 0,
            .open = isOne,
            .aside = isReal && (place.isPart || place.state == TileState::info),
            .archive = isOne && !occasion.isBusy,
            .protect = isReal && !place.isProtected && place.paths <= mostProtected,
            .copy = isReal};
}

PlaceOffers offersForAll(const std::vector<Place>& places, const Occasion& occasion) {
    if (places.size() == 1) {
        return offersFor(places.front(), occasion);
    }
    PlaceOffers all{.aside = !places.empty()};
    std::size_t paths = 0;
    for (const Place& place : places) {
        const PlaceOffers of = offersFor(place, occasion);
        all.tick |= of.tick;
        all.aside &= of.aside; // Else nobody knew which of them it is about.
        all.protect |= of.protect;
        all.copy |= of.copy;
        paths += place.paths;
    }
    all.protect &= paths <= mostProtected;
    return all;
}

TileClick clickOn(const Tile& tile, TileState state, bool canZoom) {
    switch (tile.kind) {
    case Tile::Kind::item:
        return canTick(state) ? TileClick::tick : TileClick::explain;
    case Tile::Kind::inside:
        return canZoom                                        ? TileClick::zoom
               : tile.id.size() > TileID::insidePrefix.size() ? TileClick::preview
                                                              : TileClick::nothing;
    case Tile::Kind::rest:
        return tile.id == TileID::restOfDisk ? TileClick::home : TileClick::listRest;
    case Tile::Kind::free:
        break;
    }
    return TileClick::nothing;
}

} // namespace tarvo
