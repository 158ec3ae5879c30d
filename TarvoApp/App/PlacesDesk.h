#pragma once

#include "TarvoApp/App/ExplainingDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/MapModel.h"
#include "TarvoApp/App/PreviewDesk.h"
#include "TarvoApp/App/RowList.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"

#include <QObject>
#include <QString>

#include <string>

namespace tarvo {

/// The list and the map side by side: what is searched for and pointed at, and what a row or tile stands for.
class PlacesDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(tarvo::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(tarvo::MapModel* map READ map CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchChanged)
    /// Counts how often somebody wanted to search.
    Q_PROPERTY(int focusSearch READ focusSearch NOTIFY searchChanged)
    /// The key of the row, or of the tile, under the pointer.
    Q_PROPERTY(QString hovered READ hovered WRITE setHovered NOTIFY hoverChanged)
    Q_PROPERTY(QString mapHovered READ mapHovered WRITE setMapHovered NOTIFY hoverChanged)
    Q_PROPERTY(QString scrollToRow READ scrollToRow NOTIFY scrollChanged)
    Q_PROPERTY(QString flashRow READ flashRow NOTIFY scrollChanged)

  public:
    PlacesDesk(const Ground& ground, const TickedDesk& ticked, ExplainingDesk& explaining,
               const ScanningDesk& scanning, const VolumesDesk& volumes, PreviewDesk& preview,
               QObject* parent = nullptr);

    Q_INVOKABLE void search() { ++focusSearch_, emit searchChanged(); }
    /// Scrolls the list to the row and lights it for a moment.
    Q_INVOKABLE void revealRow(const QString& key);

    /// The path that a row or tile stands for, as bytes that `Settings::protectPath` takes; empty for
    /// several.
    [[nodiscard]] std::string pathOf(const QString& key) const;
    Q_INVOKABLE void protect(const QString& key);
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

    [[nodiscard]] RowList* rows() { return &rows_; }
    [[nodiscard]] MapModel* map() { return &map_; }
    [[nodiscard]] QString searchText() const { return searchText_; }
    void setSearchText(const QString& text);
    [[nodiscard]] int focusSearch() const { return focusSearch_; }
    [[nodiscard]] QString hovered() const { return hovered_; }
    void setHovered(const QString& key);
    [[nodiscard]] QString mapHovered() const { return mapHovered_; }
    void setMapHovered(const QString& key);
    [[nodiscard]] QString scrollToRow() const { return scrollToRow_; }
    [[nodiscard]] QString flashRow() const { return flashRow_; }

  signals:
    void searchChanged();
    void hoverChanged();
    void scrollChanged();

  private:
    void showRows();
    void showMap();

    Ground ground_;
    const TickedDesk& ticked_;
    ExplainingDesk& explaining_;
    const ScanningDesk& scanning_;
    const VolumesDesk& volumes_;
    PreviewDesk& preview_;
    RowList rows_;
    MapModel map_;
    std::string folderWanted_; ///< To be shown when the scan has ended; empty for none.
    QString searchText_;
    int focusSearch_ = 0;
    QString hovered_;
    QString mapHovered_;
    QString scrollToRow_;
    QString flashRow_;
};

} // namespace tarvo
