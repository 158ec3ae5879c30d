#pragma once

#include "LumoCore/Basics/System.h"
#include "LumoCore/Inventories/InstalledApp.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// What is installed on a machine, as far as it tells whose a folder is. Read once for a run and handed on.
struct Installed {
    std::vector<InstalledApp> apps;
    /// Where programs without a desktop icon stand: the folders of PATH, and the home's own ones.
    std::vector<std::string> programFolders = {};
    /// Names in the package manager's list, and of these what was removed and left its settings behind.
    std::set<std::string, std::less<>> packages = {};
    std::set<std::string, std::less<>> removedPackages = {};
    /// Folders with one entry for each installed Flatpak and Snap application; empty when it is not known
    /// where all of them would stand.
    std::vector<std::string> flatpakFolders = {};
    std::vector<std::string> snapFolders = {};

    /// What is installed here. On a Mac the applications alone.
    static Installed ofThisMachine(const std::string& home);
    /// The same for whoever has read the applications already.
    static Installed ofThisMachine(const std::string& home, std::vector<InstalledApp> apps);

    /// The application that a folder of that name belongs to. On a Mac `InstalledApp::related`. On Linux a
    /// name counts only as whole words: the application's, the last part of its identifier, or its program's,
    /// alone or at the beginning; then a program or a package of exactly that name. A few folders have the
    /// name of somebody else than their program. A leading point does not count, nor do words that would fit
    /// many.
    [[nodiscard]] std::optional<InstalledApp> related(std::string_view folderName,
                                                      System system = currentSystem()) const;

    /// What was uninstalled and left the folder behind, by name, where there is evidence of that: a Flatpak
    /// or Snap application that is not there any more, or a package that was removed. Never on a Mac.
    [[nodiscard]] std::optional<std::string> uninstalledOwnerOf(const std::string& path,
                                                                const std::string& home,
                                                                System system = currentSystem()) const;
};

} // namespace lumo
