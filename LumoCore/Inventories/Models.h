#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <optional>
#include <string>
#include <vector>

/// Models that programs have downloaded: Ollama's, Hugging Face's, and those of LM Studio, llama.cpp,
/// GPT4All, Whisper and PyTorch's hub. Ids are "modelo:", the program, ":" and the model's name there.
namespace lumo::Models {

/// Each as it is when it goes alone: a part that two models need is nobody's.
Inventory find(const InventoryQuery& query);

/// The models of those ids as they are when they go together, in an order in which they may go: a part that
/// only these need goes with the last of them.
std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query);

/// Why what the action takes may not go: a model that is there now needs a part of it, or the program that
/// stores it has been started. Absent when it may.
std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query);

} // namespace lumo::Models
