#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Language.h"

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
};

template <>
struct EnumNames<FolderLocation> {
    static constexpr std::array<std::string_view, 7> values{
        "caches", "applicationSupport", "containers", "groupContainers", "developer", "hiddenHome", "other"};
};

/// The location of what lies below one of the known folders; these folders themselves are `other`.
FolderLocation folderLocation(std::string_view path, std::string_view home);

/// The location in words.
std::string description(FolderLocation location, Language language = currentLanguage());

} // namespace lumo
