#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarvo::bench {

/// One run of a program.
struct RunOutcome {
    double milliseconds = 0;
    double peakMebibytes = 0; ///< Never less than this program itself needs: a child starts out as its copy.
    std::string failure;      ///< Empty when the program ended with status 0; otherwise how it ended.
};

/// The file that would be started for `name`: `name` itself where it has a slash, else the first in `PATH`.
std::optional<std::string> findProgram(const std::string& name);

/// Starts `command` (a file, then its arguments), throws away what it prints, and waits for it.
RunOutcome timedRun(const std::vector<std::string>& command);

/// What `command` prints on standard output and standard error, however it ends.
std::string printedBy(const std::vector<std::string>& command);

} // namespace tarvo::bench
