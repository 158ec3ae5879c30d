#include "TarvoModel/Flows/LanguageChoice.h"

#include "LumoCore/Basics/Language.h"
#include "TarvoModel/Flows/Preferences.h"

namespace tarvo {

void speakAsChosen(const std::string& home) {
    if (!home.empty()) {
        lumo::chooseLanguage(Preferences::load(home).value(preference::language));
    }
}

} // namespace tarvo
