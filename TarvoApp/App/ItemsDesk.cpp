#include "TarvoApp/App/ItemsDesk.h"

#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace tarvo {

using lumo::InventoryKind;

namespace {

InventoryKind kindAt(std::size_t index) {
    return static_cast<InventoryKind>(index);
}

std::size_t indexOf(InventoryKind kind) {
    return static_cast<std::size_t>(kind);
}

} // namespace

ItemsDesk::ItemsDesk(const Ground& ground, TickedDesk& ticked, QObject* parent)
    : QObject(parent), ground_(ground), ticked_(ticked) {
    connect(&ground.activity, &Activity::phaseChanged, this, [this] {
        if (ground_.activity.isBusy()) {
            stop_.request_stop();
        }
    });
    connect(&ground.activity, &Activity::rested, this, &ItemsDesk::look);
    connect(&ticked, &TickedDesk::taken, this, &ItemsDesk::drop);
}

// Looking.

void ItemsDesk::tell() {
    lines_.clear();
    emit changed();
}

void ItemsDesk::lookAgain() {
    lines_.clear();
    for (std::size_t index = 0; index < wanted_.size(); ++index) {
        wanted_[index] = wanted_[index] || looks_[index] || kindAt(index) != InventoryKind::duplicates;
    }
    look();
}

void ItemsDesk::want(int kind) {
    if (kind >= 0 && static_cast<std::size_t>(kind) < wanted_.size()) {
        lines_.clear();
        const auto index = static_cast<std::size_t>(kind);
        wanted_[index] = wanted_[index] || !looks_[index];
        look();
    }
}

std::optional<InventoryKind> ItemsDesk::next() const {
    const auto wanted = std::ranges::find(wanted_, true);
    return wanted == wanted_.end()
               ? std::nullopt
               : std::optional(kindAt(static_cast<std::size_t>(wanted - wanted_.begin())));
}

void ItemsDesk::look() {
    const auto kind = next();
    if (looking_ || !kind || ground_.activity.isBusy()) {
        return;
    }
    looking_ = kind;
    stop_ = {};
    ground_.background.start(stop_, [this, kind = *kind, look = ground_.services.look, looks = looks_,
                                     plan = ticked_.plan().whole()->plan(),
                                     home = ground_.shownHome()](const std::stop_token& stop) mutable {
        Look made{.kind = kind, .found = std::make_shared<const CloserLook>(look(kind, stop)), .whole = {}};
        auto& known = looks[indexOf(kind)];
        // Else the list and the map would be made anew for each kind after each scan.
        if (!known || *known != *made.found) {
            known = made.found;
            made.whole = std::make_shared<const WholePlan>(plan, itemsIn(looks, home), home);
        }
        return Background::Apply(
            [this, made, wasStopped = stop.stop_requested()] { lookEnded(made, wasStopped); });
    });
    tell();
}

void ItemsDesk::lookEnded(const Look& look, bool wasStopped) {
    looking_.reset();
    // What was cut short, or ended while a cleanup began, is no longer what is there: it stays wanted.
    if (!wasStopped && !stop_.stop_requested()) {
        wanted_[indexOf(look.kind)] = false;
        if (look.whole) {
            looks_[indexOf(look.kind)] = look.found;
            ticked_.takeItems(look.whole);
        }
    }
    tell();
    this->look();
}

// What was found.

std::shared_ptr<const ShownItems> ItemsDesk::itemsIn(const Looks& looks, const std::string& home) {
    std::vector<lumo::Inventory> inventories;
    lumo::ResolvedPaths shown;
    for (const auto& look : looks) {
        if (look) {
            inventories.push_back(look->found);
            shown.insert(look->shown.begin(), look->shown.end());
        }
    }
    const std::size_t copies = leaveOutCopies(inventories);
    auto items = std::make_shared<ShownItems>(shownItems(inventories, home));
    items->sums[indexOf(InventoryKind::large)].copies = copies;
    items->shown = std::move(shown);
    return items;
}

void ItemsDesk::drop(const std::set<std::string>& ids) {
    const auto isGone = [&](const lumo::DetailItem& item) { return ids.contains(item.id); };
    bool isNews = false;
    for (auto& look : looks_) {
        if (look && std::ranges::any_of(look->found.items, isGone)) {
            auto rest = std::make_shared<CloserLook>(*look);
            std::erase_if(rest->found.items, isGone);
            look = std::move(rest);
            isNews = true;
        }
    }
    if (isNews) {
        ticked_.takeItems(std::make_shared<const WholePlan>(
            ticked_.plan().whole()->plan(), itemsIn(looks_, ground_.shownHome()), ground_.shownHome()));
        tell();
    }
}

const lumo::Inventory* ItemsDesk::foundOf(InventoryKind kind) const {
    const auto& look = looks_[indexOf(kind)];
    return look ? &look->found : nullptr;
}

const ItemsDesk::Items& ItemsDesk::itemsOf(InventoryKind wanted) const {
    static const Items none;
    const lumo::Inventory* const found = foundOf(wanted);
    return found != nullptr ? found->items : none;
}

LookState ItemsDesk::stateOf(InventoryKind wanted) const {
    if (looking_ == wanted) {
        return LookState::going;
    }
    return foundOf(wanted) != nullptr ? LookState::done
           : wanted_[indexOf(wanted)] ? LookState::wanted
                                      : LookState::unwanted;
}

QVariantList ItemsDesk::kinds() const {
    if (!lines_.isEmpty()) {
        return lines_;
    }
    for (std::size_t index = 0; index < looks_.size(); ++index) {
        const lumo::Inventory* const found = foundOf(kindAt(index));
        const KindSums& sums = ticked_.plan().whole()->items()->sums[index];
        const KindLine line = kindLine(found, sums, stateOf(kindAt(index)));
        lines_.push_back(QVariantMap{{"title", shown(lumo::titleOf(kindAt(index)))},
                                     {"amount", shown(line.amount)},
                                     {"note", shown(line.note)},
                                     {"count", static_cast<int>(sums.items)}});
    }
    return lines_;
}

QString ItemsDesk::noteOf(int wanted) const {
    if (wanted < 0 || static_cast<std::size_t>(wanted) >= looks_.size()) {
        return {};
    }
    const InventoryKind kind = kindAt(static_cast<std::size_t>(wanted));
    return shown(kindNote(foundOf(kind), ticked_.plan().whole()->items()->sums[indexOf(kind)], stateOf(kind),
                          ground_.shownHome()));
}

} // namespace tarvo
