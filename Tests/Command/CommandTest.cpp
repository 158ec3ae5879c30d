#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "Tests/support/RunTarvo.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

using lumo::JsonValue;
using lumo::ScanReport;
using tarvo::testing::json;
using tarvo::testing::jsonOf;
using tarvo::testing::Ran;
using tarvo::testing::runTarvo;
using tarvo::testing::TempHome;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;
using Words = std::vector<std::string>;

namespace {

Words keysOf(const JsonValue& object) {
    Words keys;
    for (const JsonValue::Member& member : std::get<JsonValue::Object>(object.value)) {
        keys.push_back(member.name);
    }
    return keys;
}

ScanReport scan(const TempHome& home, Words words) {
    words.insert(words.begin(), "scan");
    return lumo::decode<ScanReport>(jsonOf(home, words)).value();
}

Words idsOf(const ScanReport& report) {
    Words ids;
    std::ranges::transform(report.findings, std::back_inserter(ids), &lumo::Finding::ruleID);
    return ids;
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
    EXPECT_THAT(ran.error, AllOf(testing::EndsWith("\n"), Not(HasSubstr("\x1B"))));
}

} // namespace

TEST(Command, RunsUnderBothNamesInEitherLanguageAndWritesNoEscapeSequencesIntoAPipe) {
    const TempHome home;
    furnish(home);
    for (const Words& command :
         {Words{"scan"}, Words{"analizar"}, Words{"rules"}, Words{"reglas"}, Words{"apps"}, Words{"growth"},
          Words{"crecimiento"}, Words{"settings"}, Words{"ajustes"}, Words{"settings", "get", "avisoGB"},
          Words{"ajustes", "set", "avisoGB", "7"}, Words{"ajustes", "unset", "avisoGB"}, Words{"--help"},
          Words{"scan", "--help"}, Words{"--version"}, Words{}}) {
        for (const char* language : {"TARVO_IDIOMA=es", "TARVO_IDIOMA=en"}) {
            const Ran ran = runTarvo(home, command, {language});
            EXPECT_EQ(ran.exitCode, 0) << testing::PrintToString(command);
            EXPECT_EQ(ran.error, "") << testing::PrintToString(command);
            EXPECT_THAT(ran.output, AllOf(Not(IsEmpty()), Not(HasSubstr("\x1B")), Not(HasSubstr("\r"))));
        }
    }
}

