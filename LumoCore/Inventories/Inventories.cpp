#include "LumoCore/Inventories/Inventories.h"

#include "LumoCore/Inventories/Containers.h"
#include "LumoCore/Inventories/Duplicates.h"
#include "LumoCore/Inventories/Installers.h"
#include "LumoCore/Inventories/LargeFiles.h"
#include "LumoCore/Inventories/Leftovers.h"
#include "LumoCore/Inventories/Models.h"
#include "LumoCore/Inventories/SystemItems.h"
#include "LumoCore/Inventories/UnusedApps.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace lumo::Inventories {

namespace {

using Ids = std::vector<std::string>;

/// What each kind's detector does. Without a way to look at some items alone all are looked for.
struct Detector {
    Inventory (*find)(const InventoryQuery& query);
    std::vector<DetailItem> (*itemsWith)(const Ids& ids, const InventoryQuery& query) = nullptr;
};

Inventory findCloud(const InventoryQuery& query) {
    return {.kind = InventoryKind::cloud,
            .unavailable = Words{"en Linux ninguna carpeta de la nube dice qué copias puede devolver",
                                 "on Linux no cloud folder tells which copies it can give back"}
                               .in(query.language)};
}

/// In the order of the kinds.
constexpr std::array<Detector, inventoryKindCount> detectors{{{LargeFiles::find, LargeFiles::itemsWith},
                                                              {Duplicates::find, Duplicates::itemsWith},
                                                              {UnusedApps::find},
                                                              {Leftovers::find},
                                                              {Containers::find},
                                                              {Models::find, Models::itemsWith},
                                                              {SystemItems::find},
                                                              {Installers::find, Installers::itemsWith},
                                                              {findCloud}}};

const Detector& detectorOf(InventoryKind kind) {
    return detectors[static_cast<std::size_t>(kind)];
}

} // namespace

Inventory find(InventoryKind kind, const InventoryQuery& query) {
    return detectorOf(kind).find(query);
}

std::vector<DetailItem> itemsWith(const Ids& ids, const InventoryQuery& query) {
    InventoryQuery whole = query;
    whole.folders.clear();
    whole.minimumBytes.reset();
    whole.olderThanDays.reset();
    std::map<InventoryKind, Ids> byKind;
    std::vector<InventoryKind> order; // Of the ids.
    std::set<std::string_view> seen;
    for (const std::string& id : ids) {
        if (const auto kind = inventoryKindOfID(id); kind && seen.insert(id).second) {
            byKind[*kind].push_back(id);
            order.push_back(*kind);
        }
    }
    std::map<InventoryKind, std::vector<DetailItem>> found;
    for (const auto& [kind, own] : byKind) {
        const Detector& detector = detectorOf(kind);
        found[kind] = detector.itemsWith != nullptr ? detector.itemsWith(own, whole)
                                                    : itemsNamed(own, detector.find(whole).items);
        std::ranges::reverse(found[kind]);
    }
    std::vector<DetailItem> items;
    for (const InventoryKind kind : order) {
        if (auto& left = found[kind]; !left.empty()) {
            items.push_back(std::move(left.back()));
            left.pop_back();
        }
    }
    return items;
}

std::optional<DetailItem> itemWith(const std::string& id, const InventoryQuery& query) {
    std::vector<DetailItem> items = itemsWith({id}, query);
    return items.empty() ? std::nullopt : std::optional(std::move(items.front()));
}

std::optional<std::string> keptBy(const std::string& id, const std::string& home) {
    return Duplicates::keptBy(id, home);
}

bool mayHoldDatabase(std::string_view id) {
    return Containers::isVolume(id);
}

bool mayShareParts(std::string_view id) {
    return inventoryKindOfID(id) == InventoryKind::models;
}

std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query) {
    const auto kind = inventoryKindOfID(action.id);
    if (kind == InventoryKind::models) {
        return Models::refusal(action, query);
    }
    return kind == InventoryKind::duplicates ? Duplicates::refusal(action, query) : std::nullopt;
}

std::optional<std::string> regret(const CleanupAction& action, const std::vector<std::string>& heldPaths,
                                  const InventoryQuery& query) {
    return inventoryKindOfID(action.id) == InventoryKind::duplicates
               ? Duplicates::regret(action, heldPaths, query)
               : std::nullopt;
}

} // namespace lumo::Inventories
