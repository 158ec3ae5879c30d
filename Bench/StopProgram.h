#pragma once

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace tarvo::bench {

/// Ends the program with status 1 and one line on standard error. A benchmark that cannot do what it was
/// asked has nothing useful to hand on, so none of these programs carries failures any further.
[[noreturn]] inline void stopProgram(std::string_view message) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(message.size()), message.data());
    std::exit(EXIT_FAILURE);
}

/// As above, with the reason the last system call left in `errno`.
[[noreturn]] inline void stopOnFailedCall(std::string_view subject) {
    stopProgram(std::string(subject) + ": " + std::strerror(errno));
}

} // namespace tarvo::bench
