#include "TarvoModel/Flows/LoginItem.h"
#include "Platform/Folder.h"
#include "TarvoModel/Showing/DesktopFolder.h"
#include "TarvoModel/Showing/ShareStats.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Language;
using tarvo::testing::contentOf;
using tarvo::testing::TempHome;
using ::testing::HasSubstr;
namespace LoginItem = tarvo::LoginItem;

TEST(LoginItem, IsSwitchedOnAndOffAndLeavesOtherEntriesAlone) {
    const TempHome home;
    const std::string other = home.fileWith(".config/autostart/other.desktop", "x");
    EXPECT_FALSE(LoginItem::isOn(home.path()));
    EXPECT_TRUE(LoginItem::set(home.path(), "/usr/bin/tarvo-app", false)) << "there is nothing to remove";
    ASSERT_TRUE(LoginItem::set(home.path(), "/usr/bin/tarvo-app", true));
    EXPECT_TRUE(LoginItem::isOn(home.path()));
    EXPECT_THAT(contentOf(home.path(".config/autostart/tarvo-ai.desktop")),
                HasSubstr("\nExec=\"/usr/bin/tarvo-app\" --oculta\n"))
        << "every login opened the full window";
    ASSERT_TRUE(LoginItem::set(home.path(), "/usr/bin/tarvo-app", false));
    EXPECT_FALSE(LoginItem::isOn(home.path()));
    EXPECT_EQ(lumo::platform::namesIn(home.path(".config/autostart")),
              std::vector<std::string>{"other.desktop"});

    ASSERT_TRUE(LoginItem::set(home.path(), "/a", true, home.path("settings")));
    EXPECT_TRUE(LoginItem::isOn(home.path(), home.path("settings")));
    EXPECT_FALSE(LoginItem::isOn(home.path(), "not/absolute"));
}

TEST(LoginItem, QuotesThePathOfTheProgramAsTheDesktopReadsIt) {
    using Case = std::pair<std::string_view, std::string_view>;
    for (const auto& [program, word] :
         {Case{"/opt/Tarvo AI/app", R"("/opt/Tarvo AI/app")"}, Case{"/a/100%/b", R"("/a/100%%/b")"},
          Case{R"(/a"b`c$d)", R"("/a\\"b\\`c\\$d")"}, Case{R"(/a\b)", R"("/a\\\\b")"},
          Case{"/a\nX=y", R"("/a\nX=y")"}}) {
        EXPECT_THAT(LoginItem::entryText(program), HasSubstr("\nExec=" + std::string(word) + " --oculta\n"));
    }
}

TEST(LoginItem, IsOffWhenTheDesktopWasToldSo) {
    const TempHome home;
    const auto isOnWith = [&](const std::string& lines) {
        home.fileWith(".config/autostart/tarvo-ai.desktop", lines);
        return LoginItem::isOn(home.path());
    };
    const std::string entry = LoginItem::entryText("/a");
    EXPECT_TRUE(isOnWith(entry + "\n[Desktop Action x]\nHidden=true\n"));
    EXPECT_FALSE(isOnWith(entry + "Hidden = true\r\n"));
    EXPECT_FALSE(isOnWith("[Desktop Entry]\nExec=a\nX-GNOME-Autostart-enabled=false"));
    EXPECT_FALSE(isOnWith(""));
}

TEST(LoginItem, SaysWhyTheEntryCouldNotBeWritten) {
    const TempHome home;
    home.file(".config/autostart");
    const auto done = LoginItem::set(home.path(), "/a", true, {}, Language::en);
    ASSERT_FALSE(done);
    EXPECT_THAT(done.error().message, HasSubstr("Couldn't write the autostart entry: "));
    home.file("settings/autostart/tarvo-ai.desktop/mine");
    EXPECT_FALSE(LoginItem::set(home.path(), "/a", false, home.path("settings")));
    EXPECT_TRUE(lumo::platform::kindOf(home.path("settings/autostart/tarvo-ai.desktop/mine")));
}

TEST(DesktopFolder, IsTheNamedOneWhereTheUsualOneIsMissing) {
    const TempHome home;
    EXPECT_EQ(tarvo::desktopFolder(home.path()), home.path("Desktop"));
    home.fileWith(".config/user-dirs.dirs", "# x\nXDG_DESKTOP_DIR=\"$HOME/Escritorio\"\n");
    EXPECT_EQ(tarvo::desktopFolder(home.path()), home.path("Escritorio"));
    EXPECT_THAT(tarvo::shareImagePath(home.path(), {}), HasSubstr("/Escritorio/TarvoAI-liberado-19"));
    home.folder("Desktop");
    EXPECT_EQ(tarvo::desktopFolder(home.path()), home.path("Desktop"));
}
