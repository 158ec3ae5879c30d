#pragma once

#include "TarvoModel/Flows/Preferences.h"

#include <functional>
#include <optional>
#include <string>

/// Changing one preference of a home, whichever program does.
namespace tarvo {

struct ChangedSetting {
    Preferences preferences;            ///< As they are stored now.
    std::optional<std::string> warning; ///< What is odd about the new value, for the user.
};

/// Stores what `valueNow` makes of the preferences as they are by then; with none, the standard value holds
/// again. Two programs that change settings at the same moment wait for each other, so that no change is
/// lost. Fails in words for the user while the store is damaged or cannot be read, when the value is none
/// that the key allows, and when it cannot be written.
lumo::Result<ChangedSetting>
changeSetting(const Preference& key,
              const std::function<std::optional<lumo::JsonValue>(const Preferences&)>& valueNow,
              const std::string& home);

} // namespace tarvo
