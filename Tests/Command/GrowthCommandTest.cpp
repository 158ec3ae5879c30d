#include "LumoCore/History/SnapshotStore.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

const Date noon = *dateFromIsoText("2026-03-14T12:00:00Z");

/// Saves a report of two unclassified folders and gives the words that ask about it.
std::vector<std::string> askAboutGrowth(const TempHome& home) {
    ScanReport report{.home = home.path(), .scannedAt = noon};
    report.unclassified = {{.path = "/x/a\x1B\xE9", .usage = {.allocatedBytes = 2500000000}},
                           {.path = "/x/b", .usage = {.allocatedBytes = 199999999}}};
    const std::string text = dumpJson(encode(report), JsonLayout::line);
    return {"growth", "--report", home.fileWith("report.json", text)};
}

void store(const TempHome& home, std::chrono::hours age, std::int64_t bytes) {
    ASSERT_TRUE(
        SnapshotStore(home.path()).append({.date = noon - age, .sizes = {{"sin:/x/a\x1B\xE9", bytes}}}, 60));
}

} // namespace

TEST(GrowthCommand, ShowsWhatGrewSinceWhichDayAndStoresNothing) {
    const TempHome home;
    const auto words = askAboutGrowth(home);
    store(home, std::chrono::hours(300), 1000000000);
    EXPECT_THAT(
        runTarvo(home, words).output,
        StartsWith("LO QUE MÁS HA CRECIDO DESDE EL 2 mar 2026\n  +1,5 GB  a\\x1B\\xE9  ahora 2,5 GB\n"));
    EXPECT_THAT(runTarvo(home, words, {"TARVO_IDIOMA=en"}).output,
                StartsWith("GREW MOST SINCE Mar 2, 2026\n"));
    store(home, std::chrono::hours(24), 2000000000);
    EXPECT_THAT(runTarvo(home, words).output, StartsWith("LO QUE MÁS HA CRECIDO DESDE AYER\n  +500 MB  a"));
    EXPECT_EQ(jsonOf(home, words),
              json("{\"since\":\"2026-03-13T12:00:00Z\",\"items\":[{\"id\":\"sin:/x/a\\u001b\uEFE9\","
                   "\"name\":\"a\\u001b\uEFE9\",\"delta\":500000000,\"now\":2500000000}]}"));
    EXPECT_EQ(SnapshotStore(home.path()).load().size(), 2U);
    store(home, std::chrono::hours(22), 2400000000);
    EXPECT_EQ(runTarvo(home, words, {"TARVO_IDIOMA=en"}).output, "Nothing has grown more than 200 MB.\n");
}

TEST(GrowthCommand, SaysWhyThereIsNothingToCompareWith) {
    const TempHome home;
    const auto words = askAboutGrowth(home);
    EXPECT_EQ(jsonOf(home, words), json(R"({"items":[]})"));
    // It said that nothing had grown, of which it knew nothing, and not when it would know.
    EXPECT_THAT(runTarvo(home, words).output,
                AllOf(StartsWith("Aún no hay un análisis guardado"), HasSubstr("desde el siguiente se ve")));
    EXPECT_FALSE(std::filesystem::exists(home.path("Library")));
    const TempHome scanned;
    const auto now = askAboutGrowth(scanned);
    store(scanned, std::chrono::hours(0), 1);
    EXPECT_THAT(runTarvo(scanned, now, {"TARVO_IDIOMA=en"}).output, HasSubstr("in a minute"));
    home.folder("Library/Application Support/TarvoAI/instantaneas.json");
    EXPECT_EQ(jsonOf(home, words), json(R"({"items":[]})"));
    EXPECT_THAT(runTarvo(home, words, {"TARVO_IDIOMA=en"}).output,
                AllOf(HasSubstr("instantaneas.json could not be read: "), Not(HasSubstr("yet"))));
}
