#pragma once

#include "LumoCore/Cleanup/PathGuard.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "TarvoModel/Flows/Desk.h"
#include "TarvoModel/Flows/Scanning.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// Closer looks at a home, the same for every face. What they find is cleaned by its ids like everything
/// else: see `PlanRequest::items`.
namespace tarvo {

/// What is looked for, as somebody asked for it.
struct FindRequest {
    std::vector<lumo::InventoryKind> kinds = {}; ///< When empty all but the duplicates, which take long.
    std::vector<std::string> folders = {};       ///< As somebody wrote them; when empty the kinds' places.
    std::optional<std::int64_t> minimumBytes = {};
    std::optional<std::int64_t> olderThanDays = {};

    friend bool operator==(const FindRequest&, const FindRequest&) = default;
};

/// How a search is watched and ended. `onKind` is called on the thread that searches.
struct FindWatch {
    std::function<void(lumo::InventoryKind)> onKind = {};
    lumo::platform::WalkProgress* progress = nullptr;
    std::stop_token stop = {};
};

/// The kinds of the request, in its order and each once.
std::vector<lumo::InventoryKind> kindsOf(const FindRequest& request);

/// What is found, in the order of the kinds. What may not be cleaned has its reason. A file is an item once:
/// of the copies that were found and the one of them that stays none is also a large file. Changes nothing;
/// after a stop the lists are incomplete.
std::vector<lumo::Inventory> found(const FindRequest& request, const Desk& desk, const FindWatch& watch = {});

/// One kind as a window looks at it.
struct CloserLook {
    lumo::Inventory found;
    lumo::ResolvedPaths shown = {}; ///< What the paths of the items that can be cleaned mean now.

    friend bool operator==(const CloserLook&, const CloserLook&) = default;
};

/// What the request, which names one kind, finds.
CloserLook lookedAt(const FindRequest& request, const Desk& desk, const FindWatch& watch = {});

/// Leaves the copies out of the large files, and the ones that stay: see `found`. How many those are.
std::size_t leaveOutCopies(std::vector<lumo::Inventory>& inventories);

/// The item of that id as it is now, with its reason if it may not be cleaned; absent when there is none. It
/// does not matter with which folders it was found.
std::optional<lumo::DetailItem> itemNow(const std::string& id, const Desk& desk);

/// The folders of a request that are none, as they were written.
std::vector<std::string> missingFolders(const FindRequest& request, const Desk& desk);

} // namespace tarvo
