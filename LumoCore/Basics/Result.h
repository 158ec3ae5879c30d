#pragma once

#include <expected>
#include <string>

namespace lumo {

/// Why something failed as a whole, in the interface language or, for malformed data, in English.
struct [[nodiscard]] Failure {
    std::string message;

    friend bool operator==(const Failure&, const Failure&) = default;
};

template <class Value>
using Result = std::expected<Value, Failure>;

inline std::unexpected<Failure> failure(std::string message) {
    return std::unexpected(Failure{std::move(message)});
}

} // namespace lumo
