#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <algorithm>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

Arguments keysOf(const JsonValue& object) {
    return eachOf(std::get<JsonValue::Object>(object.value), &JsonValue::Member::name);
}

ScanReport scan(const TempHome& home, Arguments words) {
    words.insert(words.begin(), "scan");
    return decode<ScanReport>(jsonOf(home, words)).value();
}

/// A little of everything a scan finds.
void furnish(const TempHome& home) {
    home.file(".cache/uv/wheel", 50000);
    home.file("Library/Caches/Google/Chrome/page", 20000);
    home.file("Library/Caches/unknown/blob", 30000);
    home.file("Downloads/old.dmg", 10000);
    home.file("code/app/package.json", 100);
    home.file("code/app/node_modules/m.js", 40000);
}

void isOneComplaint(const Ran& ran, int exitCode) {
    EXPECT_EQ(ran.exitCode, exitCode);
    EXPECT_THAT(ran.error, StartsWith("tarvo: "));
    EXPECT_EQ(std::ranges::count(ran.error, '\n'), 1) << ran.error;
    EXPECT_THAT(ran.error, AllOf(EndsWith("\n"), Not(HasSubstr("\x1B"))));
}

} // namespace

TEST(Command, NamesTheWordsThatOthersTakeAndSaysWhatIsSetAside) {
    // Nothing but the JSON had the words that --include takes, and what a cleanup sets aside was "deleted".
    const TempHome home;
    home.file(".cache/uv/wheel", 3000000);
    home.file(".cache/whisper/model.pt", 3000000);
    home.file("code/app/package.json", 100);
    home.file("code/app/node_modules/m.js", 3000000);
    const std::string shown = runTarvo(home, {"scan", "--ids"}).output;
    for (const std::string id : {"uv-cache", "whisper", "proyecto:code/app/node_modules"}) {
        EXPECT_THAT(shown, HasSubstr("  " + id + "\n"));
        EXPECT_EQ(runTarvo(home, {"plan", "--include", id}).exitCode, 0) << id;
    }
    EXPECT_THAT(runTarvo(home, {"scan"}).output, Not(HasSubstr("uv-cache")));
    EXPECT_THAT(
        runTarvo(home, {"rules"}).output,
        AllOf(HasSubstr("su contenido se aparta 7 días, no se borra"), HasSubstr("se borra su contenido")));
}

TEST(Command, RunsUnderBothNamesInEitherLanguageAndWritesNoEscapeSequencesIntoAPipe) {
    const TempHome home;
    furnish(home);
    for (const char* line : {"scan", "analizar", "rules", "reglas", "apps", "growth", "crecimiento",
                             "settings", "ajustes", "settings get avisoGB", "ajustes set avisoGB 7",
                             "ajustes unset avisoGB", "--help", "scan --help", "--version", ""}) {
        for (const char* language : {"TARVO_IDIOMA=es", "TARVO_IDIOMA=en"}) {
            const Ran ran = runTarvo(home, wordsIn(line), {language});
            EXPECT_EQ(ran.exitCode, 0) << line;
            EXPECT_EQ(ran.error, "") << line;
            EXPECT_THAT(ran.output, AllOf(Not(IsEmpty()), Not(HasSubstr("\x1B")), Not(HasSubstr("\r"))));
        }
    }
}

TEST(Command, RefusesWrongUsageInOneLineAndPrintsNothing) {
    const TempHome home;
    furnish(home);
    // An empty home once meant the usual one, and an unknown name went to the terminal as it came.
    std::vector<Arguments> wrong{{"rules", "--home", ""},
                                 {"rules", "--home", home.path("missing")},
                                 {"rules", "--home", home.path("code/app/package.json")},
                                 {"scan", "--home", home.path("a\nb\x1B[31m")},
                                 {"settings", "get", "a\nb\x1B[31m"}};
    for (const char* line :
         {"frobnicate", "rules --frobnicate", "rules extra", "scan rules", "--home",
          "scan --min-unclassified -1", "scan --min-unclassified 1e9",
          "scan --min-unclassified 99999999999999999999", "scan --json --output", "settings frobnicate",
          "settings get", "settings get avisogb", "settings set avisoGB", "settings set avisoGB ten",
          "settings set apariencia pink", "settings unset nothing --json"}) {
        wrong.push_back(wordsIn(line));
    }
    for (const Arguments& words : wrong) {
        SCOPED_TRACE(PrintToString(words));
        const Ran ran = runTarvo(home, words);
        isOneComplaint(ran, 2);
        EXPECT_EQ(ran.output, "");
    }
    EXPECT_EQ(runTarvo(home, {"settings", "get", "avisoGB"}).output, "10\n");
    isOneComplaint(runProgram(tarvoProgram(), {"rules"}), 2);
}

