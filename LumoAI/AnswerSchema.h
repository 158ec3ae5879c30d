#pragma once

#include "LumoCore/Basics/JsonValue.h"
#include "LumoCore/Basics/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// One text that a model is asked for.
struct AnswerProperty {
    std::string name;
    std::string description;
    std::string choiceName = {};           ///< What the list of choices is called.
    std::vector<std::string> choices = {}; ///< The words to choose from; any text when empty.
};

/// The form in which a model is to answer: an object of texts. Models write the properties in the order in
/// which they stand here and think in it, so that order is part of the question.
struct AnswerSchema {
    std::string name;
    std::vector<AnswerProperty> properties;

    /// As JSON Schema, members in their order.
    [[nodiscard]] JsonValue json() const;

    /// The values in an answer, in the order of the properties, as `modelText` leaves them. Fails unless the
    /// answer is an object with exactly these members, each of them a text that may be shown. A word that is
    /// not among the choices comes back empty: it stands for no choice, and what that means is for the caller
    /// to say.
    [[nodiscard]] Result<std::vector<std::string>> read(std::string_view answer) const;
};

} // namespace lumo
