#pragma once

#include "TarvoApp/App/ExplainingDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/MapModel.h"
#include "TarvoApp/App/PreviewDesk.h"
#include "TarvoApp/App/RowList.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoModel/Showing/RowView.h"

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <string>
#include <vector>

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
    /// The one row that shows all that is known of it; empty for none.
    Q_PROPERTY(QString opened READ opened NOTIFY openedChanged)
    /// See `Kinds::Group` and `Kinds::Order`; -1 while the list shows all groups.
    Q_PROPERTY(int onlyGroup READ onlyGroup NOTIFY viewChanged)
    /// The kind of items that the list shows; -1 while it shows what the scan found.
    Q_PROPERTY(int onlyKind READ onlyKind NOTIFY viewChanged)
    Q_PROPERTY(int order READ order WRITE setOrder NOTIFY viewChanged)
    /// What is said of the rows that are chosen together; empty for none.
    Q_PROPERTY(QString chosenText READ chosenText NOTIFY chosenChanged)

  public:
    PlacesDesk(const Ground& ground, TickedDesk& ticked, ExplainingDesk& explaining,
               const ScanningDesk& scanning, const VolumesDesk& volumes, PreviewDesk& preview,
               QObject* parent = nullptr);

    Q_INVOKABLE void search() { ++focusSearch_, emit searchChanged(); }
    /// Scrolls the list to the row and lights it for a moment; a list that was narrowed without it is
    /// widened.
    Q_INVOKABLE void revealRow(const QString& key);
    /// Opens or closes what is known of the row.
    Q_INVOKABLE void openRow(const QString& key, bool open);
    /// The same for the row that a tile, or an entry in one, belongs to, which is also revealed.
    Q_INVOKABLE void explain(const QString& key);
    /// Does what a click on the tile does.
    Q_INVOKABLE void click(const QString& key);
    /// Opens it on the map, or shows what is known of it where it is nothing to open.
    Q_INVOKABLE void enter(const QString& key);
    /// What a menu can offer: see `PlaceOffers`, with whether the thing is ticked and how many it is.
    Q_INVOKABLE [[nodiscard]] QVariantMap offers(const QString& key) const;

    /// Shows the rows and tiles of that group alone, or all again.
    Q_INVOKABLE void toggleGroup(int group);
    /// Shows the items of that kind alone, or again what the scan found with -1.
    Q_INVOKABLE void showKind(int kind);
    /// Shows all groups of what the scan found.
    Q_INVOKABLE void showAllGroups();
    /// Whether there are rows of the group.
    Q_INVOKABLE [[nodiscard]] bool hasGroup(int group) const;

    /// Chooses the rows from where that began, or from `from`, to `to`.
    Q_INVOKABLE void chooseTo(const QString& from, const QString& to);
    Q_INVOKABLE void chooseNone();
    /// Ticks or unticks the row, and all that are chosen with it.
    Q_INVOKABLE void toggle(const QString& key);

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
    [[nodiscard]] QString opened() const { return opened_; }
    [[nodiscard]] int onlyGroup() const;
    [[nodiscard]] int onlyKind() const;
    [[nodiscard]] int order() const;
    void setOrder(int order);
    [[nodiscard]] QString chosenText() const;

  signals:
    void searchChanged();
    void hoverChanged();
    void scrollChanged();
    void openedChanged();
    void viewChanged();
    void chosenChanged();

  private:
    void showRows();
    void viewHasChanged();
    void chosenHaveChanged();
    /// The row that the key's row, tile or entry belongs to; none when there is none.
    [[nodiscard]] const Row* rowOf(const QString& key) const;
    [[nodiscard]] std::vector<std::string> chosen() const;
    void showMap();

    Ground ground_;
    TickedDesk& ticked_;
    ExplainingDesk& explaining_;
    const ScanningDesk& scanning_;
    const VolumesDesk& volumes_;
    PreviewDesk& preview_;
    RowList rows_;
    MapModel map_;
    std::string folderWanted_; ///< To be shown when the scan has ended; empty for none.
    RowView view_;
    QString searchText_;
    QString opened_;
    std::string chosenFrom_; ///< Ids; empty while no rows are chosen together.
    std::string chosenTo_;
    int focusSearch_ = 0;
    QString hovered_;
    QString mapHovered_;
    QString scrollToRow_;
    QString flashRow_;
};

} // namespace tarvo
