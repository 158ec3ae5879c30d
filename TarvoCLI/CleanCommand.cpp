#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/OutcomeText.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/PlanText.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoCLI/WatchedCleanup.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace tarvo {

using lumo::CleanupAction;
using lumo::CleanupOutcome;
using lumo::PlanEntry;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

struct CleanArguments {
    ReportSource source;
    PlanArguments plan;
    std::optional<std::string> savedPlan;
    bool isConfirmed = false;
    bool isDryRun = false;
};

ExitCode refuseFile(const std::string& file, const std::string& reason) {
    return complain(
        Words{"no uso {} ({}): no se ha tocado nada", "{} is not used ({}): nothing was touched"}.with(
            lumo::printable(file), lumo::printable(reason)),
        ExitCode::usage);
}

/// What is planned from: a saved plan, or a report.
std::expected<PlanRequest, ExitCode> requestFrom(const CleanArguments& arguments, const Desk& desk,
                                                 const Invocation& invocation) {
    PlanRequest request = planRequest(arguments.plan);
    if (arguments.savedPlan) {
        const auto bytes = inputFrom(*arguments.savedPlan);
        if (!bytes) {
            return std::unexpected(refuseFile(*arguments.savedPlan, lumo::reasonText(bytes.error())));
        }
        auto saved = savedPlan(*bytes, desk);
        if (!saved) {
            return std::unexpected(refuseFile(*arguments.savedPlan, saved.error().message));
        }
        request.saved = std::move(*saved);
        return request;
    }
    const auto report = reportFrom(arguments.source, invocation);
    if (!report) {
        return std::unexpected(report.error());
    }
    if (arguments.source.file) {
        // A report from outside must be one of this home and may bring no cleanups of its own.
        if (const auto checked = checkReport(**report, desk); !checked) {
            return std::unexpected(refuseFile(*arguments.source.file, checked.error().message));
        }
    }
    request.report = *report;
    request.isReportFromFile = arguments.source.file.has_value();
    return request;
}

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

ExitCode runClean(const CleanArguments& arguments, const Invocation& invocation) {
    if (arguments.savedPlan && arguments.source.file) {
        return complain(Words{"usa --plan o --report, no los dos", "use --plan or --report, not both"}.in(),
                        ExitCode::usage);
    }
    if (const auto impossible = cannotAsk(arguments.isConfirmed || arguments.isDryRun)) {
        return *impossible;
    }
    if (const auto refused = arguments.isDryRun ? std::nullopt : refuseForeign(invocation)) {
        return *refused;
    }
    const Desk desk = deskOf(invocation, "clean");
    if (const auto refused = refuseUntrustedPreferences(desk)) {
        return *refused;
    }
    const auto request = requestFrom(arguments, desk, invocation);
    if (!request) {
        return request.error();
    }
    const auto plan = planOrComplain(*request, desk);
    if (!plan) {
        return plan.error();
    }
    if (arguments.isDryRun) {
        return dryRun(plan->entries, invocation);
    }
    const Agreement agreed = agreementTo(*plan);
    if (agreed.actions.empty() && agreed.refused.empty()) {
        return print(invocation.isJson ? "[]\n" : planText(plan->entries, invocation));
    }
    const bool isFromFile = request->saved || request->isReportFromFile;
    if (const auto no = arguments.isConfirmed || agreed.actions.empty()
                            ? std::nullopt
                            : declinedCleanup(*plan, agreed, isFromFile, invocation)) {
        return *no;
    }
    const auto cleaned = watchedCleanup(*request, agreed, desk, invocation);
    return cleaned ? report(*cleaned, invocation) : complain(cleaned.error().message, ExitCode::failed);
}

} // namespace

void addCleanCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "limpiar", "clean", "libera lo que diga el plan, tras preguntarte",
                                   "free what the plan says, after asking you");
    const auto arguments = std::make_shared<CleanArguments>();
    addReportOption(*command, arguments->source);
    addPlanOptions(*command, arguments->plan);
    command
        ->add_option("--plan", arguments->savedPlan,
                     Words{"llevar a cabo este plan guardado; - para la entrada estándar",
                           "carry out this saved plan; - for standard input"}
                         .in())
        ->type_name(Words{"FICHERO", "FILE"}.in());
    command->add_flag("--yes", arguments->isConfirmed,
                      Words{"confirmar sin preguntar", "confirm without asking"}.in());
    command->add_flag(
        "--dry-run", arguments->isDryRun,
        Words{"mostrar lo que haría y no tocar nada", "show what it would do and touch nothing"}.in());
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runClean(*arguments, invocation); };
    });
}

} // namespace tarvo
