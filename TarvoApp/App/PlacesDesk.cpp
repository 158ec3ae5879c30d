#include "TarvoApp/App/PlacesDesk.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/Scanning.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace tarvo {

namespace {

/// How long a row that was asked for stays lit.
constexpr std::chrono::milliseconds flashTime{1600};

} // namespace

PlacesDesk::PlacesDesk(const Ground& ground, TickedDesk& ticked, ExplainingDesk& explaining, ListDesk& list,
                       const ScanningDesk& scanning, const VolumesDesk& volumes, PreviewDesk& preview,
                       CleaningDesk& cleaning, QObject* parent)
    : QObject(parent), ground_(ground), ticked_(ticked), explaining_(explaining), list_(list),
      scanning_(scanning), volumes_(volumes), preview_(preview), cleaning_(cleaning),
      map_(ticked.plan(), ground.background, ground.services.folders) {
    connect(&ticked, &TickedDesk::planChanged, this, &PlacesDesk::showMapNext);
    connect(&ticked, &TickedDesk::changed, &map_, &MapModel::refresh);
    connect(&explaining, &ExplainingDesk::explanationsChanged, this, &PlacesDesk::showMapNext);
    connect(&list, &ListDesk::viewChanged, this, [this] { map_.narrow(list_.view()); });
    connect(&ground.settings, &Settings::changed, this, [this] {
        map_.setTextScale(ground_.settings.textScale());
        showMap();
    });
    connect(&map_, &MapModel::couldNotOpen, this, [this](const QString& title) {
        ground_.activity.say(lumo::Words{"No hay nada que ver en «{}»: está vacía o no se puede leer",
                                         "There is nothing to see in “{}”: it is empty or can't be read"}
                                 .with(bytesOf(title)));
    });
    connect(&scanning, &ScanningDesk::beginning, &map_, &MapModel::forget);
    connect(&volumes, &VolumesDesk::openWanted, this, &PlacesDesk::open);
    for (const auto signal : {&TickedDesk::changed, &TickedDesk::planChanged}) {
        connect(&ticked, signal, this, &PlacesDesk::belongingChanged);
    }
    connect(&map_, &MapModel::zoomChanged, this, &PlacesDesk::belongingChanged);
    connect(&preview, &PreviewDesk::changed, this, &PlacesDesk::belongingChanged);
    map_.setTextScale(ground.settings.textScale());
}

// What is shown.

void PlacesDesk::showMapNext() {
    if (!std::exchange(isMapOld_, true)) {
        QTimer::singleShot(nextTurn, this, [this] {
            if (isMapOld_) {
                showMap();
            }
        });
    }
}

void PlacesDesk::showMap() {
    isMapOld_ = false;
    map_.show(withWhatIsKnown(ticked_.rows(), explaining_.explanations()),
              scanning_.isFromFile() ? scanning_.report()->volume : volumes_.volume(),
              ground_.settings.showWholeDisk());
}

void PlacesDesk::setHovered(const QString& key) {
    if (hovered_ != key) {
        hovered_ = key;
        emit hoverChanged();
    }
}

void PlacesDesk::setMapHovered(const QString& key) {
    if (mapHovered_ != key) {
        mapHovered_ = key;
        emit hoverChanged();
    }
}

// The way to a row.

void PlacesDesk::openRow(const QString& key, bool open) {
    const QString wanted = open ? key : opened_ == key ? QString() : opened_;
    if (opened_ != wanted) {
        opened_ = wanted;
        emit openedChanged();
    }
}

const Row* PlacesDesk::rowOf(const QString& key) const {
    const std::string id = idOf(key);
    const auto row = std::ranges::find(ticked_.rows(), id, &Row::id);
    if (row != ticked_.rows().end()) {
        return &*row;
    }
    const std::vector<std::string> paths = map_.pathsOf(id);
    return paths.size() == 1 ? rowWith(paths.front(), ticked_.rows()) : nullptr;
}

void PlacesDesk::explain(const QString& key) {
    if (const Row* const row = rowOf(key)) {
        const QString rowKey = keyOf(row->id);
        openRow(rowKey, true);
        revealRow(rowKey);
    }
}

void PlacesDesk::revealRow(const QString& key) {
    list_.widenFor(key);
    scrollToRow_ = key;
    flashRow_ = key;
    emit scrollChanged();
    QTimer::singleShot(flashTime, this, [this, key] {
        if (flashRow_ == key) {
            scrollToRow_.clear();
            flashRow_.clear();
            emit scrollChanged();
        }
    });
}

bool PlacesDesk::hasRow(const QString& key) const {
    return std::ranges::find(ticked_.rows(), idOf(key), &Row::id) != ticked_.rows().end();
}

