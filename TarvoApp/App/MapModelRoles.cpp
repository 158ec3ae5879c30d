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

QVariant MapModel::nestedOf(const LaidTile& tile) const {
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
                {"dimmed", isDimmed(DiskMap::insideID(item.path)) && !isDimmed(tile.id)},
                {"canZoom", item.isDirectory && !item.path.empty() && !closed_.contains({item.path})}});
        }
    }
    return nested;
}

QString MapModel::wordOf(const Tile& tile) const {
    if (tile.kind == Tile::Kind::inside && zoomStack_.back().isApart) {
        return shown(groupTitle(tile.safety ? groupOf(*tile.safety) : RowGroup::unclassified));
    }
    const auto row = std::ranges::find(rows_, tile.id, &Row::id);
    return row == rows_.end() ? QString() : shown(groupTitle(row->group));
}

QVariant MapModel::ofSpare(int role) {
    switch (role) {
    case placeRole:
        return QRectF();
    case nestedRole:
        return QVariantList();
    case stateRole:
        return static_cast<int>(Kinds::of(TileState::info));
    case kindRole:
        return static_cast<int>(Kinds::of(Tile::Kind::item));
    case colorRole:
        return {};
    case darkInkRole:
    case unknownRole:
    case canZoomRole:
    case dimmedRole:
    case clickRole:
        return false;
    default:
        return QString();
    }
}

QVariant MapModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) {
        return index.isValid() ? ofSpare(role) : QVariant();
    }
    const LaidTile& tile = items()[static_cast<std::size_t>(index.row())];
    const auto color = DiskMap::colorOf(tile);
    switch (role) {
    case keyRole:
        return keyOf(tile.id);
    case Qt::DisplayRole:
    case labelRole:
        return shown(tile.label);
    case detailRole:
        return shown(tile.detail);
    case bytesRole:
        return shown(lumo::ByteFormat::string(tile.bytes));
    case placeRole:
        return rectOf(DiskMap::drawn(tile.place));
    case colorRole:
        return color ? QVariant(colorFrom(*color)) : QVariant();
    case darkInkRole:
        return !color || DiskMap::wantsDarkInk(*color);
    case stateRole:
        return static_cast<int>(Kinds::of(plan_.stateOf(tile.id)));
    case statusRole:
        return shown(tile.kind == Tile::Kind::inside && tile.isFolder && !canZoom(tile)
                         ? DiskMap::closedFolderText()
                         : DiskMap::statusOf(tile, plan_.stateOf(tile.id), plan_.entry(tile.id)));
    case wordRole:
        return wordOf(tile);
    case unknownRole:
        return tile.id.starts_with(lumo::unclassifiedIDPrefix);
    case kindRole:
        return static_cast<int>(Kinds::of(tile.kind));
    case canZoomRole:
        return canZoom(tile);
    case nestedRole:
        return nestedOf(tile);
    case knownRole:
        return shown(tile.known);
    case dimmedRole:
        return isDimmed(tile.id);
    case clickRole:
        return tarvo::clickOn(tile, plan_.stateOf(tile.id), canZoom(tile)) != TileClick::nothing;
    default:
        return {};
    }
}

QHash<int, QByteArray> MapModel::roleNames() const {
    return {{keyRole, "key"},         {labelRole, "label"},     {detailRole, "detail"},
            {bytesRole, "bytes"},     {placeRole, "place"},     {colorRole, "tint"},
            {darkInkRole, "darkInk"}, {stateRole, "tickState"}, {statusRole, "status"},
            {wordRole, "word"},       {unknownRole, "unknown"}, {kindRole, "kind"},
            {canZoomRole, "canZoom"}, {nestedRole, "nested"},   {knownRole, "known"},
            {dimmedRole, "dimmed"},   {clickRole, "clickable"}};
}

} // namespace tarvo
