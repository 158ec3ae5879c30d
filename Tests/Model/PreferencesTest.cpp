#include "TarvoApp/Model/Preferences.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

using lumo::JsonValue;
using tarvo::Preferences;
using tarvo::testing::TempHome;
using testing::ElementsAre;
using testing::StartsWith;

namespace {

constexpr std::string_view store = ".config/TarvoAI/preferencias.json";

const tarvo::PreferenceKey& key(std::string_view name) {
    return *tarvo::preferenceKey(name);
}

JsonValue json(std::string_view text) {
    return lumo::parseJson(text).value();
}

/// The value that a fresh look at the disk gives, as JSON; "absent" when there is none.
std::string stored(const TempHome& home, std::string_view name) {
    const auto value = Preferences::load(home.path()).value(key(name));
    return value ? lumo::dumpJson(*value, lumo::JsonLayout::line) : "absent";
}

std::string content(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

std::vector<std::string> namesBesideStore(const TempHome& home) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(home.path(".config/TarvoAI"))) {
        names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
}

} // namespace

TEST(Preferences, HaveTheAgreedKeysAndStandardValues) {
    const TempHome home;
    std::string listed;
    for (const tarvo::PreferenceKey& each : tarvo::preferenceKeys()) {
        listed += std::string(each.key) + " " + stored(home, each.key) + "\n";
    }
    EXPECT_EQ(listed,
              "objetivoBytes 24000000000\nbienvenidaVista false\nverDiscoEntero false\n"
              "apariencia \"system\"\nbarraDeMenus true\navisoGB 10\navisoNotificacion true\n"
              "limpiezaSemanal false\ndiasProyectoActivo 30\ncarpetasProtegidas []\nresumenConIA true\n"
              "explicarAlAnalizar false\ntamanoTexto 1.0\nnovedadesVistas absent\n"
              "ultimaLimpiezaSemanal absent\nultimaLimpiezaSemanalBytes absent\n"
              "avisoPocoEspacioEnviado absent\nmodeloLocal absent\n");
    EXPECT_FALSE(std::filesystem::exists(home.path(".config"))) << "Reading wrote something.";
}

TEST(Preferences, SurviveOnTheDiskUntilTheyAreUnset) {
    const TempHome home;
    struct Case {
        const char* name;
        const char* value;
        const char* standard;
    };
    const std::vector<Case> cases{{"objetivoBytes", "9000000000000000", "24000000000"},
                                  {"barraDeMenus", "false", "true"},
                                  {"apariencia", "\"dark\"", "\"system\""},
                                  {"tamanoTexto", "1.25", "1.0"},
                                  {"carpetasProtegidas", "[\"/caf\uEFE9\",\"/ñ\"]", "[]"}, // A stray byte.
                                  {"ultimaLimpiezaSemanal", "\"2025-03-14T09:30:05Z\"", "absent"}};
    for (const Case& changed : cases) {
        EXPECT_TRUE(Preferences::load(home.path()).store(key(changed.name), json(changed.value)));
    }
    for (const Case& changed : cases) {
        EXPECT_EQ(stored(home, changed.name), changed.value);
        EXPECT_TRUE(Preferences::load(home.path()).store(key(changed.name), std::nullopt));
        EXPECT_EQ(stored(home, changed.name), changed.standard);
    }
    EXPECT_EQ(json(content(home.path(store))), json("{}"));
    EXPECT_THAT(namesBesideStore(home), ElementsAre("preferencias.json"));
}

TEST(Preferences, KeepWhatANewerProgramStored) {
    const TempHome home;
    home.fileWith(store, R"({"nuevo":{"a":[1,2.5,null]},"avisoGB":"veinte","otro":"ñ"})");
    EXPECT_EQ(stored(home, "avisoGB"), "10");
    ASSERT_TRUE(Preferences::load(home.path()).store(key("limpiezaSemanal"), json("true")));
    EXPECT_EQ(json(content(home.path(store))),
              json(R"({"nuevo":{"a":[1,2.5,null]},"avisoGB":"veinte","otro":"ñ","limpiezaSemanal":true})"));
}

TEST(Preferences, TakeValuesOfAWrongKindOrOutOfRangeForNotStored) {
    struct Case {
        const char* name;
        const char* value;
    };
    for (const Case& wrong :
         {Case{"avisoGB", "10.5"}, Case{"avisoGB", "-1"}, Case{"avisoGB", "1000001"}, Case{"avisoGB", "true"},
          Case{"limpiezaSemanal", "1"}, Case{"limpiezaSemanal", "\"true\""}, Case{"apariencia", "\"Dark\""},
          Case{"tamanoTexto", "0.49"}, Case{"tamanoTexto", "\"1\""}, Case{"novedadesVistas", "7"},
          Case{"carpetasProtegidas", "\"/a\""}, Case{"carpetasProtegidas", "[\"/a\",\"b\"]"},
          Case{"carpetasProtegidas", "[7]"}, Case{"ultimaLimpiezaSemanal", "\"yesterday\""},
          Case{"ultimaLimpiezaSemanal", "0"}, Case{"resumenConIA", "null"}}) {
        const TempHome home;
        const std::string standard = stored(home, wrong.name);
        home.fileWith(store, "{\"" + std::string(wrong.name) + "\":" + wrong.value + "}");
        EXPECT_EQ(stored(home, wrong.name), standard) << wrong.name << " " << wrong.value;
    }
}

