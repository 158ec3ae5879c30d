#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Showing/DiskMapSvg.h"
#include "TarvoModel/Showing/TickedPlan.h"

#include <memory>
#include <utility>

namespace tarvo {

using DiskMap::PlacedTile;
using lumo::Words;

namespace {

struct MapArguments {
    ReportSource source;
    std::optional<std::int64_t> width;
    std::optional<std::int64_t> height;
    bool isWholeDisk = false;
    std::optional<std::string> picture;
};

/// A tile as programs see it.
struct ShownTile {
    std::string id;
    std::string label;
    std::string detail;
    std::int64_t bytes = 0;
    Tile::Kind kind = Tile::Kind::item;
    std::optional<lumo::Safety> safety;
    TileState state = TileState::info;
    std::string status;
    Rect rect;

    static constexpr auto fields =
        std::tuple{lumo::field("id", &ShownTile::id),         lumo::field("label", &ShownTile::label),
                   lumo::field("detail", &ShownTile::detail), lumo::field("bytes", &ShownTile::bytes),
                   lumo::field("kind", &ShownTile::kind),     lumo::field("safety", &ShownTile::safety),
                   lumo::field("state", &ShownTile::state),   lumo::field("status", &ShownTile::status),
                   lumo::field("rect", &ShownTile::rect)};
};

/// The map with what its tiles say.
struct DrawnMap {
    std::vector<PlacedTile> tiles;
    std::vector<std::string> statuses;
};

DrawnMap drawnMap(const std::shared_ptr<const lumo::ScanReport>& report, bool isWholeDisk, double width,
                  double height, const Desk& desk) {
    std::vector<lumo::PlanEntry> entries = planned({.report = report, .reviews = Reviews::all}, desk).entries;
    const std::vector<Tile> tiles = DiskMap::tiles(rowsOf(*report, entries), report->volume, isWholeDisk);
    TickedPlan plan;
    Selection defaults = defaultSelection(entries);
    plan.take({.entries = std::move(entries), .defaults = std::move(defaults)});
    const std::vector<Rect> places = DiskMap::layout(tiles, width, height);
    DrawnMap drawn;
    for (std::size_t index = 0; index < tiles.size(); ++index) {
        const TileState state = plan.stateOf(tiles[index].id);
        drawn.tiles.push_back({tiles[index], state, places[index]});
        drawn.statuses.push_back(DiskMap::statusOf(tiles[index], state, plan.entry(tiles[index].id)));
    }
    return drawn;
}

std::string mapJson(const DrawnMap& map) {
    std::vector<ShownTile> shown;
    for (std::size_t index = 0; index < map.tiles.size(); ++index) {
        const auto& [tile, state, place] = map.tiles[index];
        shown.push_back({tile.id, tile.label, tile.detail, tile.bytes, tile.kind, tile.safety, state,
                         map.statuses[index], place});
    }
    return lumo::dumpJson(lumo::encode(shown), lumo::JsonLayout::indented) + "\n";
}

std::string mapText(const DrawnMap& map, const Invocation& invocation) {
    if (map.tiles.empty()) {
        return Words{"No hay nada que dibujar.\n", "There is nothing to draw.\n"}.in();
    }
    Table table({{.align = Align::right, .tint = Tint::strong},
                 {.mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true}});
    for (std::size_t index = 0; index < map.tiles.size(); ++index) {
        const Tile& tile = map.tiles[index].tile;
        table.add({lumo::ByteFormat::string(tile.bytes), lumo::printable(tile.label),
                   lumo::printable(map.statuses[index])});
    }
    return table.lines(0, outputColumns(), invocation) +
           tinted(Words{"Para verlo como dibujo: tarvo mapa --svg FICHERO\n",
                        "To see it drawn: tarvo map --svg FILE\n"}
                      .in(),
                  Tint::faint, invocation);
}

/// Saves the picture; a code when that failed, which has been said.
std::optional<ExitCode> savePicture(const std::string& file, const std::string& picture) {
    const auto path = lumo::platform::absolutePath(file);
    const auto saved = path ? lumo::platform::replaceWhole(*path, picture) : std::unexpected(path.error());
    if (saved) {
        return std::nullopt;
    }
    return complain(Words{"no he podido escribir {} ({})", "cannot write {} ({})"}.with(
                        lumo::printable(file), lumo::reasonText(saved.error())),
                    ExitCode::failed);
}

ExitCode runMap(const MapArguments& arguments, const Invocation& invocation) {
    constexpr std::int64_t usualWidth = 1200;
    constexpr std::int64_t usualHeight = 800;
    const auto report = reportFrom(arguments.source, invocation);
    if (!report) {
        return report.error();
    }
    const auto width = static_cast<double>(arguments.width.value_or(usualWidth));
    const auto height = static_cast<double>(arguments.height.value_or(usualHeight));
    const DrawnMap map = drawnMap(*report, arguments.isWholeDisk, width, height, deskOf(invocation, "map"));
    if (arguments.picture) {
        if (const auto problem = savePicture(*arguments.picture, DiskMap::svg(map.tiles, width, height))) {
            return *problem;
        }
    }
    if (invocation.isJson) {
        return print(mapJson(map));
    }
    return arguments.picture ? ExitCode::done : print(mapText(map, invocation));
}

} // namespace

void addMapCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "mapa", "map", "el mapa del disco, en texto o dibujado",
                                   "the disk map, as text or drawn");
    const auto arguments = std::make_shared<MapArguments>();
    addReportOption(*command, arguments->source);
    const auto addSize = [&](const char* name, std::optional<std::int64_t>& value,
                             const std::string& meaning) {
        command->add_option(name, inDecimal(value), meaning)
            ->check(isDecimal(5, "«{}» no es un número de puntos", "“{}” is no number of points"))
            ->type_name("N");
    };
    addSize("--width", arguments->width, Words{"ancho del mapa (1200)", "width of the map (1200)"}.in());
    addSize("--height", arguments->height, Words{"alto del mapa (800)", "height of the map (800)"}.in());
    command->add_flag("--whole-disk", arguments->isWholeDisk,
                      Words{"también el resto del disco y el espacio libre",
                            "the rest of the disk and the free space as well"}
                          .in());
    command
        ->add_option("--svg", arguments->picture,
                     Words{"dibujarlo en este fichero", "draw it into this file"}.in())
        ->type_name(Words{"FICHERO", "FILE"}.in());
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runMap(*arguments, invocation); };
    });
}

} // namespace tarvo
