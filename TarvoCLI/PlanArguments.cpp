#include "TarvoCLI/PlanArguments.h"

#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"
#include "TarvoCLI/Commands.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

namespace tarvo {

using lumo::Words;

namespace {

std::vector<std::string> absolute(const std::vector<std::string>& folders) {
    std::vector<std::string> paths;
    for (const std::string& folder : folders) {
        paths.push_back(lumo::platform::absolutePath(folder).value_or(folder));
    }
    return paths;
}

/// Collects the words of an option as they are: the library would take one in square brackets apart.
CLI::callback_t gather(std::vector<std::string>& words) {
    return [&words](const CLI::results_t& results) {
        words = results;
        return true;
    };
}

} // namespace

void addPlanOptions(CLI::App& command, PlanArguments& arguments) {
    command
        .add_option(
            "--include", gather(arguments.include),
            Words{"incluir también esto, que conviene mirar antes", "also include this, which needs a look"}
                .in())
        ->type_name("ID")
        ->expected(1)
        ->take_all();
    command
        .add_option("--only", gather(arguments.only),
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
                    Words{"días que un proyecto sigue activo tras un cambio",
                          "days a project stays active after a change"}
                        .in())
        ->check(isDecimal(5, "«{}» no es un número de días", "“{}” is no number of days"))
        ->type_name("N");
    command
        .add_option("--protect", gather(arguments.protectedFolders),
                    Words{"no tocar esta carpeta", "do not touch this folder"}.in())
        ->type_name(Words{"CARPETA", "DIR"}.in())
        ->expected(1)
        ->take_all();
    command
        .add_option("--exclude-project", gather(arguments.excludedProjects),
                    Words{"dejar fuera este proyecto", "leave this project out"}.in())
        ->type_name(Words{"CARPETA", "DIR"}.in())
        ->expected(1)
        ->take_all();
}

std::expected<lumo::CleanupOptions, ExitCode> cleanupOptions(const PlanArguments& arguments,
                                                             const Invocation& invocation) {
    const Preferences preferences = Preferences::load(invocation.home);
    if (const std::optional<std::string> problem = preferences.problem()) {
        return std::unexpected(complain(*problem, ExitCode::failed));
    }
    lumo::CleanupOptions options = storedOptions(preferences);
    options.include = {arguments.include.begin(), arguments.include.end()};
    if (!arguments.only.empty()) {
        options.only.emplace(arguments.only.begin(), arguments.only.end());
        options.only->erase(""); // An empty one only says that there is a set.
    }
    options.includeActiveDependencies = arguments.includesActiveDependencies;
    options.activeProjectDays = arguments.activeDays.value_or(options.activeProjectDays);
    if (!arguments.protectedFolders.empty()) {
        options.protectedFolders = absolute(arguments.protectedFolders);
    }
    options.excludedProjects = absolute(arguments.excludedProjects);
    return options;
}

} // namespace tarvo
