#pragma once

#include "LumoCore/Basics/Language.h"

#include <cstdint>
#include <string>

/// How every byte count and number is shown to a person.
namespace lumo::ByteFormat {

/// The fewest bytes that are shown as a number: what is less is "<1 MB".
inline constexpr std::int64_t shownAsMegabyte = 500000;

/// "1,5 GB" from 1 000 000 000 bytes up, "<1 MB" for 1 to 499 999 bytes, whole megabytes otherwise. Decimal
/// units.
std::string string(std::int64_t bytes, Language language = currentLanguage());

/// The number with exactly `decimals` fraction digits in the language's style, halves rounded to even.
std::string number(double value, int decimals, Language language = currentLanguage());

} // namespace lumo::ByteFormat