// What a row or tile stands for.

void PlacesDesk::click(const QString& key) {
    switch (map_.clickOn(idOf(key))) {
    case TileClick::tick:
        list_.chooseNone();
        return ticked_.toggle(key);
    case TileClick::zoom:
        return map_.zoomInto(key);
    case TileClick::explain:
        return explain(key);
    case TileClick::preview:
        return showPreview(key);
    case TileClick::home:
        return openHome();
    case TileClick::listRest:
        return showRest();
    case TileClick::nothing:
        return;
    }
}

void PlacesDesk::showRest() {
    if (map_.zoomStack().empty()) {
        if (const Row* const row = map_.firstWithoutTile()) {
            revealRow(keyOf(row->id));
        }
    } else if (map_.zoomStack().back().paths.size() == 1) {
        emit exploreWanted();
    } else if (const QVariantMap row = openedRow(); !row.isEmpty()) {
        explain(row.value("key").toString());
    }
}

void PlacesDesk::enter(const QString& key) {
    if (map_.canZoomInto(idOf(key))) {
        map_.zoomInto(key);
    } else if (idOf(key).starts_with(TileID::insidePrefix)) {
        showPreview(key);
    } else {
        explain(key);
    }
}

void PlacesDesk::toggle(const QString& key) {
    if (const Row* const row = rowOf(key)) {
        list_.toggle(keyOf(row->id));
    }
}

QVariantMap PlacesDesk::belonging(const Row* row, bool isPart) const {
    if (row == nullptr) {
        return {};
    }
    return {{"key", keyOf(row->id)},
            {"title", shown(row->title)},
            {"tick", ticked_.plan().canSelect(row->id)},
            {"ticked", ticked_.plan().stateOf(row->id) == TileState::selected},
            {"reason", shown(row->skipReason.value_or(""))},
            {"part", isPart}};
}

QVariantMap PlacesDesk::openedRow() const {
    if (map_.zoomStack().empty()) {
        return {};
    }
    const std::vector<std::string>& paths = map_.zoomStack().back().paths;
    const Row* const row = rowWith(paths.front(), ticked_.rows());
    return belonging(row, row != nullptr && row->paths != paths);
}

QVariantMap PlacesDesk::previewedRow() const {
    const Row* const row = rowOf(preview_.key());
    return belonging(row, row != nullptr && row->id != idOf(preview_.key()));
}

Place PlacesDesk::placeOf(const QString& key) const {
    const std::string id = idOf(key);
    const std::vector<std::string> paths = map_.pathsOf(id);
    const std::vector<std::string> folders = ground_.settings.value(preference::protectedFolders);
    const Row* const row = rowOf(key);
    const bool isPart = row != nullptr && row->id != id;
    return {.state = ticked_.plan().stateOf(isPart ? row->id : id),
            .paths = paths.size(),
            .canZoom = map_.canZoomInto(id),
            .hasRow = row != nullptr,
            .isPart = isPart,
            .isProtected = std::ranges::all_of(paths, [&](const std::string& path) {
                return std::ranges::find(folders, path) != folders.end();
            })};
}

QString PlacesDesk::titleOf(const QString& key) const {
    const std::string id = idOf(key);
    if (const auto row = std::ranges::find(ticked_.rows(), id, &Row::id); row != ticked_.rows().end()) {
        return shown(row->title);
    }
    const std::vector<std::string> paths = map_.pathsOf(id);
    return shown(paths.empty() ? map_.labelOf(id) : lumo::revealed(lumo::fileName(paths.front())));
}

QVariantMap PlacesDesk::offers(const QStringList& keys) const {
    std::vector<Place> places;
    std::ranges::transform(keys, std::back_inserter(places),
                           [this](const QString& key) { return placeOf(key); });
    const PlaceOffers can =
        offersForAll(places, {.isElsewhere = ground_.isDemo() || scanning_.isOnlyToLookAt(),
                              .isBusy = ground_.activity.isBusy()});
    const auto has = [&](TileState state) {
        return std::ranges::find(places, state, &Place::state) != places.end();
    };
    const bool isOne = places.size() == 1;
    const Row* const holder = isOne && places.front().isPart ? rowOf(keys.front()) : nullptr;
    return {{"title", isOne ? titleOf(keys.front()) : QString()},
            {"tick", can.tick},
            {"ticked", has(TileState::selected) && !has(TileState::unselected)},
            {"zoom", can.zoom},
            {"explain", can.explain},
            {"preview", can.preview},
            {"open", can.open},
            {"aside", can.aside},
            {"archive", can.archive},
            {"protect", can.protect},
            {"copy", can.copy},
            {"several", pathsOf(keys).size() > 1},
            {"tickOf", holder != nullptr ? shown(holder->title) : QString()}};
}

