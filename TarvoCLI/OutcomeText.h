#pragma once

#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "TarvoCLI/Console.h"

#include <string>
#include <vector>

namespace tarvo {

enum class OutcomeDates { shown, hidden };

/// What became of actions, for a person to read: one line each.
std::string outcomeText(const std::vector<lumo::CleanupOutcome>& outcomes, OutcomeDates dates,
                        const Invocation& invocation);

} // namespace tarvo
