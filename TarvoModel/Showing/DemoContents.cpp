#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Rules/Rule.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "TarvoModel/Showing/DemoItems.h"
#include "TarvoModel/Showing/DemoTables.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <optional>
#include <utility>

namespace tarvo::DemoDisk {

using lumo::System;
using lumo::FolderContents::Item;
using lumo::FolderContents::Listing;

namespace {

/// A place of the made-up disk, and what is in it.
struct Spot {
    std::string path;
    std::int64_t bytes = 0;
    std::span<const PartRow> parts = {}; ///< None for a file.
};

std::span<const PartRow> partsOf(std::string_view key, System system) {
    const auto among = [&](std::span<const FolderRow> rows) {
        const auto row = std::ranges::find(rows, key, &FolderRow::of);
        return row == rows.end() ? std::span<const PartRow>() : std::span(row->parts);
    };
    const std::span<const PartRow> own =
        system == System::linux ? among(linuxFolderRows()) : std::span<const PartRow>();
    return own.empty() ? among(macFolderRows()) : own;
}

bool isFileName(std::string_view path) {
    static constexpr auto endings = std::to_array<std::string_view>(
        {".deb", ".dmg", ".iso", ".mov", ".png", ".raw", ".webm", ".xip", ".xz"});
    return std::ranges::any_of(endings, [&](std::string_view ending) { return path.ends_with(ending); });
}

std::span<const PartRow> partsOf(const lumo::Finding& finding, std::string_view path, System system) {
    if (isFileName(path)) {
        return {};
    }
    const std::span<const PartRow> own = partsOf(finding.ruleID, system);
    return own.empty() ? partsOf(lumo::nameOf(finding.category), system) : own;
}

/// The bytes in whole blocks by the shares; the first gets what remains, so that they add up.
std::vector<std::int64_t> divided(std::int64_t bytes, const std::vector<int>& shares) {
    constexpr std::int64_t block = 4096;
    const std::int64_t all = std::accumulate(shares.begin(), shares.end(), std::int64_t{0});
    std::vector<std::int64_t> pieces;
    std::int64_t rest = bytes;
    for (const int share : shares) {
        pieces.push_back(bytes / block * share / all * block);
        rest -= pieces.back();
    }
    pieces.front() += rest;
    return pieces;
}

std::vector<Spot> spotsOf(const lumo::Finding& finding, System system) {
    // The first of several places has the most.
    std::vector<int> shares(finding.paths.size());
    std::iota(shares.rbegin(), shares.rend(), 1);
    const std::vector<std::int64_t> bytes = divided(finding.usage.allocatedBytes, shares);
    std::vector<Spot> spots;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const std::string& path = finding.paths[index];
        spots.push_back({path, bytes[index], partsOf(finding, path, system)});
    }
    return spots;
}

/// Everything the report has a path of.
std::vector<Spot> spots(lumo::Language language, System system) {
    const lumo::ScanReport found = report({}, language, system);
    std::vector<Spot> spots;
    for (const lumo::Finding& finding : found.findings) {
        std::ranges::move(spotsOf(finding, system), std::back_inserter(spots));
    }
    for (const lumo::ProjectReport& project : found.projects) {
        for (const lumo::ProjectArtifact& artifact : project.artifacts) {
            spots.push_back(
                {artifact.paths.front(), artifact.usage.allocatedBytes, partsOf(artifact.name, system)});
        }
    }
    for (const lumo::UnclassifiedItem& item : found.unclassified) {
        spots.push_back({item.path, item.usage.allocatedBytes,
                         partsOf(lumo::abbreviated(item.path, found.home), system)});
    }
    return spots;
}

std::vector<Spot> inside(const Spot& spot) {
    if (spot.parts.empty()) {
        return {};
    }
    std::vector<int> shares;
    std::ranges::transform(spot.parts, std::back_inserter(shares), &PartRow::share);
    const std::vector<std::int64_t> bytes = divided(spot.bytes, shares);
    std::vector<Spot> spots;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const PartRow& part = spot.parts[index];
        spots.push_back({spot.path + "/" + std::string(part.name), bytes[index], part.parts});
    }
    return spots;
}

/// The place of that path among the places or anywhere in them.
std::optional<Spot> spotAt(std::string_view path, const std::vector<Spot>& among) {
    const auto way =
        std::ranges::find_if(among, [&](const Spot& spot) { return lumo::isInside(path, spot.path); });
    if (way == among.end()) {
        return std::nullopt;
    }
    return way->path == path ? std::optional(*way) : spotAt(path, inside(*way));
}

