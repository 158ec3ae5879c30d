#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <optional>
#include <string>

/// The user's own large files, and those of them that nobody has touched for long.
namespace lumo::LargeFiles {

/// Files that take 100 MB or more; ids are "archivo:" and the path. One with several names is one item, and
/// only where all its names were found: taking fewer would free nothing.
Inventory find(const InventoryQuery& query);

/// The file of that id as it is now; absent for what is none of the user's own files.
std::optional<DetailItem> itemWith(const std::string& id, const InventoryQuery& query);

/// True when nobody has changed or opened it for 180 days, as far as the volume tells.
bool isForgotten(const std::optional<Date>& lastUsed, Date now);

} // namespace lumo::LargeFiles
