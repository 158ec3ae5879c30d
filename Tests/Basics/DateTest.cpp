#include "LumoCore/Basics/Date.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

using namespace lumo;
using namespace std::chrono_literals;
using tarvo::testing::wordsIn;

TEST(Date, SurvivesItsIsoTextToTheSecond) {
    for (const char* text : {"2025-03-14T09:30:05Z", "1970-01-01T00:00:00Z", "1969-12-31T23:59:59Z",
                             "2024-02-29T23:59:59Z", "0001-01-01T00:00:00Z", "9999-12-31T23:59:59Z"}) {
        const auto date = dateFromIsoText(text);
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(isoText(*date), text);
    }
    EXPECT_EQ(dateFromIsoText("1970-01-02T00:00:01Z"), Date(86401s));
    EXPECT_EQ(isoText(Date(-1us)), "1969-12-31T23:59:59Z") << "a fraction is dropped towards the past";
}

TEST(Date, RefusesEveryOtherText) {
    for (const std::string& text : wordsIn(R"(2025-03-14 2025-03-14T09:30:05 2025-03-14T09:30:05z
            2025-03-14t09:30:05Z 2025-03-14T09:30:05.5Z 2025-03-14T09:30:05+00:00 2025-13-14T09:30:05Z
            2025-00-14T09:30:05Z 2025-03-00T09:30:05Z 2025-04-31T09:30:05Z 2025-02-29T00:00:00Z
            1900-02-29T00:00:00Z 2025-03-14T24:00:00Z 2025-03-14T09:60:05Z 2025-03-14T09:30:60Z
            0000-01-01T00:00:00Z -001-01-01T00:00:00Z +025-03-14T09:30:05Z)")) {
        EXPECT_FALSE(dateFromIsoText(text)) << text;
    }
    for (const char* text : {"", "2025-03-14 09:30:05Z", " 2025-03-14T09:30:05Z", "2025-03-14T09:30:05Z\n",
                             "2025-03-1 T09:30:05Z"}) {
        EXPECT_FALSE(dateFromIsoText(text)) << text;
    }
}

TEST(Date, IsReadAsADayInTheLanguage) {
    const Date noon = dateFromIsoText("2026-11-03T12:00:00Z").value(); // The same day nearly everywhere.
    EXPECT_EQ(dayText(noon, Language::es), "3 nov 2026");
    EXPECT_EQ(dayText(noon, Language::en), "Nov 3, 2026");
}

TEST(Date, CountsMidnightsInTheUsersTimeZone) {
    const auto between = [](const char* earlier, const char* later) {
        return midnightsBetween(*dateFromStampText(earlier), *dateFromStampText(later));
    };
    EXPECT_EQ(between("20260314-233000", "20260315-003000"), 1);
    EXPECT_EQ(between("20260314-000000", "20260314-235959"), 0);
    EXPECT_EQ(between("20250314-120000", "20260314-090000"), 365);
    EXPECT_EQ(between("20260315-000000", "20260314-235959"), -1);
}
