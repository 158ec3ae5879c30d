#include "LumoCore/Cleanup/SavedPlan.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Scanning/Scanner.h"

#include <fmt/format.h>

#include <algorithm>

namespace lumo {

namespace {

const Rule* ruleWith(const std::string& id, const std::vector<Rule>& rules) {
    const auto rule = std::ranges::find(rules, id, &Rule::id);
    return rule != rules.end() ? &*rule : nullptr;
}

bool isCommandOf(const Rule* rule, const method::Command& command) {
    const auto* own = rule != nullptr ? std::get_if<cleanup::Command>(&rule->cleanup) : nullptr;
    return own != nullptr && CleanupPlanner::wordsOfCommand(own->line) == command.words;
}

/// True when the action removes or sets aside what its rule leaves to a tool or to the user. What recreates
/// itself is emptied where the tool fails, so emptying it by the same paths is no other way.
bool isAnotherWay(const Rule& rule, const CleanupAction& action) {
    const bool isByTool = std::holds_alternative<cleanup::Command>(rule.cleanup);
    const bool isByHand = std::holds_alternative<cleanup::Manual>(rule.cleanup);
    const bool touches = !std::holds_alternative<method::Command>(action.method) &&
                         !CleanupExecutor::touchedPaths(action).empty();
    const bool hasWrongFallback = !action.fallbackContents.empty() && rule.safety != Safety::safe;
    return ((isByHand || (isByTool && rule.safety != Safety::safe)) && touches) || hasWrongFallback;
}

/// What no planner would have written, if anything.
std::optional<std::string> problemOf(const CleanupAction& action, const std::vector<Rule>& rules,
                                     const ActionOfItem& actionOfItem) {
    if (action.estimatedBytes < 0) {
        return "a negative estimate";
    }
    if (action.safety == Safety::keep) {
        return "something that is kept";
    }
    const Rule* rule = ruleWith(action.id, rules);
    const auto* command = std::get_if<method::Command>(&action.method);
    if (command != nullptr && rule == nullptr && inventoryKindOfID(action.id)) {
        const auto own = actionOfItem ? actionOfItem(action.id) : std::nullopt;
        return own && own->method == action.method
                   ? std::nullopt
                   : std::optional<std::string>("a command that is not its item's");
    }
    if (command != nullptr && !isCommandOf(rule, *command)) {
        return "a command that is not its rule's";
    }
    if (rule != nullptr && isAnotherWay(*rule, action)) {
        return "a way that is not its rule's";
    }
    // What needs a look is set aside; a file may not turn that into deleting.
    if (rule != nullptr && action.safety < rule->safety) {
        return "less care than its rule's";
    }
    return std::nullopt;
}

bool isCleanupOf(const Rule& rule, const Finding& finding) {
    // Instructions are worded in the language that the report was made in.
    const bool areManual = std::holds_alternative<cleanup::Manual>(rule.cleanup) &&
                           std::holds_alternative<cleanup::Manual>(finding.cleanup);
    return areManual || cleanupOf(rule, finding.paths) == finding.cleanup;
}

/// All that the action may change, by itself or by running something.
std::vector<std::string> pathsOf(const CleanupAction& action) {
    std::vector<std::string> paths = CleanupExecutor::touchedPaths(action);
    paths.insert(paths.end(), action.measuredPaths.begin(), action.measuredPaths.end());
    return paths;
}

bool isLeftOut(const CleanupAction& action, const CleanupOptions& options) {
    const std::vector<std::string> paths = pathsOf(action);
    return (options.only && !options.only->contains(action.id)) ||
           std::ranges::any_of(options.excludedProjects, [&](const std::string& project) {
               return std::ranges::any_of(paths,
                                          [&](const std::string& path) { return isInside(path, project); });
           });
}

/// The reason of a dependency folder whose project changed since the plan was saved.
std::optional<std::string> activeNow(const CleanupAction& action, const CleanupOptions& options,
                                     const PlanSurroundings& surroundings, const std::string& home) {
    if (!action.id.starts_with("proyecto:")) {
        return std::nullopt;
    }
    for (const std::string& path : CleanupExecutor::touchedPaths(action)) {
        HardLinkRegistry registry;
        const auto project = Scanner::measureProject(std::string(parentOf(path)), home, registry);
        if (auto reason = project ? CleanupPlanner::activeReason(*project, fileName(path), action.id, options,
                                                                 surroundings)
                                  : std::nullopt) {
            return reason;
        }
    }
    return std::nullopt;
}

} // namespace

Result<std::vector<PlanEntry>> savedPlanFromJson(std::string_view bytes, const std::vector<Rule>& rules,
                                                 const ActionOfItem& actionOfItem) {
    Result<std::vector<PlanEntry>> entries = decodeJson<std::vector<PlanEntry>>(bytes);
    if (!entries) {
        return entries;
    }
    std::int64_t sum = 0;
    for (std::size_t index = 0; index < entries->size(); ++index) {
        const CleanupAction& action = (*entries)[index].action;
        if (const auto problem = problemOf(action, rules, actionOfItem)) {
            return failure(fmt::format("document[{}].action: {} ({})", index, *problem, action.id));
        }
        if (__builtin_add_overflow(sum, action.estimatedBytes, &sum)) {
            return failure("document: the estimates are too large");
        }
    }
    return entries;
}

Result<void> checkCleanups(const ScanReport& report, const std::vector<Rule>& rules) {
    for (std::size_t index = 0; index < report.findings.size(); ++index) {
        const Finding& finding = report.findings[index];
        const Rule* rule = ruleWith(finding.ruleID, rules);
        if (rule == nullptr || rule->safety != finding.safety || !isCleanupOf(*rule, finding)) {
            return failure(fmt::format("document.findings[{}]: {} ({})", index,
                                       rule == nullptr ? "an unknown rule" : "not as its rule says",
                                       finding.ruleID));
        }
    }
    return {};
}

std::vector<PlanEntry> heldBackNow(std::vector<PlanEntry> entries, const CleanupOptions& options,
                                   const std::vector<Rule>& rules, const PlanSurroundings& surroundings,
                                   const std::string& home) {
    std::erase_if(entries, [&](const PlanEntry& entry) { return isLeftOut(entry.action, options); });
    for (PlanEntry& entry : entries) {
        if (entry.skipReason) {
            continue;
        }
        const Rule* rule = ruleWith(entry.action.id, rules);
        if (CleanupPlanner::touchesProtected(pathsOf(entry.action), options.protectedFolders)) {
            entry.skipReason = CleanupPlanner::protectedReason(surroundings.language);
        } else if (rule != nullptr) {
            entry.skipReason = CleanupPlanner::openReason(rule->closeFirst, surroundings);
        } else {
            entry.skipReason = activeNow(entry.action, options, surroundings, home);
        }
    }
    return entries;
}

} // namespace lumo
