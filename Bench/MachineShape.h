#pragma once

#include <cstdint>
#include <string>

namespace tarvo::bench {

/// What figures depend on besides the programs.
struct MachineShape {
    long cores = 0;
    double memoryGibibytes = 0;
    std::string kernel;     ///< Name and release.
    std::string fileSystem; ///< Of the measured folder.
};

MachineShape machineShapeAt(const std::string& folder);

} // namespace tarvo::bench
