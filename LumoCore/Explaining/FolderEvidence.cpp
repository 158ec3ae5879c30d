#include "LumoCore/Explaining/FolderEvidence.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/ShortSize.h"

#include <fmt/format.h>

#include <algorithm>

namespace lumo {

namespace {

void keepFirst(std::vector<NamedSize>& sizes, std::size_t most) {
    sizes.resize(std::min(sizes.size(), most));
}

/// The names and sizes in the pattern, after the heading; nothing without any.
std::string listLine(std::string_view heading, const char* pattern, const std::vector<NamedSize>& sizes,
                     Language language) {
    std::vector<std::string> parts;
    for (const NamedSize& size : sizes) {
        parts.push_back(
            fmt::format(fmt::runtime(pattern), printable(size.name), shortSize(size.bytes, language)));
    }
    return parts.empty() ? std::string() : fmt::format("{}{}\n", heading, fmt::join(parts, ", "));
}

std::string changeLine(Date changed, Date now, Language language, System system) {
    constexpr Words many{"hace {} días", "{} days ago"};
    constexpr SystemWords one{.macos = many, .linux = {"hace {} día", "{} day ago"}};
    // A clock that was ahead makes files of tomorrow.
    const int days = midnightsBetween(changed, now);
    const std::string when =
        days <= 0 ? Words{"hoy", "today"}.in(language)
                  : (days == 1 ? one.on(system) : many).in(language, ByteFormat::number(days, 0, language));
    return fmt::format("{}{}\n", Words{"Último cambio: ", "Last change: "}.in(language), when);
}

std::string appLine(const FolderEvidence& evidence, Language language, System system) {
    if (evidence.relatedApp) {
        return fmt::format("{}{}\n",
                           Words{"App relacionada, instalada: ", "Related app, installed: "}.in(language),
                           printable(evidence.relatedApp->name));
    }
    if (evidence.uninstalledOwner) {
        return Words{"De {}, que se desinstaló.\n", "Of {}, which was uninstalled.\n"}.in(
            language, printable(*evidence.uninstalledOwner));
    }
    return SystemWords{
        .macos = {"Ninguna app instalada coincide con el nombre: puede ser de una herramienta de "
                  "terminal o un resto de una app desinstalada.\n",
                  "No installed app matches the name: it may belong to a terminal tool or be left "
                  "over from an uninstalled app.\n"},
        .linux = {"Ninguna app ni programa instalado tiene ese nombre. Muchas herramientas no "
                  "aparecen entre las apps.\n",
                  "No installed app or program has this name. Many tools are not listed among "
                  "the apps.\n"}}
        .on(system)
        .in(language);
}

} // namespace

FolderEvidence FolderEvidence::gather(const std::string& path, const std::string& home,
                                      const Installed& installed, const FileTree::Watch& watch,
                                      Language language, System system) {
    constexpr std::size_t mostEntries = 8;
    constexpr std::size_t mostTypes = 5;
    const HomePlaces places = HomePlaces::ofThisMachine(home, system);
    FileTree::Breakdown breakdown = FileTree::breakdown(path, watch, language);
    FolderEvidence evidence{.path = path,
                            .displayPath = abbreviated(path, home),
                            .location = folderLocation(path, places),
                            .usage = breakdown.usage,
                            .largestEntries = std::move(breakdown.children),
                            .fileTypes = std::move(breakdown.extensions),
                            .relatedApp = installed.related(lumo::ownersName(path, places), system),
                            .uninstalledOwner =
                                installed.uninstalledOwnerOf(places.usual(path), home, system)};
    keepFirst(evidence.largestEntries, mostEntries);
    keepFirst(evidence.fileTypes, mostTypes);
    evidence.isAppleComponent =
        system == System::macos && (evidence.folderName().starts_with("com.apple.") ||
                                    evidence.folderName().starts_with("group.com.apple."));
    return evidence;
}

std::vector<FolderEvidence> FolderEvidence::gatherAll(const std::vector<std::string>& paths,
                                                      const std::string& home, const FileTree::Watch& watch,
                                                      const std::function<void(std::size_t)>& onBegin) {
    const Installed installed = Installed::ofThisMachine(home);
    std::vector<FolderEvidence> all;
    for (const std::string& path : paths) {
        if (onBegin) {
            onBegin(all.size());
        }
        FolderEvidence evidence = gather(path, home, installed, watch);
        if (watch.stop.stop_requested()) {
            break;
        }
        all.push_back(std::move(evidence));
    }
    return all;
}

std::string_view FolderEvidence::folderName() const {
    return fileName(path);
}

std::string_view FolderEvidence::ownersName(System system) const {
    return lumo::ownersName(displayPath, "~", system);
}

std::optional<std::string> FolderEvidence::appName() const {
    return relatedApp ? std::optional(printable(relatedApp->spokenName())) : std::nullopt;
}

std::string FolderEvidence::promptDescription(Date now, Language language, System system) const {
    const std::string files = ByteFormat::number(static_cast<double>(usage.fileCount), 0, language);
    constexpr Words ofMany{"{}: {} en {} archivos\n", "{}: {} in {} files\n"};
    constexpr SystemWords ofOne{.macos = ofMany, .linux = {"{}: {} en {} archivo\n", "{}: {} in {} file\n"}};
    std::string lines =
        (usage.fileCount == 1 ? ofOne.on(system) : ofMany)
            .in(language, printable(displayPath), shortSize(usage.allocatedBytes, language), files);
    lines += std::string(description(location, language, system)) + "\n";
    if (usage.lastModified) {
        lines += changeLine(*usage.lastModified, now, language, system);
    }
    lines += appLine(*this, language, system);
    if (isAppleComponent) {
        lines +=
            Words{"Pertenece a macOS (identificador de Apple).\n", "Belongs to macOS (Apple identifier).\n"}
                .in(language);
    }
    lines += listLine(Words{"Contenido más grande: ", "Largest contents: "}.in(language), "{} ({})",
                      largestEntries, language);
    lines += listLine(Words{"Tipos de archivo: ", "File types: "}.in(language), "{} {}", fileTypes, language);
    if (usage.unreadableCount > 0) {
        lines += fmt::format(
            "{}{}\n",
            Words{"Elementos sin permiso de lectura: ", "Items without read permission: "}.in(language),
            ByteFormat::number(static_cast<double>(usage.unreadableCount), 0, language));
    }
    lines.pop_back(); // The last line feed.
    return lines;
}

} // namespace lumo
