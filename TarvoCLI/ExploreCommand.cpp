#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/ExplorerSession.h"
#include "TarvoCLI/NamedPath.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Exploring/UsageExport.h"

#include <expected>
#include <memory>
#include <optional>
#include <utility>

namespace tarvo {

using lumo::NamedTree;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

struct ExploreArguments {
    std::string path;
    std::optional<std::string> exportTo;
    std::optional<std::int64_t> olderThanDays;
};

std::expected<std::shared_ptr<NamedTree>, ExitCode> treeFromFile(const std::string& path) {
    const auto refused = [&](const std::string& reason) {
        return std::unexpected(complain(lumo::printable(path) + ": " + reason, ExitCode::usage));
    };
    const auto document = platform::readWhole(path, largestExport);
    if (!document) {
        return refused(lumo::reasonText(document.error()));
    }
    auto tree = treeFromExport(*document, NamedTree::Lengths::kept);
    if (!tree) {
        return refused(tree.error().message);
    }
    return std::shared_ptr<NamedTree>(std::move(*tree));
}

/// What is written to the file, or to standard output for "-".
ExitCode save(const NamedTree& tree, const std::string& file) {
    const auto writeTo = [&](const platform::TakePiece& take) {
        return exportUsage(tree, TARVO_VERSION, platform::now(), [&](std::string_view piece) {
            return !platform::wasInterrupted() && take(piece);
        });
    };
    if (file == "-") {
        ExitCode code = ExitCode::done;
        const bool isWhole =
            writeTo([&](std::string_view piece) { return (code = print(piece)) == ExitCode::done; });
        return isWhole || code != ExitCode::done ? code : ExitCode::interrupted;
    }
    const auto saved = platform::replaceInPieces(file, writeTo);
    if (!saved && platform::wasInterrupted()) {
        return ExitCode::interrupted;
    }
    if (!saved) {
        return complain(Words{"no he podido guardar en {}: {}; elige otro lugar con --export",
                              "could not save to {}: {}; choose another place with --export"}
                            .with(lumo::printable(file), lumo::reasonText(saved.error())),
                        ExitCode::failed);
    }
    return ExitCode::done;
}

ExitCode exportFolder(const std::string& path, const std::string& file, const Invocation& invocation) {
    NamedTree tree(path, NamedTree::Lengths::kept);
    const bool isWhole = watchWalk(
        invocation,
        [&](const lumo::FileTree::Watch& watch) {
            lumo::measureInto(tree, path, NamedTree::root, watch.progress, watch.stop);
        },
        [&] { return Words{"Midiendo {}", "Measuring {}"}.with(lumo::printable(path)); });
    return isWhole ? save(tree, file) : ExitCode::interrupted;
}

ExitCode runExplore(const ExploreArguments& arguments, const Invocation& invocation) {
    const auto path = arguments.path.empty() ? std::expected<std::string, ExitCode>(invocation.home)
                                             : givenPath(arguments.path, invocation);
    if (!path) {
        return path.error();
    }
    if (!arguments.exportTo &&
        !(platform::isTerminal(platform::Stream::input) && platform::isTerminal(platform::Stream::output))) {
        return complain(Words{"explorar necesita un terminal; tarvo carpeta RUTA dice lo mismo sin él",
                              "explore needs a terminal; tarvo folder PATH tells the same without one"}
                            .in(),
                        ExitCode::usage);
    }
    if (arguments.exportTo && arguments.olderThanDays) {
        return complain(Words{"--older es para mirar: una exportación lo lleva todo",
                              "--older is for looking: an export has everything in it"}
                            .in(),
                        ExitCode::usage);
    }
    if (platform::isFolderThroughLinks(*path)) {
        return arguments.exportTo ? exportFolder(*path, *arguments.exportTo, invocation)
                                  : explore({.tree = std::make_shared<NamedTree>(*path),
                                             .isExport = false,
                                             .olderThanDays = arguments.olderThanDays},
                                            invocation);
    }
    const auto tree = treeFromFile(*path);
    if (!tree) {
        return tree.error();
    }
    return arguments.exportTo
               ? save(**tree, *arguments.exportTo)
               : explore({.tree = *tree, .isExport = true, .olderThanDays = arguments.olderThanDays},
                         invocation);
}

} // namespace

void addExploreCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(
        app, "explorar", "explore", "recorrer carpetas en el terminal: qué pesa, qué es, y apartarlo",
        "walk through folders in the terminal: what weighs, what it is, setting it aside");
    const auto arguments = std::make_shared<ExploreArguments>();
    command
        ->add_option("path", wordInto(arguments->path),
                     Words{"qué carpeta; si no, la personal; o un fichero de --export, de ncdu o de gdu",
                           "which folder; otherwise the home; or a file of --export, ncdu or gdu"}
                         .in())
        ->type_name("")
        ->option_text(Words{"RUTA", "PATH"}.in());
    command
        ->add_option("--export", arguments->exportTo,
                     Words{"en vez de mostrarlo, guardarlo en el formato de ncdu; - es la salida",
                           "instead of showing it, save it in ncdu's format; - is standard output"}
                         .in())
        ->type_name(Words{"FICHERO", "FILE"}.in());
    addOlderOption(*command, arguments->olderThanDays,
                   {"mostrar al principio solo lo que lleve tantos días sin cambiar",
                    "show at first only what did not change for that many days"});
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runExplore(*arguments, invocation); };
    });
}

} // namespace tarvo
