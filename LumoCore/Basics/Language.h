#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// The interface language.
enum class Language { en, es };

/// The language that the sources ask for. First wins: the argument after "--idioma" (or "--idioma=es"), the
/// value of TARVO_IDIOMA, what the user chose for this program, the first preferred language of the user's;
/// what is neither "en" nor "es" in the first three is passed over, and anything but Spanish in the last is
/// English.
Language detectLanguage(const std::vector<std::string>& arguments,
                        const std::optional<std::string>& environmentValue,
                        const std::vector<std::string>& preferredLanguages, std::string_view chosen = {});

/// Says what the user chose for this program; only before the language of this process is first asked for,
/// and on the thread that asks first.
void chooseLanguage(const std::string& chosen);

/// The language of this process: detected from the process itself on first use, the same ever after.
Language currentLanguage();

/// The locale that numbers and dates are written in: "es_ES" or "en_US".
std::string localeName(Language language);

} // namespace lumo
