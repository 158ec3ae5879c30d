#pragma once

#include "LumoAI/LanguageModel.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"

/// Explanations of folders by a language model. It says what a folder is and suggests; how safe the folder is
/// and what to do about it are said by our own rules.
namespace lumo::AIExplainer {

/// What the model makes of the evidence. Fails when the model does or answers in another form; a risk or an
/// action that is none of the words it was given counts as the one that asks for a look.
Result<Explanation> explain(const FolderEvidence& evidence, LanguageModel& model, Date now,
                            const std::stop_token& stop, Language language = currentLanguage());

} // namespace lumo::AIExplainer
