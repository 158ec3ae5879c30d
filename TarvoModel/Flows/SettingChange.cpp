#include "TarvoModel/Flows/SettingChange.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"
#include "Platform/LockFile.h"
#include "Platform/StateFile.h"
#include "TarvoModel/Flows/GivenPath.h"

#include <cerrno>
#include <chrono>

namespace tarvo {

namespace platform = lumo::platform;

std::optional<std::string> missingFolderText(const std::vector<std::string>& folders,
                                             const std::string& home) {
    for (const std::string& folder : pathsMeant(folders, home)) {
        if (!platform::isFolderThroughLinks(folder)) {
            return lumo::Words{"ojo: no existe la carpeta {}; mientras no exista no protege nada",
                               "mind: there is no folder {}; until there is, it protects nothing"}
                .with(lumo::printable(folder));
        }
    }
    return std::nullopt;
}

lumo::Result<ChangedSetting>
changeSetting(const Preference& key,
              const std::function<std::optional<lumo::JsonValue>(const Preferences&)>& valueNow,
              const std::string& home) {
    constexpr std::chrono::seconds patience{3};
    const std::string folder = lumo::OwnFiles::settings(home);
    // Where the folder cannot be made or locked, storing says why.
    (void)platform::makePrivateFolder(folder);
    const auto lock = platform::LockFile::takeFolder(folder, patience);
    if (!lock && lock.error().code == EWOULDBLOCK) {
        return lumo::failure(lumo::Words{"otro programa está cambiando los ajustes: vuelve a probar",
                                         "another program is changing the settings: try again"}
                                 .in());
    }
    ChangedSetting changed{.preferences = Preferences::load(home), .warning = {}};
    if (const auto stored = changed.preferences.store(key, valueNow(changed.preferences)); !stored) {
        return std::unexpected(stored.error());
    }
    if (&key == &static_cast<const Preference&>(preference::protectedFolders)) {
        changed.warning = missingFolderText(changed.preferences.value(preference::protectedFolders), home);
    }
    return changed;
}

} // namespace tarvo
