#include "LumoCore/Explaining/FreeingAction.h"
#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "LumoCore/Explaining/SafetyPolicy.h"
#include "LumoCore/Explaining/ShortSize.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Explanation;
using lumo::FolderEvidence;
using lumo::FolderLocation;
using lumo::FreeingAction;
using lumo::InstalledApp;
using lumo::Language;
using lumo::Safety;
using tarvo::testing::TempHome;
using testing::ElementsAre;
namespace HeuristicExplainer = lumo::HeuristicExplainer;
namespace SafetyPolicy = lumo::SafetyPolicy;

namespace {

const lumo::Date noon = *lumo::dateFromIsoText("2026-03-14T12:00:00Z");

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

/// An explanation's words, one a line.
std::string wordsOf(const Explanation& explanation) {
    return explanation.whatItIs + "\n" + explanation.owner + "\n" + std::string(nameOf(explanation.safety)) +
           "\n" + explanation.reason + "\n" + explanation.howToFree;
}

} // namespace

TEST(ShortSize, RoundsHalfAMegabyteUp) {
    struct Case {
        std::int64_t bytes;
        const char* es;
        const char* en;
    };
    for (const Case& expected :
         {Case{0, "0 MB", "0 MB"}, Case{1, "<1 MB", "<1 MB"}, Case{499999, "<1 MB", "<1 MB"},
          Case{500000, "1 MB", "1 MB"}, Case{2500000, "3 MB", "3 MB"}, Case{999999999, "1000 MB", "1,000 MB"},
          Case{1000000000, "1,0 GB", "1.0 GB"}, Case{16000000000, "16,0 GB", "16.0 GB"}}) {
        EXPECT_EQ(lumo::shortSize(expected.bytes, Language::es), expected.es);
        EXPECT_EQ(lumo::shortSize(expected.bytes, Language::en), expected.en);
    }
}

TEST(FolderEvidence, GathersWhatIsLargestAndWhoseItIs) {
    const TempHome home;
    for (std::size_t number = 0; number < 9; ++number) {
        home.file(".npm/f" + std::to_string(number) + ".t" + std::to_string(number), 100000 * (number + 1));
    }
    const std::vector<InstalledApp> apps{{"npm", "org.npm", "/Applications/npm.app"}};
    const FolderEvidence npm = FolderEvidence::gather(home.path(".npm"), home.path(), apps);
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
        EXPECT_TRUE(FolderEvidence::gather(home.folder(name), home.path(), apps).isAppleComponent);
    }
    EXPECT_EQ(FolderEvidence::gather(home.path() + "x", home.path(), apps).displayPath, home.path() + "x");
    EXPECT_THAT(lumo::dumpJson(lumo::encode(evidence("x", FolderLocation::caches, App::none)),
                               lumo::JsonLayout::line),
                testing::StartsWith(R"({"path":"/h/x","displayPath":"~/x","location":"caches","usage":{)"));
}

TEST(FolderEvidence, IsDescribedOneFactALine) {
    FolderEvidence full = evidence("com.apple.x\ny", FolderLocation::containers, App::related);
    full.usage.fileCount = 12345;
    full.usage.lastModified = noon - std::chrono::hours(48);
    full.usage.unreadableCount = 2;
    full.largestEntries = {{"a", 1500000000}, {"b", 1}};
    full.fileTypes = {{"jpg", 2000000}, {"no extension", 7}};
    EXPECT_EQ(full.promptDescription(noon, Language::es),
              "~/com.apple.x\\ny: 16,0 GB en 12.345 archivos\ncontenedor de una app con sandbox\n"
              "Último cambio: hace 2 días\nApp relacionada, instalada: Foo Shown\n"
              "Pertenece a macOS (identificador de Apple).\nContenido más grande: a (1,5 GB), b (<1 MB)\n"
              "Tipos de archivo: jpg 2 MB, no extension <1 MB\nElementos sin permiso de lectura: 2");
    EXPECT_EQ(full.promptDescription(noon, Language::en),
              "~/com.apple.x\\ny: 16.0 GB in 12,345 files\na sandboxed app's container\n"
              "Last change: 2 days ago\nRelated app, installed: Foo Shown\n"
              "Belongs to macOS (Apple identifier).\nLargest contents: a (1.5 GB), b (<1 MB)\n"
              "File types: jpg 2 MB, no extension <1 MB\nItems without read permission: 2");
    FolderEvidence bare = evidence("x", FolderLocation::other, App::none);
    EXPECT_EQ(
        bare.promptDescription(noon, Language::es),
        "~/x: 16,0 GB en 0 archivos\notra ubicación\nNinguna app instalada coincide con el nombre: puede ser "
        "de una herramienta de terminal o un resto de una app desinstalada.");
    for (const auto& [age, en] : {std::pair{0, "today"}, {24, "1 days ago"}, {-72, "today"}}) {
        bare.usage.lastModified = noon - std::chrono::hours(age);
        EXPECT_EQ(
            bare.promptDescription(noon, Language::en),
            "~/x: 16.0 GB in 0 files\nother location\nLast change: " + std::string(en) +
                "\nNo installed app matches the name: it may belong to a terminal tool or be left over from "
                "an uninstalled app.");
    }
}

