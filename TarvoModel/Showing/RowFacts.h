#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "TarvoModel/Showing/ExplanationTexts.h"
#include "TarvoModel/Showing/Rows.h"

#include <string>
#include <vector>

/// What is known of a row besides what it is and where.
namespace tarvo {

/// How a cleanup frees it: at once, set aside for some days, or by another tool, with its command.
std::string freeingText(const lumo::CleanupAction& action, lumo::Language language = lumo::currentLanguage());

/// How it is freed, how many files it has and when it changed last, as far as that is known. The entry is the
/// plan's for the row, if it has one.
std::vector<ExplanationLine> factsOf(const Row& row, const lumo::PlanEntry* entry,
                                     lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
