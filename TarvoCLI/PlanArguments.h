#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

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
    std::vector<std::string> items; ///< Of inventories.
};

void addPlanOptions(CLI::App& command, PlanArguments& arguments);

/// True when items of inventories are asked for and nothing else: then nothing is scanned, and nothing else
/// is taken.
bool asksForItemsAlone(const PlanArguments& arguments);

/// Adds the option by which items are named.
void addItemOption(CLI::App& command, std::vector<std::string>& items);

/// What was asked for, without what is planned from.
PlanRequest planRequest(const PlanArguments& arguments);

/// Refuses before anything long is begun while the preferences cannot be trusted.
std::optional<ExitCode> refuseUntrustedPreferences(const Desk& desk);

/// The plan of that request for this moment. Where it asks for what is nobody's, or the preferences cannot be
/// trusted, that has been said, and the command answers the code.
std::expected<Plan, ExitCode> planOrComplain(const PlanRequest& request, const Desk& desk);

} // namespace tarvo
