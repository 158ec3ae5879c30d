#pragma once

#include "LumoCore/Scanning/Scanner.h"
#include "TarvoCLI/Console.h"

#include <optional>

namespace tarvo {

/// A scan with the home, the caches of installed applications and the clock of this machine. Shows what it is
/// doing on standard error while it runs. Absent when the user interrupted it.
std::optional<lumo::ScanReport> watchedScan(const std::vector<lumo::Rule>& rules,
                                            const lumo::ScanOptions& options, const Invocation& invocation);

} // namespace tarvo
