#include "LumoCore/Basics/JsonEdit.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <array>

using lumo::JsonValue;
using tarvo::testing::wordsIn;
namespace JsonEdit = lumo::JsonEdit;

namespace {

constexpr std::array<std::string_view, 2> path{"list", "new"};

std::string with(std::string_view document) {
    const auto edited = JsonEdit::withValue(document, path, {JsonValue::Object{{"a", {std::int64_t{1}}}}});
    return edited ? *edited : edited.error() == JsonEdit::Problem::malformed ? "malformed" : "ambiguous";
}

std::string without(std::string_view document) {
    return JsonEdit::withoutValue(document, path).value_or("refused");
}

} // namespace

TEST(JsonEdit, AddsAMemberAsTheDocumentIsLaidOutAndTakesItAwayAgain) {
    using Case = std::tuple<std::string, std::string, bool>;
    for (const auto& [before, after, comesBack] : {
             Case{"{}", "{\n  \"list\": {\n    \"new\": {\n      \"a\": 1\n    }\n  }\n}", false},
             Case{R"({"x":1.0})", R"({"x":1.0, "list": {"new": {"a": 1}}})", false},
             Case{R"({"list":null , "x":1})", R"({"list":{"new": {"a": 1}} , "x":1})", false},
             Case{R"({ "list" : {} })", R"({ "list" : {"new": {"a": 1}} })", true},
             Case{R"({"l\u0069st":{"\u00e9\/":12345678901234567890,"x":1e5,"x":-0.0e+00,"\ud800":[]}})",
                  R"({"l\u0069st":{"\u00e9\/":12345678901234567890,"x":1e5,"x":-0.0e+00,"\ud800":[], )"
                  R"("new": {"a": 1}}})",
                  true},
             Case{"\xEF\xBB\xBF{\r\n\t\"x\": 1e999,\r\n\t\"list\": {\r\n\t\t\"b\": 2\r\n\t}\r\n}\r\n",
                  "\xEF\xBB\xBF{\r\n\t\"x\": 1e999,\r\n\t\"list\": {\r\n\t\t\"b\": 2,\r\n\t\t\"new\": {\r\n"
                  "\t\t\t\"a\": 1\r\n\t\t}\r\n\t}\r\n}\r\n",
                  true},
             Case{"{\n    \"list\": {}\n}",
                  "{\n    \"list\": {\n        \"new\": {\n            \"a\": 1\n        }\n    }\n}", true},
         }) {
        EXPECT_EQ(with(before), after);
        EXPECT_EQ(with(after), after);
        EXPECT_EQ(without(before), before) << "There was nothing to remove.";
        EXPECT_EQ(without(after) == before, comesBack) << without(after);
    }
    EXPECT_EQ(without(R"({"list": {"new":1 , "b":2}})"), R"({"list": {"b":2}})");
    EXPECT_EQ(without(R"({"list": {"a":0, "new":1 , "b":2}})"), R"({"list": {"a":0 , "b":2}})");
}

TEST(JsonEdit, RefusesWhatIsNoObjectToTheLetterAndWhatHasAKeyOfThePathTwice) {
    const std::string tooDeep = R"({"a":)" + std::string(64, '[') + std::string(64, ']') + "}";
    for (const std::string& document :
         wordsIn(R"([] { {}x {"a":1,} {"a":01} {"a":.5} {"a":1.} {"a":1e} {"a":-} {"a":"\x"} {"a":"\u12g4"}
                 {"a":tru} {'a':1} {"a"1} //no{} {"a":NaN} {"a":" )" +
                 tooDeep)) {
        EXPECT_EQ(with(document), "malformed") << document;
    }
    using namespace std::string_view_literals;
    for (const std::string_view document : {""sv, "{} x"sv, "{\"a\":\"\n\"}"sv, "{\"a\":\"\xFF\"}"sv,
                                            "{\"a\":\"\xC3\"}"sv, "// no\n{}"sv, "{}\0"sv}) {
        EXPECT_EQ(with(document), "malformed") << document;
    }
    EXPECT_EQ(with(R"({"list":{},"li\u0073t":{}})"), "ambiguous");
    EXPECT_EQ(with(R"({"list":{"new":1,"x":2,"new":3}})"), "ambiguous");
}
