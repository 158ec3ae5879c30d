#pragma once

#include "LumoCore/Cleanup/HomeLock.h"
#include "TarvoCLI/Console.h"

#include <expected>
#include <optional>
#include <string_view>

namespace tarvo {

/// Takes the home's lock for a command that the user waits for. On failure what is wrong has been said, and
/// the command answers with the code.
std::expected<lumo::HomeLock, ExitCode> lockHome(const lumo::PathGuard& guard, std::string_view command);

/// Refuses root on somebody else's home before anything long is begun.
std::optional<ExitCode> refuseForeign(const Invocation& invocation);

/// What this process is called in the lock: the command and the process's number.
std::string programName(std::string_view command);

/// The cleanup log, with what a recovery could not write into it. On failure what is wrong has been said.
std::expected<std::vector<lumo::CleanupOutcome>, ExitCode>
readHistory(const std::string& home, const std::vector<lumo::CleanupOutcome>& unlogged = {});

} // namespace tarvo
