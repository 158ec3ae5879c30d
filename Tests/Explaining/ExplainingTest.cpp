#include "LumoCore/Explaining/FreeingAction.h"
#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "LumoCore/Explaining/SafetyPolicy.h"
#include "LumoCore/Explaining/ShortSize.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using tarvo::testing::TempHome;
using namespace testing;

namespace {

const Date noon = *dateFromIsoText("2026-03-14T12:00:00Z");

enum class App { none, related };

FolderEvidence evidence(const std::string& name, FolderLocation location, App app) {
    FolderEvidence evidence{.path = "/h/" + name, .displayPath = "~/" + name, .location = location};
    evidence.usage.allocatedBytes = 16000000000;
    if (app == App::related) {
        evidence.relatedApp = InstalledApp{"Foo Shown", "com.foo.bar", "/Applications/Foo Bar.app"};
    }
    evidence.isAppleComponent = name.starts_with("com.apple.");
    return evidence;
}

} // namespace

TEST(ShortSize, RoundsHalfAMegabyteUp) {
    using Case = std::tuple<std::int64_t, const char*, const char*>;
    for (const auto& [bytes, es, en] :
         {Case{0, "0 MB", "0 MB"}, Case{1, "<1 MB", "<1 MB"}, Case{499999, "<1 MB", "<1 MB"},
          Case{500000, "1 MB", "1 MB"}, Case{2500000, "3 MB", "3 MB"}, Case{999999999, "1000 MB", "1,000 MB"},
          Case{1000000000, "1,0 GB", "1.0 GB"}}) {
        EXPECT_EQ(shortSize(bytes, Language::es), es);
        EXPECT_EQ(shortSize(bytes, Language::en), en);
    }
}

TEST(FolderEvidence, GathersWhatIsLargestAndWhoseItIs) {
    const TempHome home;
    for (std::size_t number = 0; number < 9; ++number) {
        home.file(".npm/f" + std::to_string(number) + ".t" + std::to_string(number), 100000 * (number + 1));
    }
    const std::vector<InstalledApp> apps{{"npm", "org.npm", "/Applications/npm.app"}};
    const FolderEvidence npm = FolderEvidence::gather(home.path(".npm"), home.path(), {apps});
    EXPECT_EQ(npm.displayPath, "~/.npm");
    EXPECT_EQ(npm.location, FolderLocation::hiddenHome);
    EXPECT_EQ(npm.usage.fileCount, 9);
    EXPECT_EQ(npm.relatedApp, apps.front());
    ASSERT_EQ(npm.largestEntries.size(), 8U);
    EXPECT_EQ(npm.largestEntries.front().name, "f8.t8");
    ASSERT_EQ(npm.fileTypes.size(), 5U);
    EXPECT_EQ(npm.fileTypes.back().name, "t4");
    EXPECT_FALSE(npm.isAppleComponent);
    for (const char* name : {"com.apple.x", "group.com.apple.x"}) {
        EXPECT_TRUE(
            FolderEvidence::gather(home.folder(name), home.path(), {apps}, {}, Language::en, System::macos)
                .isAppleComponent);
    }
    EXPECT_EQ(FolderEvidence::gather(home.path() + "x", home.path(), {apps}).displayPath, home.path() + "x");
}

TEST(FolderEvidence, IsDescribedOneFactALine) {
    FolderEvidence full = evidence("com.apple.x\ny", FolderLocation::containers, App::related);
    full.usage.fileCount = 12345;
    full.usage.lastModified = noon - std::chrono::hours(48);
    full.usage.unreadableCount = 2;
    full.largestEntries = {{"a", 1500000000}, {"b", 1}};
    full.fileTypes = {{"jpg", 2000000}, {"no extension", 7}};
    EXPECT_EQ(full.promptDescription(noon, Language::es, System::macos),
              "~/com.apple.x\\ny: 16,0 GB en 12.345 archivos\ncontenedor de una app con sandbox\n"
              "Último cambio: hace 2 días\nApp relacionada, instalada: Foo Shown\n"
              "Pertenece a macOS (identificador de Apple).\nContenido más grande: a (1,5 GB), b (<1 MB)\n"
              "Tipos de archivo: jpg 2 MB, no extension <1 MB\nElementos sin permiso de lectura: 2");
    FolderEvidence bare = evidence("x", FolderLocation::other, App::none);
    for (const auto& [age, en] : {std::pair{0, "today"}, {24, "1 days ago"}, {-72, "today"}}) {
        bare.usage.lastModified = noon - std::chrono::hours(age);
        EXPECT_THAT(bare.promptDescription(noon, Language::en, System::macos),
                    StartsWith("~/x: 16.0 GB in 0 files\nother location\nLast change: " + std::string(en) +
                               "\nNo installed app matches the name: "));
    }
    bare.usage.fileCount = 1;
    bare.usage.lastModified = noon - std::chrono::hours(24);
    EXPECT_THAT(bare.promptDescription(noon, Language::es, System::linux),
                AllOf(HasSubstr(" en 1 archivo\n"), HasSubstr(": hace 1 día\n")));
}

