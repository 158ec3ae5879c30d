#include "LumoCore/Basics/Text.h"

#include <gtest/gtest.h>

#include <array>

TEST(Text, ComposesNamesThatTheDiskGivesDecomposed) {
    EXPECT_EQ(lumo::composed("Grabacio\u0301n"), "Grabaci\u00F3n");
    EXPECT_EQ(lumo::composed("Grabaci\u00F3n"), "Grabaci\u00F3n");
    EXPECT_EQ(lumo::composed("plain"), "plain");
}

TEST(Text, FoldsCaseAndDiacriticsAway) {
    EXPECT_EQ(lumo::folded("Café"), "cafe");
    EXPECT_EQ(lumo::folded("CAFE\u0301"), "cafe");
    EXPECT_EQ(lumo::folded("Straße ÑANDÚ"), "strasse nandu");
    EXPECT_EQ(lumo::folded("\xC3"), "\uFFFD");
}

TEST(Text, KeepsLettersAndNumbersOnly) {
    EXPECT_EQ(lumo::lettersAndDigits("Visual Studio Code"), "visualstudiocode");
    EXPECT_EQ(lumo::lettersAndDigits("com.docker.docker"), "comdockerdocker");
    EXPECT_EQ(lumo::lettersAndDigits("1Password 7 – ÉLAN ½"), "1password7élan½");
    EXPECT_EQ(lumo::lettersAndDigits("E\u0301lan"), "élan");
    EXPECT_EQ(lumo::lettersAndDigits("微信"), "微信");
    EXPECT_EQ(lumo::lettersAndDigits("-_. \xFF\U0001F600"), "");
}

TEST(Text, ComparesRunsOfDigitsAsNumbers) {
    // Each one comes before all that follow; equal numbers are told apart by their zeros, so that no two
    // names are the same.
    constexpr auto ascending = std::to_array<std::string_view>(
        {"", "-1", "1", "01a", "1a", "2.0.9", "2.0.10", "2.0.10-beta", "2.01.1", "2.1.1", "3a09", "3a9", "10",
         "18446744073709551615", "18446744073709551616", "a00b", "a0b", "ñ", "\xFF"});
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            EXPECT_EQ(lumo::comesBeforeNumerically(ascending[left], ascending[right]), left < right)
                << ascending[left] << " and " << ascending[right];
        }
    }
}

TEST(Text, KnowsNumbersOfEveryScript) {
    for (const char* text : {"2.0", "0", "½", "\u0663", "Ⅳ", "五"}) {
        EXPECT_TRUE(lumo::beginsWithNumber(text)) << text;
    }
    for (const char* text : {"", "v2", ".2", "-1", " 1", "\xB2", "notes"}) {
        EXPECT_FALSE(lumo::beginsWithNumber(text)) << text;
    }
}

TEST(Text, ShowsNothingThatMovesTheTerminalOrMisleads) {
    using Case = std::tuple<std::string, const char*>;
    for (const auto& [bytes, shown] : {
             Case{"~/Código/日本 ñ", "~/Código/日本 ñ"},
             Case{"a\nb\tc\r", "a\\nb\\x09c\\x0D"},
             Case{"\x1B[31mred\x7F", "\\x1B[31mred\\x7F"},
             Case{std::string("a\0b", 3), "a\\x00b"},
             Case{"caf\xE9", "caf\\xE9"},
             Case{"\xE2\x82", "\\xE2\\x82"},                            // A character cut short.
             Case{"\xC0\xAF\xED\xA0\x80", "\\xC0\\xAF\\xED\\xA0\\x80"}, // Overlong, and a surrogate.
             Case{"\u009B31m", "\\xC2\\x9B31m"},                        // The one-character form of ESC [.
             Case{"fdp.\u202Eexe", "fdp.\\xE2\\x80\\xAEexe"},
             Case{"\u2066a\u2069\u2028", "\\xE2\\x81\\xA6a\\xE2\\x81\\xA9\\xE2\\x80\\xA8"},
         }) {
        EXPECT_EQ(lumo::printable(bytes), shown);
    }
}

TEST(Text, ShowsTheJoinersThatScriptsAndEmojiAreWrittenWith) {
    // All format characters were shown as bytes, not only those that change the direction.
    const std::string family = "\U0001F468\u200D\U0001F467.jpg";
    const std::string persian = "\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645";
    EXPECT_EQ(lumo::printable(family), family);
    EXPECT_EQ(lumo::printable(persian), persian);
    EXPECT_EQ(lumo::revealed("a\u200Db\u3164\uFEFF\U000E0041"), // A question shows them all.
              R"(a\xE2\x80\x8Db\xE3\x85\xA4\xEF\xBB\xBF\xF3\xA0\x81\x81)");
    EXPECT_EQ(lumo::revealed("日本 ñ\n\xFF"), R"(日本 ñ\n\xFF)");
    EXPECT_EQ(lumo::printableWithStrays("a\n\xFF\u202E"), "a\\n\xFF\\xE2\\x80\\xAE");
}

TEST(Text, FindsTheWordsOfANameInLowerCase) {
    EXPECT_EQ(lumo::words("Visual-Studio  Code2 \xFF.É"),
              (std::vector<std::string>{"visual", "studio", "code2", "é"}));
    EXPECT_EQ(lumo::words("--"), std::vector<std::string>());
    EXPECT_EQ(lumo::lowerCased("A.ÑÉ日-İ"), "a.ñé日-i\u0307");
}

TEST(Text, CountsTheColumnsOfATerminal) {
    EXPECT_EQ(lumo::columns("ñandú"), 5U);
    EXPECT_EQ(lumo::columns("n\u0303a"), 2U);
    EXPECT_EQ(lumo::columns("日本"), 4U);
    EXPECT_EQ(lumo::columns("\xFF\xFE"), 2U);
}

TEST(Text, ShortensInTheMiddleWithoutEverTakingMoreColumns) {
    EXPECT_EQ(lumo::shortened("abcdefghij", 10), "abcdefghij");
    EXPECT_EQ(lumo::shortened("abcdefghij", 5), "ab…ij");
    EXPECT_EQ(lumo::shortened("abcdefghij", 1), "…");
    EXPECT_EQ(lumo::shortened("abcdefghij", 0), "");
    EXPECT_EQ(lumo::shortened("日本語日本語", 6), "日…語");
    for (const char* text : {"~/Código/日本語/ñandú", "n\u0303n\u0303n\u0303n\u0303", "ab\xFF\xFE日c"}) {
        for (std::size_t most = 0; most < 24; ++most) {
            EXPECT_LE(lumo::columns(lumo::shortened(text, most)), most) << text;
        }
    }
}
