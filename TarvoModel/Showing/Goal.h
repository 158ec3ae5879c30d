#pragma once

#include "LumoCore/Basics/Language.h"

#include <cstdint>
#include <optional>
#include <string>

/// How much the user wants to free, and how near the selection is to it.
namespace tarvo::Goal {

/// One press of the buttons, and the smallest goal.
inline constexpr std::int64_t step = 1000000000;

/// One gigabyte more.
std::int64_t raised(std::int64_t goal);

/// One gigabyte less, but never less than one.
std::int64_t lowered(std::int64_t goal);

/// True when the selection frees as much as the goal, or more.
bool isReached(std::int64_t goal, std::int64_t selected);

/// How full the meter is, from 0 to 1.
double fraction(std::int64_t goal, std::int64_t selected);

/// The goal in whole gigabytes.
std::string goalText(std::int64_t goal);

/// What the selection means for the goal: that it is reached, or what is missing and how to go on.
std::string meterText(std::int64_t goal, std::int64_t selected,
                      lumo::Language language = lumo::currentLanguage());

/// The goal that can be offered instead of one beyond that: what can be reached, in whole gigabytes. Absent
/// when the goal can be reached, or there is not even one.
std::optional<std::int64_t> offer(std::int64_t goal, std::int64_t reachable);

/// What is said of a goal beyond what can be reached; empty for any other.
std::string beyondText(std::int64_t goal, std::int64_t reachable,
                       lumo::Language language = lumo::currentLanguage());

/// The words that accept the offer.
std::string offerText(std::int64_t offered, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo::Goal
