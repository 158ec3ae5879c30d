#pragma once

#include "LumoCore/Basics/Language.h"
#include "Platform/SystemError.h"

#include <string>

namespace lumo {

/// Why a system call failed, in the interface language; rare reasons in the system's own English words.
std::string reasonText(const platform::SystemError& error, Language language = currentLanguage());

} // namespace lumo
