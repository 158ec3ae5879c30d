#include "LumoCore/Explaining/SafetyPolicy.h"

namespace lumo::SafetyPolicy {

Safety finalSafety(Safety suggested, const FolderEvidence& evidence) {
    if (evidence.location == FolderLocation::caches) {
        return Safety::safe;
    }
    return evidence.isAppleComponent || suggested == Safety::keep ? Safety::keep : Safety::review;
}

std::optional<std::string> note(Safety suggested, Safety final, const FolderEvidence& evidence,
                                Language language) {
    if (suggested == final) {
        return std::nullopt;
    }
    switch (final) {
    case Safety::safe:
        return std::string(text("macOS permite borrar las cachés: la app las regenera.",
                                "macOS allows caches to be deleted: the app recreates them.", language));
    case Safety::review:
        return std::string(text("La IA lo cree seguro, pero no hay garantía: revísalo.",
                                "The AI thinks it's safe, but there's no guarantee: review it.", language));
    case Safety::keep:
        break;
    }
    return evidence.isAppleComponent
               ? std::optional<std::string>(text("Lo gestiona macOS.", "Managed by macOS.", language))
               : std::nullopt;
}

} // namespace lumo::SafetyPolicy
