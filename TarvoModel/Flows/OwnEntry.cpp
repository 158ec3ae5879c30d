#include "TarvoModel/Flows/OwnEntry.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Folder.h"
#include "Platform/Place.h"
#include "Platform/Removal.h"
#include "Platform/StateFile.h"

#include <cerrno>

namespace tarvo::OwnEntry {

namespace platform = lumo::platform;

platform::SystemResult<void> write(const std::string& path, std::string_view text) {
    if (const auto made = platform::makePrivateFolder(std::string(lumo::parentOf(path))); !made) {
        return made;
    }
    return platform::replaceWhole(path, text);
}

platform::SystemResult<void> remove(const std::string& path) {
    if (platform::isMissing(path)) {
        return {};
    }
    const auto folder = platform::BaseFolder::open(std::string(lumo::parentOf(path)));
    if (!folder) {
        return std::unexpected(folder.error());
    }
    const auto place = folder->place(lumo::fileName(path));
    if (!place) {
        return std::unexpected(place.error());
    }
    const auto kind = platform::kindAt(*place);
    if (!kind) {
        return kind.error().isMissing() ? platform::SystemResult<void>() : std::unexpected(kind.error());
    }
    if (*kind != platform::EntryKind::file && *kind != platform::EntryKind::link) {
        return std::unexpected(platform::SystemError{EINVAL});
    }
    return platform::removeTree(*place);
}

} // namespace tarvo::OwnEntry
