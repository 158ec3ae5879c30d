#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace tarvo {

/// What the application is busy with, one thing at a time. Everything starts from idle and ends there.
namespace phase {

struct Idle {
    friend bool operator==(const Idle&, const Idle&) = default;
};

/// The first pass of a scan: nothing is there to be seen yet, or the results of the scan before.
struct Scanning {
    friend bool operator==(const Scanning&, const Scanning&) = default;
};

/// The second pass: the first one's results are shown and can be ticked.
struct ScanningFolders {
    friend bool operator==(const ScanningFolders&, const ScanningFolders&) = default;
};

struct Cleaning {
    friend bool operator==(const Cleaning&, const Cleaning&) = default;
};

struct Explaining {
    std::int64_t done = 0; ///< Folders explained so far.
    std::int64_t total = 0;
    friend bool operator==(const Explaining&, const Explaining&) = default;
};

struct Archiving {
    std::string title; ///< Of the item.
    friend bool operator==(const Archiving&, const Archiving&) = default;
};

} // namespace phase

using Phase = std::variant<phase::Idle, phase::Scanning, phase::ScanningFolders, phase::Cleaning,
                           phase::Explaining, phase::Archiving>;

/// True when a scan, a cleanup, an explanation run or an archiving may begin.
bool isIdle(const Phase& phase);

/// True when what is ticked may be set back to the safe rows: there is a plan and nobody works on it.
bool maySelectSafe(const Phase& phase);

/// The status line while something is going on; absent when idle.
std::optional<std::string> busyText(const Phase& phase, lumo::Language language = lumo::currentLanguage(),
                                    lumo::System system = lumo::currentSystem());

/// What is said besides while there is nothing to be seen yet.
std::string firstLook(lumo::Language language = lumo::currentLanguage(),
                      lumo::System system = lumo::currentSystem());

/// The status line when idle: the free space and how long the scan took, or what the cleanup did that came
/// after the last look. A volume whose size the system does not say goes unmentioned.
std::string idleText(const lumo::VolumeInfo& volume, double scanSeconds,
                     const std::optional<CleanupSums>& lastCleanup,
                     lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