TEST(HeuristicExplainer, GoesByThePlaceThenByAppleThenByTheApp) {
    using enum FolderLocation;
    for (const auto& [given, whatItIs, owner, safety, reason] :
         {std::tuple{evidence("com.apple.x", caches, App::none), "com.apple.x cache", "com.apple.x",
                     Safety::safe, "macOS allows caches to be deleted: the app recreates them."},
          {evidence("x", caches, App::related), "Foo Bar cache", "Foo Bar", Safety::safe,
           "macOS allows caches to be deleted: the app recreates them."},
          {evidence("com.apple.x", containers, App::related), "macOS component", "macOS", Safety::keep,
           "Managed by the system."},
          {evidence("x", hiddenHome, App::none),
           "Possibly left over from an app or tool that's no longer installed", "desconocida", Safety::review,
           "No installed app matches the name."},
          {evidence("x", hiddenHome, App::related), "Foo Bar data", "Foo Bar", Safety::review,
           "It may contain the app's settings or documents."}}) {
        const Explanation made = HeuristicExplainer::explain(given, noon, Language::en, System::macos);
        EXPECT_EQ(made.whatItIs, whatItIs);
        EXPECT_EQ(made.owner, owner);
        EXPECT_EQ(made.safety, safety);
        EXPECT_EQ(made.reason, reason);
        const Explanation es = HeuristicExplainer::explain(given, noon, Language::es, System::macos);
        EXPECT_TRUE(es.safety == made.safety && es.owner == made.owner && es.whatItIs != made.whatItIs &&
                    es.reason != made.reason && es.howToFree != made.howToFree);
        const std::string json = dumpJson(encode(made), JsonLayout::line);
        EXPECT_EQ(decodeJson<Explanation>(json), made);
    }
}

TEST(HeuristicExplainer, OnLinuxCallsNothingALeftoverWithoutEvidence) {
    // Keys, mail and toolchains were "left over … then delete it", since no application has their name.
    using enum FolderLocation;
    const auto explained = [](const FolderEvidence& given, Language language) {
        return HeuristicExplainer::explain(given, noon, language, System::linux);
    };
    const FolderEvidence unknown = evidence(".ssh", hiddenHome, App::none);
    EXPECT_EQ(explained(unknown, Language::en).whatItIs,
              "Data of a program without a desktop icon, or a leftover");
    EXPECT_EQ(explained(unknown, Language::es).reason, "Muchas herramientas no aparecen entre las apps.");
    EXPECT_EQ(explained(unknown, Language::en).howToFree, "Check what's inside before deleting anything.");
    FolderEvidence left = evidence(".var/app/org.a.B", containers, App::none);
    left.uninstalledOwner = "org.a.B";
    EXPECT_EQ(explained(left, Language::en).whatItIs, "Left over from org.a.B, which was uninstalled");
    EXPECT_EQ(explained(left, Language::es).howToFree, "Mira qué hay dentro antes de borrar nada.");
    FolderEvidence tool = evidence(".rustup", hiddenHome, App::none);
    tool.relatedApp = InstalledApp{"rustup", "rustup", "/h/.cargo/bin/rustup"};
    EXPECT_EQ(explained(tool, Language::es).whatItIs, "Datos de rustup");
    EXPECT_EQ(explained(tool, Language::en).howToFree, "Check what's inside before deleting anything.");
    const FolderEvidence cache = evidence(".var/app/org.a.B/cache", caches, App::none);
    EXPECT_EQ(explained(cache, Language::en).whatItIs, "org.a.B cache");
    EXPECT_EQ(explained(cache, Language::en).reason, "Programs recreate their caches.");
}

TEST(SafetyPolicy, NeverAdvisesToRemoveOnLinuxWhatIsKept) {
    // A model said "keep" and "uninstall it and delete the whole folder" in one breath.
    using enum FreeingAction;
    const FolderEvidence given = evidence("x", FolderLocation::hiddenHome, App::related);
    for (const FreeingAction action : {clearFromApp, uninstallTool, deleteIfUnused, reviewContents}) {
        EXPECT_EQ(SafetyPolicy::advice(action, Safety::keep, given, Language::en, System::linux),
                  "Leave it as it is.");
        EXPECT_EQ(SafetyPolicy::advice(action, Safety::review, given, Language::es, System::linux),
                  advice(action, given, Language::es));
        EXPECT_EQ(SafetyPolicy::advice(action, Safety::keep, given, Language::es, System::macos),
                  advice(action, given, Language::es));
    }
    EXPECT_EQ(SafetyPolicy::note(Safety::keep, Safety::safe, evidence("x", FolderLocation::caches, App::none),
                                 Language::es, System::linux),
              "Los programas vuelven a crear sus cachés.");
}

