#include "LumoCore/Explaining/SafetyPolicy.h"

#include "LumoCore/Basics/Words.h"

namespace lumo::SafetyPolicy {

Safety finalSafety(Safety suggested, const FolderEvidence& evidence) {
    if (evidence.location == FolderLocation::caches) {
        return Safety::safe;
    }
    return evidence.isAppleComponent || suggested == Safety::keep ? Safety::keep : Safety::review;
}

std::optional<std::string> note(Safety suggested, Safety final, const FolderEvidence& evidence,
                                Language language, System system) {
    constexpr SystemWords cachesReturn{
        .macos = {"macOS permite borrar las cachés: la app las regenera.",
                  "macOS allows caches to be deleted: the app recreates them."},
        .linux = {"Los programas vuelven a crear sus cachés.", "Programs recreate their caches."}};
    if (suggested == final) {
        return std::nullopt;
    }
    switch (final) {
    case Safety::safe:
        return cachesReturn.on(system).in(language);
    case Safety::review:
        return Words{"La IA lo cree seguro, pero no hay garantía: revísalo.",
                     "The AI thinks it's safe, but there's no guarantee: review it."}
            .in(language);
    case Safety::keep:
        break;
    }
    return evidence.isAppleComponent
               ? std::optional<std::string>(Words{"Lo gestiona macOS.", "Managed by macOS."}.in(language))
               : std::nullopt;
}

} // namespace lumo::SafetyPolicy
