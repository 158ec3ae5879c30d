#include "LumoCore/Cleanup/ArchiveTables.h"
#include "LumoCore/Cleanup/Archiver.h"

#include "LumoCore/Basics/Path.h"

#include <algorithm>
#include <ranges>

namespace lumo::Archiver {

namespace {

std::vector<std::string_view> componentsOf(std::string_view path) {
    std::vector<std::string_view> components;
    for (const auto part : path | std::views::split('/')) {
        components.emplace_back(part.begin(), part.end());
    }
    return components;
}

/// Only a path that is spelt out says where it leads.
bool isSpeltOut(const std::vector<std::string_view>& components) {
    return std::ranges::none_of(components, [](std::string_view component) {
        return component.empty() || component == "." || component == "..";
    });
}

/// The name between the language's quotes.
std::string quoted(std::string_view name, Language language) {
    return std::string(text("«", "“", language)) + std::string(name) + std::string(text("»", "”", language));
}

std::string isWithName(std::string_view name, std::string_view es, std::string_view en, Language language) {
    return quoted(name, language) + std::string(text(es, en, language));
}

} // namespace

std::optional<std::string> refusal(const std::string& path, const std::string& home, Language language) {
    const std::string_view name = fileName(path);
    const bool isBelow = path.starts_with(home + "/");
    const std::vector<std::string_view> below =
        isBelow ? componentsOf(std::string_view(path).substr(home.size() + 1))
                : std::vector<std::string_view>();
    if (!isBelow || !isSpeltOut(below)) {
        return std::string(text("Solo se puede archivar lo que está en tu carpeta personal.",
                                "Only things in your home folder can be archived.", language));
    }
    if (below.size() == 1 && ArchiveTables::isHomeFolder(name)) {
        return isWithName(name, " es una carpeta de macOS: elige una de dentro.",
                          " is a macOS folder: pick one inside it.", language);
    }
    if (below.front() == "Library") {
        return std::string(text("Lo que hay en Library es de las apps: archivarlo las rompería.",
                                "What's in Library belongs to apps: archiving it would break them.",
                                language));
    }
    if (std::ranges::any_of(componentsOf(path), [](std::string_view component) {
            return ArchiveTables::isPackageExtension(ArchiveTables::extensionOf(component));
        })) {
        return isWithName(name,
                          " es una app o una biblioteca (o está dentro de una): archivarla la rompería.",
                          " is an app or a library (or inside one): archiving it would break it.", language);
    }
    if (std::ranges::any_of(below, [](std::string_view component) { return component.starts_with('.'); })) {
        return isWithName(name, " está en una carpeta oculta de alguna herramienta: archivarla la rompería.",
                          " is in a hidden folder that a tool uses: archiving it would break it.", language);
    }
    if (ArchiveTables::isArchiveExtension(ArchiveTables::extensionOf(name))) {
        return isWithName(name, " ya está comprimido.", " is already compressed.", language);
    }
    return PathGuard(home).refusal({path}, language);
}

} // namespace lumo::Archiver
