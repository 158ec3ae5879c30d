#pragma once

#include "LumoCore/Basics/Language.h"

#include <cstdint>
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

} // namespace tarvo::Goal
