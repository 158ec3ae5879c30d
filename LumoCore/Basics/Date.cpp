#include "LumoCore/Basics/Date.h"

#include <fmt/format.h>
#include <unicode/datefmt.h>
#include <unicode/locid.h>

#include <array>
#include <ctime>
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

std::tm localTime(Date date) {
    const std::time_t moment = system_clock::to_time_t(floor<seconds>(date));
    std::tm parts = {};
    localtime_r(&moment, &parts);
    return parts;
}

Date fromLocalTime(std::tm parts) {
    parts.tm_isdst = -1; // The time zone knows.
    return floor<seconds>(system_clock::from_time_t(std::mktime(&parts)));
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

std::string stampText(Date date) {
    const std::tm parts = localTime(date);
    return fmt::format("{:04}{:02}{:02}-{:02}{:02}{:02}", parts.tm_year + 1900, parts.tm_mon + 1,
                       parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
}

std::optional<Date> dateFromStampText(std::string_view text) {
    constexpr std::string_view shape = "dddddddd-dddddd";
    if (text.size() != shape.size() || text[8] != '-') {
        return std::nullopt;
    }
    constexpr std::array<std::pair<std::size_t, std::size_t>, 6> places{
        {{0, 4}, {4, 2}, {6, 2}, {9, 2}, {11, 2}, {13, 2}}};
    std::array<int, 6> values = {};
    for (std::size_t index = 0; index < places.size(); ++index) {
        const std::optional<int> value = digits(text, places[index].first, places[index].second);
        if (!value) {
            return std::nullopt;
        }
        values[index] = *value;
    }
    std::tm parts = {};
    parts.tm_year = values[0] - 1900;
    parts.tm_mon = values[1] - 1;
    parts.tm_mday = values[2];
    parts.tm_hour = values[3];
    parts.tm_min = values[4];
    parts.tm_sec = values[5];
    const Date date = fromLocalTime(parts);
    // The library turns the 31st of February into a day in March; such a stamp is nobody's.
    return stampText(date) == text ? std::optional(date) : std::nullopt;
}

Date daysLater(Date date, int days) {
    std::tm parts = localTime(date);
    parts.tm_mday += days;
    return fromLocalTime(parts) + (date - floor<seconds>(date));
}

namespace {

sys_days localDay(Date date) {
    const std::tm parts = localTime(date);
    return year{parts.tm_year + 1900} / (parts.tm_mon + 1) / parts.tm_mday;
}

} // namespace

int midnightsBetween(Date earlier, Date later) {
    return static_cast<int>((localDay(later) - localDay(earlier)).count());
}

namespace {

std::string formatted(Date date, const icu::DateFormat* style) {
    if (style == nullptr) {
        return isoText(date).substr(0, 10);
    }
    icu::UnicodeString characters;
    style->format(static_cast<UDate>(duration_cast<milliseconds>(date.time_since_epoch()).count()),
                  characters);
    std::string text;
    characters.toUTF8String(text);
    return text;
}

icu::Locale localeOf(Language language) {
    return icu::Locale(localeName(language).c_str());
}

} // namespace

std::string dayText(Date date, Language language) {
    // Making a style takes fifty times as long as using it, and lists ask for a day in each of their rows.
    thread_local std::array<std::unique_ptr<icu::DateFormat>, 2> styles;
    std::unique_ptr<icu::DateFormat>& style = styles.at(static_cast<std::size_t>(language));
    if (!style) {
        style.reset(icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, localeOf(language)));
    }
    return formatted(date, style.get());
}

std::string momentText(Date date, Language language) {
    const std::unique_ptr<icu::DateFormat> style(icu::DateFormat::createDateTimeInstance(
        icu::DateFormat::kMedium, icu::DateFormat::kShort, localeOf(language)));
    return formatted(date, style.get());
}

} // namespace lumo
