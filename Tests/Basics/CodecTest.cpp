#include "LumoCore/Basics/Codec.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using testing::HasSubstr;

namespace {

enum class Colour { red, darkBlue };

struct Painted {
    static constexpr std::string_view caseName = "painted";
    std::string by;
    static constexpr auto fields = std::tuple{field("_0", &Painted::by)};
    friend bool operator==(const Painted&, const Painted&) = default;
};

struct Bare {
    static constexpr std::string_view caseName = "bare";
    static constexpr auto fields = std::tuple{};
    friend bool operator==(const Bare&, const Bare&) = default;
};

struct Door {
    std::string name;
    std::optional<std::int64_t> height;
    static constexpr auto fields = std::tuple{field("name", &Door::name), field("height", &Door::height)};
    friend bool operator==(const Door&, const Door&) = default;
};

struct House {
    std::int64_t number = 0;
    double area = 0;
    bool isOpen = false;
    Date built;
    Colour colour = Colour::red;
    std::variant<Painted, Bare> surface;
    std::vector<Door> doors;
    std::map<std::string, Door> byOwner;
    static constexpr auto fields = std::tuple{
        field("number", &House::number), field("area", &House::area),      field("isOpen", &House::isOpen),
        field("built", &House::built),   field("colour", &House::colour),  field("surface", &House::surface),
        field("doors", &House::doors),   field("byOwner", &House::byOwner)};
    friend bool operator==(const House&, const House&) = default;
};

const std::string houseText = R"({"number":-9223372036854775808,"area":2.5,"isOpen":true,)"
                              R"("built":"2025-03-14T09:30:05Z","colour":"darkBlue",)"
                              R"("surface":{"painted":{"_0":"Ana"}},)"
                              R"("doors":[{"name":"front","height":210},{"name":"back"}],)"
                              R"("byOwner":{"Íñigo":{"name":"side"}}})";

House house() {
    return {.number = std::numeric_limits<std::int64_t>::min(),
            .area = 2.5,
            .isOpen = true,
            .built = dateFromIsoText("2025-03-14T09:30:05Z").value(),
            .colour = Colour::darkBlue,
            .surface = Painted{"Ana"},
            .doors = {{"front", 210}, {"back", {}}},
            .byOwner = {{"Íñigo", {"side", {}}}}};
}

/// The house with one part of its text replaced.
std::string with(std::string_view part, std::string_view replacement) {
    std::string text = houseText;
    const std::size_t at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return text.replace(at, part.size(), replacement);
}

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

} // namespace

template <>
struct lumo::EnumNames<Colour> {
    static constexpr std::array<std::string_view, 2> values{"red", "darkBlue"};
};

TEST(Codec, WritesARecordByItsFieldsAndReadsItBack) {
    EXPECT_EQ(dumpJson(encode(house()), JsonLayout::line), houseText);
    EXPECT_EQ(decodeJson<House>(houseText), house());
    const std::string indented = dumpJson(encode(house()), JsonLayout::indented);
    EXPECT_THAT(indented, HasSubstr("\n  \"number\""));
    EXPECT_EQ(decodeJson<House>(indented), house());
}

TEST(Codec, TakesWhatOtherProgramsWriteDifferently) {
    using Case = std::tuple<std::string, House>;
    House bare = house();
    bare.surface = Bare{};
    House whole = house();
    whole.area = 2;
    for (const auto& [text, expected] : {
             Case{with(R"("back"})", R"("back","height":null})"), house()},
             Case{with(R"({"number")", R"({"later":[{}],"number")"), house()},
             Case{with("-9223372036854775808", " -9223372036854775808 ") + "\n", house()},
             Case{with(R"("Ana")", R"("\u0041na")"), house()},
             Case{with(R"({"painted":{"_0":"Ana"}})", R"({"bare":{}})"), bare},
             Case{with("2.5", "2"), whole},
         }) {
        EXPECT_EQ(decodeJson<House>(text), expected) << text;
    }
}

