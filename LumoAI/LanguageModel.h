#pragma once

#include "LumoAI/AnswerSchema.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Result.h"

#include <optional>
#include <stop_token>
#include <string>

namespace lumo {

/// What a model is asked.
struct ModelRequest {
    std::string instructions; ///< Whom it is to be and how to answer.
    std::string prompt;
    std::optional<AnswerSchema> schema = {}; ///< Absent for an answer in plain text.
};

/// A language model on this machine. It only proposes: what it says is checked by whoever asked. Used by one
/// thread at a time.
class LanguageModel {
  public:
    LanguageModel() = default;
    virtual ~LanguageModel() = default;
    LanguageModel(const LanguageModel&) = delete;
    LanguageModel& operator=(const LanguageModel&) = delete;

    /// Why the model cannot be used, as the end of a sentence; absent when it can. May take a moment.
    [[nodiscard]] virtual std::optional<std::string>
    unavailableReason(Language language = currentLanguage()) = 0;

    /// What the model writes: in the form of the schema when there is one, which `AnswerSchema::read` has
    /// still to check. The same question gets the same answer as far as the model can. Fails, in English,
    /// with whatever went wrong, and soon after a stop is requested.
    [[nodiscard]] virtual Result<std::string> respond(const ModelRequest& request,
                                                      const std::stop_token& stop) = 0;
};

} // namespace lumo
