#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/PlanText.h"
#include "TarvoCLI/ReportSource.h"

#include <memory>

namespace tarvo {

using lumo::Words;

namespace {

struct PlanCommandArguments {
    ReportSource source;
    PlanArguments plan;
};

ExitCode runPlan(const PlanCommandArguments& arguments, const Invocation& invocation) {
    const Desk desk = deskOf(invocation, "plan");
    if (const auto refused = refuseUntrustedPreferences(desk)) {
        return *refused;
    }
    PlanRequest request = planRequest(arguments.plan);
    if (!asksForItemsAlone(arguments.plan) || arguments.source.file) {
        const auto report = reportFrom(arguments.source, invocation);
        if (!report) {
            return report.error();
        }
        request.report = *report;
        request.isReportFromFile = arguments.source.file.has_value();
    }
    const auto plan = planOrComplain(request, desk);
    if (!plan) {
        return plan.error();
    }
    if (invocation.isJson) {
        return print(planJson(plan->entries));
    }
    return print(
        planText(plan->entries, invocation) +
        tinted(
            Words{"Lo que conviene mirar antes entra con --include ID; tarvo analizar --ids muestra los ID.",
                  "What needs a look comes in with --include ID; tarvo scan --ids shows the IDs."}
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
