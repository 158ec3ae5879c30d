#pragma once

#include "LumoCore/Inventories/DetailItem.h"

/// Models that programs have downloaded: Ollama's, Hugging Face's, and those of LM Studio, llama.cpp,
/// GPT4All, Whisper and PyTorch's hub. Ids are "modelo:", the program, ":" and the model's name there.
namespace lumo::Models {

Inventory find(const InventoryQuery& query);

} // namespace lumo::Models