TEST(Command, SpeaksTheLanguageOfTheOptionThenOfTheVariableThenOfTheLocale) {
    const TempHome home;
    using Case = std::tuple<Arguments, Arguments, const char*>;
    for (const auto& [words, environment, says] :
         {Case{{"--idioma", "es", "rules"}, {"TARVO_IDIOMA=en"}, "SE REGENERA SOLO"},
          Case{{"rules"}, {"TARVO_IDIOMA=en", "LANG=es_ES.UTF-8"}, "RECREATES ITSELF"},
          Case{{"rules"}, {"TARVO_IDIOMA=fr", "LANG=es_MX.UTF-8"}, "SE REGENERA SOLO"},
          Case{{"rules"}, {"LANG=de_DE.UTF-8", "LANGUAGE=es:de"}, "SE REGENERA SOLO"},
          Case{{"rules"}, {"LANG=es_ES.UTF-8", "LC_ALL=C"}, "RECREATES ITSELF"},
          Case{{"frobnicate", "--idioma", "es"}, {}, "no entiendo"}}) {
        const Ran ran = runTarvo(home, words, environment);
        EXPECT_THAT(ran.output + ran.error, HasSubstr(says)) << PrintToString(words);
    }
    // The one that was chosen for window and command comes before the system's.
    ASSERT_EQ(runTarvo(home, {"settings", "set", "idioma", "es"}).exitCode, 0);
    EXPECT_THAT(runTarvo(home, {"rules"}, {"LANG=en_US.UTF-8"}).output, HasSubstr("SE REGENERA SOLO"));
    EXPECT_THAT(runTarvo(home, {"--idioma", "en", "rules"}).output, HasSubstr("RECREATES ITSELF"));
}

TEST(Command, ListsTheRulesAsObjectsWithTheirDocumentedKeys) {
    const JsonValue document = jsonOf(TempHome(), {"reglas"});
    const auto& rules = std::get<JsonValue::Array>(document.value);
    EXPECT_EQ(rules.size(), RuleCatalog::of(currentSystem()).size());
    for (const JsonValue& rule : rules) {
        EXPECT_THAT(keysOf(rule), IsSupersetOf({"id", "name", "category", "safety", "explanation", "cleanup",
                                                "displayPath", "needsFolderPermission", "places"}));
    }
}

