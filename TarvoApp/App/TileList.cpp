#include "TarvoApp/App/TileList.h"

#include "TarvoApp/App/Kinds.h"

#include <QRectF>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvo {

namespace {

bool looksAlike(const Rect& one, const Rect& other) {
    constexpr double visible = 0.25; // Of a point, at which a slide ends, too.
    return std::abs(one.x - other.x) < visible && std::abs(one.y - other.y) < visible &&
           std::abs(one.width - other.width) < visible && std::abs(one.height - other.height) < visible;
}

} // namespace

TileList::TileList(Read read, std::size_t most, QObject* parent)
    : KeyedList(parent), read_(std::move(read)), most_(static_cast<int>(most)) {
    QList<int> others = roleNames().keys();
    others.removeOne(keyRole);
    keepSpare(keyRole, others);
}

void TileList::take(std::vector<Tile> tiles, const QSizeF& size) {
    size_ = size;
    const std::vector<Rect> places = DiskMap::layout(tiles, size.width(), size.height());
    std::vector<LaidTile> laid;
    laid.reserve(tiles.size());
    for (std::size_t at = 0; at < tiles.size(); ++at) {
        laid.push_back({std::move(tiles[at]), places[at]});
    }
    keepPlaces(laid);
    takeOver(std::move(laid));
    emit countChanged();
}

void TileList::keepPlaces(std::vector<LaidTile>& laid) const {
    // A cache has always grown by some bytes, and then every place is another by a hair.
    const auto isAlike = [](const LaidTile& one, const LaidTile& other) {
        return one.id == other.id && looksAlike(one.place, other.place);
    };
    if (std::ranges::equal(laid, items(), isAlike)) {
        for (std::size_t at = 0; at < laid.size(); ++at) {
            laid[at].place = items()[at].place;
        }
    }
}

QList<int> TileList::changedRoles(const LaidTile& before, const LaidTile& now) const {
    if (static_cast<const Tile&>(before) == static_cast<const Tile&>(now)) {
        return {placeRole, nestedRole};
    }
    return {};
}

void TileList::layOut(const QSizeF& size) {
    if (size_ == size) {
        return;
    }
    size_ = size;
    const std::vector<Rect> places =
        DiskMap::layout(std::vector<Tile>(items().begin(), items().end()), size.width(), size.height());
    for (std::size_t at = 0; at < places.size(); ++at) {
        items()[at].place = places[at];
    }
    tell({placeRole, nestedRole});
}

void TileList::setShown(bool isShown) {
    isShown_ = isShown;
    if (isShown_ && !changed_.empty()) {
        tellChanged({changed_.begin(), changed_.end()});
        changed_.clear();
    }
}

void TileList::tell(const QList<int>& roles) {
    if (isShown_) {
        tellChanged(roles);
    } else {
        changed_.insert(roles.begin(), roles.end());
    }
}

void TileList::tellTicks() {
    auto before = std::exchange(ticks_, {});
    for (int row = 0; row < count(); ++row) {
        const LaidTile& tile = items()[static_cast<std::size_t>(row)];
        const auto& now =
            ticks_.try_emplace(tile.id, read_(*this, tile, stateRole), read_(*this, tile, statusRole))
                .first->second;
        const auto known = before.find(tile.id);
        if (known != before.end() && known->second == now) {
            continue;
        }
        if (isShown_) {
            emit dataChanged(index(row), index(row), {stateRole, statusRole});
        } else {
            changed_.insert({stateRole, statusRole});
        }
    }
}

void TileList::light(std::optional<std::set<std::string>> lit) {
    if (lit_ != lit) {
        lit_ = std::move(lit);
        tell({dimmedRole, nestedRole});
    }
}

void TileList::makeSpare() {
    constexpr int atOnce = 6;
    if (wantsSpare()) {
        addSpare(std::min(atOnce, most_ - rowCount()));
    }
}

std::vector<Rect> TileList::places() const {
    std::vector<Rect> places;
    for (const LaidTile& tile : items()) {
        places.push_back(tile.place);
    }
    return places;
}

const LaidTile* TileList::find(const std::string& id) const {
    const auto found = std::ranges::find(items(), id, &LaidTile::id);
    return found == items().end() ? nullptr : &*found;
}

QVariant TileList::ofSpare(int role) {
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

QVariant TileList::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) {
        return index.isValid() ? ofSpare(role) : QVariant();
    }
    return read_(*this, items()[static_cast<std::size_t>(index.row())], role);
}

QHash<int, QByteArray> TileList::roleNames() const {
    return {{keyRole, "key"},         {labelRole, "label"},     {detailRole, "detail"},
            {bytesRole, "bytes"},     {placeRole, "place"},     {colorRole, "tint"},
            {darkInkRole, "darkInk"}, {stateRole, "tickState"}, {statusRole, "status"},
            {wordRole, "word"},       {unknownRole, "unknown"}, {kindRole, "kind"},
            {canZoomRole, "canZoom"}, {nestedRole, "nested"},   {knownRole, "known"},
            {dimmedRole, "dimmed"},   {clickRole, "clickable"}};
}

} // namespace tarvo
