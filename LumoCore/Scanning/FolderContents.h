#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Scanning/FileTree.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What is inside a folder, two levels deep, largest first at each level. Sizes are those of
/// `FileTree::measure`; each call charges shared files afresh. Nothing fails: what cannot be read has no
/// items.
namespace lumo::FolderContents {

/// How many items are kept of a folder, and of each folder in it. The smaller ones together become one more
/// item, so that the sums stay right.
inline constexpr std::size_t mostItems = 1000;
inline constexpr std::size_t mostItemsBelow = 100;

inline constexpr platform::BreakdownLimits usualLimits{.mostParts = mostItems,
                                                       .mostPartsBelow = mostItemsBelow};

/// A file or folder. The item that stands for the smaller ones says in its name how many they are and has an
/// empty path, since there is nothing to open or to touch.
struct Item {
    std::string name;
    std::string path; ///< Absolute. What the item is known by.
    std::int64_t bytes = 0;
    bool isDirectory = false;
    std::vector<Item> children;     ///< The next level; empty for files and on the second level.
    std::optional<std::string> via; ///< Where the item lies, when several paths are listed.

    static constexpr auto fields =
        std::tuple{field("name", &Item::name),         field("path", &Item::path),
                   field("bytes", &Item::bytes),       field("isDirectory", &Item::isDirectory),
                   field("children", &Item::children), field("via", &Item::via)};
    friend bool operator==(const Item&, const Item&) = default;
};

/// What is shown after a folder was opened.
struct Listing {
    std::vector<Item> items;
    std::vector<std::string> paths;   ///< What was listed.
    std::vector<std::string> skipped; ///< Names of the folders that were opened through, outermost first.

    static constexpr auto fields =
        std::tuple{field("items", &Listing::items), field("paths", &Listing::paths),
                   field("skipped", &Listing::skipped)};
    friend bool operator==(const Listing&, const Listing&) = default;
};

/// A folder's breakdown and its items, out of one walk.
struct Survey {
    FileTree::Breakdown breakdown;
    std::vector<Item> items;
};
Survey survey(const std::string& path, const FileTree::Watch& watch = {},
              const platform::BreakdownLimits& limits = usualLimits);

/// What one path takes.
Usage usageOf(const std::string& path, const FileTree::Watch& watch = {});

/// The folder's entries, each with its own; a file is its own only item.
std::vector<Item> twoLevels(const std::string& path, const FileTree::Watch& watch = {});

/// One path two levels deep; of several, those that exist, each with its entries.
std::vector<Item> list(const std::vector<std::string>& paths, const FileTree::Watch& watch = {});

/// True for several paths and for a single folder; a link is none.
bool canOpen(const std::vector<std::string>& paths);

/// Lists the paths by `list` and goes on into the largest item while that is a folder, holds something, and
/// is the only item or has at least 95 % of all bytes; through 6 folders at most. So one comes straight to
/// where the bytes are.
Listing open(const std::vector<std::string>& paths,
             const std::function<std::vector<Item>(const std::vector<std::string>& paths)>& list);

/// A folder's breakdown, and what is shown after it was opened.
struct Opened {
    FileTree::Breakdown breakdown;
    Listing listing;
};

/// Opens one path by `list`, without measuring again what its breakdown has measured: on a large folder that
/// saves half the time. The limits are for the folder that is shown in the end, too, and at least 1 below.
Opened openOne(const std::string& path, const FileTree::Watch& watch = {},
               const platform::BreakdownLimits& limits = usualLimits);

} // namespace lumo::FolderContents
