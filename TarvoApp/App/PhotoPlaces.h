#pragma once

#include "TarvoApp/App/PhotoList.h"

#include <QAbstractListModel>
#include <QPersistentModelIndex>
#include <QTimer>

#include <functional>
#include <vector>

namespace tarvo {

/// The photos around what a window shows, at as many places as it has room for. What the window makes for a
/// place is kept when another photo comes there, since making it is what costs; a photo keeps its place for
/// as long as it is near.
class PhotoPlaces final : public QAbstractListModel {
    Q_OBJECT
    /// Where the keyboard is, counted in the list; -1 when that is empty. It goes with its photo.
    Q_PROPERTY(int current READ current WRITE setCurrent NOTIFY currentChanged)

  public:
    /// Besides those of the list, whose source is empty for what goes by faster than anybody can see.
    enum Role {
        photoRole = PhotoList::lastRole + 1 ///< Its number in the list; -1 for a place without one.
    };

    /// The list must outlive it.
    explicit PhotoPlaces(const PhotoList& list, QObject* parent = nullptr);

    /// Has places for so many rows and columns of photos, the first of those rows counted from that of the
    /// list's first photo; they may begin before it and go on behind the last.
    Q_INVOKABLE void look(int row, int rows, int columns);

    [[nodiscard]] int current() const { return current_.isValid() ? current_.row() : -1; }
    /// The nearest one that there is.
    void setCurrent(int photo);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void currentChanged();

  private:
    struct Place {
        int photo = -1;
        bool isAsked = false; ///< Whether its picture is.
    };

    [[nodiscard]] int photoAt(int place) const;
    void resize(int rows, int columns);
    void settle();
    void rest();
    void takeOver();
    void tell(const std::function<bool(int place)>& isMeant, const QList<int>& roles = {});

    const PhotoList& list_;
    std::vector<Place> places_;
    int row_ = 0;
    int columns_ = 1;
    QTimer leapt_;   ///< Runs for a while after each leap.
    QTimer changed_; ///< Runs until what the list has become is shown.
    bool rushes_ = false;
    QPersistentModelIndex current_;
    int lastCurrent_ = 0;
};

} // namespace tarvo
