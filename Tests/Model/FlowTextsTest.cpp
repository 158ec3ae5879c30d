#include "TarvoModel/Showing/Goal.h"
#include "TarvoModel/Showing/Phase.h"
#include "TarvoModel/Showing/ShareStats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Category;
using lumo::Language;
using ::testing::ElementsAre;
using namespace tarvo;

namespace {

lumo::CleanupOutcome outcome(std::string id, std::int64_t freed, std::int64_t trashed = 0) {
    lumo::CleanupOutcome outcome;
    outcome.id = std::move(id);
    outcome.freedBytes = freed;
    outcome.trashedBytes = trashed;
    return outcome;
}

} // namespace

TEST(Phase, SaysWhatIsGoingOn) {
    const auto said = [](const Phase& phase, Language language) {
        return busyText(phase, language, lumo::System::macos).value_or("-");
    };
    EXPECT_EQ(said(phase::Idle{}, Language::es), "-");
    EXPECT_EQ(said(phase::Scanning{}, Language::es), "Analizando tu disco…");
    EXPECT_EQ(said(phase::ScanningFolders{}, Language::en),
              "Also searching your projects and Downloads… (macOS may ask for permission)");
    // On Linux nothing asks for permission, and the text said that macOS might.
    EXPECT_EQ(busyText(phase::ScanningFolders{}, Language::es, lumo::System::linux),
              "Buscando también en tus proyectos y Descargas…");
    EXPECT_EQ(firstLook(Language::es, lumo::System::macos),
              "Primero miro lo que no necesita permisos; enseguida verás resultados.");
    EXPECT_EQ(said(phase::Explaining{2, 5}, Language::es), "Explicando con IA 3 de 5…");
    EXPECT_EQ(said(phase::Archiving{"Fotos"}, Language::es),
              "Archivando «Fotos»: creando el .zip y comprobándolo…");
    const lumo::VolumeInfo volume{.totalBytes = 494400000000, .availableBytes = 38200000000};
    EXPECT_EQ(idleText(volume, 4.2, {}, Language::en), "38.2 GB free of 494.4 GB · analyzed in 4.2 s");
    EXPECT_EQ(idleText({}, 0.01, {}, Language::es), "analizado en <0,1 s");
    EXPECT_EQ(idleText(volume, 4.2, CleanupSums{.freed = 3000000}, Language::en),
              cleanupDone({.freed = 3000000}, Language::en));
}

TEST(Goal, MovesByGigabytesAndNeverBelowOne) {
    struct Case {
        std::int64_t goal, raised, lowered;
    };
    for (const Case& each :
         {Case{24000000000, 25000000000, 23000000000}, Case{1000000000, 2000000000, 1000000000},
          Case{1500000000, 2500000000, 1000000000}, Case{0, 1000000000, 1000000000}}) {
        EXPECT_EQ(Goal::raised(each.goal), each.raised);
        EXPECT_EQ(Goal::lowered(each.goal), each.lowered);
    }
    EXPECT_EQ(Goal::goalText(24900000000), "24 GB");
    EXPECT_EQ(Goal::meterText(24000000000, 24000000000, Language::es), "Cumples el objetivo con 24,0 GB");
    EXPECT_EQ(Goal::meterText(24000000000, 17900000000, Language::en),
              "6.1 GB to go: select more items in the map or the list");
    EXPECT_EQ(Goal::fraction(4000000000, 1000000000), 0.25);
    EXPECT_EQ(Goal::fraction(0, 0), 1);
}

TEST(ShareStats, TellKindsAndSumsAndNoNames) {
    const auto stats = ShareStats::make(
        {outcome("npm-cache", 100), outcome("proyecto:shop/node_modules", 400), outcome("uv-cache", 150),
         outcome("ollama", 0, 9000), outcome("docker-image:1", 50), outcome("cache-app:com.x", 20)},
        {.freeBefore = 1000, .freeAfter = 1720, .capacity = 9999, .lifetimeBefore = 24999990280});
    using Item = ShareStats::Item;
    EXPECT_THAT(stats.items, ElementsAre(Item{Category::buildOutput, 400}, Item{Category::packageCache, 250},
                                         Item{{}, 50}, Item{Category::appCache, 20}));
    EXPECT_EQ(stats.freedBytes, 720);
    EXPECT_THAT(stats.reachedMilestones(), ElementsAre(10000000000, 25000000000));
    EXPECT_EQ(stats.withEmptied(9000).freedBytes, 9720);
    EXPECT_EQ(stats.withEmptied(9000).lifetimeBytes, stats.lifetimeBytes);
}

// A card once celebrated that there was less free space than before: another program had written meanwhile.
TEST(ShareStats, NeverShowMoreBeforeThanAfter) {
    const ShareStats gained{.freedBytes = 10, .items = {}, .freeBefore = 100, .freeAfter = 110};
    EXPECT_EQ(gained.shownFreeBefore(), 100);
    const ShareStats lost{.freedBytes = 10, .items = {}, .freeBefore = 100, .freeAfter = 60};
    EXPECT_EQ(lost.shownFreeBefore(), 50);
}

TEST(ShareStats, CelebrateFromHalfAGigabyteFreed) {
    EXPECT_FALSE(ShareStats{.freedBytes = 499999999}.isWorthCelebrating());
    const ShareStats half{.freedBytes = 500000000};
    EXPECT_TRUE(half.isWorthCelebrating());
    EXPECT_EQ(half.postText(Language::es, lumo::System::macos),
              "Acabo de limpiar 500 MB de mi Mac con Tarvo AI. Solo borra lo que se regenera solo.");
    EXPECT_EQ(half.postText(Language::en, lumo::System::linux),
              "Just cleaned up 500 MB on my disk with Tarvo AI. It only deletes what recreates itself.");
    const auto noon = lumo::dateFromStampText("20250304-120000");
    EXPECT_EQ(shareImagePath("/home/u", noon.value()), "/home/u/Desktop/TarvoAI-liberado-2025-03-04.png");
}
