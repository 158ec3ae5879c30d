#pragma once

#include "TarvoApp/App/KeyedList.h"
#include "TarvoModel/Showing/DiskMap.h"

#include <QSizeF>
#include <QVariant>

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarvo {

/// A tile and where it is on the map.
struct LaidTile : Tile {
    Rect place;

    friend bool operator==(const LaidTile&, const LaidTile&) = default;
};

/// The tiles of one sheet of the map. A sheet that is not shown keeps its tiles, and what views have made for
/// them, so that it is there at once when somebody comes back to it; until then views hear of no changes.
class TileList final : public KeyedList<LaidTile> {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        keyRole = Qt::UserRole, ///< See `keyOf`; empty for a row that is kept for another map.
        labelRole,
        detailRole,
        bytesRole, ///< For a person.
        placeRole, ///< The part that is drawn, as a QRectF.
        colorRole, ///< Invalid for the neutral gray.
        darkInkRole,
        stateRole,  ///< See `Kinds::Tick`.
        statusRole, ///< What the card says.
        wordRole,   ///< The row's group; empty for what is no row.
        unknownRole,
        kindRole, ///< See `Kinds::Tile`.
        canZoomRole,
        nestedRole, ///< Of each entry inside a map with its place, label, key and whether it can be opened.
        knownRole,  ///< What an entry is, where somebody knows.
        dimmedRole, ///< Whether what was searched for is not there.
        clickRole   ///< Whether a click does something.
    };

    /// What a view reads of a tile.
    using Read = std::function<QVariant(const TileList& of, const LaidTile& tile, int role)>;

    /// `most` is how many tiles the fullest sheet has.
    TileList(Read read, std::size_t most, QObject* parent = nullptr);

    /// Other tiles, on a sheet of that size.
    void take(std::vector<Tile> tiles, const QSizeF& size);
    /// The sheet has that size now.
    void layOut(const QSizeF& size);
    /// Tells of what has changed meanwhile, when the sheet is shown again.
    void setShown(bool isShown);
    /// The tiles read otherwise, in those roles.
    void tell(const QList<int>& roles);
    /// Tells of the tiles whose tick, or what is said of it, is another than when this was called last:
    /// reading all of them after each look at the disk takes longer than a frame has.
    void tellTicks();
    /// The ids of what keeps its light; absent when all does. See `litTiles`.
    void light(std::optional<std::set<std::string>> lit);
    [[nodiscard]] bool isDimmed(const std::string& id) const { return lit_ && !lit_->contains(id); }

    /// Makes some of the tiles that a full sheet will want, so that they need not all be made in one frame.
    void makeSpare();
    [[nodiscard]] bool wantsSpare() const { return rowCount() < most_; }

    [[nodiscard]] const std::vector<LaidTile>& tiles() const { return items(); }
    [[nodiscard]] std::vector<Rect> places() const;
    /// None when there is no such tile.
    [[nodiscard]] const LaidTile* find(const std::string& id) const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    /// The tiles are about to stand for other things; see `willReplace`.
    void replacing();
    void countChanged();

  private:
    void willReplace() override { emit replacing(); }
    [[nodiscard]] QList<int> changedRoles(const LaidTile& before, const LaidTile& now) const override;
    /// Lets the tiles stay where they are if nobody could see them move.
    void keepPlaces(std::vector<LaidTile>& laid) const;
    /// What is read of a row without a tile.
    [[nodiscard]] static QVariant ofSpare(int role);

    Read read_;
    int most_;
    QSizeF size_;
    bool isShown_ = true;
    std::set<int> changed_; ///< The roles of which views have not heard.
    std::optional<std::set<std::string>> lit_;
    std::map<std::string, std::pair<QVariant, QVariant>> ticks_; ///< State and status, by id.
};

} // namespace tarvo
