#include "TarvoCLI/ReportSource.h"

#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/StateFile.h"
#include "TarvoCLI/WatchedScan.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/ScanPass.h"

namespace tarvo {

using lumo::Words;

namespace {

ExitCode refuse(const std::string& file, const std::string& reason) {
    return complain(Words{"{} no es un informe que pueda leer ({}); haz uno con tarvo "
                          "analizar --json",
                          "{} is no report that can be read ({}); make one with tarvo scan "
                          "--json"}
                        .with(lumo::printable(file), lumo::printable(reason)),
                    ExitCode::usage);
}

} // namespace

void addReportOption(CLI::App& command, ReportSource& source) {
    command
        .add_option("--report", source.file,
                    Words{"usar este informe guardado en vez de analizar; - para la entrada estándar",
                          "use this saved report instead of scanning; - for standard input"}
                        .in())
        ->type_name(Words{"FICHERO", "FILE"}.in());
}

lumo::platform::SystemResult<std::string> inputFrom(const std::string& file) {
    constexpr int standardInput = 0;
    return file == "-" ? lumo::platform::readDescriptor(standardInput, lumo::mostJsonBytes)
                       : lumo::platform::readWhole(file, lumo::mostJsonBytes);
}

std::expected<std::shared_ptr<const lumo::ScanReport>, ExitCode> reportFrom(const ReportSource& source,
                                                                            const Invocation& invocation) {
    if (!source.file) {
        auto report =
            watchedScan(rulesFor(ScanPass::full, invocation.home), {.home = invocation.home}, invocation);
        if (!report) {
            return std::unexpected(report.error());
        }
        return std::make_shared<const lumo::ScanReport>(std::move(*report));
    }
    const auto bytes = inputFrom(*source.file);
    if (!bytes) {
        return std::unexpected(refuse(*source.file, lumo::reasonText(bytes.error())));
    }
    auto report = savedReport(*bytes);
    if (!report) {
        return std::unexpected(refuse(*source.file, report.error().message));
    }
    return std::make_shared<const lumo::ScanReport>(std::move(*report));
}

} // namespace tarvo
