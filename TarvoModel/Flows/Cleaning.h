#pragma once

#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

/// Cleaning a home: what the user agreed to, as far as it is still allowed.
namespace tarvo {

/// Carries out actions under the guard: `usualCarryOut`, or a stand-in for it.
using CarryOut = std::function<std::vector<lumo::CleanupOutcome>(
    const std::vector<lumo::CleanupAction>&, const lumo::PathGuard&, const lumo::CleanupExecutor::Control&)>;

/// The executor: the user's own into a new batch of the holding area, what recreates itself deleted at once,
/// each with its line in the log.
std::vector<lumo::CleanupOutcome> usualCarryOut(const std::vector<lumo::CleanupAction>& actions,
                                                const lumo::PathGuard& guard,
                                                const lumo::CleanupExecutor::Control& control);

/// How a cleanup is watched and ended. All is called on the thread that cleans.
struct CleanupWatch {
    /// What will be carried out, once that is certain.
    std::function<void(const std::vector<lumo::CleanupAction>&)> onPlanned = {};
    std::function<void(std::size_t index)> onBegin = {}; ///< One of these begins.
    std::stop_token stop = {};                           ///< Ends after the action in hand.
    std::stop_token cancelTool = {};                     ///< Ends a tool that is running, too.
    CarryOut carryOut = usualCarryOut;
};

/// Something that was agreed to and was not done, and why.
struct LeftOut {
    std::string id;
    std::string title;
    std::string reason;

    friend bool operator==(const LeftOut&, const LeftOut&) = default;
};

/// What came of a cleanup.
struct Cleaned {
    std::vector<lumo::CleanupOutcome> outcomes;
    std::vector<LeftOut> leftOut;
    std::int64_t lifetimeBefore = 0; ///< See `CleanupHistory::total`.
    std::size_t notBegun = 0;        ///< Actions that a stop has left as they were.
    /// Why the log does not tell of it; what was set aside comes back all the same once the log can be
    /// written.
    std::optional<std::string> logProblem = {};
};

/// What somebody agreed to: the actions as they were shown, and what their paths meant then.
struct Agreement {
    std::vector<lumo::CleanupAction> actions;
    lumo::ResolvedPaths shown;
    /// Of a file: what is refused, and told as failed, but never done.
    std::vector<lumo::CleanupAction> refused = {};
};

/// All that a plan would do, and what of a file it refuses.
Agreement agreementTo(const Plan& plan);

/// True when what an item of it comes to depends on which others go: before it is asked about, it must be
/// made of `together`.
bool dependsOnCompany(const Agreement& agreed);

/// The same with the items of inventories as they are when they go together. What is no longer there stays as
/// it was shown, and is left out when it is cleaned. Looks at the disk.
Agreement together(Agreement agreed, const Desk& desk);

/// Carries out what was agreed to, the items of inventories whether or not the request names them. Under the
/// home's lock the preferences are read and the plan is made once more; what it no longer has, or has
/// changed, or now has a reason against, is left out. A failure says why nothing at all was done.
lumo::Result<Cleaned> clean(const PlanRequest& request, const Agreement& agreed, const Desk& desk,
                            const CleanupWatch& watch = {});

/// Why the agreed actions cannot be carried out by the plan as it is now: those and the reasons. What the
/// plan refuses of a file is not among them, since it is tried and fails.
std::vector<LeftOut> leftOutNow(const std::vector<lumo::CleanupAction>& agreed, const Plan& now);

/// The same without anybody agreeing: `choose` takes what it wants of the plan of that moment. Where it takes
/// nothing, nothing is done.
lumo::Result<Cleaned> cleanChosen(const PlanRequest& request, const Desk& desk, const CleanupWatch& watch,
                                  const std::function<lumo::Result<Agreement>(const Plan&)>& choose);

} // namespace tarvo
