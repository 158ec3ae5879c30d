#pragma once

#include <string>
#include <vector>

namespace lumo {

/// The variables ("NAME=value") that hold a tool to the place that was shown. Settings files of its own, in
/// the home or elsewhere, could lead it to another folder, which nobody agreed to: variables go before them.
/// `paths` are those that were measured. None for tools that are not known to have such a variable.
std::vector<std::string> variablesHolding(const std::vector<std::string>& words,
                                          const std::vector<std::string>& paths);

} // namespace lumo
