#include "LumoCore/Basics/Language.h"

#include <gtest/gtest.h>

using lumo::Language;

TEST(Language, IsTheFirstThatArgumentsEnvironmentOrPreferencesAskFor) {
    using Case = std::tuple<const char*, std::vector<std::string>, std::optional<std::string>,
                            std::vector<std::string>, Language>;
    const std::vector<Case> cases{
        {"an argument wins", {"tarvo", "--idioma", "en"}, "es", {"es-ES"}, Language::en},
        {"behind a command", {"tarvo", "scan", "--idioma", "es"}, "en", {"en"}, Language::es},
        {"in one word", {"tarvo", "--idioma=es"}, "en", {"en"}, Language::es},
        {"the first of two arguments", {"--idioma", "es", "--idioma", "en"}, {}, {}, Language::es},
        {"another language leaves it to the variable", {"--idioma", "fr"}, "es", {"en"}, Language::es},
        {"so does another case", {"--idioma", "ES"}, "en", {"es"}, Language::en},
        {"so does a regional form", {"--idioma=es-MX"}, "en", {"es"}, Language::en},
        {"so does an option without a value", {"tarvo", "--idioma"}, "es", {"en"}, Language::es},
        {"so does an empty value", {"--idioma="}, "es", {"en"}, Language::es},
        {"a similar option is another one", {"--idiomas", "en"}, "es", {}, Language::es},
        {"a plain word is no option", {"tarvo", "en"}, {}, {"es"}, Language::es},
        {"another language in both", {"--idioma", "fr"}, "de", {"es-MX"}, Language::es},
        {"an empty variable", {}, "", {"es_419"}, Language::es},
        {"only the first preference counts", {}, {}, {"ca-ES", "es-ES"}, Language::en},
        {"no preference", {}, {}, {}, Language::en},
    };
    for (const auto& [about, arguments, variable, preferred, expected] : cases) {
        EXPECT_EQ(lumo::detectLanguage(arguments, variable, preferred), expected) << about;
    }
    EXPECT_EQ(lumo::detectLanguage({}, "fr", {"en"}, "es"), Language::es) << "what the user chose";
    EXPECT_EQ(lumo::detectLanguage({"--idioma", "en"}, "en", {"en"}, "es"), Language::en) << "words win";
    EXPECT_EQ(lumo::detectLanguage({}, {}, {"es"}, "system"), Language::es);
}
