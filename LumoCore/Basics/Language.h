#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// The interface language.
enum class Language { en, es };

/// The language that the sources ask for. First wins: the argument after "--idioma" (or "--idioma=es"), the
/// value of TARVO_IDIOMA, the first preferred language of the user's; what is neither "en" nor "es" in the
/// first two is passed over, and anything but Spanish in the third is English.
Language detectLanguage(const std::vector<std::string>& arguments,
                        const std::optional<std::string>& environmentValue,
                        const std::vector<std::string>& preferredLanguages);

/// The language of this process: detected from the process itself on first use, the same ever after.
Language currentLanguage();

/// The locale that numbers and dates are written in: "es_ES" or "en_US".
std::string localeName(Language language);

} // namespace lumo
