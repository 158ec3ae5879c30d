#pragma once

#include "LumoCore/Basics/Language.h"

#include <string>
#include <string_view>

namespace tarvo {

/// A text in the language, ready to be put together with amounts and names.
inline std::string said(std::string_view es, std::string_view en, lumo::Language language) {
    return std::string(lumo::text(es, en, language));
}

} // namespace tarvo
