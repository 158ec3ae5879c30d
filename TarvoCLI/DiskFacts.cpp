#include "TarvoCLI/DiskFacts.h"

#include "TarvoApp/Model/CleanupPlanning.h"
#include "TarvoCLI/PlanArguments.h"

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
