#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "Platform/MountedVolumes.h"
#include "TarvoModel/Showing/Phase.h"

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// When a window scans by itself, and the disks beside the start-up disk.
namespace tarvo {

/// How long the monitor sleeps between two looks.
inline constexpr std::chrono::seconds monitorInterval{60};

/// A report older than this is replaced when there is time for it.
inline constexpr std::chrono::seconds rescanAge{10800};

/// True when the monitor is to scan: the last report is older than three hours and nothing else goes on. The
/// first scan is not the monitor's.
bool isRescanDue(const std::optional<lumo::Date>& lastScan, const Phase& phase, lumo::Date now);

/// A mounted volume.
using Volume = lumo::platform::MountedVolume;

/// Of the mounted volumes those that a person would call another disk: mounted somewhere in one of the
/// folders, and not the start-up disk. By name.
std::vector<Volume> otherVolumes(const std::vector<Volume>& mounted,
                                 std::span<const std::string_view> folders = lumo::platform::volumeFolders());

/// What is said when nothing of a volume could be read.
std::string unreadableVolumeText(const Volume& volume, lumo::Language language = lumo::currentLanguage(),
                                 lumo::System system = lumo::currentSystem());

/// What the button does that scans.
std::string scanAgainHelp(lumo::Language language = lumo::currentLanguage(),
                          lumo::System system = lumo::currentSystem());

} // namespace tarvo
