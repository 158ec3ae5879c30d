#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "Platform/CheckedSum.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoCLI/Table.h"

#include <fmt/format.h>

#include <memory>

namespace tarvo {

using lumo::PlanEntry;
using lumo::text;

namespace {

struct PlanCommandArguments {
    ReportSource source;
    PlanArguments plan;
};

/// What the entry does, for a person: it is deleted, run by a tool, or set aside.
std::string whatHappens(const PlanEntry& entry) {
    if (entry.skipReason) {
        return lumo::printable(*entry.skipReason);
    }
    if (const auto* command = std::get_if<lumo::method::Command>(&entry.action.method)) {
        return lumo::printable(fmt::format("{}", fmt::join(command->words, " ")));
    }
    return std::string(entry.action.safety == lumo::Safety::safe
                           ? text("se borra", "is deleted")
                           : text("se aparta 7 días", "is set aside for 7 days"));
}

std::string section(std::string_view heading, const std::vector<PlanEntry>& entries, bool isSkipped,
                    const Invocation& invocation) {
    Table table({{.align = Align::right, .tint = isSkipped ? Tint::review : Tint::safe},
                 {.mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true}});
    std::int64_t sum = 0;
    for (const PlanEntry& entry : entries) {
        if (entry.skipReason.has_value() == isSkipped) {
            sum = lumo::checkedSum(sum, entry.action.estimatedBytes);
            table.add({lumo::ByteFormat::string(entry.action.estimatedBytes),
                       lumo::printable(entry.action.title), whatHappens(entry),
                       lumo::printable(entry.action.id)});
        }
    }
    if (table.isEmpty()) {
        return {};
    }
    return tinted(heading, Tint::strong, invocation) + "  " + lumo::ByteFormat::string(sum) + "\n" +
           table.lines(2, outputColumns(), invocation) + "\n";
}

std::string textOfPlan(const std::vector<PlanEntry>& entries, const Invocation& invocation) {
    const std::string shown = section(text("Se limpiaría", "Would be cleaned"), entries, false, invocation) +
                              section(text("Se queda fuera", "Left out"), entries, true, invocation);
    if (shown.empty()) {
        return std::string(text("No hay nada que limpiar.\n", "There is nothing to clean.\n"));
    }
    return shown +
           tinted(text("Lo que conviene mirar antes entra con --include ID; tarvo analizar lo muestra.",
                       "What needs a look comes in with --include ID; tarvo scan shows it."),
                  Tint::faint, invocation) +
           "\n";
}

ExitCode runPlan(const PlanCommandArguments& arguments, const Invocation& invocation) {
    const auto options = cleanupOptions(arguments.plan, invocation);
    if (!options) {
        return options.error();
    }
    const auto report = reportFrom(arguments.source, invocation);
    if (!report) {
        return report.error();
    }
    const std::vector<PlanEntry> entries = planFor(*report, *options, invocation);
    return print(invocation.isJson ? lumo::dumpJson(lumo::encode(entries), lumo::JsonLayout::indented) + "\n"
                                   : textOfPlan(entries, invocation));
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
