#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/PlanText.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

#include <memory>

namespace tarvo {

using lumo::PlanEntry;
using lumo::Words;

namespace {

struct PlanCommandArguments {
    ReportSource source;
    PlanArguments plan;
};

ExitCode runPlan(const PlanCommandArguments& arguments, const Invocation& invocation) {
    const auto options = cleanupOptions(arguments.plan, invocation);
    if (!options) {
        return options.error();
    }
    const auto report = reportFrom(arguments.source, invocation);
    if (!report) {
        return report.error();
    }
    const std::vector<PlanEntry> entries = planFor(*report, *options, invocation.home);
    if (invocation.isJson) {
        return print(planJson(entries));
    }
    return print(
        planText(entries, *options, invocation) +
        tinted(Words{"Lo que conviene mirar antes entra con --include ID; tarvo analizar lo muestra.",
                     "What needs a look comes in with --include ID; tarvo scan shows it."}
                   .in(),
               Tint::faint, invocation) +
        "\n");
}

} // namespace

void addPlanCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "plan", "plan", "qué haría una limpieza, y qué deja fuera y por qué",
                                   "what a cleanup would do, and what it leaves out and why");
    const auto arguments = std::make_shared<PlanCommandArguments>();
    addReportOption(*command, arguments->source);
    addPlanOptions(*command, arguments->plan);
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runPlan(*arguments, invocation); };
    });
}

} // namespace tarvo
