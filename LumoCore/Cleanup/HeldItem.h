#pragma once

#include "LumoCore/Cleanup/CleanupOutcome.h"

#include <optional>
#include <string>
#include <string_view>

/// Reading what the log and the intents say about a held item. They spell the home as the process did that
/// wrote them, and a home behind a link, or one that was moved, has more than one spelling.
namespace lumo::HeldItem {

/// "batch/name" at the end of a path in the holding area of any home; empty for every other path.
std::string_view placeInRoot(std::string_view inTrash);

/// The item as the home in hand spells it; absent when `inTrash` names no place in a holding area. Whether
/// it is held here is for the disk to say: with another spelling only names that are unique everywhere count.
std::optional<TrashedItem> ofThisHome(const TrashedItem& item, const std::string& home);

} // namespace lumo::HeldItem
