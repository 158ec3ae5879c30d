#pragma once

#include "Platform/SystemError.h"

#include <string>
#include <string_view>

/// Small files of ours that stand among another program's settings, which starts us by them: the desktop's
/// autostart entries, the units of the session's service manager.
namespace tarvo::OwnEntry {

/// Writes the file, in place of any earlier one, and makes the folders on the way. A folder or anything else
/// that stands in its place, or that a link there leads to, is left alone and is a failure.
lumo::platform::SystemResult<void> write(const std::string& path, std::string_view text);

/// Removes the file, or the link itself where there is one. Nothing to remove is a success; a folder or
/// anything else is left alone and is a failure.
lumo::platform::SystemResult<void> remove(const std::string& path);

} // namespace tarvo::OwnEntry
