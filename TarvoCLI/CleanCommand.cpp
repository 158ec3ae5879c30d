#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/AskedCleanup.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/ReportSource.h"

#include <memory>
#include <optional>

namespace tarvo {

using lumo::Words;

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
    if (asksForItemsAlone(arguments.plan) && !arguments.source.file) {
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
    return askedCleanup(*request, {.isConfirmed = arguments.isConfirmed, .isDryRun = arguments.isDryRun},
                        desk, invocation);
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
