#pragma once

#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoCLI/ReportSource.h"

#include <cstdint>
#include <expected>

namespace tarvo {

/// What summaries and answers about this disk are made of.
struct MeasuredDisk {
    std::shared_ptr<const lumo::ScanReport> report; ///< Never null.
    std::int64_t recoverable = 0;                   ///< What a cleanup would free now with no risk.
};

/// The report and what can be recovered. On failure what went wrong has been
/// said already, and the command answers with the code.
std::expected<MeasuredDisk, ExitCode> measuredDisk(const ReportSource& source, const Invocation& invocation);

} // namespace tarvo
