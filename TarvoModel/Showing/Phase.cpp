#include "TarvoModel/Showing/Phase.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>

namespace tarvo {

using lumo::Language;
namespace ByteFormat = lumo::ByteFormat;

namespace {

struct BusyText {
    Language language;
    lumo::System system;

    std::optional<std::string> operator()(const phase::Idle&) const { return std::nullopt; }
    std::optional<std::string> operator()(const phase::Scanning&) const {
        return lumo::Words{"Analizando tu disco…", "Analyzing your disk…"}.in(language);
    }
    std::optional<std::string> operator()(const phase::ScanningFolders&) const {
        return lumo::SystemWords{
            .macos = {"Buscando también en tus proyectos y Descargas… (macOS puede pedirte permiso)",
                      "Also searching your projects and Downloads… (macOS may ask for permission)"},
            .linux = {"Buscando también en tus proyectos y Descargas…",
                      "Also searching your projects and Downloads…"}}
            .on(system)
            .in(language);
    }
    std::optional<std::string> operator()(const phase::Cleaning&) const {
        return lumo::Words{"Limpiando…", "Cleaning…"}.in(language);
    }
    std::optional<std::string> operator()(const phase::Explaining& now) const {
        return lumo::Words{"Explicando con IA ", "Explaining with AI "}.in(language) +
               std::to_string(now.done + 1) + lumo::Words{" de ", " of "}.in(language) +
               std::to_string(now.total) + "…";
    }
    std::optional<std::string> operator()(const phase::Archiving& now) const {
        return lumo::Words{"Archivando «", "Archiving “"}.in(language) + now.title +
               lumo::Words{"»: creando el .zip y comprobándolo…", "”: creating the .zip and checking it…"}.in(
                   language);
    }
};

} // namespace

bool isIdle(const Phase& phase) {
    return std::holds_alternative<phase::Idle>(phase);
}

bool maySelectSafe(const Phase& phase) {
    return isIdle(phase) || std::holds_alternative<phase::ScanningFolders>(phase);
}

std::optional<std::string> busyText(const Phase& phase, Language language, lumo::System system) {
    return std::visit(BusyText{language, system}, phase);
}

std::string firstLook(Language language, lumo::System system) {
    return lumo::SystemWords{
        .macos = {"Primero miro lo que no necesita permisos; enseguida verás resultados.",
                  "First I look at what doesn't need permission; you'll see results right away."},
        .linux = {"Primero miro lo que se mide antes; enseguida verás resultados.",
                  "First I look at what is quickly measured; you'll see results right away."}}
        .on(system)
        .in(language);
}

std::string idleText(const lumo::VolumeInfo& volume, double scanSeconds,
                     const std::optional<CleanupSums>& lastCleanup, Language language) {
    if (lastCleanup) {
        return cleanupDone(*lastCleanup, language);
    }
    constexpr double shortest = 0.1;
    std::string analyzed = lumo::Words{"analizado en ", "analyzed in "}.in(language) +
                           (scanSeconds < shortest ? "<" : "") +
                           ByteFormat::number(std::max(scanSeconds, shortest), 1, language) + " s";
    if (volume.totalBytes == 0) {
        return analyzed;
    }
    return ByteFormat::string(volume.availableBytes, language) +
           lumo::Words{" libres de ", " free of "}.in(language) +
           ByteFormat::string(volume.totalBytes, language) + " · " + analyzed;
}

} // namespace tarvo
