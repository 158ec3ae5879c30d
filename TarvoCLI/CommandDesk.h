#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Flows/Desk.h"

#include <optional>
#include <string_view>

namespace tarvo {

/// The desk at which a command works, by its English name.
Desk deskOf(const Invocation& invocation, std::string_view command);

/// Refuses root on somebody else's home before anything long is begun.
std::optional<ExitCode> refuseForeign(const Invocation& invocation);

} // namespace tarvo
