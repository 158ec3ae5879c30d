#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Inventories/DesktopEntry.h"
#include "LumoCore/Inventories/InstalledApp.h"
#include "Platform/RunningProcesses.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// Which applications were running at one moment, and how they are called.
class AppStatus final {
  public:
    AppStatus(std::vector<InstalledApp> installed, std::vector<DesktopEntry> entries,
              std::vector<platform::RunningProcess> processes);

    /// The state of this machine now.
    static AppStatus ofThisMachine(const InstalledApps& installed);

    /// True when the application with that identifier was running. An application is known by the names of
    /// its processes, by the program of its desktop entry or the folder of that, or by the unit that the
    /// desktop started it in. A well-known one has the same answer for all its identifiers; a group
    /// ("code-editors", "chat-apps") is running while one of its applications is.
    [[nodiscard]] bool isRunning(const std::string& bundleID) const;

    /// The name to show for an identifier: a running application's own, a well-known one, that of an
    /// installed application, or else the identifier itself.
    /// Of a group that of the one that is open.
    [[nodiscard]] std::string name(const std::string& bundleID) const;

    /// The name of a well-known application or group, whether it is here or not; otherwise the identifier.
    static std::string wellKnownName(const std::string& identifier, Language language = currentLanguage());

  private:
    [[nodiscard]] const DesktopEntry* entryOf(std::string_view identifier) const;

    std::vector<InstalledApp> installed_;
    std::vector<DesktopEntry> entries_;
    std::vector<platform::RunningProcess> processes_;
};

} // namespace lumo
