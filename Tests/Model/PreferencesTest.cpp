#include "TarvoModel/Flows/Preferences.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace lumo;
using tarvo::Preferences;
namespace preference = tarvo::preference;
using namespace tarvo::testing;
using namespace testing;

namespace {

constexpr std::string_view store = ".config/TarvoAI/preferencias.json";

const tarvo::Preference& key(std::string_view name) {
    return *tarvo::preferenceNamed(name);
}

JsonValue json(std::string_view text) {
    return parseJson(text).value();
}

/// The value that a fresh look at the disk gives, as JSON; "absent" when there is none.
std::string stored(const TempHome& home, std::string_view name) {
    const auto value = Preferences::load(home.path()).json(key(name));
    return value ? dumpJson(*value, JsonLayout::line) : "absent";
}

} // namespace

TEST(Preferences, HaveTheAgreedKeysAndStandardValues) {
    const TempHome home;
    std::string listed;
    for (const tarvo::Preference* each : tarvo::allPreferences) {
        listed += std::string(each->key) + " " + stored(home, each->key) + " ";
    }
    EXPECT_EQ(listed,
              "objetivoBytes 24000000000 bienvenidaVista false verDiscoEntero false "
              "apariencia \"system\" idioma \"system\" barraDeMenus true avisoGB 10 avisoNotificacion true "
              "limpiezaSemanal false diasProyectoActivo 30 carpetasProtegidas [] resumenConIA true "
              "explicarAlAnalizar false tamanoTexto 1.0 novedadesVistas absent "
              "ultimaLimpiezaSemanal absent ultimaLimpiezaSemanalBytes absent "
              "avisoPocoEspacioEnviado absent modeloLocal absent ventana absent ");
    EXPECT_FALSE(std::filesystem::exists(home.path(".config"))) << "Reading wrote something.";
}

TEST(Preferences, SurviveOnTheDiskUntilTheyAreUnset) {
    const TempHome home;
    const std::vector<std::tuple<const char*, const char*, const char*>> cases{
        {"objetivoBytes", "9000000000000000", "24000000000"},
        {"barraDeMenus", "false", "true"},
        {"apariencia", "\"dark\"", "\"system\""},
        {"tamanoTexto", "1.25", "1.0"},
        {"carpetasProtegidas", "[\"/caf\uEFE9\",\"/ñ\"]", "[]"}, // A stray byte.
        {"ultimaLimpiezaSemanal", "\"2025-03-14T09:30:05Z\"", "absent"}};
    for (const auto& [name, value, standard] : cases) {
        EXPECT_TRUE(Preferences::load(home.path()).store(key(name), json(value)));
    }
    for (const auto& [name, value, standard] : cases) {
        EXPECT_EQ(stored(home, name), value);
        EXPECT_TRUE(Preferences::load(home.path()).store(key(name), std::nullopt));
        EXPECT_EQ(stored(home, name), standard);
    }
    EXPECT_EQ(json(contentOf(home.path(store))), json("{}"));
    EXPECT_THAT(platform::namesIn(home.path(".config/TarvoAI")), ElementsAre("preferencias.json"));
}

TEST(Preferences, KeepWhatANewerProgramStored) {
    const TempHome home;
    home.fileWith(store, R"({"nuevo":{"a":[1,2.5,null]},"avisoGB":"veinte","otro":"ñ"})");
    EXPECT_EQ(stored(home, "avisoGB"), "10");
    ASSERT_TRUE(Preferences::load(home.path()).store(key("limpiezaSemanal"), json("true")));
    EXPECT_EQ(json(contentOf(home.path(store))),
              json(R"({"nuevo":{"a":[1,2.5,null]},"avisoGB":"veinte","otro":"ñ","limpiezaSemanal":true})"));
}

TEST(Preferences, TakeValuesOfAWrongKindOrOutOfRangeForNotStored) {
    using Case = std::tuple<const char*, const char*>;
    for (const auto& [name, value] :
         {Case{"avisoGB", "10.5"}, Case{"avisoGB", "-1"}, Case{"avisoGB", "1000001"}, Case{"avisoGB", "true"},
          Case{"limpiezaSemanal", "1"}, Case{"limpiezaSemanal", "\"true\""}, Case{"apariencia", "\"Dark\""},
          Case{"tamanoTexto", "0.49"}, Case{"tamanoTexto", "\"1\""}, Case{"novedadesVistas", "7"},
          Case{"carpetasProtegidas", "\"/a\""}, Case{"carpetasProtegidas", "[\"/a\",\"b\"]"},
          Case{"carpetasProtegidas", "[7]"}, Case{"ultimaLimpiezaSemanal", "\"yesterday\""},
          Case{"ultimaLimpiezaSemanal", "0"}, Case{"resumenConIA", "null"}}) {
        const TempHome home;
        const std::string standard = stored(home, name);
        home.fileWith(store, "{\"" + std::string(name) + "\":" + value + "}");
        EXPECT_EQ(stored(home, name), standard) << name << " " << value;
    }
}

