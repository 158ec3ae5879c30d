#include "TarvoApp/App/MapModel.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tarvo {

using lumo::FolderContents::Item;
using lumo::FolderContents::Listing;

namespace {

/// How many of the largest tiles are listed ahead of time.
constexpr std::size_t mostPrefetched = 6;

std::string insideID(const Item& item) {
    return DiskMap::insideID(item.path);
}

/// The folders of a listing of which nothing can be seen; called in the background.
std::set<SharedPaths> closedIn(const Listing& listing, const MapModel::CanOpen& canOpen) {
    std::set<SharedPaths> closed;
    for (const Item& item : listing.items) {
        // Of whose entries some are known, they are open.
        if (item.isDirectory && item.children.empty() && !item.path.empty() && !canOpen({item.path})) {
            closed.insert(SharedPaths{item.path});
        }
    }
    return closed;
}

} // namespace

MapModel::MapModel(const TickedPlan& plan, Background& background, Folders folders, QObject* parent)
    : QObject(parent), plan_(plan), background_(background), folders_(std::move(folders)),
      overview_([this](const auto& of, const auto& tile, int role) { return read(of, tile, role); },
                DiskMap::mostTiles),
      inside_([this](const auto& of, const auto& tile, int role) { return read(of, tile, role); },
              DiskMap::mostEntries + 1) {
    inside_.setShown(false);
}

void MapModel::makeSpare() {
    (overview_.wantsSpare() ? overview_ : inside_).makeSpare();
    emit tilesChanged();
}

void MapModel::show(std::vector<Row> rows, const lumo::VolumeInfo& volume, bool isWholeDisk) {
    if (rows_->rows() != rows) {
        background_.drop(std::exchange(rows_, std::make_shared<const RowIndex>(std::move(rows))));
        findOpenable();
    }
    overview_.take(DiskMap::tiles(rows_->rows(), volume, isWholeDisk), size_);
    findLit();
    emit tilesChanged();
}

void MapModel::findOpenable() {
    background_.start([this, rows = rows_, canOpen = folders_.canOpen,
                       number = ++rowsShown_](const std::stop_token&) -> Background::Apply {
        std::set<Paths> all;
        for (const Row& row : rows->rows()) {
            all.insert(row.paths);
        }
        std::set<Paths> openable;
        std::ranges::copy_if(all, std::inserter(openable, openable.end()), canOpen);
        return [this, openable = std::move(openable), number]() mutable {
            // While rows come one look after the other, what is known of the earlier ones holds.
            if (number == rowsShown_) {
                openable_ = std::move(openable);
            } else {
                openable_.merge(openable);
            }
            tell({TileList::canZoomRole, TileList::statusRole});
        };
    });
}

void MapModel::stopListing() {
    ++generation_;
    listing_.request_stop();
    listing_ = {};
    prefetching_.clear();
    ahead_.clear();
    zoomLoading_.reset();
}

void MapModel::forget() {
    stopListing();
    insideCache_.clear();
    closed_.clear();
    const bool wasZoomed = !zoomStack_.empty();
    zoomStack_.clear();
    zoomPlace_ = middle();
    if (wasZoomed) {
        turn();
    }
    emit zoomChanged();
}

void MapModel::refresh() {
    overview_.tellTicks();
    inside_.tellTicks();
}

void MapModel::tell(const QList<int>& roles) {
    overview_.tell(roles);
    inside_.tell(roles);
}

void MapModel::setTextScale(double scale) {
    if (textScale_ != scale) {
        textScale_ = scale;
        tell({TileList::nestedRole});
    }
}

void MapModel::setWidth(double width) {
    if (size_.width() != width) {
        size_.setWidth(width);
        sheet().layOut(size_);
        emit sizeChanged();
    }
}

void MapModel::setHeight(double height) {
    if (size_.height() != height) {
        size_.setHeight(height);
        sheet().layOut(size_);
        emit sizeChanged();
    }
}

void MapModel::turn() {
    if (!zoomStack_.empty()) {
        inside_.take(DiskMap::tiles(zoomStack_.back()), size_);
    }
    sheet().layOut(size_);
    overview_.setShown(zoomStack_.empty());
    inside_.setShown(!zoomStack_.empty());
    findLit();
    emit tilesChanged();
}

void MapModel::narrow(const RowView& view) {
    if (view_ != view) {
        view_ = view;
        findLit();
    }
}

void MapModel::findLit() {
    TileList& tiles = sheet();
    if (view_.isWide()) {
        tiles.light({});
        return;
    }
    tiles.light(
        litTiles(view_, std::vector<Tile>(tiles.tiles().begin(), tiles.tiles().end()), rows_->rows()));
}

// The way into folders.