TEST(Command, ListsInstalledApplicationsWithTheirAliases) {
    const TempHome home;
    home.fileWith(
        "Applications/Foo Bar.app/Contents/Info.plist",
        "<plist><dict><key>CFBundleIdentifier</key><string>com.example.foo</string></dict></plist>");
    const std::string entry = home.fileWith(".local/share/applications/zorro.desktop",
                                            "[Desktop Entry]\nType=Application\nName=El \x1B[31mZorro\n");
    const JsonValue document = jsonOf(home, {"apps"});
    const auto& apps = std::get<JsonValue::Array>(document.value);
    EXPECT_THAT(apps, Contains(json(R"({"name":"Foo Bar","bundleID":"com.example.foo","path":")" +
                                    home.path("Applications/Foo Bar.app") +
                                    R"(","aliases":["foobar","foobar","foo"]})")));
    EXPECT_THAT(apps, Contains(json(R"({"name":"El \u001b[31mZorro","bundleID":"zorro","path":")" + entry +
                                    R"(","aliases":["el31mzorro","zorro","zorro"]})")));
    EXPECT_THAT(runTarvo(home, {"apps"}).output,
                AllOf(HasSubstr("El \\x1B[31mZorro"), Not(HasSubstr("\x1B"))));
}

TEST(Command, PrintsTheSameReportThatItSavesAlsoWhenItCannot) {
    const TempHome home;
    furnish(home);
    home.file("Library/Caches/caf\xE9/blob", 200);
    const std::string file = home.path("caf\xE9.json");
    const Ran ran = runTarvo(
        home, {"scan", "--json", "--min-unclassified", "1", "--home", home.path() + "/", "--output", file});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_EQ(ran.error, "");
    EXPECT_EQ(contentOf(file), ran.output);
    for (const std::string& place : {home.path("code"), home.path("missing/r.json"), file + "/x"}) {
        const Ran unsaved = runTarvo(home, {"scan", "--json", "--output", place});
        isOneComplaint(unsaved, 1);
        EXPECT_TRUE(decodeJson<ScanReport>(unsaved.output)) << place;
    }

    const auto report = decodeJson<ScanReport>(ran.output);
    ASSERT_TRUE(report) << report.error().message;
    EXPECT_EQ(encode(*report), json(ran.output)) << "Members that no record knows.";
    EXPECT_EQ(report->home, home.path());
    EXPECT_THAT(eachOf(report->findings, &Finding::ruleID),
                ElementsAre("uv-cache", "chrome-cache", "downloaded-installers"));
    ASSERT_EQ(report->projects.size(), 1U);
    EXPECT_EQ(report->projects.front().name, "code/app");
    EXPECT_THAT(eachOf(report->unclassified, &UnclassifiedItem::path),
                IsSupersetOf({home.path("Library/Caches/unknown"), home.path("Library/Caches/caf\xE9")}));
}

TEST(Command, LeavesOutOfAQuickScanWhatNeedsPermissionAndProjects) {
    const TempHome home;
    furnish(home);
    const ScanReport quick = scan(home, {"--quick"});
    EXPECT_THAT(eachOf(quick.findings, &Finding::ruleID), ElementsAre("uv-cache", "chrome-cache"));
    EXPECT_THAT(quick.projects, IsEmpty());
    EXPECT_THAT(quick.unclassified, IsEmpty());
    EXPECT_EQ(scan(home, {"--quick", "--min-unclassified", "30000"}).unclassified.size(), 1U);
    EXPECT_EQ(scan(home, {"--min-unclassified", "30000", "--quick"}).unclassified.size(), 1U);

    const ScanReport noProjects = scan(home, {"--no-projects"});
    EXPECT_THAT(eachOf(noProjects.findings, &Finding::ruleID), Contains("downloaded-installers"));
    EXPECT_THAT(noProjects.projects, IsEmpty());
}

TEST(Command, LeavesDamagedSettingsAsTheyAreAndSaysWhatToDo) {
    // Changing one setting began afresh, and the folders that were protected no longer were.
    const TempHome home;
    home.fileWith(".config/TarvoAI/preferencias.json", R"({"carpetasProtegidas":["/a"],)");
    for (const char* line :
         {"settings set avisoGB 7", "ajustes unset avisoGB", "settings set carpetasProtegidas /b"}) {
        const Ran ran = runTarvo(home, wordsIn(line));
        isOneComplaint(ran, 1);
        EXPECT_THAT(ran.error, HasSubstr("arregla el fichero o bórralo"));
    }
    EXPECT_EQ(contentOf(home.path(".config/TarvoAI/preferencias.json")), R"({"carpetasProtegidas":["/a"],)");
}

TEST(Command, ShowsAndChangesSettingsAsAnObjectFromKeyToValue) {
    const TempHome home;
    EXPECT_THAT(keysOf(jsonOf(home, {"ajustes"})), SizeIs(14)) << "those with a value";
    EXPECT_EQ(jsonOf(home, {"settings", "get", "novedadesVistas"}), json("{}"));
    const std::string folders = R"({"carpetasProtegidas":[")" + home.folder("[a b]") + R"(","/usr"]})";
    EXPECT_EQ(jsonOf(home, {"settings", "set", "carpetasProtegidas", "~/[a b]/", "/usr"}), json(folders));
    EXPECT_EQ(jsonOf(home, {"ajustes", "get", "carpetasProtegidas"}), json(folders));
    EXPECT_EQ(jsonOf(home, {"settings", "set", "carpetasProtegidas", home.folder("[x,y]")}),
              json(R"({"carpetasProtegidas":[")" + home.path("[x,y]") + "\"]}"));
    std::filesystem::current_path(home.path());
    EXPECT_EQ(
        jsonOf(home, {"settings", "set", "carpetasProtegidas", "[x,y]", "[a b]"}),
        json(R"({"carpetasProtegidas":[")" + home.path("[x,y]") + "\",\"" + home.path("[a b]") + "\"]}"));
    std::filesystem::current_path("/");
    const Ran missing = runTarvo(home, {"settings", "set", "carpetasProtegidas", "~/gone", "--json"});
    EXPECT_EQ(missing.exitCode, 0);
    EXPECT_THAT(missing.error, HasSubstr("no existe la carpeta " + home.path("gone")));
    EXPECT_EQ(jsonOf(home, {"ajustes", "unset", "carpetasProtegidas"}), json(R"({"carpetasProtegidas":[]})"));
    home.file("other/.config/TarvoAI/preferencias.json/inside");
    isOneComplaint(runTarvo(home, {"ajustes", "set", "avisoGB", "5", "--home", home.path("other")}), 1);
}

