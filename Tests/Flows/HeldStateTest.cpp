#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Flows/Archiving.h"
#include "TarvoModel/Flows/Scanning.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace tarvo;
using namespace tarvo::testing;
using namespace ::testing;
namespace fs = std::filesystem;

TEST(HeldState, EmptiesOnlyWhatIsAsItWasWhenItWasAskedAbout) {
    // The comparison of a batch's bytes with those in the question could be left out unnoticed.
    const TempHome home;
    const std::string root = "Library/Application Support/TarvoAI/Apartado/";
    home.files({root + "20260314-093005/a", root + "20260314-093006/b"}, 5000);
    const Desk desk{.home = home.path(), .program = "test", .now = [] {
                        return *lumo::dateFromIsoText("2026-03-14T12:00:00Z");
                    }};
    const auto asked = heldState(desk);
    ASSERT_TRUE(asked);
    ASSERT_THAT(asked->batches, SizeIs(2));
    home.file(root + "20260314-093006/more", 5000);
    home.file(root + "20260314-093007/c", 5000);
    const auto emptied = emptyAgreed(asked->batches, desk);
    ASSERT_TRUE(emptied);
    EXPECT_EQ(emptied->freed, asked->batches[0].bytes);
    EXPECT_THAT(emptied->failures, ElementsAre(StartsWith("20260314-093006: ")));
    EXPECT_FALSE(fs::exists(home.path(root + "20260314-093005")));
    EXPECT_TRUE(fs::exists(home.path(root + "20260314-093006/b")));
    EXPECT_TRUE(fs::exists(home.path(root + "20260314-093007/c")));
}

TEST(HeldState, OfAHomeThatIsGoneSaysSoAndNotThatItIsElsewhere) {
    const TempHome home;
    const Desk desk = Desk::ofThisMachine(home.path("gone"), "tests");
    const auto state = heldState(desk);
    ASSERT_FALSE(state);
    EXPECT_EQ(state.error().message, homeProblem(desk));
    EXPECT_THAT(state.error().message, HasSubstr(home.path("gone")));
}

// What cannot be read was offered with made-up figures: 0 MB, of which a zip would save nothing.
TEST(Archiving, IsRefusedWhereSomethingCannotBeRead) {
    const TempHome home;
    expectHeld(asOrdinaryUser(home.path(), [&] {
        home.file("Documents/private/letter", 5000);
        home.file("Documents/partly/private/letter", 5000);
        home.file("Documents/open/letter", 5000);
        home.setMode("Documents/private", 0000);
        home.setMode("Documents/partly/private", 0000);
        const Desk desk = Desk::ofThisMachine(home.path(), "tests");
        return archiveRefusal(home.path("Documents/private"), desk) &&
               archiveRefusal(home.path("Documents/partly"), desk) &&
               !archiveRefusal(home.path("Documents/open"), desk);
    }));
}
