#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

namespace tarvo {

/// How a cleanup is confirmed.
struct AskedHow {
    bool isConfirmed = false; ///< Nothing is asked.
    bool isDryRun = false;    ///< Shown, and nothing touched.
};

/// Plans, shows what would happen, asks once, cleans, and tells what came of it: the same for every command
/// that cleans.
ExitCode askedCleanup(PlanRequest request, const AskedHow& how, const Desk& desk,
                      const Invocation& invocation);

} // namespace tarvo
