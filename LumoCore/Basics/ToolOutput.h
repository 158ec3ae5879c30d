#pragma once

#include "LumoCore/Basics/Language.h"

#include <string>
#include <string_view>

namespace lumo {

/// What to say of a tool that failed: the last line of its output that is not blank, without the blanks at
/// its end; "code 3" when there is none.
std::string failureDetail(std::string_view output, int status, Language language = currentLanguage());

} // namespace lumo
