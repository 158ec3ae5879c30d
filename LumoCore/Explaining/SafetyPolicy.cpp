#include "LumoCore/Explaining/SafetyPolicy.h"

namespace lumo::SafetyPolicy {

Safety finalSafety(Safety suggested, const FolderEvidence& evidence) {
    if (evidence.location == FolderLocation::caches) {
        return Safety::safe;
    }
    return evidence.isAppleComponent || suggested == Safety::keep ? Safety::keep : Safety::review;
}

std::optional<std::string> note(Safety suggested, Safety final, const FolderEvidence& evidence,
                                Language language, System system) {
    if (suggested == final) {
        return std::nullopt;
    }
    switch (final) {
    case Safety::safe:
        return cachesReason.on(system).in(language);
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

std::string advice(FreeingAction action, Safety final, const FolderEvidence& evidence, Language language,
                   System system) {
    const bool removes = action != FreeingAction::leaveAlone;
    return system == System::linux && final == Safety::keep && removes
               ? Words{"Déjala como está.", "Leave it as it is."}.in(language)
               : lumo::advice(action, evidence, language);
}

} // namespace lumo::SafetyPolicy
