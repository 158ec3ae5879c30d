#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <optional>
#include <string>
#include <vector>

/// The user's own large files, and those of them that nobody has touched for long.
namespace lumo::LargeFiles {

/// Files that take 100 MB or more; ids are "archivo:" and the path. One with several names is one item, and
/// only where all its names were found: taking fewer would free nothing.
Inventory find(const InventoryQuery& query);

/// The files of those ids as they are now, in that order; none for what is none of the user's own files.
std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query);

/// True when nobody has changed or opened it for 180 days, as far as the volume tells.
bool isForgotten(const std::optional<Date>& lastUsed, Date now);

} // namespace lumo::LargeFiles
