#pragma once

#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoCLI/Console.h"

#include <string>

namespace tarvo {

/// Whether the identifiers stand beside what can be cleaned: the words that --include and --only take.
enum class Identifiers { hidden, shown };

/// A scan report for a person to read: how full the disk is, what can go, what needs a look, what nobody
/// knows. `recoverable` is what a cleanup frees now with no risk, in bytes.
std::string reportText(const lumo::ScanReport& report, std::int64_t recoverable, Identifiers identifiers,
                       const Invocation& invocation);

/// The color that a safety has.
Tint tintOf(lumo::Safety safety);

} // namespace tarvo
