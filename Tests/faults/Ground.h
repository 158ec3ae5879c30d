#pragma once

#include "Tests/support/Child.h"

#include <functional>
#include <string>

namespace tarvo::faults {

/// What the machine lends to this program: throw-away homes in memory, mounts that nobody else sees, and a
/// tracer that kills and fails system calls.
struct Ground {
    std::string folder;
    /// Why nothing can be mounted, and why no call can be traced; empty when it can be done.
    std::string whyNoMounts;
    std::string whyNoTracing;
    /// What stands before a command so that it runs without the rights of root, to whom every folder is open.
    testing::Arguments asOrdinaryUser;
    /// True when all points are to be tried and not only a sample (TARVO_FAULTS=long).
    bool isLong = false;
};

const Ground& ground();

/// Runs the tests where every TempHome stands in memory, in a file system that is private to this program and
/// its children, and where these are the only processes to be seen. Without the rights for that it is shared
/// memory among all processes. To be called once, before there are threads. Returns what the tests return.
int runTests(const std::function<int()>& tests);

} // namespace tarvo::faults