TEST(Preferences, LeaveAloneWhatIsDamagedOrCannotBeRead) {
    // A change of one setting began a fresh store, in which the protected folders were gone.
    const auto expectRefused = [](const TempHome& home, std::string_view reason) {
        Preferences preferences = Preferences::load(home.path());
        for (const auto& refused : {preferences.set(preference::lowSpaceGB, 5),
                                    preferences.store(preference::lowSpaceGB, std::nullopt)}) {
            ASSERT_FALSE(refused);
            EXPECT_THAT(refused.error().message, AllOf(HasSubstr(home.path(store)), HasSubstr(reason)));
        }
        EXPECT_EQ(preferences.value(preference::lowSpaceGB), 10);
        EXPECT_THAT(platform::namesIn(home.path(".config/TarvoAI")), ElementsAre("preferencias.json"));
    };
    for (const std::string damaged : {"{\"avisoGB\": 20", "[]", "", "\xFF"}) {
        const TempHome home;
        home.fileWith(store, damaged);
        expectRefused(home, Words{"arregla el fichero o bórralo", "mend the file or delete it"}.in());
        EXPECT_EQ(contentOf(home.path(store)), damaged);
    }
    const TempHome home;
    home.file(std::string(store) + "/inside");
    expectRefused(home, ": ");
    EXPECT_TRUE(std::filesystem::exists(home.path(std::string(store) + "/inside")));
}

TEST(Preferences, AreMeantByThePersonsWords) {
    const std::string here = std::filesystem::current_path();
    const auto meaning = [](const char* name, const std::vector<std::string>& words) {
        const auto value = tarvo::preferenceFromWords(key(name), words, "/home/u");
        return value ? dumpJson(*value, JsonLayout::line) : "refused";
    };
    using Case = std::tuple<const char*, std::vector<std::string>, std::string>;
    for (const auto& [name, words, json] :
         {Case{"avisoGB", {"0"}, "0"}, Case{"avisoGB", {"1000000"}, "1000000"},
          Case{"limpiezaSemanal", {"Sí"}, "true"}, Case{"limpiezaSemanal", {"ON"}, "true"},
          Case{"limpiezaSemanal", {"no"}, "false"}, Case{"limpiezaSemanal", {"0"}, "false"},
          Case{"apariencia", {"light"}, "\"light\""}, Case{"tamanoTexto", {"0.5"}, "0.5"},
          Case{"tamanoTexto", {"3"}, "3.0"}, Case{"novedadesVistas", {"1.2"}, "\"1.2\""},
          Case{"modeloLocal", {"http://[::1]:80", "a:b"}, "\"http://[::1]:80 a:b\""},
          Case{"ultimaLimpiezaSemanal", {"2024-02-29T00:00:00Z"}, "\"2024-02-29T00:00:00Z\""},
          Case{"carpetasProtegidas", {"/a b/", "rel"}, "[\"/a b\",\"" + here + "/rel\"]"}}) {
        EXPECT_EQ(meaning(name, words), json) << name;
    }
    using Refused = std::pair<const char*, std::vector<std::string>>; // Each word by itself.
    for (const auto& [name, refused] :
         {Refused{"avisoGB", {"", "1000001", "-1", "1.0", "1e3", "10 ", "99999999999999999999"}},
          Refused{"limpiezaSemanal", {"", "maybe"}}, Refused{"apariencia", {"", "Light"}},
          Refused{"tamanoTexto", {"", "3.01", "nan", "1,5"}},
          Refused{"ultimaLimpiezaSemanal", {"", "2025-02-29T00:00:00Z"}},
          Refused{"carpetasProtegidas", {""}}}) { // It stood for the working directory.
        for (const std::string& word : refused) {
            EXPECT_EQ(meaning(name, {word}), "refused") << name << " " << word;
        }
        EXPECT_EQ(meaning(name, {}), "refused") << name;
        EXPECT_EQ(meaning(name, {"1", ""}), "refused") << name;
    }
}

TEST(Preferences, SayWhenProtectedFoldersCannotBeTrusted) {
    // Once a damaged store, or one wrong entry, silently meant that nothing was protected.
    const TempHome home;
    EXPECT_EQ(Preferences::load(home.path()).problem(), std::nullopt);
    for (const char* content : {"{", "[]", R"({"carpetasProtegidas": ["/a", "b"]})"}) {
        home.fileWith(".config/TarvoAI/preferencias.json", content);
        EXPECT_TRUE(Preferences::load(home.path()).problem()) << content;
    }
    home.fileWith(".config/TarvoAI/preferencias.json", R"({"carpetasProtegidas": ["/a"], "avisoGB": "x"})");
    EXPECT_EQ(Preferences::load(home.path()).problem(), std::nullopt);
}
