#pragma once

#include "LumoCore/Inventories/DetailItem.h"

/// What the system keeps outside the home: packages that were downloaded, its journal, dumps of programs that
/// crashed, kernels, revisions of snaps and temporary files. Most of it needs an administrator, and then the
/// item says what to run. Ids are "sistema:" and what it is.
namespace lumo::SystemItems {

/// Measured where it can be read; what cannot is left out and counted.
Inventory find(const InventoryQuery& query);

} // namespace lumo::SystemItems
