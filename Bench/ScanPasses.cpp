#include "TarvoModel/Flows/ScanResult.h"

#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

namespace {

/// One pass as the window makes it. Stores nothing, so that every round finds the same home.
tarvo::ScanResult resultOf(tarvo::ScanPass pass, const tarvo::Desk& desk, lumo::ScanMemory& memory) {
    tarvo::PassRequest request{.pass = pass,
                               .desk = desk,
                               .plan = {},
                               .snapshot = tarvo::Snapshot::dropped,
                               .full = {},
                               .cleaned = {}};
    request.memory = &memory;
    return *tarvo::scanResult(request); // Absent after a stop only.
}

} // namespace

// What the window does for one scan, without the window, for the benchmark: the quick pass and the full one,
// which knows what the first has measured. With --full as the first argument only the full one.
int main(int count, char** arguments) {
    if (count < 2) {
        std::fputs("usage: scan-passes [--full] HOME\n", stderr);
        return 2;
    }
    const tarvo::Desk desk = tarvo::Desk::ofThisMachine(arguments[count - 1], "scan-passes");
    lumo::ScanMemory memory;
    if (std::string_view(arguments[1]) != "--full") {
        resultOf(tarvo::ScanPass::quick, desk, memory);
    }
    const tarvo::ScanResult result = resultOf(tarvo::ScanPass::full, desk, memory);
    std::printf("%zu findings, %zu projects, %zu unclassified\n", result.report->findings.size(),
                result.report->projects.size(), result.report->unclassified.size());
    return 0;
}