TEST(Preferences, KeepADamagedStoreAsideAtTheNextChange) {
    for (const std::string damaged : {"{\"avisoGB\": 20", "[]", "", "\xFF"}) {
        const TempHome home;
        home.fileWith(store, damaged);
        EXPECT_EQ(stored(home, "avisoGB"), "10");
        EXPECT_EQ(content(home.path(store)), damaged);
        Preferences preferences = Preferences::load(home.path());
        ASSERT_TRUE(preferences.store(key("avisoGB"), json("5")));
        ASSERT_TRUE(preferences.store(key("avisoGB"), json("6")));
        EXPECT_EQ(stored(home, "avisoGB"), "6");
        const std::vector<std::string> names = namesBesideStore(home);
        ASSERT_THAT(names, ElementsAre("preferencias.json", StartsWith("preferencias.json.")));
        EXPECT_EQ(content(home.path(".config/TarvoAI/" + names.back())), damaged);
    }
}

TEST(Preferences, LeaveAloneWhatCannotBeRead) {
    const TempHome home;
    home.file(std::string(store) + "/inside");
    Preferences preferences = Preferences::load(home.path());
    EXPECT_EQ(preferences.value(key("avisoGB")), json("10"));
    const auto changed = preferences.store(key("avisoGB"), json("5"));
    ASSERT_FALSE(changed);
    EXPECT_THAT(changed.error().message, StartsWith(home.path(store) + ": "));
    EXPECT_EQ(preferences.value(key("avisoGB")), json("10"));
    EXPECT_TRUE(std::filesystem::exists(home.path(std::string(store) + "/inside")));
    EXPECT_THAT(namesBesideStore(home), ElementsAre("preferencias.json"));
}

TEST(Preferences, AreMeantByThePersonsWords) {
    const std::string here = std::filesystem::current_path();
    const auto meaning = [](const char* name, const std::vector<std::string>& words) {
        const auto value = tarvo::preferenceFromWords(key(name), words);
        return value ? lumo::dumpJson(*value, lumo::JsonLayout::line) : "refused";
    };
    struct Case {
        const char* name;
        std::vector<std::string> words;
        std::string json;
    };
    for (const Case& said :
         {Case{"avisoGB", {"0"}, "0"}, Case{"avisoGB", {"1000000"}, "1000000"},
          Case{"limpiezaSemanal", {"Sí"}, "true"}, Case{"limpiezaSemanal", {"ON"}, "true"},
          Case{"limpiezaSemanal", {"no"}, "false"}, Case{"limpiezaSemanal", {"0"}, "false"},
          Case{"apariencia", {"light"}, "\"light\""}, Case{"tamanoTexto", {"0.5"}, "0.5"},
          Case{"tamanoTexto", {"3"}, "3.0"}, Case{"novedadesVistas", {"1.2"}, "\"1.2\""},
          Case{"modeloLocal", {"http://[::1]:80", "a:b"}, "\"http://[::1]:80 a:b\""},
          Case{"ultimaLimpiezaSemanal", {"2024-02-29T00:00:00Z"}, "\"2024-02-29T00:00:00Z\""},
          Case{"carpetasProtegidas", {"/a b/", "rel"}, "[\"/a b\",\"" + here + "/rel\"]"}}) {
        EXPECT_EQ(meaning(said.name, said.words), said.json) << said.name;
    }
    struct Refused {
        const char* name;
        std::vector<std::string> words; ///< Each by itself.
    };
    for (const Refused& refused :
         {Refused{"avisoGB", {"", "1000001", "-1", "1.0", "1e3", "10 ", "99999999999999999999"}},
          Refused{"limpiezaSemanal", {"", "maybe"}}, Refused{"apariencia", {"", "Light"}},
          Refused{"tamanoTexto", {"", "3.01", "nan", "1,5"}},
          Refused{"ultimaLimpiezaSemanal", {"", "2025-02-29T00:00:00Z"}}}) {
        for (const std::string& word : refused.words) {
            EXPECT_EQ(meaning(refused.name, {word}), "refused") << refused.name << " " << word;
        }
        EXPECT_EQ(meaning(refused.name, {}), "refused") << refused.name;
        EXPECT_EQ(meaning(refused.name, {"1", "1"}), "refused") << refused.name;
    }
}

TEST(Preferences, RefuseAnEmptyFolder) {
    // It stood for the working directory, which was then protected. None at all is for "unset" to say.
    EXPECT_FALSE(tarvo::preferenceFromWords(key("carpetasProtegidas"), {}));
    EXPECT_FALSE(tarvo::preferenceFromWords(key("carpetasProtegidas"), {"/a", ""}));
}

TEST(Preferences, SayWhenProtectedFoldersCannotBeTrusted) {
    // Once a damaged store, or one wrong entry, silently meant that nothing was protected.
    const TempHome home;
    EXPECT_EQ(Preferences::load(home.path()).problem(), std::nullopt);
    for (const char* content : {"{", "[]", R"({"carpetasProtegidas": ["/a", "~/b"]})"}) {
        home.fileWith(".config/TarvoAI/preferencias.json", content);
        EXPECT_TRUE(Preferences::load(home.path()).problem()) << content;
    }
    home.fileWith(".config/TarvoAI/preferencias.json", R"({"carpetasProtegidas": ["/a"], "avisoGB": "x"})");
    EXPECT_EQ(Preferences::load(home.path()).problem(), std::nullopt);
}
