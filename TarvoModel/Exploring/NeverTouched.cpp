#include "TarvoModel/Exploring/NeverTouched.h"

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

namespace tarvo {

NeverTouched neverTouched(const Preferences& preferences, const std::string& home,
                          const std::vector<std::string>& paths) {
    NeverTouched never{.folders = protectedFolders(preferences, home)};
    if (never.folders.empty()) {
        return never;
    }
    const lumo::PathGuard guard(home, never.folders);
    for (const std::string& path : paths) {
        if (!lumo::CleanupPlanner::touchesProtected({path}, never.folders) &&
            guard.protectedRefusal({path})) {
            never.leadThere.insert(path);
        }
    }
    return never;
}

} // namespace tarvo
