#include "TarvoCLI/DiskFacts.h"

#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/PlanArguments.h"

namespace tarvo {

std::expected<MeasuredDisk, ExitCode> measuredDisk(const ReportSource& source, const Invocation& invocation) {
    const Desk desk = deskOf(invocation, "summary");
    if (const auto refused = refuseUntrustedPreferences(desk)) {
        return std::unexpected(*refused);
    }
    auto report = reportFrom(source, invocation);
    if (!report) {
        return std::unexpected(report.error());
    }
    return MeasuredDisk{.report = *report, .recoverable = recoverableBytes(*report, desk)};
}

} // namespace tarvo
