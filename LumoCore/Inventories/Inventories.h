#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Closer looks at a home. Each is a function of what is asked, over real folders and tools; may be called
/// from any thread, keeps nothing, and leaves what it reads looking untouched.
namespace lumo::Inventories {

/// What the kind finds. Never fails; after a stop the list is incomplete.
Inventory find(InventoryKind kind, const InventoryQuery& query);

/// The items of those ids as they are when they go together, each once, whatever the query's folders and
/// limits say; none for an id that is nobody's now. They may be carried out in the order in which they are
/// given, which is that of the ids but for what shares parts: a part goes with the last of those that need
/// it.
std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query);

/// The same for one.
std::optional<DetailItem> itemWith(const std::string& id, const InventoryQuery& query);

/// The path that the item of that id leaves where it is, because what goes is a copy of it; absent for
/// others.
std::optional<std::string> keptBy(const std::string& id, const std::string& home);

/// True for the id of what may hold somebody's only copy of something that its size does not tell of, as a
/// container's volume: to be said before it goes.
bool mayHoldDatabase(std::string_view id);

/// True for the id of what may come to something else when others go with it.
bool mayShareParts(std::string_view id);

/// Why an action on an inventory's item may not be carried out at this moment, in words for the user; absent
/// when it may, and for every other action. To be asked right before: a duplicate's bytes are compared once
/// more with those of the copy that stays, and no model that stays may need a part of one that goes.
std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query);

/// Why what the action took must go back, now that it lies at those paths; absent when it need not. To be
/// asked right after: the copy that stays may have gone or changed in between.
std::optional<std::string> regret(const CleanupAction& action, const std::vector<std::string>& heldPaths,
                                  const InventoryQuery& query);

} // namespace lumo::Inventories
