#include "TarvoApp/App/PlacesDesk.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tarvo {

namespace {

/// How long a row that was asked for stays lit.
constexpr std::chrono::milliseconds flashTime{1600};

} // namespace

PlacesDesk::PlacesDesk(const Ground& ground, const TickedDesk& ticked, ExplainingDesk& explaining,
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
    connect(&explaining, &ExplainingDesk::evidenceChanged, &rows_, &RowList::refresh);
    connect(&explaining, &ExplainingDesk::explanationsChanged, this, [this] {
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
    rows_.show(rowsMatching(bytesOf(searchText_), ticked_.rows()));
}

void PlacesDesk::showMap() {
    map_.show(withWhatIsKnown(ticked_.rows(), explaining_.explanations()), volumes_.volume(),
              ground_.settings.showWholeDisk());
}

void PlacesDesk::setSearchText(const QString& text) {
    if (searchText_ != text) {
        searchText_ = text;
        showRows();
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

void PlacesDesk::revealRow(const QString& key) {
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
