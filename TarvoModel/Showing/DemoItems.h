#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Inventories/DetailItem.h"

namespace tarvo::DemoDisk {

/// What a closer look would find on the made-up computer.
lumo::Inventory items(lumo::InventoryKind kind, lumo::Language language = lumo::currentLanguage(),
                      lumo::System system = lumo::currentSystem());

} // namespace tarvo::DemoDisk
