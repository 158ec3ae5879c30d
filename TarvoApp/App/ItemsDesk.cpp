#include "TarvoApp/App/ItemsDesk.h"

#include "TarvoApp/App/QtText.h"

#include <memory>
#include <utility>

namespace tarvo {

using lumo::InventoryKind;

namespace {

InventoryKind kindAt(std::size_t index) {
    return static_cast<InventoryKind>(index);
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
    for (std::size_t index = 0; index < kinds_.size(); ++index) {
        Kind& kind = kinds_[index];
        kind.isWanted = kind.isWanted || kind.found || kindAt(index) != InventoryKind::duplicates;
    }
    look();
}

void ItemsDesk::want(int kind) {
    if (kind >= 0 && static_cast<std::size_t>(kind) < kinds_.size()) {
        lines_.clear();
        Kind& wanted = kinds_[static_cast<std::size_t>(kind)];
        wanted.isWanted = wanted.isWanted || !wanted.found;
        look();
    }
}

std::optional<InventoryKind> ItemsDesk::next() const {
    for (std::size_t index = 0; index < kinds_.size(); ++index) {
        if (kinds_[index].isWanted) {
            return kindAt(index);
        }
    }
    return std::nullopt;
}

void ItemsDesk::look() {
    const auto kind = next();
    if (looking_ || !kind || ground_.activity.isBusy()) {
        return;
    }
    looking_ = kind;
    stop_ = {};
    ground_.background.start(
        stop_, [this, kind = *kind, look = ground_.services.look](const std::stop_token& stop) {
            auto found = std::make_shared<CloserLook>(look(kind, stop));
            return Background::Apply([this, kind, found, wasStopped = stop.stop_requested()] {
                lookEnded(kind, std::move(*found), wasStopped);
            });
        });
    tell();
}

void ItemsDesk::lookEnded(InventoryKind kind, CloserLook look, bool wasStopped) {
    looking_.reset();
    // What was cut short, or ended while a cleanup began, is no longer what is there: it stays wanted.
    if (!wasStopped && !stop_.stop_requested()) {
        Kind& known = kinds_[static_cast<std::size_t>(kind)];
        const bool isNews = known.found != look.found || known.shown != look.shown;
        known = {.found = std::move(look.found), .shown = std::move(look.shown)};
        if (isNews) { // Else the list and the map would be made anew for each kind after each scan.
            show();
        }
    }
    tell();
    this->look();
}

// What was found.

void ItemsDesk::drop(const std::set<std::string>& ids) {
    for (Kind& kind : kinds_) {
        if (kind.found) {
            std::erase_if(kind.found->items,
                          [&](const lumo::DetailItem& item) { return ids.contains(item.id); });
        }
    }
    show();
    tell();
}

void ItemsDesk::show() {
    std::vector<lumo::Inventory> inventories;
    lumo::ResolvedPaths shown;
    for (const Kind& kind : kinds_) {
        if (kind.found) {
            inventories.push_back(*kind.found);
            shown.insert(kind.shown.begin(), kind.shown.end());
        }
    }
    leaveOutCopies(inventories);
    ShownItems items = shownItems(inventories);
    items.shown = std::move(shown);
    ticked_.takeItems(std::move(items));
}

const ItemsDesk::Items& ItemsDesk::itemsOf(InventoryKind wanted) const {
    static const Items none;
    return kind(wanted).found ? kind(wanted).found->items : none;
}

LookState ItemsDesk::stateOf(InventoryKind wanted) const {
    if (looking_ == wanted) {
        return LookState::going;
    }
    return kind(wanted).found      ? LookState::done
           : kind(wanted).isWanted ? LookState::wanted
                                   : LookState::unwanted;
}

QVariantList ItemsDesk::kinds() const {
    if (!lines_.isEmpty()) {
        return lines_;
    }
    for (std::size_t index = 0; index < kinds_.size(); ++index) {
        const auto& found = kinds_[index].found;
        const KindLine line = kindLine(found ? &*found : nullptr, stateOf(kindAt(index)));
        lines_.push_back(QVariantMap{{"title", shown(lumo::titleOf(kindAt(index)))},
                                     {"amount", shown(line.amount)},
                                     {"note", shown(line.note)},
                                     {"count", static_cast<int>(found ? found->items.size() : 0)}});
    }
    return lines_;
}

QString ItemsDesk::noteOf(int wanted) const {
    if (wanted < 0 || static_cast<std::size_t>(wanted) >= kinds_.size()) {
        return {};
    }
    const auto index = static_cast<std::size_t>(wanted);
    const auto& found = kinds_[index].found;
    return shown(kindNote(found ? &*found : nullptr, stateOf(kindAt(index))));
}

} // namespace tarvo
