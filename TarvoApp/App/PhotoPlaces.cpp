#include "TarvoApp/App/PhotoPlaces.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <utility>

namespace tarvo {

PhotoPlaces::PhotoPlaces(const PhotoList& list, QObject* parent) : QAbstractListModel(parent), list_(list) {
    // Longer than from one key to the next while one is held down, and hardly to be felt.
    constexpr std::chrono::milliseconds untilRest{60};
    leapt_.setInterval(untilRest);
    leapt_.setSingleShot(true);
    connect(&leapt_, &QTimer::timeout, this, &PhotoPlaces::rest);
    // A list changes row by row; all that changes at once is shown at once.
    changed_.setInterval(0);
    changed_.setSingleShot(true);
    connect(&changed_, &QTimer::timeout, this, &PhotoPlaces::takeOver);
    const auto later = [this] { changed_.start(); };
    connect(&list, &QAbstractItemModel::rowsInserted, this, later);
    connect(&list, &QAbstractItemModel::rowsRemoved, this, later);
    connect(&list, &QAbstractItemModel::rowsMoved, this, later);
    connect(&list, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) {
                tell(
                    [&](int place) {
                        const int photo = places_[static_cast<std::size_t>(place)].photo;
                        return photo >= first.row() && photo <= last.row();
                    },
                    roles);
            });
}

void PhotoPlaces::look(int row, int rows, int columns) {
    if (columns < 1 || rows < 1) {
        return;
    }
    // The wheel gets a row further at most from one frame to the next. One leap alone shows what is there at
    // once; the pictures of what is leapt over one after the other would only be in the way.
    if (columns == columns_ && std::abs(row - row_) > 1) {
        rushes_ = leapt_.isActive();
        leapt_.start();
    }
    row_ = row;
    resize(rows, columns);
    settle();
}

void PhotoPlaces::resize(int rows, int columns) {
    columns_ = columns;
    const auto before = static_cast<int>(places_.size());
    const int after = rows * columns;
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        places_.resize(static_cast<std::size_t>(after));
        endInsertRows();
    } else if (after < before) {
        beginRemoveRows({}, after, before - 1);
        places_.resize(static_cast<std::size_t>(after));
        endRemoveRows();
    }
}

int PhotoPlaces::photoAt(int place) const {
    const auto count = static_cast<int>(places_.size());
    const int first = row_ * columns_;
    const int photo = first + ((place - first) % count + count) % count;
    return photo >= 0 && photo < list_.count() ? photo : -1;
}

void PhotoPlaces::settle() {
    std::vector<bool> isNew(places_.size());
    for (std::size_t place = 0; place < places_.size(); ++place) {
        const int photo = photoAt(static_cast<int>(place));
        if (places_[place].photo != photo) {
            places_[place] = {.photo = photo, .isAsked = !rushes_};
            isNew[place] = true;
        }
    }
    tell([&](int place) { return isNew[static_cast<std::size_t>(place)]; });
}

void PhotoPlaces::rest() {
    rushes_ = false;
    tell([this](int place) { return !std::exchange(places_[static_cast<std::size_t>(place)].isAsked, true); },
         {PhotoList::sourceRole});
}

void PhotoPlaces::takeOver() {
    setCurrent(current_.isValid() ? current_.row() : lastCurrent_);
    settle();
    tell([](int) { return true; });
}

void PhotoPlaces::setCurrent(int photo) {
    const int nearest = std::clamp(photo, 0, std::max(0, list_.count() - 1));
    current_ = list_.index(nearest);
    lastCurrent_ = nearest;
    emit currentChanged();
}

void PhotoPlaces::tell(const std::function<bool(int place)>& isMeant, const QList<int>& roles) {
    const auto count = static_cast<int>(places_.size());
    int begin = 0;
    for (int place = 0; place <= count; ++place) {
        if (place == count || !isMeant(place)) {
            if (begin < place) {
                emit dataChanged(index(begin), index(place - 1), roles);
            }
            begin = place + 1;
        }
    }
}

int PhotoPlaces::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(places_.size());
}

QVariant PhotoPlaces::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const Place& place = places_[static_cast<std::size_t>(index.row())];
    if (role == photoRole) {
        return place.photo;
    }
    if (role == PhotoList::sourceRole && (place.photo < 0 || !place.isAsked)) {
        return QString();
    }
    return list_.read(place.photo, role);
}

QHash<int, QByteArray> PhotoPlaces::roleNames() const {
    QHash<int, QByteArray> names = list_.roleNames();
    names.insert(photoRole, "photo");
    return names;
}

} // namespace tarvo
