#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::bench {

/// How long it takes from the start of `command` (a file, then its arguments) on a terminal of its own, of
/// 100 columns and 30 rows, until it has written that text there. Then it is ended. A program that ends or
/// shows nothing of the kind for a minute ends this one.
double millisecondsUntilShown(const std::vector<std::string>& command, std::string_view text);

} // namespace tarvo::bench
