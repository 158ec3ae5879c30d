#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Inventories/SystemSpace.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/FindText.h"
#include "TarvoCLI/Paragraph.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Flows/Finding.h"

namespace tarvo {

using lumo::SystemSpace;
using lumo::Words;

namespace {

std::string snapshotsText(const std::vector<lumo::Date>& snapshots) {
    if (snapshots.size() == 1) {
        return Words{"1 instantánea local de Time Machine, del {}", "1 local Time Machine snapshot, from {}"}
            .with(lumo::momentText(snapshots.front()));
    }
    return Words{"{} instantáneas locales de Time Machine, la más antigua del {}",
                 "{} local Time Machine snapshots, the oldest from {}"}
        .with(snapshots.size(), lumo::momentText(snapshots.front()));
}

std::string textOfSpace(const SystemSpace& space) {
    if (space == SystemSpace()) {
        return paragraph(
            lumo::SystemWords{
                .macos = {"El sistema no guarda ahora espacio que libere solo: lo que ves ocupado sigue así "
                          "hasta que se limpia. (En un Mac suele haber algo; en Linux no lo hay.)",
                          "There is no space now that the system frees by itself: what you see taken stays "
                          "so until it is cleaned. (A Mac mostly has some; Linux has none.)"},
                .linux = {"Este sistema no guarda espacio que libere solo: lo que ves ocupado sigue así "
                          "hasta que se limpia.",
                          "This system keeps no space that it frees by itself: what you see taken stays so "
                          "until it is cleaned."}}
                .on()
                .in(),
            readingColumns());
    }
    std::string shown =
        lumo::ByteFormat::string(space.purgeableBytes) +
        Words{" que macOS libera solo cuando lo necesita", " that macOS frees by itself when needed"}.in() +
        "\n";
    if (!space.localSnapshots.empty()) {
        shown += snapshotsText(space.localSnapshots) + "\n";
    }
    return shown;
}

/// What the system keeps outside the home, with what an administrator can run. A Mac's answer is a fixed one.
std::string keptBySystem(const Invocation& invocation) {
    if (lumo::currentSystem() == lumo::System::macos) {
        return {};
    }
    std::vector<lumo::Inventory> inventories;
    const bool isWhole = watchWalk(
        invocation,
        [&](const lumo::FileTree::Watch& watch) {
            inventories = found({.kinds = {lumo::InventoryKind::system}}, deskOf(invocation, "space"),
                                {.progress = watch.progress, .stop = watch.stop});
        },
        [] { return Words{"Midiendo lo que guarda el sistema", "Measuring what the system keeps"}.in(); });
    const bool hasItems = isWhole && !inventories.empty() && !inventories.front().items.empty();
    return hasItems ? "\n" + findText(inventories, ItemMarks::none, invocation) : std::string();
}

} // namespace

void addSpaceCommand(CLI::App& app, Action& chosen) {
    addCommand(app, "espacio", "space", "el espacio que el sistema libera solo",
               "the space that the system frees by itself")
        ->callback([&chosen] {
            chosen = [](const Invocation& invocation) {
                const SystemSpace space = SystemSpace::measure("/");
                return print(invocation.isJson
                                 ? lumo::dumpJson(lumo::encode(space), lumo::JsonLayout::indented) + "\n"
                                 : textOfSpace(space) + keptBySystem(invocation));
            };
        });
}

} // namespace tarvo
