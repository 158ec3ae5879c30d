#pragma once

#include "Tests/support/TempHome.h"

#include <functional>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace tarvo::testing {

/// A chain of folders named "d", with folders "a" and "e" at its side where asked for, made by descriptors
/// since its paths are longer than the system takes. Each level holds one file of 1 byte. Returns the deepest
/// folder, open.
int makeChain(const std::string& root, int levels, bool hasSiblings);

/// Lowers the limit of descriptors while it lives.
class DescriptorLimit final {
  public:
    explicit DescriptorLimit(rlim_t most) {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit lower{most, before_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &lower);
    }
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &before_); }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

  private:
    rlimit before_ = {};
};

struct Mount {
    std::string source; ///< A folder to be seen at the target as well; empty for an empty file system.
    std::string target;
};

/// Runs the work in a child process that alone sees these mounts.
Outcome withMounts(const std::vector<Mount>& mounts, const std::function<bool()>& work);

} // namespace tarvo::testing
