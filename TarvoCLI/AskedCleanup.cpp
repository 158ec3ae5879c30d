#include "TarvoCLI/AskedCleanup.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/OutcomeText.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/PlanText.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/WatchedCleanup.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <optional>

namespace tarvo {

using lumo::CleanupAction;
using lumo::CleanupOutcome;
using lumo::PlanEntry;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

std::optional<ExitCode> declinedCleanup(const Plan& plan, const Agreement& agreed, bool isFromFile,
                                        const Invocation& invocation) {
    const CleanupShares shares = sharesOf(agreed.actions);
    const std::string shown = planText(plan.entries, invocation) +
                              (isFromFile ? deletedPathsText(agreed.actions, invocation) : std::string()) +
                              confirmationMessage(shares) + "\n";
    // Standard output belongs to the document.
    platform::writeAll(invocation.isJson ? platform::Stream::error : platform::Stream::output, shown);
    return declined(Words{"¿Limpiar {}?", "Clean {}?"}.with(lumo::ByteFormat::string(shares.total)));
}

/// What was agreed to and left as it was, with the reasons.
std::string leftOutText(const std::vector<LeftOut>& leftOut) {
    std::string shown;
    for (const LeftOut& left : leftOut) {
        shown += Words{"{}: se deja como estaba ({})", "{}: left as it was ({})"}.with(
                     lumo::printable(left.title), lumo::printable(left.reason)) +
                 "\n";
    }
    return shown;
}

ExitCode report(const Cleaned& cleaned, const Invocation& invocation) {
    const std::vector<CleanupOutcome>& outcomes = cleaned.outcomes;
    std::string shown = lumo::dumpJson(lumo::encode(outcomes), lumo::JsonLayout::indented) + "\n";
    if (!invocation.isJson) {
        const bool hasHeld = std::ranges::any_of(
            outcomes, [](const CleanupOutcome& outcome) { return outcome.restorable.has_value(); });
        shown = outcomeText(outcomes, OutcomeDates::hidden, invocation) + "\n" +
                tinted(cleanupDone(sumsOf(outcomes)), Tint::strong, invocation) + "\n" +
                (hasHeld ? tinted(Words{"Para devolverlo a su sitio: tarvo deshacer\n",
                                        "To put it back: tarvo undo\n"}
                                      .in(),
                                  Tint::faint, invocation)
                         : std::string());
    }
    // Nothing that was agreed to is left in silence, and the document has a stream of its own.
    platform::writeAll(platform::Stream::error, leftOutText(cleaned.leftOut));
    const ExitCode printed = print(shown);
    if (platform::wasInterrupted()) {
        return ExitCode::interrupted;
    }
    const bool hasFailed = std::ranges::any_of(outcomes, [](const CleanupOutcome& outcome) {
        return outcome.status == lumo::CleanupStatus::failed;
    });
    if (cleaned.logProblem) {
        return complain(*cleaned.logProblem, ExitCode::failed);
    }
    // Not all that was agreed to was done.
    return hasFailed || !cleaned.leftOut.empty() ? ExitCode::failed : printed;
}

ExitCode dryRun(const std::vector<PlanEntry>& entries, const Invocation& invocation) {
    if (invocation.isJson) {
        return print(planJson(entries));
    }
    const std::vector<CleanupAction> actions = lumo::CleanupPlanner::actionsOf(entries);
    return print(planText(entries, invocation) +
                 (actions.empty() ? std::string() : confirmationMessage(sharesOf(actions)) + "\n"));
}

} // namespace

ExitCode askedCleanup(const PlanRequest& request, const AskedHow& how, const Desk& desk,
                      const Invocation& invocation) {
    const auto plan = planOrComplain(request, desk);
    if (!plan) {
        return plan.error();
    }
    if (how.isDryRun) {
        return dryRun(plan->entries, invocation);
    }
    const Agreement agreed = agreementTo(*plan);
    if (agreed.actions.empty() && agreed.refused.empty()) {
        return print(invocation.isJson ? "[]\n" : planText(plan->entries, invocation));
    }
    if (const auto no = how.isConfirmed || agreed.actions.empty()
                            ? std::nullopt
                            : declinedCleanup(*plan, agreed, isFromFile(request), invocation)) {
        return *no;
    }
    const auto cleaned = watchedCleanup(request, agreed, desk, invocation);
    return cleaned ? report(*cleaned, invocation) : complain(cleaned.error().message, ExitCode::failed);
}

} // namespace tarvo
