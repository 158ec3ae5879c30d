#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/FolderText.h"
#include "TarvoCLI/NamedPath.h"
#include "TarvoCLI/Watching.h"

#include <fmt/format.h>

#include <memory>

namespace tarvo {

using lumo::Words;
namespace FolderContents = lumo::FolderContents;

namespace {

FolderReport reportOn(const std::string& path, const std::string& home, const lumo::FileTree::Watch& watch) {
    FolderContents::Opened opened = FolderContents::openOne(path, watch);
    return {.listing = std::move(opened.listing),
            .breakdown = std::move(opened.breakdown),
            .location = lumo::folderLocation(path, lumo::HomePlaces::ofThisMachine(home)),
            .canOpen = FolderContents::canOpen({path})};
}

ExitCode runFolder(const std::string& word, const Invocation& invocation) {
    const auto path = givenPath(word, invocation);
    if (!path) {
        return path.error();
    }
    FolderReport report;
    if (!watchWalk(
            invocation,
            [&](const lumo::FileTree::Watch& watch) { report = reportOn(*path, invocation.home, watch); },
            [&] {
                return fmt::format("{} {}", Words{"Midiendo", "Measuring"}.in(),
                                   lumo::printable(lumo::abbreviated(*path, invocation.home)));
            })) {
        return ExitCode::interrupted;
    }
    if (invocation.isJson) {
        return print(lumo::dumpJson(lumo::encode(report), lumo::JsonLayout::indented) + "\n");
    }
    return print(folderText(*path, report, invocation));
}

} // namespace

void addFolderCommand(CLI::App& app, Action& chosen) {
    CLI::App* command =
        addCommand(app, "carpeta", "folder", "qué hay dentro de una carpeta, lo más grande primero",
                   "what is inside a folder, largest first");
    const auto path = std::make_shared<std::string>();
    command
        ->add_option(Words{"ruta", "path"}.in(), wordInto(*path),
                     Words{"la carpeta, o un archivo", "the folder, or a file"}.in())
        ->type_name("")
        ->option_text(Words{"RUTA", "PATH"}.in())
        ->required();
    command->callback([path, &chosen] {
        chosen = [path](const Invocation& invocation) { return runFolder(*path, invocation); };
    });
}

} // namespace tarvo
