#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Rules/Rule.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

/// The appearance in which the card of a cleanup is drawn: that of the window it is shown in.
enum class CardLook { light, dark };

/// What one cleanup did, for the card that its user may show to others: kinds of things and sums, never a
/// name or a path.
struct ShareStats {
    struct Item {
        std::optional<lumo::Category> category; ///< Absent for what no rule of the catalog found.
        std::int64_t bytes = 0;

        friend bool operator==(const Item&, const Item&) = default;
    };

    /// What the space of the disk was around the cleanup, and what all cleanups before it came to.
    struct Surroundings {
        std::int64_t freeBefore = 0;
        std::int64_t freeAfter = 0;
        std::int64_t capacity = 0;
        std::int64_t lifetimeBefore = 0; ///< See `CleanupHistory::total`.
    };

    /// Lifetime totals that are worth a word.
    static constexpr std::array<std::int64_t, 7> milestones{
        10000000000, 25000000000, 50000000000, 100000000000, 250000000000, 500000000000, 1000000000000};

    std::int64_t freedBytes = 0;
    std::vector<Item> items; ///< Largest first; a category once.
    std::int64_t freeBefore = 0;
    std::int64_t freeAfter = 0;
    std::int64_t capacity = 0;
    std::int64_t lifetimeBytes = 0; ///< With this cleanup.

    /// The statistics of a cleanup; items are what was freed at once, without those that freed nothing.
    static ShareStats make(const std::vector<lumo::CleanupOutcome>& outcomes, const Surroundings& around);

    /// The same after the holding area was emptied, which freed that many bytes more.
    [[nodiscard]] ShareStats withEmptied(std::int64_t bytes) const;

    /// What was free before as it may stand beside what is free now: where others have written so much
    /// meanwhile that there is less than before, what there would be without the cleanup.
    [[nodiscard]] std::int64_t shownFreeBefore() const;

    /// True from half a gigabyte freed: less is no reason to interrupt anybody.
    [[nodiscard]] bool isWorthCelebrating() const;

    /// The milestones that the lifetime total has reached, smallest first.
    [[nodiscard]] std::vector<std::int64_t> reachedMilestones() const;

    /// What a post says.
    [[nodiscard]] std::string postText(lumo::Language language = lumo::currentLanguage(),
                                       lumo::System system = lumo::currentSystem()) const;

    friend bool operator==(const ShareStats&, const ShareStats&) = default;
};

/// A category's name on the card.
std::string categoryTitle(const std::optional<lumo::Category>& category,
                          lumo::Language language = lumo::currentLanguage());

/// Where the card is saved: on the desktop (see `desktopFolder`), under the day in the user's time zone.
std::string shareImagePath(const std::string& home, lumo::Date now);

/// What is said when the card was saved, could not be, or was copied.
std::string imageSavedText(lumo::Language language = lumo::currentLanguage());
std::string imageFailedText(std::string_view reason, lumo::Language language = lumo::currentLanguage());
std::string imageCopiedText(lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
