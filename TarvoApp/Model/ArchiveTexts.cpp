#include "TarvoApp/Model/ArchiveTexts.h"

#include "LumoCore/Basics/ByteFormat.h"

#include <fmt/format.h>

#include <algorithm>

namespace tarvo {

using lumo::Language;
using lumo::text;
using lumo::Archiver::Estimate;
namespace ByteFormat = lumo::ByteFormat;

std::string archiveRefusalTitle(Language language) {
    return std::string(text("No se puede archivar", "This can't be archived", language));
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
        fmt::format(fmt::runtime(text("«{}» ocupa {}; en un zip, unos {}. ",
                                      "“{}” takes {}; in a zip, about {}. ", language)),
                    name, ByteFormat::string(estimate.bytes, language),
                    ByteFormat::string(estimate.compressedBytes, language));
    const std::string_view saving = isHardlyWorthIt(estimate)
                                        ? text("Apenas se comprime: ahorrarías unos {}.",
                                               "It barely compresses: you'd save about {}.", language)
                                        : text("Ahorrarías unos {}.", "You'd save about {}.", language);
    return shares + fmt::format(fmt::runtime(saving), saved);
}

std::string archiveExplanation(std::string_view archiveName, Language language) {
    return fmt::format(
        fmt::runtime(
            text("Se creará {} al lado y se comprobará entero; solo entonces el original se aparta 7 "
                 "días, por si acaso, y después se borra solo.",
                 "{} will be created beside it and checked in full; only then the original is set "
                 "aside for 7 days, just in case, and deleted automatically afterwards.",
                 language)),
        archiveName);
}

std::string archiveQuestion(std::string_view name, Language language) {
    return fmt::format(fmt::runtime(text("¿Archivar «{}»?", "Archive “{}”?", language)), name);
}

std::string archivedText(std::string_view archive, std::int64_t archiveBytes, Language language) {
    return fmt::format(
        fmt::runtime(text("Archivado en {} ({}). El original se ha apartado 7 días.",
                          "Archived as {} ({}). The original is set aside for 7 days.", language)),
        archive, ByteFormat::string(archiveBytes, language));
}

std::string originalKeptText(std::string_view archive, std::string_view reason, lumo::Language language) {
    return fmt::format(
        fmt::runtime(lumo::text("el archivo comprobado está en {}, pero el original sigue en su sitio ({})",
                                "the verified archive is {}, but the original is still in its place ({})",
                                language)),
        archive, reason);
}

} // namespace tarvo
