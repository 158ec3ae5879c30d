#include "LumoCore/Inventories/SystemSpace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::SystemSpace;
using namespace testing;

TEST(SystemSpace, ReadsTheDatesOfSnapshotsOldestFirstAndPassesOverWhatIsNoDate) {
    const auto dates = SystemSpace::parseSnapshots(
        "Snapshots for disk /:\ncom.apple.TimeMachine.2025-03-14-093005.local "
        "com.apple.TimeMachine.2024-12-31-235959.local\ncom.apple.TimeMachine.2025-13-14-093005.local\n"
        "com.apple.TimeMachine.2025-02-30-093005\ncom.apple.os.update-1234\ncom.apple.TimeMachine.2025");
    EXPECT_THAT(dates, ElementsAre(*lumo::dateFromStampText("20241231-235959"),
                                   *lumo::dateFromStampText("20250314-093005")));
    EXPECT_THAT(SystemSpace::parseSnapshots(""), IsEmpty());
}

TEST(SystemSpace, IsNothingWhereTheSystemDoesNotSay) {
    EXPECT_EQ(SystemSpace::measure("/nowhere/at/all"), SystemSpace());
    EXPECT_GE(SystemSpace::measure("/").purgeableBytes, 0);
}
