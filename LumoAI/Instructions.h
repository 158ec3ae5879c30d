#pragma once

#include "LumoAI/AnswerSchema.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"

#include <string_view>

namespace lumo {

/// What a model is told before it is asked about folders, in the language in which it is to answer.
std::string folderInstructions(Language language, System system = currentSystem());

/// The form of an explanation. The names and the words to choose from are the same in every language.
AnswerSchema folderAnswerSchema(Language language);

} // namespace lumo
