#include "LumoCore/Basics/ByteFormat.h"

#include <unicode/locid.h>
#include <unicode/numberformatter.h>

namespace lumo::ByteFormat {

namespace {

icu::number::LocalizedNumberFormatter makeStyle(Language language) {
    return icu::number::NumberFormatter::withLocale(icu::Locale(localeName(language).c_str()))
        .roundingMode(UNUM_ROUND_HALFEVEN);
}

const icu::number::LocalizedNumberFormatter& styleOf(Language language) {
    static const icu::number::LocalizedNumberFormatter english = makeStyle(Language::en);
    static const icu::number::LocalizedNumberFormatter spanish = makeStyle(Language::es);
    return language == Language::es ? spanish : english;
}

} // namespace

std::string string(std::int64_t bytes, Language language) {
    constexpr double gigabyte = 1e9;
    constexpr double megabyte = 1e6;
    constexpr std::int64_t shownAsMegabyte = 500000;
    const double gigabytes = static_cast<double>(bytes) / gigabyte;
    if (gigabytes >= 1.0) {
        return number(gigabytes, 1, language) + " GB";
    }
    if (bytes >= 1 && bytes < shownAsMegabyte) {
        return "<1 MB";
    }
    return number(static_cast<double>(bytes) / megabyte, 0, language) + " MB";
}

std::string number(double value, int decimals, Language language) {
    UErrorCode status = U_ZERO_ERROR;
    std::string formatted;
    styleOf(language)
        .precision(icu::number::Precision::fixedFraction(decimals))
        .formatDouble(value, status)
        .toString(status)
        .toUTF8String(formatted);
    return formatted;
}

} // namespace lumo::ByteFormat
