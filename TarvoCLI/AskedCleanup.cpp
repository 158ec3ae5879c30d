#include "TarvoCLI/AskedCleanup.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/CleanedReport.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/PlanText.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/WatchedCleanup.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <optional>

namespace tarvo {

using lumo::CleanupAction;
using lumo::PlanEntry;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

std::optional<ExitCode> declinedCleanup(const Plan& plan, const Agreement& agreed, bool isFromFile,
                                        const Invocation& invocation) {
    const std::string shown = planText(plan.entries, invocation) +
                              (isFromFile ? deletedPathsText(agreed.actions, invocation) : std::string()) +
                              confirmationMessage(agreed.actions) + "\n";
    // Standard output belongs to the document.
    platform::writeAll(invocation.isJson ? platform::Stream::error : platform::Stream::output, shown);
    return declined(
        Words{"¿Limpiar {}?", "Clean {}?"}.with(lumo::ByteFormat::string(bytesOf(agreed.actions))));
}

ExitCode dryRun(const std::vector<PlanEntry>& entries, const Invocation& invocation) {
    if (invocation.isJson) {
        return print(planJson(entries));
    }
    const std::vector<CleanupAction> actions = lumo::CleanupPlanner::actionsOf(entries);
    return print(planText(entries, invocation) +
                 (actions.empty() ? std::string() : confirmationMessage(actions) + "\n"));
}

} // namespace

ExitCode askedCleanup(PlanRequest request, const AskedHow& how, const Desk& desk,
                      const Invocation& invocation) {
    auto plan = planOrComplain(request, desk);
    if (!plan) {
        return plan.error();
    }
    if (request.saved) {
        measureNow(*plan, *request.saved);
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
    const auto cleaned = watchedCleanup(
        [&](const CleanupWatch& watch) { return clean(request, agreed, desk, watch); }, invocation);
    return cleaned ? reportCleaned(*cleaned, invocation)
                   : complain(cleaned.error().message, ExitCode::failed);
}

} // namespace tarvo
