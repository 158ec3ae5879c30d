#pragma once

#include "LumoCore/Basics/Language.h"

#include <cstdint>
#include <string>

namespace lumo {

/// A size inside a sentence: like `ByteFormat::string`, but for half a megabyte, which is rounded up ("1 MB"
/// from 500 000 bytes).
std::string shortSize(std::int64_t bytes, Language language = currentLanguage());

} // namespace lumo
