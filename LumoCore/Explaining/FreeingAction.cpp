#include "LumoCore/Explaining/FreeingAction.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/ShortSize.h"

#include <fmt/format.h>

#include <algorithm>

namespace lumo {

namespace {

std::string reviewAdvice(const FolderEvidence& evidence, Language language) {
    constexpr std::size_t mostNamed = 2;
    if (evidence.largestEntries.empty()) {
        return Words{"Mira qué hay dentro antes de borrar nada.",
                     "Check what's inside before deleting anything."}
            .in(language);
    }
    std::vector<std::string> named;
    for (const NamedSize& entry : evidence.largestEntries) {
        if (named.size() < mostNamed) {
            named.push_back(fmt::format("{} ({})", printable(entry.name), shortSize(entry.bytes, language)));
        }
    }
    return Words{"Mira qué hay dentro antes de borrar nada; lo más grande: {}.",
                 "Check what's inside before deleting anything; the biggest items: {}."}
        .in(language, fmt::format("{}", fmt::join(named, Words{" y ", " and "}.in(language))));
}

std::string deletionAdvice(const FolderEvidence& evidence, Language language, System system) {
    if (const std::optional<std::string> app = evidence.appName()) {
        return SystemWords{.macos = {"Si ya no usas {0}, desinstálala y borra la carpeta entera.",
                                     "If you no longer use {0}, uninstall it and delete the whole folder."},
                           .linux = {"Si ya no usas {0}, desinstálala y mira qué hay en la carpeta antes de "
                                     "borrarla.",
                                     "If you no longer use {0}, uninstall it and check what's in the folder "
                                     "before deleting it."}}
            .on(system)
            .in(language, *app);
    }
    if (system == System::linux) {
        return reviewAdvice(evidence, language);
    }
    return Words{
        "Si no reconoces esta carpeta ni usas la herramienta que la creó, borra la carpeta entera.",
        "If you don't recognize this folder or use the tool that created it, delete the whole folder."}
        .in(language);
}

std::string clearingAdvice(const FolderEvidence& evidence, Language language, System system) {
    const std::optional<std::string> app = evidence.appName();
    if (!app) {
        return deletionAdvice(evidence, language, system);
    }
    return SystemWords{
        .macos = {"{0} tiene una opción para borrar la caché, úsala; si no, cierra {0} antes de tocar la "
                  "carpeta.",
                  "{0} has an option to clear its cache, use it; otherwise, quit {0} before touching the "
                  "folder."},
        .linux = {"Si {0} tiene una opción para borrar la caché, úsala; si no, cierra {0} antes de tocar la "
                  "carpeta.",
                  "If {0} has an option to clear its cache, use it; otherwise, quit {0} before touching the "
                  "folder."}}
        .on(system)
        .in(language, *app);
}

std::string uninstallingAdvice(Language language, System system) {
    return SystemWords{
        .macos = {"Si ya no usas esta herramienta, desinstálala; después puedes borrar la carpeta.",
                  "If you no longer use this tool, uninstall it; then you can delete the folder."},
        .linux = {"Si ya no usas esta herramienta, desinstálala; después mira qué hay en la carpeta antes de "
                  "borrarla.",
                  "If you no longer use this tool, uninstall it; then check what's in the folder before "
                  "deleting it."}}
        .on(system)
        .in(language);
}

std::string leavingAdvice(const std::optional<std::string>& app, Language language) {
    const std::string user =
        app.value_or(Words{"la herramienta que la creó", "the tool that created it"}.in(language));
    return Words{"Déjala: {0} la está usando.", "Leave it: {0} is using it."}.in(language, user);
}

} // namespace

std::string advice(FreeingAction action, const FolderEvidence& evidence, Language language, System system) {
    if (evidence.isAppleComponent && system == System::macos) {
        return Words{"Déjala: la gestiona macOS.", "Leave it: macOS manages it."}.in(language);
    }
    if (evidence.location == FolderLocation::caches) {
        return Words{"Se puede vaciar: la app que la creó la vuelve a generar.",
                     "It can be emptied: the app that created it will recreate it."}
            .in(language);
    }
    switch (action) {
    case FreeingAction::clearFromApp:
        return clearingAdvice(evidence, language, system);
    case FreeingAction::uninstallTool:
        return uninstallingAdvice(language, system);
    case FreeingAction::deleteIfUnused:
        return deletionAdvice(evidence, language, system);
    case FreeingAction::reviewContents:
        return reviewAdvice(evidence, language);
    case FreeingAction::leaveAlone:
        break;
    }
    return leavingAdvice(evidence.appName(), language);
}

} // namespace lumo