TEST(Command, PlansFromASavedReportWithStoredPreferencesWhereOptionsAreSilent) {
    const TempHome home;
    home.file(".cache/uv/f", 2000000);
    home.file("app/package.json", 10);
    home.file("app/node_modules/f", 3000000);
    const std::string report = home.path("report.json");
    scan(home, {"--output", report});
    const auto idsAndReasons = [&](Arguments words) {
        words.insert(words.begin(), {"plan", "--report", report});
        Arguments described;
        const JsonValue plan = jsonOf(home, words);
        for (const JsonValue& entry : std::get<JsonValue::Array>(plan.value)) {
            const JsonValue* reason = entry.find("skipReason");
            described.push_back(std::get<std::string>(entry.find("action")->find("id")->value) +
                                (reason != nullptr ? ": " + std::get<std::string>(reason->value) : ""));
        }
        return described;
    };
    const std::string dependencies = "proyecto:app/node_modules";
    const std::string active =
        dependencies + ": proyecto con cambios hoy, no se incluye solo (inclúyelo con --dependencias)";
    EXPECT_THAT(idsAndReasons({}), ElementsAre("uv-cache", active));
    EXPECT_THAT(idsAndReasons({"--dependencias"}), ElementsAre("uv-cache", dependencies));
    EXPECT_EQ(idsAndReasons({"--include", dependencies}), idsAndReasons({"--active-days", "0"}));
    EXPECT_THAT(idsAndReasons({"--exclude-project", home.path("app")}), ElementsAre("uv-cache"));
    EXPECT_THAT(idsAndReasons({"--only="}), IsEmpty());
    EXPECT_THAT(idsAndReasons({"--only=", "--only", "uv-cache"}), ElementsAre("uv-cache"));

    EXPECT_EQ(runTarvo(home, {"ajustes", "set", "carpetasProtegidas", home.path(".cache")}).exitCode, 0);
    EXPECT_THAT(idsAndReasons({"--only", "uv-cache"}),
                ElementsAre("uv-cache: está en una carpeta protegida en Ajustes"));
    EXPECT_THAT(idsAndReasons({"--only", "uv-cache", "--protect", "/usr"}), ElementsAre("uv-cache"));

    home.fileWith("broken.json", R"({"home": "/x"})");
    isOneComplaint(runTarvo(home, {"plan", "--report", home.path("broken.json")}), 2);
}
