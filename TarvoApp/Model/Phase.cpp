#include "TarvoApp/Model/Phase.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "TarvoApp/Model/Said.h"

#include <algorithm>

namespace tarvo {

using lumo::Language;
namespace ByteFormat = lumo::ByteFormat;

namespace {

struct BusyText {
    Language language;

    std::optional<std::string> operator()(const phase::Idle&) const { return std::nullopt; }
    std::optional<std::string> operator()(const phase::Scanning&) const {
        return said("Analizando tu disco…", "Analyzing your disk…", language);
    }
    std::optional<std::string> operator()(const phase::ScanningFolders&) const {
        return said("Buscando también en tus proyectos y Descargas… (macOS puede pedirte permiso)",
                    "Also searching your projects and Downloads… (macOS may ask for permission)", language);
    }
    std::optional<std::string> operator()(const phase::Cleaning&) const {
        return said("Limpiando…", "Cleaning…", language);
    }
    std::optional<std::string> operator()(const phase::Explaining& now) const {
        return said("Explicando con IA ", "Explaining with AI ", language) + std::to_string(now.done + 1) +
               said(" de ", " of ", language) + std::to_string(now.total) + "…";
    }
    std::optional<std::string> operator()(const phase::Archiving& now) const {
        return said("Archivando «", "Archiving “", language) + now.title +
               said("»: creando el .zip y comprobándolo…", "”: creating the .zip and checking it…", language);
    }
};

} // namespace

bool isIdle(const Phase& phase) {
    return std::holds_alternative<phase::Idle>(phase);
}

bool maySelectSafe(const Phase& phase) {
    return isIdle(phase) || std::holds_alternative<phase::ScanningFolders>(phase);
}

std::optional<std::string> busyText(const Phase& phase, Language language) {
    return std::visit(BusyText{language}, phase);
}

std::string idleText(const lumo::VolumeInfo& volume, double scanSeconds,
                     const std::optional<CleanupSums>& lastCleanup, Language language) {
    if (lastCleanup) {
        return cleanupDone(*lastCleanup, language);
    }
    constexpr double shortest = 0.1;
    std::string analyzed = said("analizado en ", "analyzed in ", language) +
                           (scanSeconds < shortest ? "<" : "") +
                           ByteFormat::number(std::max(scanSeconds, shortest), 1, language) + " s";
    if (volume.totalBytes == 0) {
        return analyzed;
    }
    return ByteFormat::string(volume.availableBytes, language) + said(" libres de ", " free of ", language) +
           ByteFormat::string(volume.totalBytes, language) + " · " + analyzed;
}

std::string firstLookText(Language language) {
    return said("Primero miro lo que no necesita permisos; enseguida verás resultados.",
                "First I look at what doesn't need permission; you'll see results right away.", language);
}

} // namespace tarvo
