#include "TarvoModel/Showing/DiskMap.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Showing/RowView.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace tarvo::DiskMap {

using lumo::Language;
using lumo::Words;

namespace {

/// The tile for all that has none of its own.
Tile otherTile(std::size_t count, std::int64_t bytes, std::string detail, Language language,
               lumo::System system) {
    constexpr Words many{"Otros {} elementos", "{} other items"};
    constexpr lumo::SystemWords one{.macos = many, .linux = {"Otro elemento", "1 other item"}};
    return {.id = std::string(TileID::others),
            .label = (count == 1 ? one.on(system) : many)
                         .in(language, lumo::ByteFormat::number(static_cast<double>(count), 0, language)),
            .detail = std::move(detail),
            .bytes = bytes,
            .kind = Tile::Kind::rest,
            .safety = {}};
}

std::int64_t totalOf(const std::vector<Row>& rows) {
    std::int64_t total = 0;
    for (const Row& row : rows) {
        total = lumo::checkedSum(total, row.bytes);
    }
    return total;
}

void addWholeDisk(std::vector<Tile>& tiles, const lumo::VolumeInfo& volume, std::int64_t inRows,
                  Language language, lumo::System system) {
    tiles.push_back(
        {.id = std::string(TileID::restOfDisk),
         .label = Words{"Sistema, apps y tus archivos", "System, apps and your files"}.in(language),
         .detail = lumo::SystemWords{.macos = {"macOS, aplicaciones y tus documentos: no se toca",
                                               "macOS, apps and your documents: not touched"},
                                     .linux = {"el sistema, las aplicaciones y tus documentos: no se toca",
                                               "the system, applications and your documents: not touched"}}
                       .on(system)
                       .in(language),
         .bytes = volume.totalBytes - volume.availableBytes - inRows,
         .kind = Tile::Kind::rest,
         .safety = {}});
    tiles.push_back({.id = std::string(TileID::freeSpace),
                     .label = Words{"Libre", "Free"}.in(language),
                     .detail = Words{"Espacio disponible", "Available space"}.in(language),
                     .bytes = volume.availableBytes,
                     .kind = Tile::Kind::free,
                     .safety = {}});
}

/// How much of the folder an entry is.
std::string shareText(std::int64_t bytes, std::int64_t total, const std::string& title, Language language) {
    constexpr double percent = 100;
    const double share = std::round(static_cast<double>(bytes) / static_cast<double>(total) * percent);
    if (share < 1) {
        return Words{"Menos del 1 % de ", "Less than 1% of "}.in(language) + title;
    }
    return fmt::format("{:.0f}{}{}", share, Words{" % de ", "% of "}.in(language), title);
}

std::string blockedText(const lumo::PlanEntry* entry, Language language) {
    return entry != nullptr && entry->skipReason
               ? lumo::capitalized(*entry->skipReason)
               : Words{"no se puede limpiar ahora", "can't be cleaned right now"}.in(language);
}

std::string insideText(const Tile& tile, Language language, lumo::System system) {
    if (!tile.isFolder) {
        return lumo::SystemWords{.macos = {"Archivo · clic derecho para verlo en el Finder",
                                           "File · right-click to show it in the Finder"},
                                 .linux = {"Archivo · clic derecho para verlo en el gestor de archivos",
                                           "File · right-click to show it in the file manager"}}
            .on(system)
            .in(language);
    }
    return Words{"Carpeta · pincha para ver qué hay dentro", "Folder · click to see what's inside"}.in(
        language);
}

std::string infoText(const Tile& tile, Language language) {
    if (tile.id.starts_with(lumo::unclassifiedIDPrefix)) {
        return Words{"Sin clasificar: pulsa «Explicar con IA»", "Unclassified: click “Explain with AI”"}.in(
            language);
    }
    if (tile.id.starts_with('_')) {
        return Words{"Solo para que veas el disco entero", "Only so you can see the whole disk"}.in(language);
    }
    return Words{"Tus datos: solo se enseña", "Your data: shown only"}.in(language);
}

} // namespace

