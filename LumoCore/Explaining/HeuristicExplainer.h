#pragma once

#include "LumoCore/Basics/System.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"

/// Explanations by rule of thumb, from where a folder lies and what it is called: what is said when no model
/// is there to ask.
namespace lumo::HeuristicExplainer {

/// There always is one. The place comes first: a part of macOS among the caches is a safe cache here, though
/// the advice of `FreeingAction` has it the other way round. On Linux many tools are no listed applications,
/// so that nothing is called left over there, and the advice is to look inside.
Explanation explain(const FolderEvidence& evidence, Date now, Language language = currentLanguage(),
                    System system = currentSystem());

} // namespace lumo::HeuristicExplainer
