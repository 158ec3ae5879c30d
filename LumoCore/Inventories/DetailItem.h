#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Rules/CleanupAction.h"
#include "Platform/FileSearch.h"
#include "Platform/TreeWalk.h"

#include <array>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// What an inventory looks for.
enum class InventoryKind {
    large,
    duplicates,
    unused,
    leftovers,
    docker,
    models,
    system,
    installers,
    cloud,
};

template <>
struct EnumNames<InventoryKind> {
    static constexpr std::array<std::string_view, 9> values{
        "large", "duplicates", "unused", "leftovers", "docker", "models", "system", "installers", "cloud"};
};

inline constexpr std::size_t inventoryKindCount = EnumNames<InventoryKind>::values.size();

/// The kind by the name that commands take, in either language.
std::optional<InventoryKind> inventoryKindNamed(std::string_view name);

/// The name that commands take ("large", "grandes"), and what a heading calls the kind.
std::string commandNameOf(InventoryKind kind, Language language = currentLanguage());
std::string titleOf(InventoryKind kind, Language language = currentLanguage());

/// What the ids of the kind's items begin with ("archivo:"); the same in every language and release, since
/// ids are stored.
std::string_view idPrefixOf(InventoryKind kind);

/// The kind of which an item with that id would be; absent for the ids of rules and artifacts.
std::optional<InventoryKind> inventoryKindOfID(std::string_view id);

/// One thing that only a closer look finds, with the action that frees it.
struct DetailItem {
    std::string id; ///< The kind's prefix and what stays the same between runs.
    std::string name;
    std::optional<std::string> path; ///< Absolute; absent for what has none of its own, as an image.
    std::int64_t bytes = 0;          ///< What the action really frees.
    std::string detail;              ///< One line for a person, in the interface language.
    Safety safety = Safety::review;
    CleanupAction action;
    std::optional<std::string> kept; ///< Of a duplicate: the path of the copy that stays.
    /// Why it cannot be done from here, with what to run instead. Such an item can only be shown.
    std::optional<std::string> blockedBecause;

    static constexpr auto fields = std::tuple{field("id", &DetailItem::id),
                                              field("name", &DetailItem::name),
                                              field("path", &DetailItem::path),
                                              field("bytes", &DetailItem::bytes),
                                              field("detail", &DetailItem::detail),
                                              field("safety", &DetailItem::safety),
                                              field("action", &DetailItem::action),
                                              field("kept", &DetailItem::kept),
                                              field("blockedBecause", &DetailItem::blockedBecause)};
    friend bool operator==(const DetailItem&, const DetailItem&) = default;
};

/// A place that could not be looked at.
struct UnreadPlace {
    std::string path;   ///< Absolute.
    std::string reason; ///< For a person, in the interface language; empty when it is not known.

    static constexpr auto fields =
        std::tuple{field("path", &UnreadPlace::path), field("reason", &UnreadPlace::reason)};
    friend bool operator==(const UnreadPlace&, const UnreadPlace&) = default;
};

/// What one closer look found.
struct Inventory {
    InventoryKind kind = InventoryKind::large;
    std::vector<DetailItem> items; ///< Largest first.
    /// Why nothing can be told: a tool is missing, does not run, or is too slow. Never together with items.
    std::optional<std::string> unavailable;
    std::int64_t unreadableCount = 0;               ///< What could not be looked at.
    std::optional<std::vector<UnreadPlace>> unread; ///< The first of that by name, where there is any.

    /// Counts a place that could not be looked at, and keeps its name.
    void miss(std::string path, std::string reason = {});
    /// The same for the folders that a search could not list.
    void miss(const platform::FilesFound& found);
    /// So many in the folder, whose names nobody kept; nothing when there are none.
    void missIn(const std::string& folder, std::int64_t count, Language language);

    static constexpr auto fields = std::tuple{
        field("kind", &Inventory::kind), field("items", &Inventory::items),
        field("unavailable", &Inventory::unavailable), field("unreadableCount", &Inventory::unreadableCount),
        field("unread", &Inventory::unread)};
    friend bool operator==(const Inventory&, const Inventory&) = default;
};

/// What a detector is asked, and by whom it is watched.
struct InventoryQuery {
    std::string home; ///< Absolute, as the user spells it.
    Date now = {};
    std::vector<std::string> folders = {};         ///< Absolute; when empty, the places of the kind.
    std::optional<std::int64_t> minimumBytes = {}; ///< When absent, what is usual for the kind.
    std::optional<std::int64_t> olderThanDays = {};
    Language language = currentLanguage();
    std::stop_token stop = {};
    platform::WalkProgress* progress = nullptr;
    /// Stands before the paths of the system's own folders: not empty where a test has its own.
    std::string systemRoot = {};

    /// True when something so large, and last used at that time, was asked for. What has no such time is
    /// never too young.
    [[nodiscard]] bool asksFor(std::int64_t bytes, const std::optional<Date>& lastUsed = {}) const;
};

/// Largest first; of equal ones the first by its id, so that two looks at the same disk give the same list.
void sortLargestFirst(std::vector<DetailItem>& items);

/// Those of the items that the ids name, in the ids' order.
std::vector<DetailItem> itemsNamed(const std::vector<std::string>& ids, const std::vector<DetailItem>& items);

/// Makes of an item that is set aside what the other fields follow from: its action takes these paths.
DetailItem itemToSetAside(std::string id, std::string name, std::vector<std::string> paths,
                          std::int64_t bytes, std::string detail, Safety safety = Safety::review);

/// An item that a tool removes, with what is measured afterwards.
DetailItem itemForTool(std::string id, std::string name, std::vector<std::string> words, std::int64_t bytes,
                       std::string detail, std::vector<std::string> measuredPaths = {});

/// An item that is only shown, with the reason.
DetailItem itemToShow(std::string id, std::string name, std::int64_t bytes, std::string detail,
                      std::string blockedBecause);

/// Why an item cannot be done from here, where an administrator can with that command; and the command that
/// such a reason names, absent for any other reason.
std::string needsAdministrator(std::string_view command, Language language);
std::optional<std::string> commandIn(std::string_view blockedBecause);

/// The path as ids name it: from the home where it lies there, so that an id outlives a move of the home.
std::string pathInID(std::string_view path, std::string_view home);
/// The reverse; absent for what is no path.
std::optional<std::string> pathFromID(std::string_view text, std::string_view home);

} // namespace lumo
