#include "LumoCore/Basics/Words.h"
#include "TarvoMCP/Tools.h"

#include "LumoAI/ExplanationService.h"
#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/History/SnapshotStore.h"
#include "LumoCore/Scanning/FolderContents.h"
#include "Platform/Clock.h"
#include "TarvoMCP/Answers.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/HelpReply.h"
#include "TarvoModel/Flows/ModelChoice.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/ExplanationTexts.h"
#include "TarvoModel/Showing/GrowthTexts.h"

#include <fmt/format.h>

#include <algorithm>

namespace tarvo::mcp {

using lumo::Words;
namespace FolderContents = lumo::FolderContents;
namespace platform = lumo::platform;

namespace {

ToolAnswer wrongArguments(const lumo::Failure& failure) {
    return problem(failure.message);
}

ToolAnswer stopped() {
    return problem(Words{"Interrumpido.", "Interrupted."}.in());
}

ToolAnswer analyze(Workspace& workspace, const ToolCall& call) {
    const auto isQuick = flagArgument(call.arguments, "quick");
    if (!isQuick) {
        return wrongArguments(isQuick.error());
    }
    const auto report = workspace.scan(*isQuick, call);
    if (!report) {
        return problem(report.error().message);
    }
    return {.text = lumo::DiskSummary::templateText(**report, recoverableBytes(*report, workspace.desk()),
                                                    platform::now()),
            .structured = lumo::encode(analysisOf(**report, *isQuick))};
}

ToolAnswer listFolder(Workspace& workspace, const ToolCall& call) {
    const auto given = textArgument(call.arguments, "path");
    if (!given) {
        return wrongArguments(given.error());
    }
    const auto path = workspace.pathInHome(given->value_or(""));
    if (!path) {
        return problem(path.error().message);
    }
    platform::WalkProgress walked;
    const lumo::FileTree::Watch watch{&walked, call.stop};
    FolderContents::Opened opened;
    whileTicking([&] { call.progress(walked.entries, lumo::abbreviated(*path, workspace.home())); },
                 [&] { opened = FolderContents::openOne(*path, watch); });
    if (call.stop.stop_requested()) {
        return stopped();
    }
    return {.text = fmt::format("{}: {}", lumo::printable(lumo::abbreviated(*path, workspace.home())),
                                lumo::ByteFormat::string(opened.breakdown.usage.allocatedBytes)),
            .structured = lumo::encode(contentsOf(*path, opened.breakdown, opened.listing))};
}

/// All that a person is shown of it, so that an agent does not pass on half of it.
std::string textOf(const lumo::Explanation& explanation) {
    std::string text;
    for (const ExplanationLine& line : explanationLines(explanation)) {
        text += fmt::format("{}: {}\n", line.label, lumo::printable(line.text));
    }
    return text +
           (explanation.source == lumo::Explanation::Source::ai
                ? Words{"Escrito por un modelo de este equipo, que puede equivocarse; el riesgo y qué hacer "
                        "los pone Tarvo AI.",
                        "Written by a model on this computer, which may be wrong; the risk and what to do "
                        "come from Tarvo AI."}
                      .in()
                : Words{"Lo dicen reglas fijas, no un modelo.", "Said by fixed rules, not by a model."}.in());
}

ToolAnswer explainFolder(Workspace& workspace, const ToolCall& call) {
    const auto given = textArgument(call.arguments, "path");
    if (!given) {
        return wrongArguments(given.error());
    }
    const auto path = workspace.pathInHome(given->value_or(""));
    if (!path) {
        return problem(path.error().message);
    }
    const auto model = chosenModel(Preferences::load(workspace.home()));
    const auto explanations =
        lumo::ExplanationService::explain({*path}, *model,
                                          {.home = workspace.home(),
                                           .cacheHome = workspace.home(),
                                           .installed = lumo::Installed::ofThisMachine(workspace.home()),
                                           .now = platform::now(),
                                           .watch = {nullptr, call.stop}});
    if (explanations.empty()) {
        return stopped();
    }
    const lumo::Explanation& explanation = explanations.begin()->second;
    return {.text = textOf(explanation), .structured = lumo::encode(explanation)};
}

ToolAnswer whatGrew(Workspace& workspace, const ToolCall& call) {
    const auto report = workspace.recentReport(call);
    if (!report) {
        return problem(report.error().message);
    }
    const auto stored = lumo::SnapshotStore(workspace.home()).read();
    if (!stored) {
        return problem(Words{"No he podido leer los análisis anteriores: {}.",
                             "The earlier scans could not be read: {}."}
                           .with(lumo::reasonText(stored.error())));
    }
    const lumo::Growth growth = lumo::GrowthTracker::growthOf(**report, *stored);
    std::string said = noBaselineText(*stored);
    if (growth.since) {
        said = growth.items.empty()
                   ? Words{"Nada ha crecido más de 200 MB.", "Nothing has grown more than 200 MB."}.in()
                   : fmt::format("{}: +{}", lumo::printable(growth.items.front().name),
                                 lumo::ByteFormat::string(growth.items.front().delta));
    }
    return {.text = said, .structured = lumo::encode(growth)};
}

ToolAnswer propose(Workspace& workspace, const ToolCall& call) {
    const auto include = textsArgument(call.arguments, "include");
    const auto dependencies = flagArgument(call.arguments, "dependencies");
    if (!include || !dependencies) {
        return wrongArguments(include ? dependencies.error() : include.error());
    }
    if (const auto trouble = preferencesProblem(workspace.desk())) {
        return problem(*trouble);
    }
    const auto report = workspace.recentReport(call);
    if (!report) {
        return problem(report.error().message);
    }
    ProposedPlan plan{.handle = {},
                      .request = {.report = *report,
                                  .include = {include->begin(), include->end()},
                                  .includesActiveDependencies = *dependencies,
                                  .recentProjectHint = Words{" (inclúyelo con dependencies: true)",
                                                             " (include it with dependencies: true)"}
                                                           .in()},
                      .plan = {}};
    if (const auto unknown = unknownIDs(plan.request)) {
        return problem(*unknown);
    }
    plan.plan = planned(plan.request, workspace.desk());
    const ProposedPlan& kept = workspace.keep(std::move(plan));
    const auto actions = lumo::CleanupPlanner::actionsOf(kept.plan.entries);
    return {.text = actions.empty()
                        ? Words{"No hay nada que limpiar ahora.", "There is nothing to clean now."}.in()
                        : confirmationMessage(sharesOf(actions)),
            .structured = lumo::encode(proposalOf(kept))};
}

std::string setAsideText(std::size_t count) {
    return count == 1 ? Words{"1 elemento apartado.", "1 item is set aside."}.in()
                      : Words{"{} elementos apartados.", "{} items are set aside."}.with(count);
}

ToolAnswer listSetAside(const Workspace& workspace, const ToolCall&) {
    const auto held = heldItems(workspace.desk());
    if (!held) {
        return problem(held.error().message);
    }
    return {.text = held->items.empty()
                        ? Words{"No hay nada apartado.", "Nothing is in Recently Cleaned."}.in()
                        : setAsideText(held->items.size()),
            .structured = lumo::encode(*held)};
}

ToolAnswer help(const ToolCall& call) {
    const auto question = textArgument(call.arguments, "question");
    if (!question) {
        return wrongArguments(question.error());
    }
    // The agent is a model itself.
    const lumo::HelpAnswer answer = answerTo(question->value_or(""), {}).answer;
    return {.text = answer.text, .structured = lumo::encode(answer)};
}

JsonValue noArguments() {
    return schemaOf({});
}

JsonValue pathArgument() {
    return schemaOf({{"path",
                      schema("string", Words{"ruta en la carpeta personal, por ejemplo ~/Downloads",
                                             "path in the home folder, for example ~/Downloads"}
                                           .in()),
                      true}});
}

} // namespace

std::vector<Tool> lookingTools(const std::shared_ptr<Workspace>& workspace) {
    std::vector<Tool> tools;
    tools.push_back(
        {.name = "analyze_disk",
         .title = Words{"Analizar el disco", "Analyze the disk"}.in(),
         .description =
             Words{
                 "Mide la carpeta personal y dice qué ocupa sitio: qué se regenera solo (safe), qué hay que "
                 "mirar antes (review), qué se conserva (keep), proyectos con carpetas que se regeneran y "
                 "carpetas grandes que nadie conoce. No cambia nada.",
                 "Measures the home folder and tells what takes up space: what recreates itself (safe), what "
                 "needs a look first (review), what is kept (keep), projects with folders that can be "
                 "rebuilt, and large folders that nobody recognizes. Changes nothing."}
                 .in(),
         .input = schemaOf(
             {{"quick",
               schema("boolean",
                      Words{"sin proyectos ni Descargas, Escritorio, Documentos e Imágenes: más rápido",
                            "without projects, Downloads, Desktop, Documents and Pictures: "
                            "faster"}
                          .in())}}),
         .output = schemaOf<Analysis>(),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return analyze(*workspace, call); }});
    tools.push_back(
        {.name = "list_folder",
         .title = Words{"Ver qué hay en una carpeta", "See what is in a folder"}.in(),
         .description =
             Words{"Lista lo que hay en una carpeta de la carpeta personal, lo más grande primero, y "
                   "pasa de largo por carpetas que lo contienen casi todo.",
                   "Lists what is in a folder of the home folder, largest first, and goes straight "
                   "through folders that hold nearly everything."}
                 .in(),
         .input = pathArgument(),
         .output = schemaOf<FolderAnswer>(
             {{"skipped", Words{"carpetas que se pasan de largo: contienen casi todo",
                                "folders gone straight through: they hold nearly everything"}
                              .in()}}),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return listFolder(*workspace, call); }});
    tools.push_back(
        {.name = "explain_folder",
         .title = Words{"Explicar una carpeta", "Explain a folder"}.in(),
         .description =
             Words{
                 "Dice qué es una carpeta, de qué app es, cuánto riesgo tiene borrarla y qué conviene hacer.",
                 "Says what a folder is, which app it belongs to, how risky deleting it is and what to do "
                 "about it."}
                 .in(),
         .input = pathArgument(),
         .output = schemaOf<lumo::Explanation>(),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return explainFolder(*workspace, call); }});
    tools.push_back(
        {.name = "what_grew",
         .title = Words{"Ver qué ha crecido", "See what grew"}.in(),
         .description = Words{"Compara el disco con un análisis de hace un día o más y dice qué ha crecido.",
                              "Compares the disk with a scan from a day ago or earlier and tells what grew."}
                            .in(),
         .input = noArguments(),
         .output = schemaOf<lumo::Growth>(),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return whatGrew(*workspace, call); }});
    tools.push_back(
        {.name = "propose_cleanup",
         .title = Words{"Proponer una limpieza", "Propose a cleanup"}.in(),
         .description =
             Words{"Hace un plan de limpieza y lo devuelve con un identificador. No limpia nada: "
                   "para eso está clean, que antes pregunta al usuario.",
                   "Makes a cleanup plan and returns it with a handle. Cleans nothing: that is for "
                   "clean, which asks the user first."}
                 .in(),
         .input = schemaOf(
             {{"include",
               listOf(schema("string"),
                      Words{"identificadores de lo que hay que mirar antes y el usuario quiere incluir",
                            "ids of what needs a look that the user wants included"}
                          .in())},
              {"dependencies",
               schema("boolean", Words{"incluir dependencias de proyectos con cambios recientes",
                                       "include dependencies of recently changed projects"}
                                     .in())}}),
         .output = schemaOf<Proposal>(
             {{"plan", Words{"el identificador que pide clean", "the handle that clean takes"}.in()},
              {"fate", Words{"deletedAtOnce (se borra ya), setAside (se aparta {} días) o byItsOwnTool "
                             "(lo borra su herramienta)",
                             "deletedAtOnce, setAside for {} days, or byItsOwnTool"}
                           .with(lumo::Holding::retentionDays)}}),
         .hints = {.isIdempotent = false},
         .run = [workspace](const ToolCall& call) { return propose(*workspace, call); }});
    tools.push_back(
        {.name = "list_set_aside",
         .title = Words{"Ver lo apartado", "See what is set aside"}.in(),
         .description = Words{"Lista lo que las limpiezas apartaron y aún se puede devolver a su sitio.",
                              "Lists what cleanups set aside and can still be put back."}
                            .in(),
         .input = noArguments(),
         .output = schemaOf<HeldItems>(
             {{"id", Words{"el identificador que pide restore", "the id that restore takes"}.in()},
              {"original", Words{"dónde estaba y adónde vuelve", "where it was and goes back to"}.in()},
              {"expires", Words{"cuándo se borra solo", "when it is deleted by itself"}.in()}}),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return listSetAside(*workspace, call); }});
    tools.push_back(
        {.name = "help",
         .title = Words{"Ayuda de Tarvo AI", "Tarvo AI help"}.in(),
         .description = Words{"Responde con el texto de la ayuda a preguntas sobre Tarvo AI.",
                              "Answers questions about Tarvo AI with the text of its help."}
                            .in(),
         .input = schemaOf({{"question", schema("string"), true}}),
         .output = schemaOf<lumo::HelpAnswer>(
             {{"sources", Words{"identificadores de temas de la ayuda", "ids of help topics"}.in()}}),
         .hints = {},
         .run = [](const ToolCall& call) { return help(call); }});
    return tools;
}

std::string instructions(bool mayChange) {
    return Words{"Tarvo AI dice qué ocupa sitio en la carpeta personal y qué se puede borrar sin miedo. "
                 "Empieza "
                 "por analyze_disk. Todos los tamaños están en bytes.",
                 "Tarvo AI tells what takes up space in the home folder and what can go without fear. Begin "
                 "with analyze_disk. All sizes are in bytes."}
               .in() +
           (mayChange ? Words{" Para limpiar: propose_cleanup y luego clean, que pregunta al usuario por su "
                              "cuenta; no confirmes en su nombre.",
                              " To clean: propose_cleanup, then clean, which asks the user by itself; do not "
                              "confirm in their name."}
                            .in()
                      : Words{" Este servidor es de solo lectura: no limpia.",
                              " This server is read-only: it does not clean."}
                            .in());
}

} // namespace tarvo::mcp
