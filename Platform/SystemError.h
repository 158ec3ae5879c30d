#pragma once

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

} // namespace lumo::platform
