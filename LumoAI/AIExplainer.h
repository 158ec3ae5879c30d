#pragma once

#include "LumoAI/LanguageModel.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"

/// Explanations of folders by a language model. It says what a folder is and suggests; how safe the folder is
/// and what to do about it are said by our own rules.
namespace lumo::AIExplainer {

/// True when none of the texts is empty, proposes commands or names figures that are not in the evidence as
/// the model was shown it.
bool isFitToShow(const Explanation& explanation, std::string_view evidence);

/// What the model makes of the evidence. Fails when the model does, answers in another form or writes what is
/// not fit to show; a risk or an action that is none of the words it was given counts as the one that asks
/// for a look. Where the policy overruled the risk, the rule of thumb's reason takes the place of the
/// model's.
Result<Explanation> explain(const FolderEvidence& evidence, LanguageModel& model, Date now,
                            const std::stop_token& stop, Language language = currentLanguage(),
                            System system = currentSystem());

} // namespace lumo::AIExplainer
