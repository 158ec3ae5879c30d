#pragma once

#include "LumoCore/Scanning/Scanner.h"
#include "TarvoCLI/Console.h"

#include <expected>

namespace tarvo {

/// A scan with the home, the caches of installed applications and the clock of this machine. Shows what it is
/// doing on standard error while it runs. Where the home cannot be listed that has been said;
/// then, and when the user interrupted it, the command answers with the code.
std::expected<lumo::ScanReport, ExitCode> watchedScan(const std::vector<lumo::Rule>& rules,
                                                      const lumo::ScanOptions& options,
                                                      const Invocation& invocation);

} // namespace tarvo
