#pragma once

#include "TarvoCLI/Console.h"

#include <optional>
#include <string_view>

namespace tarvo {

/// Whether somebody is there to be asked. Says what to do about it when not.
std::optional<ExitCode> cannotAsk(bool isConfirmed);

/// Asks on standard error and waits for a word on standard input. Absent when the answer is yes; otherwise
/// the command answers with the code.
std::optional<ExitCode> declined(std::string_view question);

} // namespace tarvo