std::vector<Tile> tiles(const std::vector<Row>& rows, const lumo::VolumeInfo& volume, bool isWholeDisk,
                        Language language, lumo::System system) {
    std::vector<Row> shown = rows;
    std::erase_if(shown, [](const Row& row) { return row.bytes < 1 || !row.hasTile; });
    lumo::sortLargestFirst(shown, &Row::bytes);
    std::vector<Tile> tiles;
    std::int64_t others = 0;
    for (std::size_t index = 0; index < shown.size(); ++index) {
        const Row& row = shown[index];
        if (index < mostRows) {
            tiles.push_back({.id = row.id,
                             .label = row.title,
                             .detail = row.detail,
                             .bytes = row.bytes,
                             .kind = Tile::Kind::item,
                             .safety = row.safety});
        } else {
            others = lumo::checkedSum(others, row.bytes);
        }
    }
    if (shown.size() > mostRows) {
        tiles.push_back(otherTile(shown.size() - mostRows, others,
                                  Words{"Lo más pequeño, junto: está en la lista",
                                        "The smallest items, together: they're in the list"}
                                      .in(language),
                                  language, system));
    }
    if (isWholeDisk) {
        addWholeDisk(tiles, volume, totalOf(shown), language, system);
    }
    std::erase_if(tiles, [](const Tile& tile) { return tile.bytes < 1; });
    return tiles;
}

std::string homeTitle(Language language) {
    return Words{"Tu carpeta personal", "Your home folder"}.in(language);
}

std::string insideID(const std::string& path) {
    return std::string(TileID::insidePrefix) + path;
}

std::int64_t totalOf(const ZoomLevel& level) {
    std::int64_t total = 0;
    for (const lumo::FolderContents::Item& item : level.items) {
        total = lumo::checkedSum(total, item.bytes);
    }
    return total;
}

std::map<std::string, KnownEntry> knownEntries(
    const std::vector<lumo::FolderContents::Item>& items, const std::vector<Row>& rows,
    const std::function<std::map<std::string, lumo::Explanation>(const std::vector<lumo::UnclassifiedItem>&)>&
        know) {
    std::map<std::string, KnownEntry> known;
    std::vector<lumo::UnclassifiedItem> asked;
    for (std::size_t index = 0; index < std::min(items.size(), mostEntries); ++index) {
        const lumo::FolderContents::Item& item = items[index];
        if (const Row* const row = rowWith(item.path, rows)) {
            known.emplace(item.path, KnownEntry{row->safety, row->title});
        } else if (!item.path.empty()) {
            asked.push_back({.path = item.path, .usage = {}});
            asked.back().usage.allocatedBytes = item.bytes;
        }
    }
    for (const auto& [path, explanation] : know(asked)) {
        known.emplace(path, KnownEntry{explanation.safety, explanation.whatItIs});
    }
    return known;
}

std::vector<Tile> tiles(const ZoomLevel& level, Language language, lumo::System system) {
    std::int64_t others = 0;
    for (std::size_t index = mostEntries; index < level.items.size(); ++index) {
        others = lumo::checkedSum(others, level.items[index].bytes);
    }
    const std::int64_t total = std::max<std::int64_t>(totalOf(level), 1);
    std::vector<Tile> tiles;
    for (std::size_t index = 0; index < std::min(level.items.size(), mostEntries); ++index) {
        const lumo::FolderContents::Item& item = level.items[index];
        const auto known = level.isApart ? level.known.find(item.path) : level.known.end();
        const bool isKnown = known != level.known.end();
        tiles.push_back({.id = insideID(item.path),
                         .label = item.name,
                         .detail = shareText(item.bytes, total, level.title, language),
                         .bytes = item.bytes,
                         .kind = Tile::Kind::inside,
                         .safety = isKnown ? known->second.safety : level.safety,
                         .children = item.children,
                         .isFolder = item.isDirectory,
                         .known = isKnown ? known->second.whatItIs : std::string()});
    }
    if (level.items.size() > mostEntries) {
        tiles.push_back(otherTile(level.items.size() - mostEntries, others,
                                  Words{"Lo más pequeño, junto", "The smallest items, together"}.in(language),
                                  language, system));
    }
    return tiles;
}

