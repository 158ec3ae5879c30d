#include "TarvoCLI/PlanArguments.h"

#include "Platform/Folder.h"
#include "TarvoApp/Model/CleanupPlanning.h"
#include "TarvoCLI/Commands.h"

namespace tarvo {

using lumo::text;

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
    const auto words = [](std::string_view es, std::string_view en) { return std::string(text(es, en)); };
    command
        .add_option(
            "--include", gather(arguments.include),
            words("incluir también esto, que conviene mirar antes", "also include this, which needs a look"))
        ->type_name("ID")
        ->expected(1)
        ->take_all();
    command
        .add_option("--only", gather(arguments.only),
                    words("solo esto; con --only= nada", "only this; nothing with --only="))
        ->type_name("ID")
        ->expected(1)
        ->take_all();
    command.add_flag("--dependencies,--dependencias", arguments.includesActiveDependencies,
                     words("incluir las dependencias de proyectos con cambios recientes",
                           "include the dependencies of recently changed projects"));
    command
        .add_option("--active-days", inDecimal(arguments.activeDays),
                    words("días que un proyecto sigue activo tras un cambio",
                          "days a project stays active after a change"))
        ->check(isDecimal(5, "«{}» no es un número de días", "“{}” is no number of days"))
        ->type_name("N");
    command
        .add_option("--protect", gather(arguments.protectedFolders),
                    words("no tocar esta carpeta", "do not touch this folder"))
        ->type_name(words("CARPETA", "DIR"))
        ->expected(1)
        ->take_all();
    command
        .add_option("--exclude-project", gather(arguments.excludedProjects),
                    words("dejar fuera este proyecto", "leave this project out"))
        ->type_name(words("CARPETA", "DIR"))
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
