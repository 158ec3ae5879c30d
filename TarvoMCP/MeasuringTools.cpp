#include "TarvoMCP/Tools.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/History/SnapshotStore.h"
#include "LumoCore/Scanning/FolderContents.h"
#include "Platform/Clock.h"
#include "TarvoMCP/Answers.h"
#include "TarvoMCP/Lines.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Showing/GrowthTexts.h"

#include <fmt/format.h>

namespace tarvo::mcp {

using lumo::Words;
namespace FolderContents = lumo::FolderContents;
namespace platform = lumo::platform;

namespace {

std::string analysisText(const lumo::ScanReport& report, const Analysis& analysis, const Page& page) {
    std::string text =
        lumo::DiskSummary::templateText(report, analysis.recoverableBytes, platform::now()) + "\n" +
        Words{"Disco: {} libres de {}.", "Disk: {} free of {}."}.with(
            lumo::ByteFormat::string(analysis.availableBytes), lumo::ByteFormat::string(analysis.totalBytes));
    text += firstLines(analysis.items, [](const AnalyzedItem& item) {
        return itemLine(
            item.name, item.bytes,
            fmt::format("{} ({})", named(item.id),
                        lumo::EnumNames<lumo::Safety>::values[static_cast<std::size_t>(item.safety)]));
    });
    text += moreLine(analysis.moreItems, page);
    if (!analysis.projects.empty()) {
        text += "\n" + Words{"Proyectos en esta página: {}; después, {} más, {}.",
                             "Projects on this page: {}; after it, {} more, {}."}
                           .with(analysis.projects.size(), analysis.moreProjects.count,
                                 lumo::ByteFormat::string(analysis.moreProjects.bytes));
    }
    if (!analysis.unknownFolders.empty()) {
        text +=
            "\n" + Words{"Carpetas que nadie conoce: {}; después, {} más, {}. explain_folder las explica.",
                         "Folders that nobody recognizes: {}; after them, {} more, {}. explain_folder "
                         "explains them."}
                       .with(analysis.unknownFolders.size(), analysis.moreUnknownFolders.count,
                             lumo::ByteFormat::string(analysis.moreUnknownFolders.bytes));
    }
    return text;
}

ToolAnswer analyze(Workspace& workspace, const ToolCall& call) {
    const auto isQuick = flagArgument(call.arguments, "quick");
    auto page = pageArgument(call.arguments, usualItems);
    if (!isQuick || !page) {
        return problem(isQuick ? page.error() : isQuick.error());
    }
    // The next page is of the same measuring.
    const auto report =
        page->offset > 0 && !*isQuick ? workspace.recentReport(call) : workspace.scan(*isQuick, call);
    if (!report) {
        return problem(report.error());
    }
    const std::int64_t recoverable = recoverableBytes(*report, workspace.desk());
    const Analysis analysis =
        fitted(*page, [&](const Page& part) { return analysisOf(**report, *isQuick, recoverable, part); });
    return {.text = analysisText(**report, analysis, *page), .structured = lumo::encode(analysis)};
}

/// So many entries of a folder can be reached page by page; of what lies in them only whether there is any.
constexpr platform::BreakdownLimits listed{.mostParts = 100'000, .mostPartsBelow = 1};

ToolAnswer listFolder(Workspace& workspace, const ToolCall& call) {
    const auto given = textArgument(call.arguments, "path");
    auto page = pageArgument(call.arguments, usualItems);
    if (!given || !page) {
        return problem(given ? page.error() : given.error());
    }
    const auto path = workspace.pathInHome(given->value_or(""));
    if (!path) {
        return problem(path.error());
    }
    platform::WalkProgress walked;
    const lumo::FileTree::Watch watch{&walked, call.stop};
    FolderContents::Opened opened;
    whileTicking(
        [&] {
            call.progress({.done = static_cast<double>(walked.entries),
                           .message = named(lumo::abbreviated(*path, workspace.home()))});
        },
        [&] { opened = FolderContents::openOne(*path, watch, listed); });
    if (call.stop.stop_requested()) {
        return stopped();
    }
    const FolderAnswer answer = fitted(
        *page, [&](const Page& part) { return contentsOf(*path, opened.breakdown, opened.listing, part); });
    return {.text = fmt::format("{}: {}", named(lumo::abbreviated(*path, workspace.home())),
                                lumo::ByteFormat::string(answer.bytes)) +
                    firstLines(answer.items,
                               [](const ListedEntry& item) {
                                   return itemLine(item.name + (item.isDirectory ? "/" : ""), item.bytes);
                               }) +
                    moreLine(answer.moreItems, *page),
            .structured = lumo::encode(answer)};
}

/// What there is to compare with, in an agent's terms.
std::string nothingToCompare() {
    return Words{
        "Aún no hay un análisis guardado de hace un día con el que comparar: lo guardan los análisis "
        "del usuario, no los de este servidor.",
        "There is no stored scan from a day ago to compare with yet: the user's own scans store one, "
        "those of this server do not."}
        .in();
}

ToolAnswer whatGrew(Workspace& workspace, const ToolCall& call) {
    auto page = pageArgument(call.arguments, usualItems);
    if (!page) {
        return problem(page.error());
    }
    const auto report = workspace.recentReport(call);
    if (!report) {
        return problem(report.error());
    }
    const auto stored = lumo::SnapshotStore(workspace.home()).read();
    if (!stored) {
        return problem(Words{"No he podido leer los análisis anteriores: {}.",
                             "The earlier scans could not be read: {}."}
                           .with(lumo::reasonText(stored.error())));
    }
    const lumo::Growth growth =
        lumo::GrowthTracker::growthOf(snapshotNow(**report, workspace.desk()), *stored);
    const GrowthAnswer answer = fitted(*page, [&](const Page& part) {
        GrowthAnswer made{.since = growth.since, .items = growth.items, .moreItems = {}};
        made.moreItems = cut(made.items, part, [](const lumo::GrowthItem& item) { return item.delta; });
        return made;
    });
    std::string said = nothingToCompare();
    if (growth.since) {
        said = growth.items.empty()
                   ? Words{"Nada ha crecido más de 200 MB.", "Nothing has grown more than 200 MB."}.in()
                   : Words{"Ha crecido:", "This grew:"}.in() +
                         firstLines(answer.items,
                                    [](const lumo::GrowthItem& item) {
                                        return itemLine(growthName(item.id, item.name), item.delta);
                                    }) +
                         moreLine(answer.moreItems, *page);
    }
    return {.text = said, .structured = lumo::encode(answer)};
}

} // namespace

std::vector<Tool> measuringTools(const std::shared_ptr<Workspace>& workspace) {
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
         .input = pagedArguments(
             {{"quick",
               schema("boolean",
                      Words{"sin proyectos ni Descargas, Escritorio, Documentos e Imágenes: más rápido",
                            "without projects, Downloads, Desktop, Documents and Pictures: "
                            "faster"}
                          .in())}}),
         .output =
             schemaOf<Analysis>({{"recoverableBytes", Words{"lo que una limpieza libera ahora sin riesgo",
                                                            "what a cleanup frees now with no risk"}
                                                          .in()}}),
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
         .input = pagedArguments({pathArgument()}),
         .output = schemaOf<FolderAnswer>(
             {{"skipped", Words{"carpetas que se pasan de largo: contienen casi todo",
                                "folders gone straight through: they hold nearly everything"}
                              .in()}}),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return listFolder(*workspace, call); }});
    tools.push_back(
        {.name = "what_grew",
         .title = Words{"Ver qué ha crecido", "See what grew"}.in(),
         .description = Words{"Compara el disco con un análisis de hace un día o más y dice qué ha crecido.",
                              "Compares the disk with a scan from a day ago or earlier and tells what grew."}
                            .in(),
         .input = pagedArguments({}),
         .output = schemaOf<GrowthAnswer>(),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return whatGrew(*workspace, call); }});
    return tools;
}

} // namespace tarvo::mcp