std::vector<Rect> layout(const std::vector<Tile>& tiles, double width, double height) {
    std::vector<std::size_t> order(tiles.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    lumo::sortLargestFirst(order, [&](std::size_t at) { return tiles[at].bytes; });
    std::vector<double> values;
    values.reserve(tiles.size());
    for (const std::size_t at : order) {
        values.push_back(static_cast<double>(std::max<std::int64_t>(tiles[at].bytes, 0)));
    }
    const std::vector<Rect> inOrder = Squarify::layout(values, {0, 0, width, height});
    std::vector<Rect> places(tiles.size());
    for (std::size_t index = 0; index < order.size(); ++index) {
        places[order[index]] = inOrder[index];
    }
    return places;
}

Rect drawn(const Rect& place) {
    constexpr double gap = 4;
    return {place.x + gap / 2, place.y + gap / 2, std::max(place.width - gap, 0.0),
            std::max(place.height - gap, 0.0)};
}

std::vector<Rect> nestedLayout(const std::vector<lumo::FolderContents::Item>& children, double width,
                               double height, double textScale) {
    constexpr double margin = 5;
    constexpr double gap = 2;
    constexpr double lowestWithBand = 70;
    constexpr double narrowestWithTexts = 64;
    const double band = width > narrowestWithTexts ? 38 * textScale : margin - 1;
    const Rect room{margin, band, width - 2 * margin, height - band - margin};
    if (height <= lowestWithBand || room.width <= 24 || room.height <= 18) {
        return {};
    }
    std::vector<double> values;
    for (const lumo::FolderContents::Item& child : children) {
        values.push_back(static_cast<double>(std::max<std::int64_t>(child.bytes, 0)));
    }
    std::vector<Rect> places = Squarify::layout(values, room);
    for (Rect& place : places) {
        place = {place.x + gap / 2, place.y + gap / 2, std::max(place.width - gap, 0.0),
                 std::max(place.height - gap, 0.0)};
    }
    return places;
}

std::optional<std::size_t> neighbour(const std::vector<Rect>& places, std::size_t from, int dx, int dy) {
    constexpr double asideCounts = 2;
    // Neighbours share an edge that rounding may have moved.
    constexpr double tolerance = 0.5;
    const Rect& here = places[from];
    std::optional<std::size_t> nearest;
    double shortest = 0;
    for (std::size_t at = 0; at < places.size(); ++at) {
        const Rect& there = places[at];
        const double ahead = dx > 0   ? there.x - (here.x + here.width)
                             : dx < 0 ? here.x - (there.x + there.width)
                             : dy > 0 ? there.y - (here.y + here.height)
                                      : here.y - (there.y + there.height);
        if (at == from || ahead < -tolerance) {
            continue;
        }
        const double aside = dx != 0 ? std::abs(there.y + there.height / 2 - here.y - here.height / 2)
                                     : std::abs(there.x + there.width / 2 - here.x - here.width / 2);
        const double distance = ahead + asideCounts * aside;
        if (!nearest || distance < shortest) {
            nearest = at;
            shortest = distance;
        }
    }
    return nearest;
}

TileState stateOf(const std::string& id, const std::set<std::string>& selection,
                  const lumo::PlanEntry* entry) {
    if (selection.contains(id)) {
        return TileState::selected;
    }
    if (entry == nullptr) {
        return TileState::info;
    }
    return entry->skipReason ? TileState::blocked : TileState::unselected;
}

std::string statusOf(const Tile& tile, TileState state, const lumo::PlanEntry* entry, Language language,
                     lumo::System system) {
    if (tile.id.starts_with(TileID::insidePrefix)) {
        return insideText(tile, language, system);
    }
    switch (state) {
    case TileState::selected:
        return Words{"Marcado: entra en la limpieza", "Selected: included in the cleanup"}.in(language);
    case TileState::unselected:
        return Words{"Sin marcar · pincha para marcarlo", "Not selected · click to select it"}.in(language);
    case TileState::blocked:
        return blockedText(entry, language);
    case TileState::info:
        break;
    }
    return infoText(tile, language);
}

std::string closedFolderText(Language language) {
    return Words{"Carpeta", "Folder"}.in(language);
}

bool wantsDarkInk(const Color& color) {
    // Relative luminance (WCAG 2.1); at 0.179 the contrast to black is the one to white.
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color[0]) + 0.7152 * linear(color[1]) + 0.0722 * linear(color[2]) > 0.179;
}

std::optional<Color> colorOf(const Tile& tile) {
    constexpr Color unknown{0.38, 0.31, 0.84};
    const bool isRow = tile.kind == Tile::Kind::item || tile.kind == Tile::Kind::inside;
    if (!isRow) {
        return std::nullopt;
    }
    if (!tile.safety) {
        return tile.kind == Tile::Kind::inside || tile.id.starts_with(lumo::unclassifiedIDPrefix)
                   ? std::optional(unknown)
                   : std::nullopt;
    }
    switch (*tile.safety) {
    case lumo::Safety::safe:
        return Color{0.11, 0.69, 0.48};
    case lumo::Safety::review:
        return Color{0.93, 0.63, 0.0};
    case lumo::Safety::keep:
        break;
    }
    return Color{0.53, 0.53, 0.5};
}

} // namespace tarvo::DiskMap