TEST(HeuristicExplainer, GoesByThePlaceThenByAppleThenByTheApp) {
    const std::string cacheEs = "\nsafe\nmacOS permite borrar las cachés: la app las regenera.\n"
                                "Vaciar la carpeta con la app cerrada.";
    const std::string cacheEn = "\nsafe\nmacOS allows caches to be deleted: the app recreates them.\n"
                                "Empty the folder with the app closed.";
    for (const auto& [given, es, en] :
         {std::tuple{evidence("com.apple.x", FolderLocation::caches, App::none),
                     "Caché de com.apple.x\ncom.apple.x" + cacheEs,
                     "com.apple.x cache\ncom.apple.x" + cacheEn},
          {evidence("x", FolderLocation::caches, App::related), "Caché de Foo Bar\nFoo Bar" + cacheEs,
           "Foo Bar cache\nFoo Bar" + cacheEn},
          {evidence("com.apple.x", FolderLocation::containers, App::related),
           std::string("Componente de macOS\nmacOS\nkeep\nLo gestiona el sistema.\n"
                       "Dejar que macOS lo gestione."),
           std::string("macOS component\nmacOS\nkeep\nManaged by the system.\nLet macOS manage it.")},
          {evidence("x", FolderLocation::hiddenHome, App::none),
           std::string(
               "Posible resto de una app o herramienta que ya no está instalada\ndesconocida\nreview\n"
               "Ninguna app instalada coincide con el nombre.\nComprueba que no la usas y bórrala."),
           std::string(
               "Possibly left over from an app or tool that's no longer installed\ndesconocida\nreview\n"
               "No installed app matches the name.\nCheck you don't use it, then delete it.")},
          {evidence("x", FolderLocation::hiddenHome, App::related),
           std::string("Datos de Foo Bar\nFoo Bar\nreview\nPuede contener ajustes o documentos de la app.\n"
                       "Revisar desde los ajustes de Foo Bar o desinstalarla si no la usas."),
           std::string("Foo Bar data\nFoo Bar\nreview\nIt may contain the app's settings or documents.\n"
                       "Review it in Foo Bar's settings, or uninstall it if you don't use it.")}}) {
        EXPECT_EQ(wordsOf(HeuristicExplainer::explain(given, noon, Language::es)), es);
        EXPECT_EQ(wordsOf(HeuristicExplainer::explain(given, noon, Language::en)), en);
    }
    const Explanation cache =
        HeuristicExplainer::explain(evidence("x", FolderLocation::caches, App::none), noon, Language::en);
    const std::string json = lumo::dumpJson(lumo::encode(cache), lumo::JsonLayout::line);
    EXPECT_EQ(json,
              R"({"path":"/h/x","sizeBytes":16000000000,"whatItIs":"x cache","owner":"x","safety":"safe",)"
              R"("reason":"macOS allows caches to be deleted: the app recreates them.","howToFree":)"
              R"("Empty the folder with the app closed.","source":"heuristic",)"
              R"("createdAt":"2026-03-14T12:00:00Z"})");
    EXPECT_EQ(lumo::decodeJson<Explanation>(json), cache);
}

