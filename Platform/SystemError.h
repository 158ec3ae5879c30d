#pragma once

#include <cerrno>
#include <expected>
#include <string>

namespace lumo::platform {

/// Why a system call failed.
struct SystemError {
    int code = 0; ///< An errno value.

    /// The system's own words for it, in English ("Permission denied").
    [[nodiscard]] std::string reason() const;
    /// True when there is nothing at the path: no entry, or no folder on the way to it.
    [[nodiscard]] bool isMissing() const;

    friend bool operator==(const SystemError&, const SystemError&) = default;
};

template <class Value>
using SystemResult = std::expected<Value, SystemError>;

/// The failure of a call that left that errno value.
inline std::unexpected<SystemError> failed(int code) {
    return std::unexpected(SystemError{code});
}

/// Makes a call that answers -1 and EINTR when a signal came in between, until none does.
template <class Call>
auto untilNotInterrupted(const Call& call) {
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) {
            return result;
        }
    }
}

} // namespace lumo::platform
