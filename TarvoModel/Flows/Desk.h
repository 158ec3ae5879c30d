#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "LumoCore/Inventories/InstalledApp.h"
#include "Platform/Clock.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

/// Whose home, who works on it, and what time it is: every flow is given one. May be copied to other threads.
struct Desk {
    std::string home;    ///< Absolute, as the user spells it.
    std::string program; ///< For whoever finds the home locked.
    std::function<lumo::Date()> now;
    /// How long the machine has run, by which a wrong `now` is found out.
    std::function<std::optional<lumo::platform::BootMoment>()> boot = lumo::platform::bootMoment;
    /// The agent that asked, by the name it gives itself, for the log; absent for the user's own.
    std::optional<std::string> caller = {};
    /// What is installed, as those who got this desk or a copy of it find it; when absent each look is a new
    /// one. Only for what ends soon: applications come and go.
    std::shared_ptr<const lumo::InstalledApps> installed = {};
    std::string applicationPath = {}; ///< Of the running program: the project it lies in is never cleaned.

    /// On this machine, now. The program is what it is called, "tarvo clean".
    static Desk ofThisMachine(const std::string& home, std::string_view program);

    /// Those of the desk, or those of this moment.
    [[nodiscard]] std::shared_ptr<const lumo::InstalledApps> installedApps() const;
};

/// Takes the home's lock, which puts right what a program that died left behind, and waits a few seconds for
/// another program. A failure says in the interface language why not.
lumo::Result<lumo::HomeLock> lockHome(const lumo::PathGuard& guard, const Desk& desk);

/// The same without waiting, for what is done by the way.
lumo::Result<lumo::HomeLock> lockHomeAtOnce(const lumo::PathGuard& guard, const Desk& desk);

/// The cleanup log. A failure says why it cannot be read.
lumo::Result<std::vector<lumo::CleanupOutcome>> history(const Desk& desk);

/// The same with what a recovery could not write into it, for whoever holds the lock.
lumo::Result<std::vector<lumo::CleanupOutcome>> history(const Desk& desk, const lumo::HomeLock& lock);

} // namespace tarvo
