#include "TarvoCLI/DiskFacts.h"

#include "TarvoCLI/PlanArguments.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

namespace tarvo {

std::expected<MeasuredDisk, ExitCode> measuredDisk(const ReportSource& source, const Invocation& invocation) {
    const auto options = cleanupOptions({}, invocation);
    if (!options) {
        return std::unexpected(options.error());
    }
    auto report = reportFrom(source, invocation);
    if (!report) {
        return std::unexpected(report.error());
    }
    const std::int64_t recoverable =
        lumo::CleanupPlanner::safeRecoverableBytes(planFor(*report, *options, invocation.home));
    return MeasuredDisk{.report = std::move(*report), .recoverable = recoverable};
}

} // namespace tarvo
