#include "TarvoModel/Flows/Finding.h"

#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Inventories/Inventories.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/GivenPath.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace tarvo {

using lumo::DetailItem;
using lumo::Inventory;
using lumo::InventoryKind;

namespace {

/// What a cleanup would refuse has that reason.
void holdBack(const std::vector<DetailItem*>& items, const Desk& desk) {
    const Preferences preferences = Preferences::load(desk.home);
    const lumo::PathGuard guard(desk.home, protectedFolders(preferences, desk.home));
    for (DetailItem* item : items) {
        if (item->blockedBecause) {
            continue;
        }
        item->blockedBecause = preferences.problem();
        if (!item->blockedBecause) {
            item->blockedBecause = guard.protectedRefusal(lumo::CleanupExecutor::touchedPaths(item->action));
        }
        if (!item->blockedBecause) {
            item->blockedBecause = lumo::CleanupExecutor::refusal(item->action, guard);
        }
    }
}

} // namespace

std::size_t leaveOutCopies(std::vector<Inventory>& inventories) {
    std::set<std::string> copies;
    for (const Inventory& inventory : inventories) {
        for (const DetailItem& item : inventory.items) {
            if (item.kept) {
                copies.insert(*item.kept);
                copies.insert(item.path.value_or(""));
            }
        }
    }
    std::size_t leftOut = 0;
    for (Inventory& inventory : inventories) {
        if (inventory.kind == InventoryKind::large) {
            leftOut += std::erase_if(inventory.items, [&](const DetailItem& item) {
                const auto paths = lumo::CleanupExecutor::touchedPaths(item.action);
                return std::ranges::any_of(paths, [&](const auto& path) { return copies.contains(path); });
            });
        }
    }
    return leftOut;
}

std::vector<InventoryKind> kindsOf(const FindRequest& request) {
    std::vector<InventoryKind> kinds;
    for (const InventoryKind kind : request.kinds) {
        if (std::ranges::find(kinds, kind) == kinds.end()) {
            kinds.push_back(kind);
        }
    }
    for (std::size_t index = 0; request.kinds.empty() && index < lumo::inventoryKindCount; ++index) {
        if (const auto kind = static_cast<InventoryKind>(index); kind != InventoryKind::duplicates) {
            kinds.push_back(kind);
        }
    }
    return kinds;
}

std::vector<Inventory> found(const FindRequest& request, const Desk& desk, const FindWatch& watch) {
    lumo::InventoryQuery query{.home = desk.home,
                               .now = desk.now(),
                               .minimumBytes = request.minimumBytes,
                               .olderThanDays = request.olderThanDays,
                               .stop = watch.stop,
                               .progress = watch.progress};
    for (const std::string& folder : request.folders) {
        query.folders.push_back(pathMeant(folder, desk.home, LastLink::followed));
    }
    std::vector<Inventory> inventories;
    for (const InventoryKind kind : kindsOf(request)) {
        if (watch.stop.stop_requested()) {
            break;
        }
        if (watch.onKind) {
            watch.onKind(kind);
        }
        inventories.push_back(lumo::Inventories::find(kind, query));
    }
    leaveOutCopies(inventories);
    std::vector<DetailItem*> items;
    for (Inventory& inventory : inventories) {
        std::ranges::transform(inventory.items, std::back_inserter(items),
                               [](DetailItem& item) { return &item; });
    }
    holdBack(items, desk);
    return inventories;
}

CloserLook lookedAt(const FindRequest& request, const Desk& desk, const FindWatch& watch) {
    std::vector<Inventory> inventories = found(request, desk, watch);
    if (inventories.empty()) {
        return {};
    }
    CloserLook look{.found = std::move(inventories.front())};
    std::vector<lumo::CleanupAction> actions;
    for (const DetailItem& item : look.found.items) {
        if (!item.blockedBecause) {
            actions.push_back(item.action);
        }
    }
    const lumo::PathGuard guard(desk.home, protectedFolders(Preferences::load(desk.home), desk.home));
    look.shown = lumo::CleanupExecutor::resolved(actions, guard);
    return look;
}

std::optional<DetailItem> itemNow(const std::string& id, const Desk& desk) {
    std::optional<DetailItem> item = lumo::Inventories::itemWith(id, {.home = desk.home, .now = desk.now()});
    if (item) {
        holdBack({&*item}, desk);
    }
    return item;
}

std::vector<std::string> missingFolders(const FindRequest& request, const Desk& desk) {
    std::vector<std::string> missing;
    std::ranges::copy_if(request.folders, std::back_inserter(missing), [&](const std::string& folder) {
        return !lumo::platform::isFolderThroughLinks(pathMeant(folder, desk.home, LastLink::followed));
    });
    return missing;
}

} // namespace tarvo
