#include "Fuzz/Check.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"

// A report that is accepted can be added up and planned, and is the same after writing it down.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto report = lumo::scanReportFromJson(text(data, size));
    if (!report) {
        return 0;
    }
    check(report->safeBytes() >= 0 && report->unreadableCount() >= 0);
    for (const lumo::Safety safety : {lumo::Safety::safe, lumo::Safety::review, lumo::Safety::keep}) {
        check(report->bytes(safety) >= 0);
    }
    lumo::CleanupPlanner::plan(*report, {},
                               {.now = report->scannedAt,
                                .isRunning = [](const std::string&) { return false; },
                                .nameOf = [](const std::string& bundleID) { return bundleID; },
                                .language = lumo::Language::en});
    const std::string written = dumpJson(encode(*report), lumo::JsonLayout::indented);
    check(lumo::scanReportFromJson(written) == report);
    return 0;
}
