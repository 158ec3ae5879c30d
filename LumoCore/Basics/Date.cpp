#include "LumoCore/Basics/Date.h"

#include <fmt/format.h>
#include <unicode/datefmt.h>
#include <unicode/locid.h>

#include <array>
#include <memory>

namespace lumo {

namespace {

using namespace std::chrono;

/// Digits at fixed places of the text, as a number; absent when anything else stands there.
std::optional<int> digits(std::string_view text, std::size_t from, std::size_t count) {
    int value = 0;
    for (const char c : text.substr(from, count)) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        value = value * 10 + (c - '0');
    }
    return value;
}

} // namespace

std::string isoText(Date date) {
    const auto day = floor<days>(date);
    const year_month_day calendar(day);
    const hh_mm_ss time(floor<seconds>(date) - day);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(calendar.year()),
                       static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                       time.hours().count(), time.minutes().count(), time.seconds().count());
}

std::optional<Date> dateFromIsoText(std::string_view text) {
    constexpr std::string_view shape = "dddd-dd-ddTdd:dd:ddZ";
    if (text.size() != shape.size()) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < shape.size(); ++index) {
        if (shape[index] != 'd' && shape[index] != text[index]) {
            return std::nullopt;
        }
    }
    constexpr std::array<std::pair<std::size_t, std::size_t>, 6> places{
        {{0, 4}, {5, 2}, {8, 2}, {11, 2}, {14, 2}, {17, 2}}};
    std::array<int, 6> parts = {};
    for (std::size_t index = 0; index < places.size(); ++index) {
        const std::optional<int> value = digits(text, places[index].first, places[index].second);
        if (!value) {
            return std::nullopt;
        }
        parts[index] = *value;
    }
    const year_month_day calendar{year{parts[0]}, month{static_cast<unsigned>(parts[1])},
                                  day{static_cast<unsigned>(parts[2])}};
    if (!calendar.ok() || parts[0] < 1 || parts[3] > 23 || parts[4] > 59 || parts[5] > 59) {
        return std::nullopt;
    }
    return Date(sys_days(calendar)) + hours(parts[3]) + minutes(parts[4]) + seconds(parts[5]);
}

std::string dayText(Date date, Language language) {
    const std::unique_ptr<icu::DateFormat> style(icu::DateFormat::createDateInstance(
        icu::DateFormat::kMedium, icu::Locale(localeName(language).c_str())));
    if (!style) {
        return isoText(date).substr(0, 10);
    }
    icu::UnicodeString formatted;
    style->format(static_cast<UDate>(duration_cast<milliseconds>(date.time_since_epoch()).count()),
                  formatted);
    std::string text;
    formatted.toUTF8String(text);
    return text;
}

} // namespace lumo
