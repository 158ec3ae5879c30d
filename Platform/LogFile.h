#pragma once

#include "Platform/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Files that grow by whole lines and are read line by line, so that a torn one costs itself alone.
namespace lumo::platform {

/// Adds lines, each ending in a line feed, with one write, and syncs them; makes the file (0600) if there is
/// none. A last line without its line feed gets one first. Returns the length before. When anything fails the
/// file is cut back to that length. Links and what is no regular file are refused.
SystemResult<std::int64_t> appendLines(const std::string& path, std::string_view lines);

/// Cuts the file back to a length that it had before; with 0 it goes.
SystemResult<void> cutBack(const std::string& path, std::int64_t length);

/// Hands every line to the visitor, without its line feed; those longer than `mostLineBytes` are passed over.
/// A missing file has no lines.
SystemResult<void> visitLines(const std::string& path, std::size_t mostLineBytes,
                              const std::function<void(std::string_view line)>& visitor);

/// Makes the folder's names durable.
SystemResult<void> syncFolder(const std::string& folder);

} // namespace lumo::platform
