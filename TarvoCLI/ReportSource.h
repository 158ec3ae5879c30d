#pragma once

#include "LumoCore/Scanning/ScanReport.h"
#include "Platform/SystemError.h"
#include "TarvoCLI/Console.h"

#include <CLI/CLI.hpp>

#include <expected>
#include <memory>
#include <optional>
#include <string>

namespace tarvo {

/// Where a command gets its scan report from.
struct ReportSource {
    std::optional<std::string> file; ///< "-" for standard input; absent to make one.
};

void addReportOption(CLI::App& command, ReportSource& source);

/// The bytes of a file that a command was given, or of standard input for "-".
lumo::platform::SystemResult<std::string> inputFrom(const std::string& file);

/// The saved report, or a new full scan that stores nothing. On failure what went wrong has been said
/// already, and the command answers with the code.
std::expected<std::shared_ptr<const lumo::ScanReport>, ExitCode> reportFrom(const ReportSource& source,
                                                                            const Invocation& invocation);

} // namespace tarvo
