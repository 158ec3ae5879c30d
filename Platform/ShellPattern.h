#pragma once

#include <string>

namespace lumo::platform {

/// True when the name matches the shell pattern: "*" any run, "?" one character of UTF-8, case-sensitive, a
/// leading dot like any other character.
bool matchesShellPattern(const std::string& name, const std::string& pattern);

} // namespace lumo::platform
