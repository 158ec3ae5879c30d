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

namespace lumo::Inventories {

namespace {

/// What each kind's detector does. Without a way to look at one item alone all are looked for.
struct Detector {
    Inventory (*find)(const InventoryQuery& query);
    std::optional<DetailItem> (*itemWith)(const std::string& id, const InventoryQuery& query) = nullptr;
};

Inventory findCloud(const InventoryQuery& query) {
    return {.kind = InventoryKind::cloud,
            .unavailable = Words{"en Linux ninguna carpeta de la nube dice qué copias puede devolver",
                                 "on Linux no cloud folder tells which copies it can give back"}
                               .in(query.language)};
}

/// In the order of the kinds.
constexpr std::array<Detector, inventoryKindCount> detectors{{{LargeFiles::find, LargeFiles::itemWith},
                                                              {Duplicates::find, Duplicates::itemWith},
                                                              {UnusedApps::find},
                                                              {Leftovers::find},
                                                              {Containers::find},
                                                              {Models::find},
                                                              {SystemItems::find},
                                                              {Installers::find, Installers::itemWith},
                                                              {findCloud}}};

const Detector& detectorOf(InventoryKind kind) {
    return detectors[static_cast<std::size_t>(kind)];
}

} // namespace

Inventory find(InventoryKind kind, const InventoryQuery& query) {
    return detectorOf(kind).find(query);
}

std::optional<DetailItem> itemWith(const std::string& id, const InventoryQuery& query) {
    const auto kind = inventoryKindOfID(id);
    if (!kind) {
        return std::nullopt;
    }
    InventoryQuery whole = query;
    whole.folders.clear();
    whole.minimumBytes.reset();
    whole.olderThanDays.reset();
    const Detector& detector = detectorOf(*kind);
    if (detector.itemWith != nullptr) {
        return detector.itemWith(id, whole);
    }
    const Inventory all = detector.find(whole);
    const auto found = std::ranges::find(all.items, id, &DetailItem::id);
    return found != all.items.end() ? std::optional(*found) : std::nullopt;
}

std::optional<std::string> keptBy(const std::string& id, const std::string& home) {
    return Duplicates::keptBy(id, home);
}

std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query) {
    return inventoryKindOfID(action.id) == InventoryKind::duplicates ? Duplicates::refusal(action, query)
                                                                     : std::nullopt;
}

std::optional<std::string> regret(const CleanupAction& action, const std::vector<std::string>& heldPaths,
                                  const InventoryQuery& query) {
    return inventoryKindOfID(action.id) == InventoryKind::duplicates
               ? Duplicates::regret(action, heldPaths, query)
               : std::nullopt;
}

} // namespace lumo::Inventories
