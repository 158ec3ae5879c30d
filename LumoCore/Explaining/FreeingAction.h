#pragma once

#include "LumoCore/Basics/System.h"
#include "LumoCore/Explaining/FolderEvidence.h"

#include <string>

namespace lumo {

/// What a user can do about a folder. The names are words that a model chooses from, the same in both
/// languages.
enum class FreeingAction {
    clearFromApp,
    uninstallTool,
    deleteIfUnused,
    reviewContents,
    leaveAlone,
};

template <>
struct EnumNames<FreeingAction> {
    static constexpr std::array<std::string_view, 5> values{"vaciar_desde_app", "desinstalar_herramienta",
                                                            "borrar_si_no_se_usa", "revisar_contenido",
                                                            "no_tocar"};
};

/// The sentence that advises the action for that folder. A part of macOS is left alone and a cache can be
/// emptied whatever the action, in that order: this is on purpose the reverse of the heuristic explanation's,
/// which calls a part of macOS among the caches a safe cache. On Linux nothing is a part of macOS, and what
/// no cache folder holds is looked into before it goes: keys and mail lie there beside what tools left
/// behind.
std::string advice(FreeingAction action, const FolderEvidence& evidence,
                   Language language = currentLanguage(), System system = currentSystem());

} // namespace lumo
