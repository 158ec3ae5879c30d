#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Flows/Cleaning.h"

namespace tarvo {

/// Tells what came of a cleanup, as lines or as the document, and answers with the command's exit code: not
/// all is well when something failed, was left out or could not be logged.
ExitCode reportCleaned(const Cleaned& cleaned, const Invocation& invocation);

} // namespace tarvo
