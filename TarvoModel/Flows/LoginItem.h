#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Result.h"

#include <string>
#include <string_view>

/// Starting with the user's session where desktops start what has an entry in a folder (the autostart
/// entries of freedesktop.org). The folder is `configFolder` + "/autostart": what the user's environment
/// names for settings, or home + "/.config" when that is empty or no absolute path.
namespace tarvo::LoginItem {

/// Where the entry stands.
std::string entryPath(const std::string& home, const std::string& configFolder = {});

/// The entry that starts the program, whose path is absolute.
std::string entryText(std::string_view program);

/// True when there is an entry that the desktop would start. The user may have switched it off in the
/// desktop's own settings, which leave the file and mark it as hidden or not enabled.
bool isOn(const std::string& home, const std::string& configFolder = {});

/// Writes the entry, in place of any earlier one, or removes it. Nothing to remove is a success. A folder or
/// anything else that stands in its place is left alone and is a failure, whose message is `entryErrorText`.
lumo::Result<void> set(const std::string& home, const std::string& program, bool on,
                       const std::string& configFolder = {},
                       lumo::Language language = lumo::currentLanguage());

/// What is said when the entry could be neither written nor removed.
std::string entryErrorText(std::string_view reason, lumo::Language language = lumo::currentLanguage());

/// What is said where the system's own settings decide which applications start.
std::string loginItemErrorText(bool isInstalled, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo::LoginItem
