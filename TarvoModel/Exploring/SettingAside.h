#pragma once

#include "TarvoModel/Exploring/Explorer.h"
#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/PuttingBack.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Setting aside what somebody chose while exploring, and putting it back: the same plan, guard, intent and
/// log as every cleanup. All of it reads the disk, and may be called on any thread.
namespace tarvo {

/// What is asked before anything is touched.
struct AsideOffer {
    /// One thing that was chosen.
    struct Item {
        std::string path;
        std::int64_t bytes = 0;
        std::optional<std::string> reason; ///< Why it stays; absent for what would go.
    };

    PlanRequest request;
    Agreement agreed;
    std::vector<Item> items; ///< What would go first, the largest first.
    std::size_t goingCount = 0;
    std::int64_t bytes = 0;      ///< Of what would go.
    std::int64_t freedBytes = 0; ///< Of them, once it is deleted: files that keep a name elsewhere stay.
};

/// Plans to set aside what stands at these absolute paths, which were chosen in that tree.
AsideOffer asideOffer(const std::vector<std::string>& paths, const Desk& desk, const lumo::NamedTree& tree);

/// Why what stands at a path can only be looked at from here; absent when it can be offered.
std::optional<std::string> onlyLookedAt(const std::string& path, const std::string& home);

/// Why these entries cannot be set aside from there: one of them is shown in part only, because the rest is
/// newer. Absent when they can be offered.
std::optional<std::string> whyNotWhole(const Explorer& explorer,
                                       const std::vector<lumo::EntryIndex>& entries);

/// The same of what is chosen, which may also be something that can only be looked at.
std::optional<std::string> whyNotAside(const Explorer& explorer, const std::string& home);

/// What came of it.
struct Told {
    std::string text; ///< A sentence.
    bool isWhole = false;
    std::vector<std::string> paths; ///< What may have changed on the disk.
};

/// Carries out what was offered and agreed to, as far as it is still allowed.
Told setAside(const AsideOffer& offer, const Desk& desk, const CleanupWatch& watch = {});

/// What an undo would put back: the newest cleanup's.
lumo::Result<std::vector<lumo::TrashedItem>> undoOffer(const Desk& desk);

/// Puts these back, which were shown; nothing when an undo means others by now.
Told putBack(const std::vector<lumo::TrashedItem>& shown, const Desk& desk);

} // namespace tarvo
