#pragma once

#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoCLI/Console.h"

#include <string>

namespace tarvo {

/// A scan report for a person to read: how full the disk is, what can go, what needs a look, what nobody
/// knows.
std::string reportText(const lumo::ScanReport& report, const Invocation& invocation);

/// What a safety is called, and the colour it has.
std::string headingOf(lumo::Safety safety);
Tint tintOf(lumo::Safety safety);

} // namespace tarvo
