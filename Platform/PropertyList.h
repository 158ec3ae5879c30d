#pragma once

#include <map>
#include <optional>
#include <string>

namespace lumo::platform {

/// The string values at the top level of a property list, XML or binary; absent when the file cannot be read,
/// is damaged, is larger than 4 MiB, has thousands of nested lists or holds no dictionary.
std::optional<std::map<std::string, std::string>> readPropertyListStrings(const std::string& path);

/// The same from bytes in memory.
std::optional<std::map<std::string, std::string>> parsePropertyListStrings(const std::string& bytes);

} // namespace lumo::platform
