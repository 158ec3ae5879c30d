#include "TarvoApp/App/PlacesDesk.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/Kinds.h"
#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tarvo {

namespace {

/// How long a row that was asked for stays lit.
constexpr std::chrono::milliseconds flashTime{1600};

} // namespace

PlacesDesk::PlacesDesk(const Ground& ground, TickedDesk& ticked, ExplainingDesk& explaining,
                       const ScanningDesk& scanning, const VolumesDesk& volumes, PreviewDesk& preview,
                       QObject* parent)
    : QObject(parent), ground_(ground), ticked_(ticked), explaining_(explaining), scanning_(scanning),
      volumes_(volumes), preview_(preview),
      rows_(ticked.plan(), explaining.explanations(), explaining.evidence(), ground.services.desk.home),
      map_(ticked.plan(), ground.background, ground.services.folders) {
    connect(&ticked, &TickedDesk::planChanged, this, [this] {
        showRows();
        showMap();
    });
    connect(&ticked, &TickedDesk::changed, &map_, &MapModel::refresh);
    connect(&ticked, &TickedDesk::changed, &rows_, &RowList::refresh);
    connect(&ticked, &TickedDesk::changed, this, &PlacesDesk::chosenChanged);
    connect(&explaining, &ExplainingDesk::evidenceChanged, &rows_, &RowList::refresh);
    connect(&explaining, &ExplainingDesk::explanationsChanged, this, [this] {
        showRows();
        rows_.refresh();
        showMap();
    });
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
    map_.setTextScale(ground.settings.textScale());
}

// What is shown.

void PlacesDesk::showRows() {
    rows_.show(rowsIn(view_, withWhatIsKnown(ticked_.rows(), explaining_.explanations())));
    chosenHaveChanged();
}

void PlacesDesk::viewHasChanged() {
    chooseNone();
    showRows();
    map_.narrow(view_);
    emit viewChanged();
}

void PlacesDesk::showMap() {
    map_.show(withWhatIsKnown(ticked_.rows(), explaining_.explanations()), volumes_.volume(),
              ground_.settings.showWholeDisk());
}

