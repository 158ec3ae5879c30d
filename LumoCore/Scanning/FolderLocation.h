#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Rules/HomePlaces.h"

#include <string>
#include <string_view>

namespace lumo {

/// Where in a home folder something lies.
enum class FolderLocation {
    caches,
    applicationSupport,
    containers,
    groupContainers,
    developer,
    hiddenHome,
    other,
    own, ///< Ours; told apart on Linux only.
};

template <>
struct EnumNames<FolderLocation> {
    static constexpr std::array<std::string_view, 8> values{
        "caches",    "applicationSupport", "containers", "groupContainers",
        "developer", "hiddenHome",         "other",      "own"};
};

/// The location of what lies below one of the known folders; these folders themselves are `other`, or
/// `hiddenHome`. Told by the path alone.
FolderLocation folderLocation(std::string_view path, std::string_view home, System system = currentSystem());
/// The same where the home's folders may have been moved.
FolderLocation folderLocation(std::string_view path, const HomePlaces& places);

/// The name that tells whose a path is: on Linux the one directly in a folder that many programs share, so
/// that the cache of a Flatpak application is known by the application; elsewhere the last component.
std::string_view ownersName(std::string_view path, std::string_view home, System system = currentSystem());
/// The same where the home's folders may have been moved.
std::string ownersName(std::string_view path, const HomePlaces& places);

/// The location in words.
std::string description(FolderLocation location, Language language = currentLanguage(),
                        System system = currentSystem());

} // namespace lumo
