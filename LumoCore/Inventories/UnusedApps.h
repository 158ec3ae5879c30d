#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <map>
#include <string>
#include <string_view>

/// Applications with evidence that nobody has used them for 180 days. Ids are "app:", where it comes from
/// ("flatpak", "package" or "appimage"), ":" and its name there.
namespace lumo::UnusedApps {

/// Without evidence of when an application was used last there is no item.
Inventory find(const InventoryQuery& query);

/// When the desktop saw applications last, by their ids without ".desktop", from the record of GNOME's shell
/// ("application_state"). What is no such record gives nothing.
std::map<std::string, Date, std::less<>> launchesIn(std::string_view record);

} // namespace lumo::UnusedApps
