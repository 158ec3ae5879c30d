#pragma once

#include "TarvoCLI/Console.h"

#include <expected>
#include <string>

namespace tarvo {

/// The path of a file or folder that the user named, as `pathMeant` reads it. When there is none, that has
/// been said, and the command answers with the code.
std::expected<std::string, ExitCode> givenPath(const std::string& word, const Invocation& invocation);

} // namespace tarvo