std::string MapModel::labelOf(const std::string& id) const {
    const LaidTile* const tile = sheet().find(id);
    return tile == nullptr ? std::string() : tile->label;
}

SharedPaths MapModel::pathsOf(const std::string& id) const {
    if (id.starts_with(TileID::insidePrefix)) {
        const std::string path = id.substr(TileID::insidePrefix.size());
        return path.empty() ? Paths() : Paths{path};
    }
    const Row* const row = rows_->find(id);
    return row == nullptr ? Paths() : row->paths;
}

bool MapModel::canZoom(const Tile& tile) const {
    if (tile.kind == Tile::Kind::inside) {
        return tile.isFolder && tile.id.size() > TileID::insidePrefix.size() &&
               !closed_.contains(pathsOf(tile.id));
    }
    const Paths paths = tile.kind == Tile::Kind::item ? pathsOf(tile.id) : Paths();
    return openable_.contains(paths) && !closed_.contains(paths);
}

void MapModel::zoomInto(const QString& key) {
    const std::string id = idOf(key);
    Wanted wanted{.title = {}, .paths = pathsOf(id), .safety = {}, .whenUnreadable = {}, .place = {}};
    const bool isRow = !id.starts_with(TileID::insidePrefix);
    if (wanted.paths.empty() || (isRow && !openable_.contains(wanted.paths))) {
        return;
    }
    wanted.title = lumo::fileName(wanted.paths.front());
    wanted.isApart = !isRow && !zoomStack_.empty() && zoomStack_.back().isApart;
    for (const LaidTile& tile : sheet().tiles()) {
        if (tile.id == id) {
            wanted.title = tile.label;
            wanted.safety = wanted.isApart ? std::nullopt : tile.safety;
            wanted.place = tile.place;
        }
        const auto child = std::ranges::find(tile.children, id, insideID);
        if (child != tile.children.end()) {
            wanted.title = tile.label + " › " + child->name; // It leads over the tile's folder.
            wanted.safety = wanted.isApart ? std::nullopt : tile.safety;
            wanted.place = tile.place;
        }
    }
    wanted.whenUnreadable = [this, title = wanted.title] { emit couldNotOpen(shown(title)); };
    openWanted(std::move(wanted));
}

void MapModel::open(const std::string& title, const std::vector<std::string>& paths,
                    const std::function<void()>& whenUnreadable) {
    openWanted({.title = title,
                .paths = paths,
                .safety = {},
                .whenUnreadable = whenUnreadable,
                .place = {},
                .isApart = true,
                .isFromTop = true});
}

void MapModel::follow(const std::string& path) {
    const Paths paths{path};
    const auto known = insideCache_.find(paths);
    const Paths shown = known == insideCache_.end() ? paths : Paths(known->second.listing.paths);
    const auto level = std::ranges::find(zoomStack_, shown, &ZoomLevel::paths);
    if (level != zoomStack_.end()) {
        zoomOut(static_cast<int>(level - zoomStack_.begin()) + 1);
        return;
    }
    if (zoomLoading_) {
        stopListing();
    }
    const bool isInside = !zoomStack_.empty() && zoomStack_.back().paths.size() == 1 &&
                          lumo::isInside(path, zoomStack_.back().paths.front());
    Wanted wanted{.title = std::string(lumo::fileName(path)),
                  .paths = paths,
                  .safety = {},
                  .whenUnreadable = [] {},
                  .place = {},
                  .isApart = !isInside || zoomStack_.back().isApart,
                  .isFromTop = !isInside};
    if (isInside && !wanted.isApart) {
        wanted.safety = zoomStack_.back().safety;
    }
    const LaidTile* const tile = sheet().find(DiskMap::insideID(path));
    if (isInside && tile != nullptr) {
        wanted.place = tile->place;
    }
    if (!closed_.contains(paths)) {
        openWanted(std::move(wanted));
    }
}

void MapModel::openWanted(Wanted wanted) {
    const auto known = insideCache_.find(wanted.paths);
    if (known != insideCache_.end()) {
        push(wanted, known->second);
        return;
    }
    const Paths paths = wanted.paths;
    zoomLoading_ = std::move(wanted);
    emit zoomChanged();
    listInBackground(paths);
}

void MapModel::listInBackground(const Paths& paths) {
    if (!prefetching_.insert(paths).second) {
        return;
    }
    background_.start(listing_,
                      [this, paths, folders = folders_, rows = rows_,
                       generation = generation_](const std::stop_token& stop) -> Background::Apply {
                          Inside inside{.listing = folders.list(paths, stop), .known = {}, .closed = {}};
                          inside.known =
                              DiskMap::knownEntries(inside.listing.items, rows->rows(), folders.know);
                          inside.closed = closedIn(inside.listing, folders.canOpen);
                          return [this, paths, generation, inside = std::move(inside)] {
                              if (generation == generation_) {
                                  listed(paths, inside);
                              }
                          };
                      });
}

