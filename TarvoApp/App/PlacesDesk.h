#pragma once

#include "TarvoApp/App/CleaningDesk.h"
#include "TarvoApp/App/ExplainingDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/ListDesk.h"
#include "TarvoApp/App/MapModel.h"
#include "TarvoApp/App/PreviewDesk.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <string>
#include <vector>

namespace tarvo {

/// The list and the map side by side: what is pointed at and opened, and what a row or tile stands for.
class PlacesDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(tarvo::MapModel* map READ map CONSTANT)
    /// The key of the row, or of the tile, under the pointer.
    Q_PROPERTY(QString hovered READ hovered WRITE setHovered NOTIFY hoverChanged)
    Q_PROPERTY(QString mapHovered READ mapHovered WRITE setMapHovered NOTIFY hoverChanged)
    Q_PROPERTY(QString scrollToRow READ scrollToRow NOTIFY scrollChanged)
    Q_PROPERTY(QString flashRow READ flashRow NOTIFY scrollChanged)
    /// The rows that the folder on the map and what is previewed belong to, which can be ticked from there:
    /// "key" and "title", whether it can "tick", whether it is "ticked", the "reason" why not, and whether it
    /// is a "part" of the row only. Empty where there is none.
    Q_PROPERTY(QVariantMap openedRow READ openedRow NOTIFY belongingChanged)
    Q_PROPERTY(QVariantMap previewedRow READ previewedRow NOTIFY belongingChanged)
    /// The one row that shows all that is known of it; empty for none.
    Q_PROPERTY(QString opened READ opened NOTIFY openedChanged)

  public:
    PlacesDesk(const Ground& ground, TickedDesk& ticked, ExplainingDesk& explaining, ListDesk& list,
               const ScanningDesk& scanning, const VolumesDesk& volumes, PreviewDesk& preview,
               CleaningDesk& cleaning, QObject* parent = nullptr);

    /// Scrolls the list to the row and lights it for a moment; a list that was narrowed without it is
    /// widened.
    Q_INVOKABLE void revealRow(const QString& key);
    /// Whether there is such a row, shown now or not.
    Q_INVOKABLE [[nodiscard]] bool hasRow(const QString& key) const;
    /// Opens or closes what is known of the row.
    Q_INVOKABLE void openRow(const QString& key, bool open);
    /// The same for the row that a tile, or an entry in one, belongs to, which is also revealed.
    Q_INVOKABLE void explain(const QString& key);
    /// Does what a click on the tile does.
    Q_INVOKABLE void click(const QString& key);
    /// Opens it on the map, or shows what is known of it where it is nothing to open.
    Q_INVOKABLE void enter(const QString& key);
    /// What a menu can offer of these together: see `PlaceOffers`, with the "title" of a single one, whether
    /// all that can be ticked is "ticked", and whether they are "several" things.
    Q_INVOKABLE [[nodiscard]] QVariantMap offers(const QStringList& keys) const;

    /// Ticks or unticks the row that the key's row, tile or entry belongs to.
    Q_INVOKABLE void toggle(const QString& key);
    /// Ticks all of these that can be ticked, or unticks them when all of those are ticked.
    Q_INVOKABLE void toggleAll(const QStringList& keys);

    /// The path that a row or tile stands for, or what is previewed, as bytes that `Settings::protectPaths`
    /// takes; empty for several.
    [[nodiscard]] std::string pathOf(const QString& key) const;
    /// All paths that these stand for.
    [[nodiscard]] std::vector<std::string> pathsOf(const QStringList& keys) const;
    Q_INVOKABLE void protect(const QStringList& keys);
    /// Asks whether they are set aside whole, see `CleaningDesk::requestAside`.
    Q_INVOKABLE void setAside(const QStringList& keys);
    /// True when the row or tile stands for something on the disk.
    Q_INVOKABLE [[nodiscard]] bool canPreview(const QString& key) const;
    /// Shows what the row or tile stands for, without another program.
    Q_INVOKABLE void showPreview(const QString& key);
    /// Finds out what the explanation of a folder that no rule knows rests on; its row shows it then.
    Q_INVOKABLE void gatherEvidence(const QString& key) { explaining_.gatherEvidence(pathOf(key)); }

    /// Shows all of the home on the map, whatever rules know of it.
    Q_INVOKABLE void openHome();
    /// Shows a disk or a folder on the map.
    void open(const Volume& volume);
    /// The same for a folder as soon as no scan would take it off again.
    void openFolder(const std::string& path);
    /// A scan has ended: the map shows what was wanted meanwhile, and is never empty.
    void settle();

    [[nodiscard]] MapModel* map() { return &map_; }
    [[nodiscard]] QString hovered() const { return hovered_; }
    void setHovered(const QString& key);
    [[nodiscard]] QString mapHovered() const { return mapHovered_; }
    [[nodiscard]] QVariantMap openedRow() const;
    [[nodiscard]] QVariantMap previewedRow() const;
    void setMapHovered(const QString& key);
    [[nodiscard]] QString scrollToRow() const { return scrollToRow_; }
    [[nodiscard]] QString flashRow() const { return flashRow_; }
    [[nodiscard]] QString opened() const { return opened_; }

  signals:
    void hoverChanged();
    void scrollChanged();
    void openedChanged();
    void belongingChanged();
    /// What is meant is to be looked for in the folder that is on the map, entry by entry.
    void exploreWanted();

  private:
    /// The row that the key's row, tile or entry belongs to; none when there is none.
    [[nodiscard]] const Row* rowOf(const QString& key) const;
    /// What a menu has to know of it.
    [[nodiscard]] Place placeOf(const QString& key) const;
    /// What it is called where it is shown; empty for what has no name.
    [[nodiscard]] QString titleOf(const QString& key) const;
    /// What can be ticked of the row from another place; `isPart` when that is not all of it.
    [[nodiscard]] QVariantMap belonging(const Row* row, bool isPart) const;
    /// True when nothing that the scan found can be ticked and all of it is little: the home itself tells
    /// more.
    [[nodiscard]] bool hasNextToNothing() const;
    void showRest();
    void showMap();
    /// Shows it in the next turn of the event loop: the list has taken its time of this one.
    void showMapNext();

    Ground ground_;
    TickedDesk& ticked_;
    ExplainingDesk& explaining_;
    ListDesk& list_;
    const ScanningDesk& scanning_;
    const VolumesDesk& volumes_;
    PreviewDesk& preview_;
    CleaningDesk& cleaning_;
    MapModel map_;
    std::string folderWanted_; ///< To be shown when the scan has ended; empty for none.
    QString opened_;
    bool isMapOld_ = false; ///< There are other rows than it shows.
    QString hovered_;
    QString mapHovered_;
    QString scrollToRow_;
    QString flashRow_;
};

} // namespace tarvo
