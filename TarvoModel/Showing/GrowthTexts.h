#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/History/DiskSnapshot.h"
#include "Platform/SystemError.h"

#include <string>
#include <vector>

namespace tarvo {

/// Why nothing is compared yet, and when there will be something: of the stored snapshots none was a
/// baseline.
std::string noBaselineText(const std::vector<lumo::DiskSnapshot>& stored,
                           lumo::Language language = lumo::currentLanguage());

/// Why nothing can be compared: the stored snapshots, in the file at the path, cannot be read.
std::string unreadableSnapshotsText(const std::string& path, const lumo::platform::SystemError& error,
                                    lumo::Language language = lumo::currentLanguage());

/// Instead of lines, when nothing changed by as much as is worth a line.
std::string nothingChangedText(lumo::Language language = lumo::currentLanguage());

/// The name of what is stored under that identifier as everything else that shows it says it: a folder of a
/// project by the project's whole place, where the stored name has its last part alone.
std::string growthName(const std::string& id, const std::string& stored);

} // namespace tarvo
