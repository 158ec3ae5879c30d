#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ArchiveTables.h"
#include "LumoCore/Cleanup/Archiver.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "Platform/Folder.h"

#include <algorithm>

namespace lumo::Archiver {

namespace {

/// What archiving the item at that path below the home would break.
std::optional<Words> breakageAt(std::string_view path, std::string_view home, System system) {
    const std::vector<std::string_view> below = components(path.substr(home.size() + 1));
    if (isMainFolder(std::string(path), std::string(home), system)) {
        return SystemWords{.macos = {"«{}» es una carpeta de macOS: elige una de dentro.",
                                     "“{}” is a macOS folder: pick one inside it."},
                           .linux = {"«{}» es una de tus carpetas principales: elige una de dentro.",
                                     "“{}” is one of your main folders: pick one inside it."}}
            .on(system);
    }
    if (below.front() == "Library") {
        return Words{"Lo que hay en Library es de las apps: archivarlo las rompería.",
                     "What's in Library belongs to apps: archiving it would break them."};
    }
    if (std::ranges::any_of(components(path), [](std::string_view component) {
            return ArchiveTables::isPackageExtension(ArchiveTables::extensionOf(component));
        })) {
        return Words{"«{}» es una app o una biblioteca (o está dentro de una): archivarla la rompería.",
                     "“{}” is an app or a library (or inside one): archiving it would break it."};
    }
    if (std::ranges::any_of(below, [](std::string_view component) { return component.starts_with('.'); })) {
        return Words{"«{}» está en una carpeta oculta de alguna herramienta: archivarla la rompería.",
                     "“{}” is in a hidden folder that a tool uses: archiving it would break it."};
    }
    return std::nullopt;
}

/// The same for what the path leads to, links followed; only what is in the home is judged.
std::optional<Words> breakageBehind(const std::string& path, const std::string& home, System system) {
    const auto real = platform::withoutLinks(path);
    const auto realHome = platform::withoutLinks(home);
    if (!real || !realHome || !real->starts_with(*realHome + "/")) {
        return std::nullopt;
    }
    return breakageAt(*real, *realHome, system);
}

} // namespace

bool isMainFolder(const std::string& path, const std::string& home, System system) {
    if (!path.starts_with(home + "/")) {
        return false;
    }
    const std::vector<std::string_view> below = components(std::string_view(path).substr(home.size() + 1));
    if (below.size() == 1 && ArchiveTables::isHomeFolder(below.front(), system)) {
        return true;
    }
    if (system != System::linux) {
        return false;
    }
    return std::ranges::any_of(HomePlaces::ofThisMachine(home).mainFolders(),
                               [&](const std::string& folder) { return isInside(folder, path); });
}

std::optional<std::string> refusal(const std::string& path, const std::string& home, Language language,
                                   System system) {
    if (!path.starts_with(home + "/") || !isSpeltOut(path)) {
        return Words{"Solo se puede archivar lo que está en tu carpeta personal.",
                     "Only things in your home folder can be archived."}
            .in(language);
    }
    const std::string_view name = fileName(path);
    auto breakage = breakageAt(path, home, system);
    if (!breakage) {
        breakage = breakageBehind(path, home, system);
    }
    if (breakage) {
        return breakage->in(language, name);
    }
    if (ArchiveTables::isArchiveExtension(ArchiveTables::extensionOf(name))) {
        return Words{"«{}» ya está comprimido.", "“{}” is already compressed."}.in(language, name);
    }
    return PathGuard(home).refusal({path}, language);
}

} // namespace lumo::Archiver
