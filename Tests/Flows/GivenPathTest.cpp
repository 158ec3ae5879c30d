#include "TarvoModel/Flows/GivenPath.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace tarvo;
using namespace tarvo::testing;

TEST(GivenPath, MeansTheSameHoweverItIsSpelt) {
    // A protected folder given relative, as "~/x" in quotes, with a final slash or over a link protected
    // nothing.
    const TempHome home;
    const std::string work = home.folder("Work/app");
    home.link("shortcut", "Work");
    const TempHome other;
    const std::string link = other.link("home", home.path());
    std::filesystem::current_path(home.path("Work"));
    for (const std::string& word :
         {work, std::string("~/Work/app"), work + "/", home.path() + "//Work/./app", std::string("app"),
          std::string("./app/."), std::string("../Work/app"), home.path("shortcut/app"), link + "/Work/app",
          link + "/shortcut/../Work/app", std::string("~/shortcut/app/")}) {
        EXPECT_EQ(pathMeant(word, home.path()), work) << word;
        EXPECT_EQ(pathMeant(word, link), link + "/Work/app") << "the home in hand spells it: " << word;
    }
    std::filesystem::current_path("/");
    EXPECT_EQ(pathMeant("~", home.path()), home.path());
    EXPECT_EQ(pathMeant("Work", home.path(), LastLink::kept, home.path()), home.path("Work"));
}

TEST(GivenPath, LeavesALastLinkAndWhatDoesNotExistAsTheyAre) {
    const TempHome home;
    home.folder("Work");
    const std::string link = home.link("shortcut", "Work");
    EXPECT_EQ(pathMeant(link, home.path()), link);
    EXPECT_EQ(pathMeant(link + "/", home.path()), home.path("Work"));
    EXPECT_EQ(pathMeant(link, home.path(), LastLink::followed), home.path("Work"));
    EXPECT_EQ(pathMeant("~/gone/deeper/", home.path()), home.path("gone/deeper"));
    EXPECT_EQ(pathMeant(home.link("nowhere", "missing"), home.path(), LastLink::followed),
              home.path("nowhere"));
    EXPECT_EQ(pathMeant("", home.path()), "") << "most often a variable that was never set";
    EXPECT_EQ(pathMeant("/etc/../usr//bin/..", home.path()), "/usr");
    EXPECT_EQ(pathMeant("~other/x", home.path(), LastLink::kept, "/work"), "/work/~other/x");
}
