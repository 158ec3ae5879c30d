#include "LumoCore/Basics/ByteFormat.h"
#include "TarvoApp/App/Kinds.h"
#include "TarvoApp/App/MapModel.h"
#include "TarvoApp/App/QtText.h"

#include <QColor>
#include <QRectF>

#include <algorithm>

// What views read of the map.
namespace tarvo {

using lumo::FolderContents::Item;

namespace {

QRectF rectOf(const Rect& place) {
    return {place.x, place.y, place.width, place.height};
}

QColor colorFrom(const DiskMap::Color& color) {
    return QColor::fromRgbF(static_cast<float>(color[0]), static_cast<float>(color[1]),
                            static_cast<float>(color[2]));
}

} // namespace

QRectF MapModel::zoomPlace() const {
    return rectOf(zoomPlace_);
}

QVariant MapModel::nestedOf(const TileList& of, const LaidTile& tile) const {
    const Rect drawn = DiskMap::drawn(tile.place);
    const std::vector<Rect> places =
        DiskMap::nestedLayout(tile.children, drawn.width, drawn.height, textScale_);
    QVariantList nested;
    for (std::size_t child = 0; child < places.size(); ++child) {
        // Too small to be seen, and a folder may hold hundreds of them.
        if (places[child].width >= 1 && places[child].height >= 1) {
            const Item& item = tile.children[child];
            nested.push_back(QVariantMap{
                {"place", rectOf(places[child])},
                {"label", shown(item.name)},
                {"bytes", shown(lumo::ByteFormat::string(item.bytes))},
                {"key", keyOf(DiskMap::insideID(item.path))},
                {"dimmed", of.isDimmed(DiskMap::insideID(item.path)) && !of.isDimmed(tile.id)},
                {"canZoom", item.isDirectory && !item.path.empty() && !closed_.contains({item.path})}});
        }
    }
    return nested;
}

QString MapModel::wordOf(const Tile& tile) const {
    if (tile.kind == Tile::Kind::inside && !zoomStack_.empty() && zoomStack_.back().isApart) {
        return shown(groupTitle(tile.safety ? groupOf(*tile.safety) : RowGroup::unclassified));
    }
    const Row* const row = rows_->find(tile.id);
    return row == nullptr ? QString() : shown(groupTitle(row->group));
}

QVariant MapModel::read(const TileList& of, const LaidTile& tile, int role) const {
    const auto color = DiskMap::colorOf(tile);
    switch (role) {
    case TileList::keyRole:
        return keyOf(tile.id);
    case Qt::DisplayRole:
    case TileList::labelRole:
        return shown(tile.label);
    case TileList::detailRole:
        return shown(tile.detail);
    case TileList::bytesRole:
        return shown(lumo::ByteFormat::string(tile.bytes));
    case TileList::placeRole:
        return rectOf(DiskMap::drawn(tile.place));
    case TileList::colorRole:
        return color ? QVariant(colorFrom(*color)) : QVariant();
    case TileList::darkInkRole:
        return !color || DiskMap::wantsDarkInk(*color);
    case TileList::stateRole:
        return static_cast<int>(Kinds::of(plan_.stateOf(tile.id)));
    case TileList::statusRole:
        return shown(tile.kind == Tile::Kind::inside && tile.isFolder && !canZoom(tile)
                         ? DiskMap::closedFolderText()
                         : DiskMap::statusOf(tile, plan_.stateOf(tile.id), plan_.entry(tile.id)));
    case TileList::wordRole:
        return wordOf(tile);
    case TileList::unknownRole:
        return tile.id.starts_with(lumo::unclassifiedIDPrefix);
    case TileList::kindRole:
        return static_cast<int>(Kinds::of(tile.kind));
    case TileList::canZoomRole:
        return canZoom(tile);
    case TileList::nestedRole:
        return nestedOf(of, tile);
    case TileList::knownRole:
        return shown(tile.known);
    case TileList::dimmedRole:
        return of.isDimmed(tile.id);
    case TileList::clickRole:
        return tarvo::clickOn(tile, plan_.stateOf(tile.id), canZoom(tile)) != TileClick::nothing;
    default:
        return {};
    }
}

} // namespace tarvo