TEST(Command, RefusesWrongUsageInOneLineAndPrintsNothing) {
    const TempHome home;
    furnish(home);
    for (const Words& words :
         {Words{"frobnicate"}, Words{"rules", "--frobnicate"}, Words{"rules", "extra"},
          Words{"scan", "rules"}, Words{"--home"}, Words{"rules", "--home", home.path("missing")},
          Words{"rules", "--home", home.path("code/app/package.json")},
          Words{"scan", "--home", home.path("a\nb\x1B[31m")}, Words{"scan", "--min-unclassified", "-1"},
          Words{"scan", "--min-unclassified", "1e9"},
          Words{"scan", "--min-unclassified", "99999999999999999999"}, Words{"scan", "--json", "--output"},
          Words{"settings", "frobnicate"}, Words{"settings", "get"}, Words{"settings", "get", "avisogb"},
          Words{"settings", "set", "avisoGB"}, Words{"settings", "set", "avisoGB", "ten"},
          Words{"settings", "set", "apariencia", "pink"}, Words{"settings", "unset", "nothing", "--json"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        const Ran ran = runTarvo(home, words);
        isOneComplaint(ran, 2);
        EXPECT_EQ(ran.output, "");
    }
    EXPECT_EQ(runTarvo(home, {"settings", "get", "avisoGB"}).output, "10\n");
    isOneComplaint(tarvo::testing::runProgram(tarvo::testing::tarvoProgram(), {"rules"}), 2);
}

TEST(Command, RefusesAnEmptyHomeInsteadOfTakingTheUsualOne) {
    // "--home "$UNSET"" in a script worked on the real home folder.
    const TempHome home;
    isOneComplaint(runTarvo(home, {"rules", "--home", ""}), 2);
}

TEST(Command, NamesAnUnknownSettingWithoutPassingOnItsControlCharacters) {
    // The name went to the terminal as it came.
    const TempHome home;
    isOneComplaint(runTarvo(home, {"settings", "get", "a\nb\x1B[31m"}), 2);
}

TEST(Command, SpeaksTheLanguageOfTheOptionThenOfTheVariableThenOfTheLocale) {
    const TempHome home;
    struct Case {
        Words words;
        Words environment;
        const char* says;
    };
    for (const Case& asked : {
             Case{{"--idioma", "es", "rules"}, {"TARVO_IDIOMA=en"}, "SE RECREA SOLO"},
             Case{{"rules", "--idioma", "en"}, {"TARVO_IDIOMA=es"}, "RECREATES ITSELF"},
             Case{{"rules", "--idioma=es"}, {"TARVO_IDIOMA=en"}, "SE RECREA SOLO"},
             Case{{"rules", "--idioma", "fr"}, {"TARVO_IDIOMA=es"}, "SE RECREA SOLO"},
             Case{{"rules"}, {"TARVO_IDIOMA=en", "LANG=es_ES.UTF-8"}, "RECREATES ITSELF"},
             Case{{"rules"}, {"TARVO_IDIOMA=fr", "LANG=es_MX.UTF-8"}, "SE RECREA SOLO"},
             Case{{"rules"}, {"LANG=de_DE.UTF-8", "LANGUAGE=es:de"}, "SE RECREA SOLO"},
             Case{{"rules"}, {"LANG=es_ES.UTF-8", "LC_ALL=C"}, "RECREATES ITSELF"},
             Case{{"rules"}, {}, "RECREATES ITSELF"},
             Case{{"frobnicate", "--idioma", "es"}, {}, "no entiendo"},
         }) {
        const Ran ran = runTarvo(home, asked.words, asked.environment);
        EXPECT_THAT(ran.output + ran.error, HasSubstr(asked.says)) << testing::PrintToString(asked.words);
    }
}

TEST(Command, ListsTheRulesAsObjectsWithTheirDocumentedKeys) {
    const TempHome home;
    const JsonValue document = jsonOf(home, {"reglas"});
    const auto& rules = std::get<JsonValue::Array>(document.value);
    EXPECT_EQ(rules.size(), 64U);
    int toCloseFirst = 0;
    for (const JsonValue& rule : rules) {
        Words keys{"id",          "name",    "category",    "safety",
                   "explanation", "cleanup", "displayPath", "needsFolderPermission"};
        if (rule.find("closeFirst") != nullptr) {
            keys.emplace_back("closeFirst");
            ++toCloseFirst;
        }
        EXPECT_THAT(keysOf(rule), UnorderedElementsAreArray(keys));
    }
    EXPECT_EQ(toCloseFirst, 7);
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

TEST(Command, PrintsTheSameReportThatItSaves) {
    const TempHome home;
    furnish(home);
    home.file("Library/Caches/caf\xE9/blob", 200);
    const std::string file = home.path("caf\xE9.json");
    const Ran ran = runTarvo(
        home, {"scan", "--json", "--min-unclassified", "1", "--home", home.path() + "/", "--output", file});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_EQ(ran.error, "");
    std::ostringstream saved;
    saved << std::ifstream(file, std::ios::binary).rdbuf();
    EXPECT_EQ(saved.str(), ran.output);

    const auto report = lumo::decodeJson<ScanReport>(ran.output);
    ASSERT_TRUE(report) << report.error().message;
    EXPECT_EQ(lumo::encode(*report), json(ran.output)) << "Members that no record knows.";
    EXPECT_EQ(report->home, home.path());
    EXPECT_THAT(idsOf(*report), ElementsAre("uv-cache", "chrome-cache", "downloaded-installers"));
    ASSERT_EQ(report->projects.size(), 1U);
    EXPECT_EQ(report->projects.front().name, "code/app");
    Words unclassified;
    std::ranges::transform(report->unclassified, std::back_inserter(unclassified),
                           &lumo::UnclassifiedItem::path);
    EXPECT_THAT(unclassified,
                IsSupersetOf({home.path("Library/Caches/unknown"), home.path("Library/Caches/caf\xE9")}));
}

TEST(Command, LeavesOutOfAQuickScanWhatNeedsPermissionAndProjects) {
    const TempHome home;
    furnish(home);
    const ScanReport quick = scan(home, {"--quick"});
    EXPECT_THAT(idsOf(quick), ElementsAre("uv-cache", "chrome-cache"));
    EXPECT_THAT(quick.projects, IsEmpty());
    EXPECT_THAT(quick.unclassified, IsEmpty());
    EXPECT_EQ(scan(home, {"--quick", "--min-unclassified", "30000"}).unclassified.size(), 1U);
    EXPECT_EQ(scan(home, {"--min-unclassified", "30000", "--quick"}).unclassified.size(), 1U);

    const ScanReport noProjects = scan(home, {"--no-projects"});
    EXPECT_THAT(idsOf(noProjects), Contains("downloaded-installers"));
    EXPECT_THAT(noProjects.projects, IsEmpty());
}

TEST(Command, SaysWhenTheReportCannotBeSaved) {
    const TempHome home;
    furnish(home);
    const std::string folder = home.folder("folder");
    for (const std::string& place :
         {folder, home.path("missing/report.json"), home.path("code/app/package.json/x")}) {
        const Ran ran = runTarvo(home, {"scan", "--json", "--output", place});
        isOneComplaint(ran, 1);
        EXPECT_TRUE(lumo::decodeJson<ScanReport>(ran.output)) << place;
    }
}

TEST(Command, ShowsAndChangesSettingsAsAnObjectFromKeyToValue) {
    const TempHome home;
    const JsonValue all = jsonOf(home, {"ajustes"});
    EXPECT_THAT(keysOf(all), ElementsAre("objetivoBytes", "bienvenidaVista", "verDiscoEntero", "apariencia",
                                         "barraDeMenus", "avisoGB", "avisoNotificacion", "limpiezaSemanal",
                                         "diasProyectoActivo", "carpetasProtegidas", "resumenConIA",
                                         "explicarAlAnalizar", "tamanoTexto"));
    EXPECT_EQ(jsonOf(home, {"settings", "get", "novedadesVistas"}), json("{}"));
    EXPECT_EQ(jsonOf(home, {"settings", "set", "carpetasProtegidas", "/a b/", "/c"}),
              json(R"({"carpetasProtegidas":["/a b","/c"]})"));
    EXPECT_EQ(jsonOf(home, {"ajustes", "get", "carpetasProtegidas"}),
              json(R"({"carpetasProtegidas":["/a b","/c"]})"));
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
    const auto idsAndReasons = [&](Words words) {
        words.insert(words.begin(), {"plan", "--report", report});
        Words described;
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
    EXPECT_THAT(idsAndReasons({"--include", dependencies}), ElementsAre("uv-cache", dependencies));
    EXPECT_THAT(idsAndReasons({"--active-days", "0"}), ElementsAre("uv-cache", dependencies));
    EXPECT_THAT(idsAndReasons({"--exclude-project", home.path("app")}), ElementsAre("uv-cache"));
    EXPECT_THAT(idsAndReasons({"--only="}), IsEmpty());
    EXPECT_THAT(idsAndReasons({"--only=", "--only", "uv-cache"}), ElementsAre("uv-cache"));

    EXPECT_EQ(runTarvo(home, {"ajustes", "set", "carpetasProtegidas", home.path(".cache")}).exitCode, 0);
    EXPECT_THAT(idsAndReasons({"--only", "uv-cache"}),
                ElementsAre("uv-cache: está en una carpeta protegida en Ajustes"));
    EXPECT_THAT(idsAndReasons({"--only", "uv-cache", "--protect", "/elsewhere"}), ElementsAre("uv-cache"));

    home.fileWith("broken.json", R"({"home": "/x"})");
    isOneComplaint(runTarvo(home, {"plan", "--report", home.path("broken.json")}), 2);
}
