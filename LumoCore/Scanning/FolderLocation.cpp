#include "LumoCore/Scanning/FolderLocation.h"

#include "LumoCore/Basics/Words.h"

#include <utility>

namespace lumo {

FolderLocation folderLocation(std::string_view path, std::string_view home) {
    if (!path.starts_with(home)) {
        return FolderLocation::other;
    }
    const std::string_view inHome = path.substr(home.size());
    for (const auto& [folder, location] :
         {std::pair<std::string_view, FolderLocation>{"/Library/Caches/", FolderLocation::caches},
          {"/Library/Application Support/", FolderLocation::applicationSupport},
          {"/Library/Containers/", FolderLocation::containers},
          {"/Library/Group Containers/", FolderLocation::groupContainers},
          {"/Library/Developer/", FolderLocation::developer},
          {"/.", FolderLocation::hiddenHome}}) {
        if (inHome.starts_with(folder)) {
            return location;
        }
    }
    return FolderLocation::other;
}

std::string description(FolderLocation location, Language language) {
    switch (location) {
    case FolderLocation::caches:
        return Words{"carpeta de cachés de macOS (las apps deben poder regenerar lo que hay aquí)",
                     "macOS caches folder (apps must be able to recreate what's here)"}
            .in(language);
    case FolderLocation::applicationSupport:
        return Words{"Application Support (datos y ajustes de apps)",
                     "Application Support (app data and settings)"}
            .in(language);
    case FolderLocation::containers:
        return Words{"contenedor de una app con sandbox", "a sandboxed app's container"}.in(language);
    case FolderLocation::groupContainers:
        return Words{"datos compartidos entre apps de un mismo desarrollador",
                     "data shared between apps from the same developer"}
            .in(language);
    case FolderLocation::developer:
        return Words{"herramientas de desarrollo de Apple", "Apple developer tools"}.in(language);
    case FolderLocation::hiddenHome:
        return Words{"carpeta oculta en la carpeta personal (suele ser de herramientas de terminal o de IA)",
                     "hidden folder in the home folder (usually from terminal or AI tools)"}
            .in(language);
    case FolderLocation::other:
        break;
    }
    return Words{"otra ubicación", "other location"}.in(language);
}

} // namespace lumo
