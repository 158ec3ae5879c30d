#pragma once

#include "TarvoApp/App/Background.h"
#include "TarvoApp/App/TileList.h"
#include "TarvoModel/Showing/PlaceOffers.h"
#include "TarvoModel/Showing/RowIndex.h"
#include "TarvoModel/Showing/RowView.h"
#include "TarvoModel/Showing/TickedPlan.h"

#include <QObject>
#include <QRectF>
#include <QSizeF>
#include <QStringList>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// The disk map, laid out on a map of a given size, and the way into folders. What is inside folders is
/// listed in the background. The disk's tiles and those of the folder that was opened last are sheets of
/// their own, of which one is shown.
class MapModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(tarvo::TileList* overview READ overview CONSTANT)
    Q_PROPERTY(tarvo::TileList* inside READ inside CONSTANT)
    Q_PROPERTY(double width READ width WRITE setWidth NOTIFY sizeChanged)
    Q_PROPERTY(double height READ height WRITE setHeight NOTIFY sizeChanged)
    /// Of the tiles that are shown.
    Q_PROPERTY(int count READ count NOTIFY tilesChanged)
    /// Whether there are fewer tiles made, or kept, than the fullest sheets have.
    Q_PROPERTY(bool wantsSpare READ wantsSpare NOTIFY tilesChanged)
    Q_PROPERTY(int depth READ depth NOTIFY zoomChanged)
    Q_PROPERTY(QStringList zoomTitles READ zoomTitles NOTIFY zoomChanged)
    /// What is in each of those folders, for a person.
    Q_PROPERTY(QStringList zoomAmounts READ zoomAmounts NOTIFY zoomChanged)
    Q_PROPERTY(QString skippedText READ skippedText NOTIFY zoomChanged)
    Q_PROPERTY(bool zoomLoading READ isZoomLoading NOTIFY zoomChanged)
    /// Where the level that was entered or left last lies on the map of the level above.
    Q_PROPERTY(QRectF zoomPlace READ zoomPlace NOTIFY zoomChanged)

  public:
    /// What is in the paths; called on a background thread. Empty items for what cannot be read.
    using List = std::function<lumo::FolderContents::Listing(const std::vector<std::string>& paths,
                                                             const std::stop_token& end)>;
    /// Whether there is something to be listed; called on a background thread.
    using CanOpen = std::function<bool(const std::vector<std::string>& paths)>;

    /// What is certain of the paths; called on a background thread.
    using Know = std::function<std::map<std::string, lumo::Explanation>(
        const std::vector<lumo::UnclassifiedItem>& items)>;

    struct Folders {
        List list;
        CanOpen canOpen;
        Know know;
    };

    MapModel(const TickedPlan& plan, Background& background, Folders folders, QObject* parent = nullptr);

    /// The rows of a new report; what was zoomed into stays open.
    void show(std::vector<Row> rows, const lumo::VolumeInfo& volume, bool isWholeDisk);
    /// Leaves all folders and forgets what is in them.
    void forget();
    /// What somebody asked to see of the rows: the other tiles are dimmed.
    void narrow(const RowView& view);
    /// The ticks have changed.
    void refresh();
    void setTextScale(double scale);
    /// Lists the folders of the largest tiles ahead of time.
    void prefetch();

    /// Opens the tile's folder, or that of an entry in it; nothing happens where there is none.
    Q_INVOKABLE void zoomInto(const QString& key);
    /// Goes back to that many levels; 0 is the whole map. A folder that is being opened is not opened any
    /// more.
    Q_INVOKABLE void zoomOut(int depth);
    /// The tile that lies next to that one in a direction, each of `dx` and `dy` being -1, 0 or 1; -1 when
    /// there is none.
    Q_INVOKABLE [[nodiscard]] int neighbour(int index, int dx, int dy) const;
    /// Opens a level that is no tile's, such as another volume. `whenUnreadable` is called when nothing of it
    /// can be read.
    void open(const std::string& title, const std::vector<std::string>& paths,
              const std::function<void()>& whenUnreadable);

    /// Shows the folder at that path, to which somebody has gone elsewhere; where there is nothing to be seen
    /// the map stays. In a folder that is shown it is one more level.
    void follow(const std::string& path);

    /// See `TileList::makeSpare`.
    Q_INVOKABLE void makeSpare();
    [[nodiscard]] bool wantsSpare() const { return overview_.wantsSpare() || inside_.wantsSpare(); }

    [[nodiscard]] TileList* overview() { return &overview_; }
    [[nodiscard]] TileList* inside() { return &inside_; }
    [[nodiscard]] int count() const { return sheet().count(); }
    /// What is read of the tile at that place among those that are shown; see `TileList::Role`.
    [[nodiscard]] QVariant tile(int at, int role) const { return sheet().data(sheet().index(at), role); }

    /// What a click on the tile does.
    [[nodiscard]] TileClick clickOn(const std::string& id) const;
    /// True when the tile, the entry in one or the row can be opened on the map.
    [[nodiscard]] bool canZoomInto(const std::string& id) const;
    /// The first row that has no tile of its own; none when all have one.
    [[nodiscard]] const Row* firstWithoutTile() const;

    /// What is written on the tile; empty where there is none.
    [[nodiscard]] std::string labelOf(const std::string& id) const;
    /// The paths that a tile or an entry in one stands for; none for tiles that stand for many things.
    [[nodiscard]] SharedPaths pathsOf(const std::string& id) const;

    [[nodiscard]] double width() const { return size_.width(); }
    [[nodiscard]] double height() const { return size_.height(); }
    void setWidth(double width);
    void setHeight(double height);
    [[nodiscard]] int depth() const { return static_cast<int>(zoomStack_.size()); }
    [[nodiscard]] QStringList zoomTitles() const;
    [[nodiscard]] QStringList zoomAmounts() const;
    [[nodiscard]] QString skippedText() const;
    [[nodiscard]] bool isZoomLoading() const { return zoomLoading_.has_value(); }
    [[nodiscard]] QRectF zoomPlace() const;
    [[nodiscard]] const std::vector<ZoomLevel>& zoomStack() const { return zoomStack_; }

  signals:
    void sizeChanged();
    /// A folder that was to be opened is empty, or cannot be read.
    void couldNotOpen(const QString& title);
    void tilesChanged();
    void zoomChanged();
    /// Another level is shown, because somebody wanted it.
    void travelled();

  private:
    using Paths = SharedPaths;

    /// What is opened next, once it is listed.
    struct Wanted {
        std::string title;
        Paths paths;
        std::optional<lumo::Safety> safety;
        std::function<void()> whenUnreadable;
        std::optional<Rect> place; ///< On the map as it was then.
        bool isApart = false;      ///< See `ZoomLevel`.
        bool isFromTop = false;    ///< The way to it begins anew: it lies in none of the levels.
    };

    /// What is in a folder, and what is known of that.
    struct Inside {
        lumo::FolderContents::Listing listing;
        std::map<std::string, KnownEntry> known;
        std::set<Paths> closed; ///< The folders in it that cannot be listed.
    };

    void openWanted(Wanted wanted);
    void listed(const Paths& paths, const Inside& inside);
    void push(const Wanted& wanted, const Inside& inside);
    /// Ends all listings in hand, also those ahead of time.
    void stopListing();
    void listInBackground(const Paths& paths);
    void prefetchNext();
    /// Finds out which rows can be opened; until then none can.
    void findOpenable();
    [[nodiscard]] const TileList& sheet() const { return zoomStack_.empty() ? overview_ : inside_; }
    [[nodiscard]] TileList& sheet() { return zoomStack_.empty() ? overview_ : inside_; }
    /// Shows the sheet of the level that is open now.
    void turn();
    void findLit();
    /// On both sheets.
    void tell(const QList<int>& roles);
    /// The middle of the map, for what has no tile.
    [[nodiscard]] Rect middle() const;
    [[nodiscard]] bool canZoom(const Tile& tile) const;
    [[nodiscard]] QVariant read(const TileList& of, const LaidTile& tile, int role) const;
    [[nodiscard]] QVariant nestedOf(const TileList& of, const LaidTile& tile) const;
    [[nodiscard]] QString wordOf(const Tile& tile) const;

    const TickedPlan& plan_;
    Background& background_;
    Folders folders_;
    std::shared_ptr<const RowIndex> rows_ = std::make_shared<const RowIndex>();
    TileList overview_;
    TileList inside_;
    RowView view_;
    QSizeF size_{0, 0};
    double textScale_ = 1;
    std::vector<ZoomLevel> zoomStack_;
    Rect zoomPlace_;
    std::optional<Wanted> zoomLoading_;
    std::map<Paths, Inside> insideCache_;
    std::set<Paths> openable_;    ///< Of the rows.
    std::set<Paths> closed_;      ///< Where nothing was to be seen.
    std::set<Paths> prefetching_; ///< What is being listed now.
    std::deque<Paths> ahead_;     ///< What is to be listed ahead of time.
    std::stop_source listing_;    ///< Of all listings since the map was last forgotten.
    /// Listings of an earlier disk must not be shown for this one, nor what could be opened of other rows.
    int generation_ = 0;
    int rowsShown_ = 0;
};

} // namespace tarvo
