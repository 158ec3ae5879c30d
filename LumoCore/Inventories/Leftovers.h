#pragma once

#include "LumoCore/Inventories/DetailItem.h"

/// Data of what is certainly gone. Ids are "resto:" and the path.
namespace lumo::Leftovers {

/// Folders of Flatpak and Snap applications that are not installed, folders with the names of packages that
/// were removed and not purged, what older versions of an editor left beside a newer one, and entries of the
/// desktop for an AppImage that is no longer there. Without evidence there is no item.
Inventory find(const InventoryQuery& query);

} // namespace lumo::Leftovers
