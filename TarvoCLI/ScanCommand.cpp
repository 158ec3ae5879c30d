#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/StateFile.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/ReportText.h"
#include "TarvoCLI/WatchedScan.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Flows/ScanPass.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <memory>
#include <optional>

namespace tarvo {

using lumo::Words;

namespace {

struct ScanArguments {
    bool isQuick = false;
    bool leavesOutProjects = false;
    bool leavesOutAppCaches = false;
    bool storesNoSnapshot = false;
    Identifiers identifiers = Identifiers::hidden;
    std::optional<std::int64_t> minimumUnclassified;
    std::optional<std::string> output;
};

ScanPass passOf(const ScanArguments& arguments) {
    return arguments.isQuick ? ScanPass::quick : ScanPass::full;
}

lumo::ScanOptions optionsFrom(const ScanArguments& arguments, const std::string& home) {
    lumo::ScanOptions options = optionsFor(passOf(arguments), home);
    options.includeProjects = options.includeProjects && !arguments.leavesOutProjects;
    options.discoverAppCaches = !arguments.leavesOutAppCaches;
    options.unclassifiedMinimumBytes =
        arguments.minimumUnclassified.value_or(options.unclassifiedMinimumBytes);
    return options;
}

ExitCode runScan(const ScanArguments& arguments, const Invocation& invocation) {
    const Desk desk = deskOf(invocation, "scan");
    const std::int64_t purged = purgeExpired(desk, std::chrono::seconds(0));
    auto measured = watchedScan(rulesFor(passOf(arguments), invocation.home),
                                optionsFrom(arguments, invocation.home), invocation);
    if (!measured) {
        return measured.error();
    }
    const auto report = std::make_shared<const lumo::ScanReport>(std::move(*measured));
    if (!arguments.isQuick && !arguments.storesNoSnapshot) {
        storeSnapshot(snapshotNow(*report, desk), desk);
    }
    std::string json;
    if (invocation.isJson || arguments.output) {
        json = lumo::dumpJson(lumo::encode(*report), lumo::JsonLayout::indented) + "\n";
    }
    const ExitCode printed =
        print(invocation.isJson ? json
                                : (purged > 0 ? purgedText(purged) + "\n" : std::string()) +
                                      reportText(*report, recoverableBytes(report, desk),
                                                 arguments.identifiers, invocation));
    if (!arguments.output) {
        return printed;
    }
    // Readable for whom the user's mask allows, like any file that a command is told to write.
    constexpr unsigned mode = 0666;
    if (const auto saved = lumo::platform::replaceWhole(*arguments.output, json, mode); !saved) {
        return complain(Words{"no he podido guardar en {}: {}; elige otro lugar con --output",
                              "could not save to {}: {}; choose another place with --output"}
                            .with(lumo::printable(*arguments.output), lumo::reasonText(saved.error())),
                        ExitCode::failed);
    }
    return printed;
}

} // namespace

void addScanCommand(CLI::App& app, Action& chosen) {
    CLI::App* command =
        addCommand(app, "analizar", "scan", "qué llena tu carpeta personal y qué se puede liberar",
                   "what fills your home folder and what can be freed");
    const auto arguments = std::make_shared<ScanArguments>();
    command->add_flag(
        "--quick", arguments->isQuick,
        Words{"solo un primer vistazo: sin proyectos ni Descargas, Escritorio, Documentos e Imágenes",
              "only a first look: without projects, Downloads, Desktop, Documents and Pictures"}
            .in());
    command->add_flag("--no-projects", arguments->leavesOutProjects,
                      Words{"no buscar proyectos", "do not look for projects"}.in());
    command
        ->add_option("--min-unclassified", inDecimal(arguments->minimumUnclassified),
                     Words{"carpeta sin clasificar más pequeña que se muestra, en bytes",
                           "smallest unclassified folder to report, in bytes"}
                         .in())
        ->check(isDecimal(18, "«{}» no es un número de bytes", "“{}” is no number of bytes"))
        ->type_name("BYTES");
    command->add_flag("--no-app-caches", arguments->leavesOutAppCaches,
                      Words{"no añadir las cachés de las aplicaciones instaladas",
                            "do not add the caches of installed applications"}
                          .in());
    command->add_flag("--no-snapshot", arguments->storesNoSnapshot,
                      Words{"no recordar lo que ocupa cada cosa para ver qué crece",
                            "do not remember what everything takes, to see what grows"}
                          .in());
    command->add_flag_callback(
        "--ids", [arguments] { arguments->identifiers = Identifiers::shown; },
        Words{"mostrar los identificadores que piden --include y --only",
              "show the identifiers that --include and --only take"}
            .in());
    command
        ->add_option(
            "--output", arguments->output,
            Words{"guardar también aquí el informe en JSON", "also save the report as JSON here"}.in())
        ->type_name(Words{"FICHERO", "FILE"}.in());
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runScan(*arguments, invocation); };
    });
}

} // namespace tarvo
