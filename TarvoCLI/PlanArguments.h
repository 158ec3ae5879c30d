#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "TarvoCLI/Console.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarvo {

/// The options that say what a cleanup may take, as they were given.
struct PlanArguments {
    std::vector<std::string> include;
    std::vector<std::string> only; ///< An empty one adds nothing but makes a set.
    bool includesActiveDependencies = false;
    std::optional<std::int64_t> activeDays;
    std::vector<std::string> protectedFolders;
    std::vector<std::string> excludedProjects;
};

void addPlanOptions(CLI::App& command, PlanArguments& arguments);

/// The planner's options, with the stored preferences where an option is silent. Folders are made absolute.
/// Without preferences that can be trusted there are none: what is wrong has been said, and the command
/// answers the code.
std::expected<lumo::CleanupOptions, ExitCode> cleanupOptions(const PlanArguments& arguments,
                                                             const Invocation& invocation);

} // namespace tarvo