TEST(SafetyPolicy, LetsNoModelDecideThatSomethingIsSafe) {
    using enum Safety;
    constexpr const char* cache = "macOS allows caches to be deleted: the app recreates them.";
    constexpr const char* doubt = "The AI thinks it's safe, but there's no guarantee: review it.";
    using Case = std::tuple<FolderLocation, bool, Safety, Safety, const char*>;
    for (const auto& [location, isApple, suggested, decided, note] :
         {Case{FolderLocation::caches, false, keep, safe, cache},
          Case{FolderLocation::caches, true, review, safe, cache},
          Case{FolderLocation::caches, false, safe, safe, ""},
          Case{FolderLocation::other, true, review, keep, "Managed by macOS."},
          Case{FolderLocation::other, true, keep, keep, ""},
          Case{FolderLocation::applicationSupport, false, safe, review, doubt},
          Case{FolderLocation::other, false, review, review, ""},
          Case{FolderLocation::other, false, keep, keep, ""}}) {
        const FolderEvidence given = evidence(isApple ? "com.apple.x" : "x", location, App::none);
        EXPECT_EQ(SafetyPolicy::finalSafety(suggested, given), decided);
        EXPECT_EQ(SafetyPolicy::note(suggested, decided, given, Language::en, System::macos).value_or(""),
                  note);
    }
    const FolderEvidence given = evidence("x", FolderLocation::other, App::none);
    EXPECT_EQ(SafetyPolicy::note(safe, review, given, Language::es),
              "La IA lo cree seguro, pero no hay garantía: revísalo.");
    // What nobody computes still has an answer.
    EXPECT_FALSE(SafetyPolicy::note(safe, keep, given));
}

TEST(FreeingAction, IsAdvisedInOneSentence) {
    using enum FreeingAction;
    constexpr const char* unknown = "If you don't recognize this folder or use the tool that created it, ";
    for (const auto& [action, app, en] :
         {std::tuple{clearFromApp, App::related, "Foo Bar has an option to clear its cache, use it; "},
          {clearFromApp, App::none, unknown},
          {uninstallTool, App::none, "If you no longer use this tool, uninstall it; "},
          {deleteIfUnused, App::related, "If you no longer use Foo Bar, uninstall it and "},
          {deleteIfUnused, App::none, unknown},
          {reviewContents, App::none, "Check what's inside before deleting anything."},
          {leaveAlone, App::related, "Leave it: Foo Bar is using it."},
          {leaveAlone, App::none, "Leave it: the tool that created it is using it."}}) {
        const FolderEvidence given = evidence("x", FolderLocation::applicationSupport, app);
        EXPECT_THAT(advice(action, given, Language::en, System::macos), StartsWith(en));
        EXPECT_NE(advice(action, given, Language::es, System::macos),
                  advice(action, given, Language::en, System::macos));
        // These two come before the action, and the first before the second.
        EXPECT_EQ(advice(action, evidence("x", FolderLocation::caches, App::none), Language::es),
                  "Se puede vaciar: la app que la creó la vuelve a generar.");
        EXPECT_EQ(advice(action, evidence("com.apple.x", FolderLocation::caches, App::none), Language::en,
                         System::macos),
                  "Leave it: macOS manages it.");
    }
    // Where nothing but a name was known, the advice was to delete the whole folder: also ~/.ssh.
    for (const FreeingAction action : {clearFromApp, uninstallTool, deleteIfUnused, reviewContents}) {
        for (const App app : {App::none, App::related}) {
            const FolderEvidence given = evidence("com.apple.x", FolderLocation::hiddenHome, app);
            const std::string said = advice(action, given, Language::en, System::linux);
            EXPECT_THAT(said, AnyOf(HasSubstr("before deleting"), StartsWith("If Foo Bar has an option")))
                << said;
        }
    }
    FolderEvidence filled = evidence("x", FolderLocation::other, App::none);
    filled.largestEntries = {{"a", 16000000000}, {"b", 500000}, {"c", 1}};
    EXPECT_EQ(advice(reviewContents, filled, Language::es),
              "Mira qué hay dentro antes de borrar nada; lo más grande: a (16,0 GB) y b (1 MB).");
    EXPECT_EQ(caseNamed<FreeingAction>("no_tocar"), leaveAlone);
}
