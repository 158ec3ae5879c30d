#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/History/DiskSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// What things took over the time of the stored snapshots, for lines in a picture.
namespace tarvo {

/// What something took at one moment.
struct GrowthPoint {
    lumo::Date date;
    std::int64_t bytes = 0;

    friend bool operator==(const GrowthPoint&, const GrowthPoint&) = default;
};

enum class GrowthChange { grew, shrank, appeared, vanished };

struct GrowthLine {
    std::string id; ///< The item's identifier in the snapshots; empty for the free space.
    std::string name;
    GrowthChange change = GrowthChange::grew;
    std::int64_t delta = 0;          ///< Bytes from the first point to the last.
    std::vector<GrowthPoint> points; ///< Oldest first; two at least.

    [[nodiscard]] std::int64_t now() const { return points.back().bytes; }
    friend bool operator==(const GrowthLine&, const GrowthLine&) = default;
};

/// The lines of what changed by `GrowthTracker::smallestGrowth` or more, largest change first and `most` of
/// them, after that of the free space. A finding's line begins where the snapshots first know it, see
/// `GrowthTracker::compare`; other things, and all that have gone, took nothing where they are missing. What
/// came and went in between has no line. None with fewer than two snapshots.
std::vector<GrowthLine> growthSeries(const std::vector<lumo::DiskSnapshot>& snapshots, std::size_t most,
                                     lumo::Language language = lumo::currentLanguage());

/// The room in which lines are drawn: the time from left to right, and how much each changed since its first
/// point from bottom to top, both from 0 to 1.
struct GrowthFrame {
    lumo::Date from;
    lumo::Date to;
    std::int64_t lowest = 0;  ///< The deepest fall; 0 when nothing fell.
    std::int64_t highest = 0; ///< The highest rise; 0 when nothing rose.

    static GrowthFrame around(const std::vector<GrowthLine>& lines);
    [[nodiscard]] double across(lumo::Date date) const;
    [[nodiscard]] double up(std::int64_t change) const;
};

/// "+2.1 GB", "−340 MB".
std::string changeText(std::int64_t delta, lumo::Language language = lumo::currentLanguage());

/// The word for what a figure alone does not tell: "new", "gone", "shrank"; empty for what grew.
std::string changeWord(const GrowthLine& line, lumo::Language language = lumo::currentLanguage());

/// What the line shows, in one sentence: how much it is now, how it changed and when it was largest.
std::string lineText(const GrowthLine& line, lumo::Language language = lumo::currentLanguage());

/// The line's values for whoever does not see it: "Nov 3, 2026: 1 GB; …", each where it differs from the one
/// before.
std::string valuesText(const GrowthLine& line, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
