#include "LumoCore/Basics/ByteFormat.h"

#include <unicode/locid.h>
#include <unicode/numberformatter.h>

#include <array>
#include <cstddef>

namespace lumo::ByteFormat {

namespace {

icu::number::LocalizedNumberFormatter makeStyle(Language language, int decimals) {
    return icu::number::NumberFormatter::withLocale(icu::Locale(localeName(language).c_str()))
        .roundingMode(UNUM_ROUND_HALFEVEN)
        .precision(icu::number::Precision::fixedFraction(decimals));
}

using Styles = std::array<icu::number::LocalizedNumberFormatter, 3>;

Styles stylesOf(Language language) {
    return {makeStyle(language, 0), makeStyle(language, 1), makeStyle(language, 2)};
}

/// The styles that are wanted all the time. They are kept, since they become quick only with use.
const icu::number::LocalizedNumberFormatter* keptStyle(Language language, int decimals) {
    static const Styles english = stylesOf(Language::en);
    static const Styles spanish = stylesOf(Language::es);
    const Styles& styles = language == Language::es ? spanish : english;
    const auto index = static_cast<std::size_t>(decimals);
    return decimals >= 0 && index < styles.size() ? &styles[index] : nullptr;
}

} // namespace

std::string string(std::int64_t bytes, Language language) {
    constexpr double gigabyte = 1e9;
    constexpr double megabyte = 1e6;
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
    const auto* const kept = keptStyle(language, decimals);
    (kept != nullptr ? kept->formatDouble(value, status)
                     : makeStyle(language, decimals).formatDouble(value, status))
        .toString(status)
        .toUTF8String(formatted);
    return formatted;
}

} // namespace lumo::ByteFormat
