#pragma once

#include <string>
#include <vector>

namespace lumo::platform {

/// One process, by the names under which its program may be known.
struct RunningProcess {
    std::string executable;    ///< File name of its program; empty when the system hides it.
    std::string argumentZero;  ///< File name part of how it was called.
    std::string applicationID; ///< What the desktop started it as; empty when unknown.
    std::string path = {};     ///< Of its program, absolute; empty when the system hides it.
};

/// The processes that can be seen now.
std::vector<RunningProcess> runningProcesses();

} // namespace lumo::platform