TEST(Codec, RefusesWhatDoesNotFitAndNamesThePlace) {
    using Case = std::tuple<std::string, const char*>;
    for (const auto& [text, message] : {
             Case{"[]", "document: expected an object"},
             Case{with("-9223372036854775808", "1.0"), "document.number: expected a whole number"},
             Case{with(R"("area":2.5,)", ""), "document.area: missing"},
             Case{with("true", "1"), "document.isOpen: expected true or false"},
             Case{with("true", "null"), "document.isOpen: expected true or false"},
             Case{with("2025-03", "2025-13"), "document.built: expected a date like 2025-03-14T09:30:05Z"},
             Case{with("darkBlue", "green"), "document.colour: expected one of the known values"},
             Case{with("painted", "tiled"), "document.surface.tiled: unknown case"},
             Case{with(R"("Ana"})", R"("Ana"},"bare":{})"),
                  "document.surface: expected an object with one member"},
             Case{with(R"({"painted":{"_0":"Ana"}})", "{}"),
                  "document.surface: expected an object with one member"},
             Case{with(R"("_0")", R"("_1")"), "document.surface.painted._0: missing"},
             Case{with(R"("name":"back")", R"("name":7)"), "document.doors[1].name: expected a string"},
             Case{with("210", R"("210")"), "document.doors[0].height: expected a whole number"},
             Case{with(R"({"name":"side"})", "[]"), "document.byOwner.Íñigo: expected an object"},
         }) {
        const auto read = decodeJson<House>(text);
        ASSERT_FALSE(read) << text;
        EXPECT_EQ(read.error().message, message);
    }
}

TEST(Json, CarriesFileNamesThroughExactly) {
    const std::string invalid = "\xFF\x80/caf\xE9 \xE2\x82 \xED\xA0\x80 \xF4\x90\x80\x80";
    for (const std::string& name :
         {std::string("ordinary"), std::string("日本 ñ\n\"\\\x1F\x7F"), std::string("a\0b", 3), invalid,
          std::string("\uEF80\uEFE9\uEFFF"), std::string("\uEF7F\uF000\uFFFD\U0010FFFF"),
          std::string("\uEF80\xFF\xEE\xBE")}) {
        const JsonValue document{JsonValue::Object{{name, {name}}}};
        const std::string text = dumpJson(document, JsonLayout::line);
        // Text that is not UTF-8 would be refused here.
        EXPECT_EQ(parseJson(text), document) << text;
    }
    const std::string shown = dumpJson({std::string("ñ\xE9\U0001F600")}, JsonLayout::line);
    EXPECT_EQ(shown, "\"ñ\uEFE9\U0001F600\"");
}

TEST(Json, RefusesWhatIsMalformedTooLargeOrTooDeep) {
    EXPECT_TRUE(parseJson(nested(mostJsonDepth)));
    EXPECT_EQ(parseJson("9223372036854775807"), JsonValue{std::numeric_limits<std::int64_t>::max()});
    using namespace std::string_literals;
    for (const std::string& text :
         {nested(mostJsonDepth + 1), std::string(1000000, '['), std::string(mostJsonBytes + 1, ' '),
          "9223372036854775808"s, "-9223372036854775809"s, "18446744073709551616"s, "1e999"s, ""s, "{"s,
          "{\"a\":1,}"s, "{\"a\":1} x"s, "NaN"s, "01"s, "\"a\nb\""s, "\"caf\xE9\""s, "\"\xED\xA0\x80\""s,
          "\"\\ud800\""s, "\"a\0"s}) {
        EXPECT_FALSE(parseJson(text)) << text.substr(0, 40);
    }
    for (std::size_t length = 0; length < houseText.size(); ++length) {
        EXPECT_FALSE(parseJson(std::string_view(houseText).substr(0, length))) << length;
    }
}