void MapModel::listed(const Paths& paths, const Inside& inside) {
    prefetching_.erase(paths);
    prefetchNext();
    closed_.insert(inside.closed.begin(), inside.closed.end());
    if (!inside.listing.items.empty()) {
        insideCache_.insert_or_assign(paths, inside);
    }
    if (zoomLoading_ && zoomLoading_->paths == paths) {
        const Wanted wanted = *std::exchange(zoomLoading_, std::nullopt);
        push(wanted, inside);
    }
}

void MapModel::push(const Wanted& wanted, const Inside& inside) {
    const Listing& listing = inside.listing;
    zoomLoading_.reset();
    if (listing.items.empty()) {
        closed_.insert(wanted.paths);
        tell({TileList::canZoomRole, TileList::statusRole, TileList::nestedRole});
        emit zoomChanged();
        wanted.whenUnreadable();
        return;
    }
    zoomPlace_ = wanted.place.value_or(middle());
    if (wanted.isFromTop) {
        zoomStack_.clear();
    }
    zoomStack_.push_back({.title = wanted.title,
                          .paths = listing.paths,
                          .safety = wanted.safety,
                          .items = listing.items,
                          .skipped = listing.skipped,
                          .place = zoomPlace_,
                          .isApart = wanted.isApart,
                          .known = inside.known});
    turn();
    emit zoomChanged();
    emit travelled();
}

void MapModel::zoomOut(int depth) {
    if (zoomLoading_) {
        stopListing();
    }
    const auto levels = static_cast<std::size_t>(std::max(depth, 0));
    if (levels < zoomStack_.size()) {
        zoomPlace_ = zoomStack_[levels].place;
        zoomStack_.resize(levels);
        turn();
    }
    emit zoomChanged();
    emit travelled();
}

int MapModel::neighbour(int index, int dx, int dy) const {
    if (index < 0 || index >= count()) {
        return count() > 0 ? 0 : -1;
    }
    const auto found = DiskMap::neighbour(sheet().places(), static_cast<std::size_t>(index), dx, dy);
    return found ? static_cast<int>(*found) : -1;
}

void MapModel::prefetch() {
    ahead_.clear();
    for (const Tile& tile : overview_.tiles()) {
        const Paths paths = tile.kind == Tile::Kind::item ? pathsOf(tile.id) : Paths();
        if (!paths.empty() && !insideCache_.contains(paths) && ahead_.size() < mostPrefetched) {
            ahead_.push_back(paths);
        }
    }
    prefetchNext();
}

void MapModel::prefetchNext() {
    // One at a time: somebody may be waiting for another thread.
    if (prefetching_.empty() && !ahead_.empty()) {
        const Paths paths = ahead_.front();
        ahead_.pop_front();
        listInBackground(paths);
    }
}

Rect MapModel::middle() const {
    return {width() / 3, height() / 3, width() / 3, height() / 3};
}

QStringList MapModel::zoomTitles() const {
    QStringList titles;
    for (const ZoomLevel& level : zoomStack_) {
        titles.push_back(shown(level.title));
    }
    return titles;
}

QStringList MapModel::zoomAmounts() const {
    QStringList amounts;
    for (const ZoomLevel& level : zoomStack_) {
        amounts.push_back(shown(lumo::ByteFormat::string(DiskMap::totalOf(level))));
    }
    return amounts;
}

QString MapModel::skippedText() const {
    QStringList names;
    for (const std::string& name :
         zoomStack_.empty() ? std::vector<std::string>() : zoomStack_.back().skipped) {
        names.push_back(shown(name));
    }
    return names.join(" › ");
}

// What its tiles offer.

TileClick MapModel::clickOn(const std::string& id) const {
    const LaidTile* const tile = sheet().find(id);
    return tile == nullptr ? TileClick::nothing : tarvo::clickOn(*tile, plan_.stateOf(id), canZoom(*tile));
}

bool MapModel::canZoomInto(const std::string& id) const {
    const Paths paths = pathsOf(id);
    if (paths.empty() || closed_.contains(paths)) {
        return false;
    }
    if (!id.starts_with(TileID::insidePrefix)) {
        return openable_.contains(paths);
    }
    for (const LaidTile& tile : sheet().tiles()) {
        const auto child = std::ranges::find(tile.children, id, insideID);
        if (tile.id == id || child != tile.children.end()) {
            return tile.id == id ? tile.isFolder : child->isDirectory;
        }
    }
    return false;
}

const Row* MapModel::firstWithoutTile() const {
    for (const Row& row : rows_->rows()) {
        if (row.bytes > 0 && overview_.find(row.id) == nullptr) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace tarvo
