#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>

namespace lumo::platform {

/// The string values under those keys at the top level of a property list, XML or binary, without those that
/// hold a zero byte; absent when the file cannot be read, is damaged, is larger than 4 MiB, has thousands of
/// nested lists or holds no dictionary.
std::optional<std::map<std::string, std::string>> readPropertyListStrings(const std::string& path,
                                                                          std::span<const char* const> keys);

/// The same from bytes in memory.
std::optional<std::map<std::string, std::string>> parsePropertyListStrings(const std::string& bytes,
                                                                           std::span<const char* const> keys);

} // namespace lumo::platform
