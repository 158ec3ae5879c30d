#include "TarvoModel/Showing/ArchiveTexts.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Holding.h"

#include <fmt/format.h>

#include <algorithm>

namespace tarvo {

using lumo::Language;
using lumo::Words;
using lumo::Archiver::Estimate;
namespace ByteFormat = lumo::ByteFormat;

std::string archiveRefusalTitle(Language language) {
    return Words{"No se puede archivar", "This can't be archived"}.in(language);
}

std::int64_t savedBytes(const Estimate& estimate) {
    return std::max<std::int64_t>(estimate.bytes - estimate.compressedBytes, 0);
}

bool isHardlyWorthIt(const Estimate& estimate) {
    constexpr std::int64_t leastShare = 10;
    return savedBytes(estimate) <= estimate.bytes / leastShare;
}

std::string estimateText(std::string_view name, const Estimate& estimate, Language language) {
    const std::string saved = ByteFormat::string(savedBytes(estimate), language);
    const std::string shares =
        Words{"«{}» ocupa {}; en un zip, unos {}. ", "“{}” takes {}; in a zip, about {}. "}.in(
            language, name, ByteFormat::string(estimate.bytes, language),
            ByteFormat::string(estimate.compressedBytes, language));
    const Words saving = isHardlyWorthIt(estimate) ? Words{"Apenas se comprime: ahorrarías unos {}.",
                                                           "It barely compresses: you'd save about {}."}
                                                   : Words{"Ahorrarías unos {}.", "You'd save about {}."};
    return shares + saving.in(language, saved);
}

std::string archiveExplanation(std::string_view archiveName, Language language) {
    return Words{"Se creará {} al lado y se comprobará entero; solo entonces el original se aparta {} "
                 "días, por si acaso, y después se borra solo.",
                 "{} will be created beside it and checked in full; only then the original is set "
                 "aside for {} days, just in case, and deleted automatically afterwards."}
        .in(language, archiveName, lumo::Holding::retentionDays);
}

std::string archiveQuestion(std::string_view name, Language language) {
    return Words{"¿Archivar «{}»?", "Archive “{}”?"}.in(language, name);
}

std::string archivedText(std::string_view archive, std::int64_t archiveBytes, Language language) {
    return Words{"Archivado en {} ({}). El original se ha apartado {} días.",
                 "Archived as {} ({}). The original is set aside for {} days."}
        .in(language, archive, ByteFormat::string(archiveBytes, language), lumo::Holding::retentionDays);
}

std::string originalKeptText(std::string_view archive, std::string_view reason, lumo::Language language) {
    return Words{"el archivo comprobado está en {}, pero el original sigue en su sitio ({})",
                 "the verified archive is {}, but the original is still in its place ({})"}
        .in(language, archive, reason);
}

} // namespace tarvo
