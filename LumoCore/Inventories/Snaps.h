#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Inventories/DetailItem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Snap applications as snapd lists them. Its answer is foreign bytes.
namespace lumo {

struct InstalledSnap {
    std::string name;  ///< What `snap remove` takes.
    std::string title; ///< For a person.
    std::int64_t bytes = 0;
    std::optional<Date> installed;       ///< The day on which this revision came.
    std::vector<std::string> desktopIDs; ///< Of its desktop entries, without ".desktop".
};

/// The snaps in snapd's answer that a person starts: applications with a desktop entry and without a service,
/// which may be at work though nobody opens anything. None in what is no such answer.
std::vector<InstalledSnap> snapsIn(std::string_view json);

/// Where snapd is asked.
std::string snapSocket(const InventoryQuery& query);

/// Asks snapd over its socket. None where there is no socket; absent where it does not answer.
std::optional<std::vector<InstalledSnap>> installedSnaps(const InventoryQuery& query);

} // namespace lumo
