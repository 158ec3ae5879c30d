#pragma once

#include "LumoCore/Basics/Result.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace lumo {

/// What a model wrote, as it may be shown: without blanks around it, and on one line. Fails for a text of
/// more characters than that, and for one with bytes that are not UTF-8 or with control characters, which
/// could speak to a terminal: a model repeats what file names tell it.
Result<std::string> modelText(std::string_view written, std::size_t mostCharacters);

/// The text after what some models think aloud before they answer.
std::string_view withoutThoughts(std::string_view written);

} // namespace lumo
