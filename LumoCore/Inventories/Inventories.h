#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <optional>
#include <string>
#include <vector>

/// Closer looks at a home. Each is a function of what is asked, over real folders and tools; may be called
/// from any thread, keeps nothing, and leaves what it reads looking untouched.
namespace lumo::Inventories {

/// What the kind finds. Never fails; after a stop the list is incomplete.
Inventory find(InventoryKind kind, const InventoryQuery& query);

/// The item of that id as it is now, whatever the query's folders and limits say; absent when there is none.
std::optional<DetailItem> itemWith(const std::string& id, const InventoryQuery& query);

/// The path that the item of that id leaves where it is, because what goes is a copy of it; absent for
/// others.
std::optional<std::string> keptBy(const std::string& id, const std::string& home);

/// Why an action on an inventory's item may not be carried out at this moment, in words for the user; absent
/// when it may, and for every other action. To be asked right before: a duplicate's bytes are compared once
/// more with those of the copy that stays.
std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query);

/// Why what the action took must go back, now that it lies at those paths; absent when it need not. To be
/// asked right after: the copy that stays may have gone or changed in between.
std::optional<std::string> regret(const CleanupAction& action, const std::vector<std::string>& heldPaths,
                                  const InventoryQuery& query);

} // namespace lumo::Inventories