TEST(SafetyPolicy, LetsNoModelDecideThatSomethingIsSafe) {
    struct Case {
        FolderLocation location;
        bool isApple;
        Safety suggested;
        Safety final;
        const char* es;
        const char* en;
    };
    using enum Safety;
    constexpr const char* cacheEs = "macOS permite borrar las cachés: la app las regenera.";
    constexpr const char* cacheEn = "macOS allows caches to be deleted: the app recreates them.";
    constexpr const char* doubtEs = "La IA lo cree seguro, pero no hay garantía: revísalo.";
    constexpr const char* doubtEn = "The AI thinks it's safe, but there's no guarantee: review it.";
    for (const Case& expected : {
             Case{FolderLocation::caches, false, keep, safe, cacheEs, cacheEn},
             Case{FolderLocation::caches, true, review, safe, cacheEs, cacheEn},
             Case{FolderLocation::caches, false, safe, safe, "", ""},
             Case{FolderLocation::other, true, review, keep, "Lo gestiona macOS.", "Managed by macOS."},
             Case{FolderLocation::other, true, keep, keep, "", ""},
             Case{FolderLocation::applicationSupport, false, safe, review, doubtEs, doubtEn},
             Case{FolderLocation::other, false, review, review, "", ""},
             Case{FolderLocation::other, false, keep, keep, "", ""},
         }) {
        const FolderEvidence given =
            evidence(expected.isApple ? "com.apple.x" : "x", expected.location, App::none);
        EXPECT_EQ(SafetyPolicy::finalSafety(expected.suggested, given), expected.final);
        for (const auto& [language, note] :
             {std::pair{Language::es, expected.es}, {Language::en, expected.en}}) {
            EXPECT_EQ(SafetyPolicy::note(expected.suggested, expected.final, given, language).value_or(""),
                      note);
        }
    }
    // What nobody computes still has an answer.
    EXPECT_FALSE(SafetyPolicy::note(safe, keep, evidence("x", FolderLocation::other, App::none)));
}

TEST(FreeingAction, IsAdvisedInOneSentence) {
    using enum FreeingAction;
    struct Case {
        FreeingAction action;
        App app;
        const char* es;
        const char* en;
    };
    constexpr const char* unknownEs =
        "Si no reconoces esta carpeta ni usas la herramienta que la creó, borra la carpeta entera.";
    constexpr const char* unknownEn =
        "If you don't recognize this folder or use the tool that created it, delete the whole folder.";
    constexpr const char* toolEs =
        "Si ya no usas esta herramienta, desinstálala; después puedes borrar la carpeta.";
    constexpr const char* toolEn =
        "If you no longer use this tool, uninstall it; then you can delete the folder.";
    for (const Case& expected :
         {Case{
              clearFromApp, App::related,
              "Foo Bar tiene una opción para borrar la caché, úsala; si no, cierra Foo Bar antes de tocar la "
              "carpeta.",
              "Foo Bar has an option to clear its cache, use it; otherwise, quit Foo Bar before touching the "
              "folder."},
          Case{clearFromApp, App::none, unknownEs, unknownEn},
          Case{uninstallTool, App::related, toolEs, toolEn}, Case{uninstallTool, App::none, toolEs, toolEn},
          Case{deleteIfUnused, App::related, "Si ya no usas Foo Bar, desinstálala y borra la carpeta entera.",
               "If you no longer use Foo Bar, uninstall it and delete the whole folder."},
          Case{deleteIfUnused, App::none, unknownEs, unknownEn},
          Case{reviewContents, App::none, "Mira qué hay dentro antes de borrar nada.",
               "Check what's inside before deleting anything."},
          Case{leaveAlone, App::related, "Déjala: Foo Bar la está usando.", "Leave it: Foo Bar is using it."},
          Case{leaveAlone, App::none, "Déjala: la herramienta que la creó la está usando.",
               "Leave it: the tool that created it is using it."}}) {
        const FolderEvidence given = evidence("x", FolderLocation::applicationSupport, expected.app);
        EXPECT_EQ(lumo::advice(expected.action, given, Language::es), expected.es);
        EXPECT_EQ(lumo::advice(expected.action, given, Language::en), expected.en);
        // These two come before the action, and the first before the second.
        EXPECT_EQ(
            lumo::advice(expected.action, evidence("x", FolderLocation::caches, App::none), Language::es),
            "Se puede vaciar: la app que la creó la vuelve a generar.");
        EXPECT_EQ(lumo::advice(expected.action, evidence("com.apple.x", FolderLocation::caches, App::none),
                               Language::en),
                  "Leave it: macOS manages it.");
    }
    FolderEvidence filled = evidence("x", FolderLocation::other, App::none);
    filled.largestEntries = {{"a", 16000000000}, {"b", 500000}, {"c", 1}};
    EXPECT_EQ(lumo::advice(reviewContents, filled, Language::es),
              "Mira qué hay dentro antes de borrar nada; lo más grande: a (16,0 GB) y b (1 MB).");
    filled.largestEntries.resize(1);
    EXPECT_EQ(lumo::advice(reviewContents, filled, Language::en),
              "Check what's inside before deleting anything; the biggest items: a (16.0 GB).");
    EXPECT_EQ(lumo::caseNamed<FreeingAction>("no_tocar"), leaveAlone);
}
