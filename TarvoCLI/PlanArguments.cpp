#include "TarvoCLI/PlanArguments.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Commands.h"
#include "TarvoModel/Flows/SettingChange.h"

namespace tarvo {

using lumo::Words;

void addItemOption(CLI::App& command, std::vector<std::string>& items) {
    command
        .add_option("--item", wordsInto(items),
                    Words{"esto que encontró tarvo buscar; sin otra cosa, solo esto",
                          "this that tarvo find found; without anything else, only this"}
                        .in())
        ->type_name("ID")
        ->expected(1)
        ->take_all();
}

void addPlanOptions(CLI::App& command, PlanArguments& arguments) {
    addItemOption(command, arguments.items);
    command
        .add_option(
            "--include", wordsInto(arguments.include),
            Words{"incluir también esto, que conviene mirar antes", "also include this, which needs a look"}
                .in())
        ->type_name("ID")
        ->expected(1)
        ->take_all();
    command
        .add_option("--only", wordsInto(arguments.only),
                    Words{"solo esto; con --only= nada", "only this; nothing with --only="}.in())
        ->type_name("ID")
        ->expected(1)
        ->take_all();
    command.add_flag("--dependencies,--dependencias", arguments.includesActiveDependencies,
                     Words{"incluir las dependencias de proyectos con cambios recientes",
                           "include the dependencies of recently changed projects"}
                         .in());
    command
        .add_option("--active-days", inDecimal(arguments.activeDays),
                    Words{"días tras un cambio en los que no se tocan las dependencias de un proyecto",
                          "days after a change in which a project's dependencies are left alone"}
                        .in())
        ->check(isDecimal(5, "«{}» no es un número de días", "“{}” is no number of days"))
        ->type_name("N");
    command
        .add_option("--protect", wordsInto(arguments.protectedFolders),
                    Words{"no tocar esta carpeta", "do not touch this folder"}.in())
        ->type_name(Words{"CARPETA", "DIR"}.in())
        ->expected(1)
        ->take_all();
    command
        .add_option("--exclude-project", wordsInto(arguments.excludedProjects),
                    Words{"dejar fuera este proyecto", "leave this project out"}.in())
        ->type_name(Words{"CARPETA", "DIR"}.in())
        ->expected(1)
        ->take_all();
}

bool asksForItemsAlone(const PlanArguments& arguments) {
    return !arguments.items.empty() && arguments.include.empty() && arguments.only.empty() &&
           !arguments.includesActiveDependencies;
}

PlanRequest planRequest(const PlanArguments& arguments) {
    PlanRequest request{.report = nullptr,
                        .include = {arguments.include.begin(), arguments.include.end()},
                        .items = arguments.items,
                        .includesActiveDependencies = arguments.includesActiveDependencies,
                        .activeDays = arguments.activeDays,
                        .excludedProjects = arguments.excludedProjects};
    if (!arguments.only.empty()) {
        request.only.emplace(arguments.only.begin(), arguments.only.end());
        request.only->erase(""); // An empty one only says that there is a set.
    }
    if (!arguments.protectedFolders.empty()) {
        request.protectedFolders = arguments.protectedFolders;
    }
    return request;
}

std::optional<ExitCode> refuseUntrustedPreferences(const Desk& desk) {
    const std::optional<std::string> problem = preferencesProblem(desk);
    return problem ? std::optional(complain(*problem, ExitCode::failed)) : std::nullopt;
}

std::expected<Plan, ExitCode> planOrComplain(const PlanRequest& request, const Desk& desk) {
    if (const auto unknown = unknownIDs(request)) {
        return std::unexpected(complain(*unknown, ExitCode::usage));
    }
    Plan plan = planned(request, desk);
    if (plan.problem) {
        return std::unexpected(complain(*plan.problem, ExitCode::failed));
    }
    if (!plan.unknownItems.empty()) {
        return std::unexpected(complain(unknownItemsText(plan.unknownItems), ExitCode::usage));
    }
    if (request.protectedFolders) {
        if (const auto missing = missingFolderText(*request.protectedFolders, desk.home)) {
            complain(*missing, ExitCode::done);
        }
    }
    return plan;
}

} // namespace tarvo
