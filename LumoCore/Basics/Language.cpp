#include "LumoCore/Basics/Language.h"

#include "Platform/Environment.h"

#include <algorithm>

namespace lumo {

namespace {

std::optional<Language> languageNamed(std::string_view name) {
    if (name == "en") {
        return Language::en;
    }
    return name == "es" ? std::optional(Language::es) : std::nullopt;
}

std::optional<Language> languageInArguments(const std::vector<std::string>& arguments) {
    constexpr std::string_view option = "--idioma";
    constexpr std::string_view assigned = "--idioma=";
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& argument = arguments[index];
        if (argument == option) {
            return index + 1 < arguments.size() ? languageNamed(arguments[index + 1]) : std::nullopt;
        }
        if (argument.starts_with(assigned)) {
            return languageNamed(std::string_view(argument).substr(assigned.size()));
        }
    }
    return std::nullopt;
}

/// What the user chose; read once, by `currentLanguage`.
std::string& chosenLanguage() {
    static std::string chosen;
    return chosen;
}

} // namespace

void chooseLanguage(const std::string& chosen) {
    chosenLanguage() = chosen;
}

Language detectLanguage(const std::vector<std::string>& arguments,
                        const std::optional<std::string>& environmentValue,
                        const std::vector<std::string>& preferredLanguages, std::string_view chosen) {
    if (const std::optional<Language> asked = languageInArguments(arguments)) {
        return *asked;
    }
    if (const std::optional<Language> named = languageNamed(environmentValue.value_or(""))) {
        return *named;
    }
    if (const std::optional<Language> named = languageNamed(chosen)) {
        return *named;
    }
    const bool isSpanish = !preferredLanguages.empty() && preferredLanguages.front().starts_with("es");
    return isSpanish ? Language::es : Language::en;
}

Language currentLanguage() {
    static const Language language =
        detectLanguage(platform::processArguments(), platform::environmentVariable("TARVO_IDIOMA"),
                       platform::preferredLanguages(), chosenLanguage());
    return language;
}

std::string localeName(Language language) {
    return language == Language::es ? "es_ES" : "en_US";
}

} // namespace lumo
