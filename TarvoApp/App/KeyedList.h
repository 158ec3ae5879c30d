#pragma once

#include <QAbstractListModel>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tarvo {

/// A list of items that are known by their `id`. Those that stay keep their places on screen when others come
/// or go, and slide there when the order changes.
template <class Item>
class KeyedList : public QAbstractListModel {
  public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : count() + spare_;
    }

  protected:
    [[nodiscard]] const std::vector<Item>& items() const { return items_; }
    [[nodiscard]] std::vector<Item>& items() { return items_; }

    /// Tells the views that the items read otherwise, in the roles or in all of them.
    void tellChanged(const QList<int>& roles = {}) {
        if (!items_.empty()) {
            emit dataChanged(index(0), index(count() - 1), roles);
        }
    }

    void takeOver(std::vector<Item> wanted) {
        // Nobody could follow more of them, and moving them one by one would take longer.
        constexpr std::size_t mostMoves = 64;
        if (sharesFew(wanted) || differences(wanted) > mostMoves) {
            willReplace();
            replaceAll(std::move(wanted));
            return;
        }
        removeGone(wanted);
        arrange(std::move(wanted));
    }

    /// From now on rows that are not needed stay behind the others, as spare ones without an item: what views
    /// have made for a row is kept, since making it is what costs. `shownRole` is how they tell them apart;
    /// it is told last of a row that gets an item, and alone of one that loses its own.
    void keepSpare(int shownRole, const QList<int>& otherRoles) {
        shownRole_ = shownRole;
        otherRoles_ = otherRoles;
    }
    /// Adds so many spare rows.
    void addSpare(int rows) {
        beginInsertRows({}, rowCount(), rowCount() + rows - 1);
        spare_ += rows;
        endInsertRows();
    }

    /// Other items are about to stand at the places of those that are shown.
    virtual void willReplace() {}
    /// What views have to read again where the one stood and the other stands now, which is not equal to it;
    /// empty for all of it.
    [[nodiscard]] virtual QList<int> changedRoles(const Item& /*before*/, const Item& /*now*/) const {
        return {};
    }

  private:
    [[nodiscard]] std::size_t differences(const std::vector<Item>& wanted) const {
        std::size_t alike = 0;
        const std::size_t both = std::min(items_.size(), wanted.size());
        for (std::size_t at = 0; at < both; ++at) {
            alike += items_[at].id == wanted[at].id ? 1U : 0U;
        }
        return std::max(items_.size(), wanted.size()) - alike;
    }

    [[nodiscard]] bool sharesFew(const std::vector<Item>& wanted) const {
        std::unordered_set<std::string_view> ids;
        for (const Item& item : items_) {
            ids.insert(item.id);
        }
        const auto shared =
            std::ranges::count_if(wanted, [&](const Item& item) { return ids.contains(item.id); });
        return static_cast<std::size_t>(shared) * 2 < wanted.size();
    }

    [[nodiscard]] bool keepsSpare() const { return shownRole_ >= 0; }

    void tellShown(int first, int last) {
        if (first <= last) {
            emit dataChanged(index(first), index(last), otherRoles_);
            emit dataChanged(index(first), index(last), {shownRole_});
        }
    }
    void tellSpare(int first, int last) {
        if (first <= last) {
            emit dataChanged(index(first), index(last), {shownRole_});
        }
    }

    /// Views keep what they have made for each place, since making it is what costs.
    void replaceAll(std::vector<Item> wanted) {
        const int before = count();
        const int rows = rowCount();
        const int after = static_cast<int>(wanted.size());
        if (before > after && !keepsSpare()) {
            beginRemoveRows({}, after, before - 1);
            items_.resize(wanted.size());
            endRemoveRows();
        }
        const int reused = std::min(rows, after);
        items_.assign(std::make_move_iterator(wanted.begin()),
                      std::make_move_iterator(wanted.begin() + reused));
        spare_ = keepsSpare() ? rows - reused : 0;
        if (const int both = std::min(before, after); both > 0) {
            emit dataChanged(index(0), index(both - 1));
        }
        tellShown(before, reused - 1);
        if (keepsSpare()) {
            tellSpare(after, before - 1);
        }
        if (after > rows) {
            beginInsertRows({}, rows, after - 1);
            std::move(wanted.begin() + reused, wanted.end(), std::back_inserter(items_));
            endInsertRows();
        }
    }

    void remove(int at) {
        const int last = rowCount() - 1;
        if (!keepsSpare()) {
            beginRemoveRows({}, at, at);
            items_.erase(items_.begin() + at);
            endRemoveRows();
            return;
        }
        if (at < last) {
            beginMoveRows({}, at, at, {}, last + 1);
        }
        items_.erase(items_.begin() + at);
        ++spare_;
        if (at < last) {
            endMoveRows();
        }
        tellSpare(last, last);
    }

    void insert(int place, Item item) {
        if (spare_ == 0) {
            beginInsertRows({}, place, place);
            items_.insert(items_.begin() + place, std::move(item));
            endInsertRows();
            return;
        }
        const int from = count();
        if (from != place) {
            beginMoveRows({}, from, from, {}, place);
        }
        items_.insert(items_.begin() + place, std::move(item));
        --spare_;
        if (from != place) {
            endMoveRows();
        }
        tellShown(place, place);
    }

    void removeGone(const std::vector<Item>& wanted) {
        std::unordered_set<std::string_view> ids;
        for (const Item& item : wanted) {
            ids.insert(item.id);
        }
        for (int at = count() - 1; at >= 0; --at) {
            if (!ids.contains(items_[static_cast<std::size_t>(at)].id)) {
                remove(at);
            }
        }
    }

    void arrange(std::vector<Item> wanted) {
        // Views read again only what has changed: after most scans that is little, and reading is what costs.
        // What stands one after the other is told at once.
        int changed = 0;
        QList<int> roles;
        const auto tell = [&](int end) {
            if (const int run = std::exchange(changed, 0); run > 0) {
                emit dataChanged(index(end - run), index(end - 1), roles);
            }
        };
        for (int place = 0; place < static_cast<int>(wanted.size()); ++place) {
            Item& item = wanted[static_cast<std::size_t>(place)];
            const auto begin = items_.begin() + place;
            const auto found =
                std::find_if(begin, items_.end(), [&](const Item& other) { return other.id == item.id; });
            if (found == items_.end()) {
                tell(place);
                insert(place, std::move(item));
                continue;
            }
            if (found != begin) {
                tell(place);
                const int from = static_cast<int>(found - items_.begin());
                beginMoveRows({}, from, from, {}, place);
                std::rotate(begin, found, found + 1);
                endMoveRows();
            }
            Item& shown = items_[static_cast<std::size_t>(place)];
            if (shown == item) {
                tell(place);
                continue;
            }
            QList<int> others = changedRoles(shown, item);
            if (others != roles) {
                tell(place);
                roles = std::move(others);
            }
            shown = std::move(item);
            ++changed;
        }
        tell(static_cast<int>(wanted.size()));
    }

    std::vector<Item> items_;
    int spare_ = 0;
    int shownRole_ = -1; ///< See `keepSpare`; less than 0 where nothing is kept.
    QList<int> otherRoles_;
};

} // namespace tarvo
