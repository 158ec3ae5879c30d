#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Timestamp.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumo {

/// A moment, to the microsecond, in the years 1 to 9999.
using Date = Timestamp;

/// ISO 8601 in UTC to the second: "2025-03-14T09:30:05Z". The fraction is dropped.
std::string isoText(Date date);

/// The moment that such a text names; absent for any other text.
std::optional<Date> dateFromIsoText(std::string_view text);

/// The day for a person to read, in the user's time zone: "3 nov 2026", "Nov 3, 2026".
std::string dayText(Date date, Language language = currentLanguage());

/// The day and the time of day, likewise: "3 nov 2026, 9:30", "Nov 3, 2026, 9:30 AM".
std::string momentText(Date date, Language language = currentLanguage());

/// The moment in the user's time zone as digits that sort: "20250314-093005".
std::string stampText(Date date);

/// The moment that such a stamp names; absent for any other text, and for times that no clock showed.
std::optional<Date> dateFromStampText(std::string_view text);

/// The same time of day that many calendar days later in the user's time zone, across changes of summer time.
Date daysLater(Date date, int days);

/// Midnights in the user's time zone between the moments: 0 within a day, 1 from any time yesterday to today.
int midnightsBetween(Date earlier, Date later);

} // namespace lumo
