#include "Platform/PropertyList.h"
#include "TarvoModel/Showing/Notification.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
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

TEST(Bundle, IsKnownToEveryDesktopByOneName) {
    // Desktop entry, description, windows and notifications had two names between them, so that the shop did
    // not find the program and the window not its icon.
    const std::string id(tarvo::applicationID);
    const std::string folder = SOURCE_FOLDER "/packaging/";
    constexpr std::array<const char*, 1> identifier{"CFBundleIdentifier"};
    EXPECT_THAT(tarvo::testing::contentOf(folder + id + ".desktop"),
                ::testing::HasSubstr("\nIcon=" + std::string(tarvo::iconName) + "\n"));
    EXPECT_THAT(tarvo::testing::contentOf(folder + id + ".metainfo.xml"),
                ::testing::AllOf(::testing::HasSubstr("<id>" + id + "</id>"),
                                 ::testing::HasSubstr(">" + id + ".desktop</launchable>"),
                                 ::testing::HasSubstr("<screenshot type=\"default\">")));
    EXPECT_EQ(lumo::platform::readPropertyListStrings(folder + "macos/Info.plist.in", identifier)
                  .value()["CFBundleIdentifier"],
              id);
    for (const char* file : {"App/Notifier.cpp", "Views/main.cpp", "Views/OneInstance.cpp"}) {
        EXPECT_THAT(
            tarvo::testing::contentOf(std::string(SOURCE_FOLDER "/TarvoApp/") + file),
            ::testing::AnyOf(::testing::HasSubstr("\"" + id + "\""), ::testing::HasSubstr("applicationID")))
            << file;
    }
}
