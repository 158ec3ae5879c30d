#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Cleanup/CoveredPlaces.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/SavedPlan.h"
#include "Platform/Clock.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/HomeChange.h"
#include "TarvoCLI/OutcomeText.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/PlanText.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoCLI/WatchedCleanup.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
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

/// Makes the plan for this moment; asked for once to show it and once more right before acting.
using Planning = std::function<std::vector<PlanEntry>()>;

ExitCode refuseFile(const std::string& file, const std::string& reason) {
    return complain(
        Words{"no uso {} ({}): no se ha tocado nada", "{} is not used ({}): nothing was touched"}.with(
            lumo::printable(file), lumo::printable(reason)),
        ExitCode::usage);
}

std::expected<Planning, ExitCode>
planningFromFile(const std::string& file, const lumo::CleanupOptions& options, const Invocation& invocation) {
    const auto bytes = inputFrom(file);
    if (!bytes) {
        return std::unexpected(refuseFile(file, lumo::reasonText(bytes.error())));
    }
    const std::vector<lumo::Rule> rules = knownRules(invocation.home);
    const auto saved = lumo::savedPlanFromJson(*bytes, rules);
    if (!saved) {
        return std::unexpected(refuseFile(file, saved.error().message));
    }
    return [entries = *saved, rules, options, invocation] {
        return withSurroundings(invocation.home, [&](const lumo::PlanSurroundings& surroundings) {
            return lumo::heldBackNow(entries, options, rules, surroundings);
        });
    };
}

/// A report from outside must be one of this home and may bring no cleanups of its own.
std::optional<ExitCode> refuseReport(const lumo::ScanReport& report, const std::string& file,
                                     const Invocation& invocation) {
    if (report.home != invocation.home) {
        return refuseFile(
            file, Words{"es de la carpeta personal {}", "it is about the home folder {}"}.with(report.home));
    }
    if (const auto checked = lumo::checkCleanups(report, knownRules(invocation.home)); !checked) {
        return refuseFile(file, checked.error().message);
    }
    return std::nullopt;
}

std::expected<Planning, ExitCode> planningFromReport(const ReportSource& source,
                                                     const lumo::CleanupOptions& options,
                                                     const Invocation& invocation) {
    const auto report = reportFrom(source, invocation);
    if (!report) {
        return std::unexpected(report.error());
    }
    if (source.file) {
        if (const auto refused = refuseReport(*report, *source.file, invocation)) {
            return std::unexpected(*refused);
        }
    }
    return [report = *report, options, invocation] { return planFor(report, options, invocation.home); };
}

std::optional<ExitCode> declinedCleanup(const std::vector<PlanEntry>& entries,
                                        const std::vector<CleanupAction>& actions,
                                        const lumo::CleanupOptions& options, const Invocation& invocation) {
    const CleanupShares shares = sharesOf(actions);
    const std::string shown = planText(entries, options, invocation) + confirmationMessage(shares) + "\n";
    // Standard output belongs to the document.
    platform::writeAll(invocation.isJson ? platform::Stream::error : platform::Stream::output, shown);
    return declined(Words{"¿Limpiar {}?", "Clean {}?"}.with(lumo::ByteFormat::string(shares.total)));
}

ExitCode report(const std::vector<CleanupOutcome>& outcomes, const Invocation& invocation) {
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
    const ExitCode printed = print(shown);
    if (platform::wasInterrupted()) {
        return ExitCode::interrupted;
    }
    const bool hasFailed = std::ranges::any_of(outcomes, [](const CleanupOutcome& outcome) {
        return outcome.status == lumo::CleanupStatus::failed;
    });
    return hasFailed ? ExitCode::failed : printed;
}

/// What a file names may only be acted on where this build would act by itself.
lumo::CleanupExecutor::Refusal refusalOf(const CleanArguments& arguments,
                                         const std::vector<CleanupAction>& actions,
                                         const Invocation& invocation) {
    if (!arguments.savedPlan && !arguments.source.file) {
        return {};
    }
    const auto places =
        std::make_shared<const lumo::CoveredPlaces>(invocation.home, knownRules(invocation.home), actions);
    return [places](const CleanupAction& action) { return places->refusal(action); };
}

ExitCode dryRun(std::vector<PlanEntry> entries, const lumo::CleanupOptions& options,
                const lumo::PathGuard& guard, const lumo::CleanupExecutor::Refusal& refusal,
                const Invocation& invocation) {
    addRefusals(entries, guard);
    for (PlanEntry& entry : entries) {
        if (!entry.skipReason && refusal) {
            entry.skipReason = refusal(entry.action);
        }
    }
    if (invocation.isJson) {
        return print(planJson(entries));
    }
    const std::vector<CleanupAction> actions = lumo::CleanupPlanner::actionsOf(entries);
    return print(planText(entries, options, invocation) +
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
    const auto options = cleanupOptions(arguments.plan, invocation);
    if (!options) {
        return options.error();
    }
    const auto planning = arguments.savedPlan ? planningFromFile(*arguments.savedPlan, *options, invocation)
                                              : planningFromReport(arguments.source, *options, invocation);
    if (!planning) {
        return planning.error();
    }
    const std::vector<PlanEntry> entries = (*planning)();
    const std::vector<CleanupAction> agreed = lumo::CleanupPlanner::actionsOf(entries);
    const lumo::PathGuard guard(invocation.home);
    const lumo::CleanupExecutor::Refusal refusal = refusalOf(arguments, agreed, invocation);
    if (arguments.isDryRun) {
        return dryRun(entries, *options, guard, refusal, invocation);
    }
    if (agreed.empty()) {
        return print(invocation.isJson ? "[]\n" : planText(entries, *options, invocation));
    }
    if (const auto no =
            arguments.isConfirmed ? std::nullopt : declinedCleanup(entries, agreed, *options, invocation)) {
        return *no;
    }
    auto lock = lockHome(guard, "clean");
    if (!lock) {
        return lock.error();
    }
    return report(watchedCleanup(stillAllowed(agreed, (*planning)()), guard, invocation, refusal),
                  invocation);
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
