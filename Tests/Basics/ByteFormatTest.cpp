#include "LumoCore/Basics/ByteFormat.h"

#include <gtest/gtest.h>

#include <limits>

using lumo::Language;
namespace ByteFormat = lumo::ByteFormat;

TEST(ByteFormat, ShowsGigabytesFromOneOnAndWholeMegabytesBelow) {
    using Case = std::tuple<std::int64_t, const char*, const char*>;
    // Half a megabyte is rounded to the even side, down.
    for (const auto& [bytes, es, en] :
         {Case{0, "0 MB", "0 MB"}, Case{1, "<1 MB", "<1 MB"}, Case{499999, "<1 MB", "<1 MB"},
          Case{500000, "0 MB", "0 MB"}, Case{500001, "1 MB", "1 MB"}, Case{1500000, "2 MB", "2 MB"},
          Case{2500000, "2 MB", "2 MB"}, Case{999499999, "999 MB", "999 MB"},
          Case{999999999, "1000 MB", "1,000 MB"}, Case{1000000000, "1,0 GB", "1.0 GB"},
          Case{1250000000, "1,2 GB", "1.2 GB"}, Case{1750000000, "1,8 GB", "1.8 GB"},
          Case{2500000000000, "2500,0 GB", "2,500.0 GB"}, Case{25000000000000, "25.000,0 GB", "25,000.0 GB"},
          Case{std::numeric_limits<std::int64_t>::max(), "9.223.372.036,9 GB", "9,223,372,036.9 GB"}}) {
        EXPECT_EQ(ByteFormat::string(bytes, Language::es), es) << bytes;
        EXPECT_EQ(ByteFormat::string(bytes, Language::en), en) << bytes;
    }
}

TEST(ByteFormat, WritesTheDecimalsAskedForAndGroupsThousandsOnlyWhereTheLanguageDoes) {
    using Case = std::tuple<double, int, const char*, const char*>;
    for (const auto& [value, decimals, es, en] :
         {Case{0.5, 0, "0", "0"}, Case{1.5, 0, "2", "2"}, Case{0.125, 2, "0,12", "0.12"},
          Case{0.375, 2, "0,38", "0.38"}, Case{3, 3, "3,000", "3.000"}, Case{-1.5, 0, "-2", "-2"},
          Case{1234, 0, "1234", "1,234"}, Case{12345, 0, "12.345", "12,345"}}) {
        EXPECT_EQ(ByteFormat::number(value, decimals, Language::es), es);
        EXPECT_EQ(ByteFormat::number(value, decimals, Language::en), en);
    }
}
