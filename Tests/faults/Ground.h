#pragma once

#include <string>
#include <vector>

/// What the machine lends to this program: throw-away homes in memory, mounts that nobody else sees, and a
/// tracer that kills and fails system calls.
namespace tarvo::faults::ground {

/// To be called once, before there are threads. Makes a file system in memory, private to this process and
/// its children, the place where every TempHome stands. Without the rights for that it is shared memory.
void prepare();
/// Takes away what `prepare` made.
void leave();

/// Why nothing can be mounted, and why no call can be traced; empty when it can be done.
const std::string& whyNoMounts();
const std::string& whyNoTracing();

/// What stands before a command so that it runs without the rights of root, to whom every folder is open.
const std::vector<std::string>& asOrdinaryUser();

/// True when all points are to be tried and not only a sample (TARVO_FAULTS=long).
bool isLong();

} // namespace tarvo::faults::ground
