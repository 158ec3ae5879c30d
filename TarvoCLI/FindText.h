#pragma once

#include "LumoCore/Inventories/DetailItem.h"
#include "TarvoCLI/Console.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

/// What stands before each item.
enum class ItemMarks { none, numbers, ids };

/// What was found, for a person to read: each kind with its sum, the largest first, and what cannot be done
/// from here with the reason. Numbers go through all kinds and only to what can be cleaned.
std::string findText(const std::vector<lumo::Inventory>& inventories, ItemMarks marks,
                     const Invocation& invocation);

/// The items that can be cleaned, in the order of their numbers.
std::vector<lumo::DetailItem> pickableItems(const std::vector<lumo::Inventory>& inventories);

/// The numbers in an answer like "1 3-5", from 1 to `most`, each once and ascending; absent for anything
/// else.
std::optional<std::vector<std::size_t>> pickedNumbers(std::string_view answer, std::size_t most);

} // namespace tarvo