std::vector<Item> itemsOf(const std::vector<Spot>& spots, int levels) {
    std::vector<Item> items;
    for (const Spot& spot : spots) {
        items.push_back({.name = std::string(lumo::fileName(spot.path)),
                         .path = spot.path,
                         .bytes = spot.bytes,
                         .isDirectory = !spot.parts.empty(),
                         .children = levels > 1 ? itemsOf(inside(spot), levels - 1) : std::vector<Item>(),
                         .via = std::nullopt});
    }
    lumo::sortLargestFirst(items, &Item::bytes);
    return items;
}

/// The entry of that path; it and the folders around it are made where the tree has none.
lumo::EntryIndex madeEntry(lumo::NamedTree& tree, const std::string& path, std::uint8_t traits) {
    if (const auto there = tree.entryAt(path)) {
        return *there;
    }
    const lumo::EntryIndex parent =
        madeEntry(tree, std::string(lumo::parentOf(path)), lumo::EntryTraits::folder);
    lumo::TreeBatch batch;
    batch.add({parent, false}, lumo::fileName(path), {}, traits);
    for (const bool reachesUp : {false, true}) {
        batch.changes.push_back({parent, {.items = 1}, reachesUp});
    }
    return tree.add(batch);
}

void put(lumo::NamedTree& tree, const Spot& spot, lumo::Date changed) {
    const lumo::EntryIndex entry =
        madeEntry(tree, spot.path, spot.parts.empty() ? std::uint8_t{0} : lumo::EntryTraits::folder);
    for (const Spot& part : inside(spot)) {
        put(tree, part, changed - std::chrono::days(3));
    }
    if (spot.parts.empty()) {
        const auto seconds = std::chrono::floor<std::chrono::seconds>(changed).time_since_epoch().count();
        const lumo::EntrySums sums{.bytes = spot.bytes, .modified = static_cast<std::uint32_t>(seconds)};
        lumo::TreeBatch batch;
        batch.changes = {{entry, sums, false}, {entry, sums, true}};
        tree.add(batch);
    }
}

} // namespace

Listing contents(const std::string& path, lumo::Language language, System system) {
    const std::optional<Spot> spot = spotAt(path, spots(language, system));
    return {.items = spot ? itemsOf(inside(*spot), 2) : std::vector<Item>(), .paths = {path}, .skipped = {}};
}

Listing contents(const std::vector<std::string>& paths, lumo::Language language, System system) {
    if (paths.size() == 1) {
        return contents(paths.front(), language, system);
    }
    const std::vector<Spot> all = spots(language, system);
    std::vector<Spot> listed;
    for (const std::string& path : paths) {
        if (std::optional<Spot> spot = spotAt(path, all)) {
            listed.push_back(*std::move(spot));
        }
    }
    Listing listing{.items = itemsOf(listed, 2), .paths = paths, .skipped = {}};
    for (Item& item : listing.items) {
        item.via = lumo::parentOf(item.path);
    }
    return listing;
}

void fill(lumo::NamedTree& tree, lumo::Date now, lumo::Language language, System system) {
    for (const Spot& spot : spots(language, system)) {
        if (lumo::isInside(spot.path, home(system))) {
            put(tree, spot, now - std::chrono::days(1));
        }
    }
    for (const lumo::DetailItem& item : items(lumo::InventoryKind::large, language, system).items) {
        if (item.path && !tree.entryAt(*item.path)) {
            put(tree, {.path = *item.path, .bytes = item.bytes}, now - std::chrono::days(400));
        }
    }
}

lumo::FolderEvidence evidence(const std::string& path, lumo::Language language, System system) {
    constexpr std::size_t mostEntries = 8;
    lumo::FolderEvidence evidence;
    evidence.path = path;
    evidence.displayPath = lumo::abbreviated(path, home(system));
    evidence.location = lumo::folderLocation(path, home(system));
    for (const Item& item : contents(path, language, system).items) {
        evidence.usage.allocatedBytes += item.bytes;
        if (evidence.largestEntries.size() < mostEntries) {
            evidence.largestEntries.push_back(
                {.name = item.name, .bytes = item.bytes, .isDirectory = item.isDirectory});
        }
    }
    // On a Mac as its made-up explanations were written; else as many as the report says.
    const std::int64_t bytesOfFile = system == System::macos ? 400000 : 40000;
    const std::int64_t begun = system == System::macos ? 0 : bytesOfFile - 1;
    evidence.usage.fileCount = (evidence.usage.allocatedBytes + begun) / bytesOfFile;
    const std::span<const UnclassifiedRow> rows = unclassifiedRows(system);
    const auto row = std::ranges::find(rows, evidence.displayPath, &UnclassifiedRow::path);
    if (row != rows.end() && row->explanation && !row->explanation->owner.empty()) {
        const std::string owner(row->explanation->owner);
        evidence.relatedApp = {.name = owner,
                               .bundleID = {},
                               .path = system == System::macos
                                           ? "/Applications/" + owner + ".app"
                                           : "/usr/share/applications/" + owner + ".desktop"};
    }
    return evidence;
}

} // namespace tarvo::DemoDisk
