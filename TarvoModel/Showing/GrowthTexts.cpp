#include "TarvoModel/Showing/GrowthTexts.h"

#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <string_view>

namespace tarvo {

using lumo::Words;

std::string noBaselineText(const std::vector<lumo::DiskSnapshot>& stored, lumo::Language language) {
    if (stored.empty()) {
        return Words{"Aún no hay un análisis guardado con el que comparar. Cada análisis completo (con tarvo "
                     "analizar o en la ventana) guarda lo que ocupa cada cosa: desde el siguiente se ve qué "
                     "ha crecido.",
                     "There is no stored scan to compare with yet. Each full scan (with tarvo scan or in the "
                     "window) stores what everything takes: from the next one on you can see what grew."}
            .in(language);
    }
    // A baseline is a minute old at least.
    return Words{"El primer análisis se acaba de guardar: dentro de un minuto ya hay con qué comparar, y "
                 "desde mañana se ve lo que ha crecido en un día.",
                 "The first scan has only just been stored: in a minute there is something to compare with, "
                 "and from tomorrow on you see what grew in a day."}
        .in(language);
}

std::string unreadableSnapshotsText(const std::string& path, const lumo::platform::SystemError& error,
                                    lumo::Language language) {
    return Words{"No he podido leer los análisis anteriores en {}: {}.",
                 "The earlier scans in {} could not be read: {}."}
        .in(language, lumo::printable(path), lumo::reasonText(error, language));
}

std::string nothingChangedText(lumo::Language language) {
    return Words{"Nada ha cambiado en más de 200 MB desde el primer análisis guardado.",
                 "Nothing has changed by more than 200 MB since the first stored scan."}
        .in(language);
}

std::string growthName(const std::string& id, const std::string& stored) {
    constexpr std::string_view between = " · ";
    const std::size_t at = stored.rfind(between);
    if (!id.starts_with(lumo::artifactIDPrefix) || at == std::string::npos) {
        return stored;
    }
    const std::string artifact = stored.substr(at + between.size());
    const std::string_view place = std::string_view(id).substr(lumo::artifactIDPrefix.size());
    return place.ends_with("/" + artifact)
               ? std::string(place.substr(0, place.size() - artifact.size() - 1)) + std::string(between) +
                     artifact
               : stored;
}

} // namespace tarvo
