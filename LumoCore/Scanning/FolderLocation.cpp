#include "LumoCore/Scanning/FolderLocation.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace lumo {

namespace {

/// A folder of a home with one folder for each program in it, and what those are.
struct Shared {
    std::string_view folder;
    FolderLocation location;
    std::string_view cache = {}; ///< In each of them, the one that is a cache.
};

constexpr std::array<Shared, 6> sharedOnLinux{{{"/.cache/", FolderLocation::caches},
                                               {"/.config/", FolderLocation::applicationSupport},
                                               {"/.local/share/", FolderLocation::applicationSupport},
                                               {"/.local/state/", FolderLocation::applicationSupport},
                                               {"/.var/app/", FolderLocation::containers, "cache"},
                                               {"/snap/", FolderLocation::containers, "common/.cache"}}};

const Shared* sharedAbove(std::string_view inHome) {
    const auto found = std::ranges::find_if(
        sharedOnLinux, [&](const Shared& shared) { return inHome.starts_with(shared.folder); });
    return found != sharedOnLinux.end() ? &*found : nullptr;
}

bool isOwn(std::string_view path, std::string_view home) {
    const std::string homePath(home);
    return isInside(path, OwnFiles::support(homePath)) || isInside(path, OwnFiles::caches(homePath)) ||
           isInside(path, OwnFiles::settings(homePath));
}

std::optional<FolderLocation> locationOnLinux(std::string_view path, std::string_view home) {
    if (isOwn(path, home)) {
        return FolderLocation::own;
    }
    const std::string_view inHome = path.substr(home.size());
    const Shared* shared = sharedAbove(inHome);
    if (shared == nullptr) {
        return std::nullopt;
    }
    const std::string_view below = inHome.substr(shared->folder.size());
    const std::size_t slash = below.find('/');
    const bool isCache = !shared->cache.empty() && slash != std::string_view::npos &&
                         isInside(below.substr(slash + 1), shared->cache);
    return isCache ? FolderLocation::caches : shared->location;
}

} // namespace

FolderLocation folderLocation(std::string_view path, std::string_view home, System system) {
    if (!path.starts_with(home)) {
        return FolderLocation::other;
    }
    if (const auto onLinux =
            system == System::linux ? locationOnLinux(path, home) : std::optional<FolderLocation>()) {
        return *onLinux;
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

FolderLocation folderLocation(std::string_view path, const HomePlaces& places) {
    return folderLocation(places.usual(path), places.home(), places.system());
}

std::string ownersName(std::string_view path, const HomePlaces& places) {
    return std::string(ownersName(places.usual(path), places.home(), places.system()));
}

std::string_view ownersName(std::string_view path, std::string_view home, System system) {
    if (system == System::linux && isInside(path, home)) {
        const std::string_view inHome = path.substr(home.size());
        if (const Shared* shared = sharedAbove(inHome)) {
            const std::string_view below = inHome.substr(shared->folder.size());
            return below.substr(0, below.find('/'));
        }
        if (inHome.starts_with("/.") && !inHome.starts_with("/.local/") && !inHome.starts_with("/.var/")) {
            return inHome.substr(1, inHome.find('/', 1) - 1);
        }
    }
    return fileName(path);
}

std::string description(FolderLocation location, Language language, System system) {
    switch (location) {
    case FolderLocation::caches:
        return SystemWords{
            .macos = {"carpeta de cachés de macOS (las apps deben poder regenerar lo que hay aquí)",
                      "macOS caches folder (apps must be able to recreate what's here)"},
            .linux = {"carpeta de cachés (los programas vuelven a crear lo que hay aquí)",
                      "caches folder (programs recreate what's here)"}}
            .on(system)
            .in(language);
    case FolderLocation::applicationSupport:
        return SystemWords{.macos = {"Application Support (datos y ajustes de apps)",
                                     "Application Support (app data and settings)"},
                           .linux = {"datos y ajustes de programas", "data and settings of programs"}}
            .on(system)
            .in(language);
    case FolderLocation::containers:
        return SystemWords{.macos = {"contenedor de una app con sandbox", "a sandboxed app's container"},
                           .linux = {"datos de una app de Flatpak o Snap", "data of a Flatpak or Snap app"}}
            .on(system)
            .in(language);
    case FolderLocation::groupContainers:
        return Words{"datos compartidos entre apps de un mismo desarrollador",
                     "data shared between apps from the same developer"}
            .in(language);
    case FolderLocation::developer:
        return Words{"herramientas de desarrollo de Apple", "Apple developer tools"}.in(language);
    case FolderLocation::hiddenHome:
        return SystemWords{
            .macos = {"carpeta oculta en la carpeta personal (suele ser de herramientas de terminal o de IA)",
                      "hidden folder in the home folder (usually from terminal or AI tools)"},
            .linux = {"carpeta oculta en la carpeta personal (los programas guardan ahí datos y ajustes)",
                      "hidden folder in the home folder (programs keep data and settings there)"}}
            .on(system)
            .in(language);
    case FolderLocation::own:
        return Words{"carpeta propia de Tarvo AI", "Tarvo AI's own folder"}.in(language);
    case FolderLocation::other:
        break;
    }
    return Words{"otra ubicación", "other location"}.in(language);
}

} // namespace lumo
