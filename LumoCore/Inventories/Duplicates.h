#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <optional>
#include <string>
#include <vector>

/// The user's own files that are there more than once.
///
/// Of each group of files with equal bytes one stays: the one in the tidier place. Every other is an item,
/// whose id names both: "copia:", the path of what goes, "//", and the path of what stays. Names of one file
/// are that one file.
namespace lumo::Duplicates {

/// Files of 1 MB or more whose bytes are equal: told apart by their lengths, then by their first and last
/// blocks, then by a digest of all bytes where there are more than two, and in the end by the bytes
/// themselves.
Inventory find(const InventoryQuery& query);

/// The items of those ids as they are now, in that order: both files are there, and nothing quick to see
/// tells them apart.
std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query);

/// The path of the copy that stays; absent for an id that is none of these.
std::optional<std::string> keptBy(const std::string& id, const std::string& home);

/// Why the copy that the action takes may not go; absent when the other one is there with the same bytes now.
std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query);

/// Why the copy, which lies at those paths now, must go back; absent when the other one is still there and
/// nothing quick to see tells them apart.
std::optional<std::string> regret(const CleanupAction& action, const std::vector<std::string>& heldPaths,
                                  const InventoryQuery& query);

} // namespace lumo::Duplicates
