#pragma once

#include "StopProgram.h"

#include <charconv>
#include <string_view>

namespace tarvo::bench {

/// The number that an argument is, whole and at least `fewest`; anything else ends the program with `usage`.
template <typename Number>
Number numberOf(std::string_view text, const char* usage, Number fewest) {
    Number number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc{} || end != text.data() + text.size() || number < fewest) {
        stopProgram(usage);
    }
    return number;
}

} // namespace tarvo::bench
