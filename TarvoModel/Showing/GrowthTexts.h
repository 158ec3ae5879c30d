#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/History/DiskSnapshot.h"

#include <string>
#include <vector>

namespace tarvo {

/// Why nothing is compared yet, and when there will be something: of the stored snapshots none was a
/// baseline.
std::string noBaselineText(const std::vector<lumo::DiskSnapshot>& stored,
                           lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
