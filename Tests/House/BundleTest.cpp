#include "Platform/PropertyList.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <string>
#include <vector>

// What the bundle says when macOS asks the user for a folder. A key that one file lacks shows up as an
// application that the system ends without a word, and only there.
namespace {

std::map<std::string, std::string> stringsIn(const std::string& language) {
    const std::string text =
        tarvo::testing::contentOf(SOURCE_FOLDER "/packaging/macos/" + language + ".lproj/InfoPlist.strings");
    const std::regex line("\"([^\"]+)\" = \"([^\"]+)\";\n");
    std::map<std::string, std::string> strings;
    std::size_t length = 0;
    for (std::sregex_iterator at(text.begin(), text.end(), line), end; at != end; ++at) {
        strings.emplace((*at)[1], (*at)[2]);
        length += static_cast<std::size_t>(at->length());
    }
    EXPECT_EQ(length, text.size()) << language << ": there are other lines, which the system refuses";
    return strings;
}

} // namespace

TEST(Bundle, AsksForEveryFolderInBothLanguages) {
    const auto english = stringsIn("en");
    std::vector<const char*> keys;
    for (const auto& [key, text] : english) {
        keys.push_back(key.c_str());
    }
    const auto said =
        lumo::platform::readPropertyListStrings(SOURCE_FOLDER "/packaging/macos/Info.plist.in", keys);
    ASSERT_TRUE(said.has_value());
    EXPECT_THAT(keys, ::testing::SizeIs(::testing::Ge(5U)));
    EXPECT_EQ(*said, english);
    auto spanish = stringsIn("es");
    for (const auto& [key, text] : english) {
        EXPECT_NE(spanish[key], text);
    }
    EXPECT_EQ(spanish.size(), english.size());
}
