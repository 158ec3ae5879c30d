#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ArchiveTables.h"
#include "LumoCore/Cleanup/Archiver.h"

#include "LumoCore/Basics/Path.h"

#include <algorithm>

namespace lumo::Archiver {

std::optional<std::string> refusal(const std::string& path, const std::string& home, Language language) {
    const std::string_view name = fileName(path);
    const bool isBelow = path.starts_with(home + "/");
    const std::vector<std::string_view> below =
        isBelow ? components(std::string_view(path).substr(home.size() + 1))
                : std::vector<std::string_view>();
    if (!isBelow || !isSpeltOut(path)) {
        return Words{"Solo se puede archivar lo que está en tu carpeta personal.",
                     "Only things in your home folder can be archived."}
            .in(language);
    }
    if (below.size() == 1 && ArchiveTables::isHomeFolder(name)) {
        return Words{"«{}» es una carpeta de macOS: elige una de dentro.",
                     "“{}” is a macOS folder: pick one inside it."}
            .in(language, name);
    }
    if (below.front() == "Library") {
        return Words{"Lo que hay en Library es de las apps: archivarlo las rompería.",
                     "What's in Library belongs to apps: archiving it would break them."}
            .in(language);
    }
    if (std::ranges::any_of(components(path), [](std::string_view component) {
            return ArchiveTables::isPackageExtension(ArchiveTables::extensionOf(component));
        })) {
        return Words{"«{}» es una app o una biblioteca (o está dentro de una): archivarla la rompería.",
                     "“{}” is an app or a library (or inside one): archiving it would break it."}
            .in(language, name);
    }
    if (std::ranges::any_of(below, [](std::string_view component) { return component.starts_with('.'); })) {
        return Words{"«{}» está en una carpeta oculta de alguna herramienta: archivarla la rompería.",
                     "“{}” is in a hidden folder that a tool uses: archiving it would break it."}
            .in(language, name);
    }
    if (ArchiveTables::isArchiveExtension(ArchiveTables::extensionOf(name))) {
        return Words{"«{}» ya está comprimido.", "“{}” is already compressed."}.in(language, name);
    }
    return PathGuard(home).refusal({path}, language);
}

} // namespace lumo::Archiver
