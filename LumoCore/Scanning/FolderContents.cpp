#include "LumoCore/Scanning/FolderContents.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"

namespace lumo::FolderContents {

namespace {

std::string pathIn(std::string_view folder, std::string_view name) {
    return std::string(folder) + (folder.ends_with('/') ? "" : "/") + std::string(name);
}

std::string restName(std::int64_t count) {
    return count == 1 ? Words{"1 elemento más", "1 more item"}.in()
                      : ByteFormat::number(static_cast<double>(count), 0) +
                            Words{" elementos más", " more items"}.in();
}

std::vector<Item> itemsOf(const platform::TreeParts& parts, const std::string& folder) {
    std::vector<Item> items;
    items.reserve(parts.largest.size() + 1);
    for (const platform::TreePart& part : parts.largest) {
        const std::string path = pathIn(folder, part.name);
        items.push_back({.name = part.name,
                         .path = path,
                         .bytes = part.allocatedBytes,
                         .isDirectory = part.isFolder,
                         .children = itemsOf(part.parts, path),
                         .via = {}});
    }
    if (parts.restCount > 0) {
        items.push_back({.name = restName(parts.restCount),
                         .path = {},
                         .bytes = parts.restBytes,
                         .children = {},
                         .via = {}});
        sortLargestFirst(items, &Item::bytes);
    }
    return items;
}

Item fileItem(const std::string& path, std::int64_t bytes) {
    return {.name = std::string(fileName(path)), .path = path, .bytes = bytes, .children = {}, .via = {}};
}

std::int64_t totalOf(const std::vector<Item>& items) {
    std::int64_t total = 0;
    for (const Item& item : items) {
        total = checkedSum(total, item.bytes);
    }
    return total;
}

bool isOpenedThrough(const std::vector<Item>& items) {
    if (items.empty() || !items.front().isDirectory || items.front().children.empty()) {
        return false;
    }
    // At least 95 %: the others have at most a twentieth.
    const std::int64_t total = totalOf(items);
    return items.size() == 1 || total - items.front().bytes <= total / 20;
}

} // namespace

Survey survey(const std::string& path, const FileTree::Watch& watch,
              const platform::BreakdownLimits& limits) {
    HardLinkRegistry registry;
    const platform::TreeBreakdown tree =
        platform::breakDownTree({path}, limits, FileTree::contextOf(registry, watch));
    Survey survey{.breakdown = FileTree::breakdownOf(tree), .items = itemsOf(tree.parts, path)};
    const auto kind = platform::kindOf(path);
    if (kind && kind != platform::EntryKind::folder) {
        survey.items = {fileItem(path, tree.sums.allocatedBytes)};
    }
    return survey;
}

Usage usageOf(const std::string& path, const FileTree::Watch& watch) {
    HardLinkRegistry registry;
    return FileTree::measure(path, registry, watch);
}

std::vector<Item> twoLevels(const std::string& path, const FileTree::Watch& watch) {
    return survey(path, watch).items;
}

std::vector<Item> list(const std::vector<std::string>& paths, const FileTree::Watch& watch) {
    if (paths.size() == 1) {
        return twoLevels(paths.front(), watch);
    }
    HardLinkRegistry registry;
    std::vector<Item> items;
    for (const std::string& path : paths) {
        const auto kind = platform::kindOf(path);
        if (!kind) {
            continue;
        }
        const platform::TreeBreakdown tree = platform::breakDownTree({path}, {.mostParts = mostItemsBelow},
                                                                     FileTree::contextOf(registry, watch));
        Item item = fileItem(path, tree.sums.allocatedBytes);
        item.isDirectory = kind == platform::EntryKind::folder;
        item.children = itemsOf(tree.parts, path);
        item.via = std::string(parentOf(path));
        items.push_back(std::move(item));
    }
    sortLargestFirst(items, &Item::bytes);
    return items;
}

bool canOpen(const std::vector<std::string>& paths) {
    return paths.size() > 1 ||
           (paths.size() == 1 && platform::kindOf(paths.front()) == platform::EntryKind::folder);
}

Listing open(const std::vector<std::string>& paths,
             const std::function<std::vector<Item>(const std::vector<std::string>& paths)>& list) {
    constexpr std::size_t mostSkipped = 6;
    Listing listing{.items = list(paths), .paths = paths, .skipped = {}};
    while (listing.skipped.size() < mostSkipped && isOpenedThrough(listing.items)) {
        const Item opened = std::move(listing.items.front());
        listing.skipped.push_back(opened.name);
        listing.paths = {opened.path};
        listing.items = list(listing.paths);
    }
    return listing;
}

Opened openOne(const std::string& path, const FileTree::Watch& watch,
               const platform::BreakdownLimits& limits) {
    Survey surveyed = survey(path, watch, limits);
    const std::vector<std::string> asked{path};
    Listing listing = open(asked, [&](const std::vector<std::string>& paths) {
        return paths == asked ? std::move(surveyed.items) : survey(paths.front(), watch, limits).items;
    });
    return {.breakdown = std::move(surveyed.breakdown), .listing = std::move(listing)};
}

} // namespace lumo::FolderContents