void PlacesDesk::setSearchText(const QString& text) {
    if (searchText_ != text) {
        searchText_ = text;
        view_.searched = bytesOf(text);
        viewHasChanged();
        emit searchChanged();
    }
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

int PlacesDesk::onlyGroup() const {
    return view_.group ? static_cast<int>(Kinds::of(*view_.group)) : -1;
}

void PlacesDesk::toggleGroup(int group) {
    const auto wanted = Kinds::groupOf(static_cast<Kinds::Group>(group));
    view_.group = view_.group == wanted ? std::nullopt : std::optional(wanted);
    view_.kind.reset();
    viewHasChanged();
}

void PlacesDesk::showAllGroups() {
    if (view_.group || view_.kind) {
        view_.group.reset();
        view_.kind.reset();
        viewHasChanged();
    }
}

bool PlacesDesk::hasGroup(int group) const {
    const Row any{.group = Kinds::groupOf(static_cast<Kinds::Group>(group))};
    return std::ranges::any_of(ticked_.rows(), [&](const Row& row) { return haveOneHead(row, any); });
}

int PlacesDesk::onlyKind() const {
    return view_.kind ? static_cast<int>(*view_.kind) : -1;
}

void PlacesDesk::showKind(int kind) {
    if (kind != onlyKind()) {
        view_.kind = kind < 0 ? std::nullopt : std::optional(static_cast<lumo::InventoryKind>(kind));
        view_.group.reset();
        viewHasChanged();
    }
}

int PlacesDesk::order() const {
    return static_cast<int>(view_.order);
}

void PlacesDesk::setOrder(int order) {
    if (order != this->order()) {
        view_.order = Kinds::orderOf(static_cast<Kinds::Order>(order));
        viewHasChanged();
    }
}

// Rows that are chosen together.

std::vector<std::string> PlacesDesk::chosen() const {
    return idsBetween(chosenFrom_, chosenTo_, rows_.rows());
}

void PlacesDesk::chosenHaveChanged() {
    rows_.choose(chosen());
    emit chosenChanged();
}

void PlacesDesk::chooseTo(const QString& from, const QString& to) {
    if (chosen().empty()) {
        chosenFrom_ = idOf(from);
    }
    chosenTo_ = idOf(to);
    chosenHaveChanged();
}

void PlacesDesk::chooseNone() {
    chosenFrom_.clear();
    chosenTo_.clear();
    chosenHaveChanged();
}

void PlacesDesk::toggle(const QString& key) {
    const std::vector<std::string> ids = chosen();
    if (std::ranges::find(ids, idOf(key)) != ids.end()) {
        ticked_.toggleAll(ids);
    } else {
        chooseNone();
        ticked_.toggle(key);
    }
}

QString PlacesDesk::chosenText() const {
    const std::vector<std::string> ids = chosen();
    const TickedPlan::Count count = ticked_.plan().count(ids);
    return shown(tarvo::chosenText(ids.size(), count.tickable, count.ticked));
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
    if (rows_.indexOf(key) < 0) {
        const auto row = std::ranges::find(ticked_.rows(), idOf(key), &Row::id);
        view_.kind = row != ticked_.rows().end() ? row->kind : std::nullopt;
        view_.group.reset();
        view_.searched.clear();
        searchText_.clear();
        viewHasChanged();
        emit searchChanged();
    }
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

// What a row or tile stands for.

void PlacesDesk::click(const QString& key) {
    switch (map_.clickOn(idOf(key))) {
    case TileClick::tick:
        chooseNone();
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
        if (const Row* const row = map_.firstWithoutTile()) {
            revealRow(keyOf(row->id));
        }
        return;
    case TileClick::nothing:
        return;
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

QVariantMap PlacesDesk::offers(const QString& key) const {
    const std::string id = idOf(key);
    const std::vector<std::string> paths = map_.pathsOf(id);
    const std::vector<std::string> folders = ground_.settings.value(preference::protectedFolders);
    const bool isProtected = std::ranges::all_of(
        paths, [&](const std::string& path) { return std::ranges::find(folders, path) != folders.end(); });
    const TileState state = ticked_.plan().stateOf(id);
    const PlaceOffers can = offersFor({.state = state,
                                       .paths = paths.size(),
                                       .canZoom = map_.canZoomInto(id),
                                       .hasRow = rowOf(key) != nullptr,
                                       .isProtected = isProtected},
                                      {.isDemo = ground_.isDemo(), .isBusy = ground_.activity.isBusy()});
    return {{"tick", can.tick},           {"ticked", state == TileState::selected},
            {"zoom", can.zoom},           {"explain", can.explain},
            {"preview", can.preview},     {"open", can.open},
            {"archive", can.archive},     {"protect", can.protect},
            {"several", paths.size() > 1}};
}

std::string PlacesDesk::pathOf(const QString& key) const {
    const std::vector<std::string> paths = map_.pathsOf(idOf(key));
    return paths.size() == 1 ? paths.front() : std::string();
}

void PlacesDesk::protect(const QString& key) {
    for (const std::string& path : map_.pathsOf(idOf(key))) {
        ground_.settings.protectPath(path);
    }
}

bool PlacesDesk::canPreview(const QString& key) const {
    return !map_.pathsOf(idOf(key)).empty();
}

void PlacesDesk::showPreview(const QString& key) {
    const std::string id = idOf(key);
    const std::vector<std::string> paths = map_.pathsOf(id);
    const auto row = std::ranges::find(ticked_.rows(), id, &Row::id);
    const std::string name(paths.empty() ? std::string_view() : lumo::fileName(paths.front()));
    preview_.show(key, row == ticked_.rows().end() ? name : row->title, paths);
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
    open({.path = ground_.services.desk.home, .name = DiskMap::homeTitle()});
}

void PlacesDesk::openFolder(const std::string& path) {
    if (!scanning_.hasReport() || ground_.activity.isBusy()) {
        folderWanted_ = path;
        return;
    }
    open({.path = path, .name = std::string(lumo::fileName(path))});
}

void PlacesDesk::settle() {
    if (!folderWanted_.empty()) {
        openFolder(std::exchange(folderWanted_, {}));
    } else if (ticked_.rows().empty()) {
        openHome(); // What fills the disk is then nothing that a rule is about.
    }
    map_.prefetch();
}

} // namespace tarvo
