#pragma once

#include "TarvoCLI/Console.h"

#include <expected>
#include <string>

namespace tarvo {

/// The absolute path of a file or folder that the user named. When there is none, that has been said, and the
/// command answers with the code.
std::expected<std::string, ExitCode> givenPath(const std::string& word);

} // namespace tarvo
