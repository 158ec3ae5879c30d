#pragma once

#include "LumoAI/LanguageModel.h"
#include "TarvoCLI/Console.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <string_view>

namespace tarvo {

/// The language model that the preferences of the home choose, when it can be used now; null for none. Why a
/// chosen one cannot be used is said on standard error, followed by what is done instead, a sentence of its
/// own or nothing.
std::unique_ptr<lumo::LanguageModel> usersModel(const Invocation& invocation, std::string_view instead = {});

/// Runs work that asks the model, and shows that it does where progress is shown. False when the user
/// interrupted it.
bool watchModel(const Invocation& invocation, const std::function<void(const std::stop_token&)>& work);

} // namespace tarvo