void PlacesDesk::toggleAll(const QStringList& keys) {
    std::vector<std::string> ids;
    for (const QString& key : keys) {
        if (const Row* const row = rowOf(key)) {
            ids.push_back(row->id);
        }
    }
    if (ids.size() == 1) {
        ticked_.toggle(keyOf(ids.front()));
    } else {
        ticked_.toggleAll(ids);
    }
}

std::string PlacesDesk::pathOf(const QString& key) const {
    const std::vector<std::string> paths = map_.pathsOf(idOf(key));
    if (paths.empty() && key == preview_.key()) {
        return preview_.path(); // A photo is in no row and no tile.
    }
    return paths.size() == 1 ? paths.front() : std::string();
}

std::vector<std::string> PlacesDesk::pathsOf(const QStringList& keys) const {
    std::vector<std::string> all;
    for (const QString& key : keys) {
        const SharedPaths paths = map_.pathsOf(idOf(key));
        all.insert(all.end(), paths.begin(), paths.end());
    }
    return all;
}

void PlacesDesk::protect(const QStringList& keys) {
    const std::vector<std::string> paths = pathsOf(keys);
    ground_.settings.protectPaths(paths);
    const std::vector<std::string> folders = ground_.settings.value(preference::protectedFolders);
    if (paths.empty() || std::ranges::find(folders, paths.front()) == folders.end()) {
        return; // Why not has been told.
    }
    ground_.activity.say(
        paths.size() == 1
            ? lumo::Words{"«{}» no se tocará nunca. Puedes cambiarlo en Ajustes, en Limpieza.",
                          "“{}” will never be touched. You can change that in Settings, under Cleaning."}
                  .with(lumo::revealed(lumo::fileName(paths.front())))
            : lumo::Words{"Estas {} carpetas no se tocarán nunca. Puedes cambiarlo en Ajustes, en Limpieza.",
                          "These {} folders will never be touched. You can change that in Settings, under "
                          "Cleaning."}
                  .with(paths.size()));
}

void PlacesDesk::setAside(const QStringList& keys) {
    cleaning_.requestAside(pathsOf(keys));
}

bool PlacesDesk::canPreview(const QString& key) const {
    return !map_.pathsOf(idOf(key)).empty();
}

void PlacesDesk::showPreview(const QString& key) {
    const std::string id = idOf(key);
    const std::vector<std::string> paths = map_.pathsOf(id);
    const auto row = std::ranges::find(ticked_.rows(), id, &Row::id);
    const std::string name(paths.empty() ? std::string_view() : lumo::fileName(paths.front()));
    preview_.show(key, row == ticked_.rows().end() ? name : row->title.text(), paths);
}

// The way into folders and disks.

void PlacesDesk::open(const Volume& volume) {
    map_.open(volume.name, {volume.path},
              [this, volume] { ground_.activity.say(unreadableVolumeText(volume)); });
}

void PlacesDesk::openHome() {
    if (ground_.isOnlyDemo()) {
        return;
    }
    const Desk& desk = ground_.services.desk;
    map_.open(DiskMap::homeTitle(), {desk.home}, [this, &desk] {
        ground_.activity.say(homeProblem(desk).value_or(
            lumo::Words{"Tu carpeta personal está vacía", "Your home folder is empty"}.in()));
    });
}

void PlacesDesk::openFolder(const std::string& path) {
    if (!scanning_.hasReport() || ground_.activity.isBusy()) {
        folderWanted_ = path;
        return;
    }
    open({.path = path, .name = std::string(lumo::fileName(path))});
}

bool PlacesDesk::hasNextToNothing() const {
    constexpr std::int64_t little = 10'000'000;
    std::int64_t bytes = 0;
    for (const Row& row : ticked_.rows()) {
        if (row.kind) {
            continue; // Those of closer looks come and go, and have lists of their own.
        }
        if (ticked_.plan().canSelect(row.id)) {
            return false;
        }
        bytes = lumo::saturatedSum(bytes, row.bytes);
    }
    return bytes < little;
}

void PlacesDesk::settle() {
    if (isMapOld_) {
        showMap();
    }
    if (!folderWanted_.empty()) {
        openFolder(std::exchange(folderWanted_, {}));
    } else if (hasNextToNothing() && scanning_.hasSeenHome()) {
        openHome(); // What fills the disk is then nothing that a rule is about.
    }
    map_.prefetch();
}

} // namespace tarvo
