#pragma once

#include "TarvoModel/Flows/Preferences.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Changing one preference of a home, whichever program does.
namespace tarvo {

struct ChangedSetting {
    Preferences preferences;            ///< As they are stored now.
    std::optional<std::string> warning; ///< What is odd about the new value, for the user.
};

/// What is odd about folders that are to be protected: the first that is not there, which is most often a
/// misspelt one and protects nothing. Absent when all are.
std::optional<std::string> missingFolderText(const std::vector<std::string>& folders,
                                             const std::string& home);

/// Stores what `valueNow` makes of the preferences as they are by then; with none, the standard value holds
/// again. Two programs that change settings at the same moment wait for each other, so that no change is
/// lost. Fails in words for the user while the store is damaged or cannot be read, when the value is none
/// that the key allows, and when it cannot be written.
lumo::Result<ChangedSetting>
changeSetting(const Preference& key,
              const std::function<std::optional<lumo::JsonValue>(const Preferences&)>& valueNow,
              const std::string& home);

} // namespace tarvo
