#pragma once

#include "LumoAI/LanguageModel.h"
#include "TarvoModel/Flows/Preferences.h"

#include <memory>

namespace tarvo {

/// True when the preferences name a model that is to be asked.
bool isModelChosen(const Preferences& preferences);

/// The language model that the preferences choose: the one of this machine's user under "modeloLocal", or
/// none. Nothing is asked of it yet.
std::unique_ptr<lumo::LanguageModel> chosenModel(const Preferences& preferences);

} // namespace tarvo
