#include "TarvoModel/Exploring/EntryTexts.h"

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Words.h"

#include <chrono>

namespace tarvo {

using lumo::Language;
using lumo::Words;
namespace EntryTraits = lumo::EntryTraits;

std::string entryNote(const lumo::NamedEntry& entry, Language language) {
    if (entry.is(EntryTraits::leftOut)) {
        return Words{"otro disco", "another disk"}.in(language);
    }
    if (entry.is(EntryTraits::unreadable)) {
        return Words{"no se pudo leer", "could not be read"}.in(language);
    }
    return entry.is(EntryTraits::hasNames) ? Words{"tiene otros nombres", "has other names"}.in(language)
                                           : std::string();
}

std::string protectionNote(const Explorer& explorer, const lumo::NamedEntry& entry, Language language) {
    return explorer.isProtected(entry.index) ? Words{"no se toca nunca", "never touched"}.in(language)
                                             : std::string();
}

std::string entryDay(const lumo::NamedEntry& entry, Language language) {
    return entry.sums.modified == 0
               ? std::string()
               : lumo::dayText(lumo::Date(std::chrono::seconds(entry.sums.modified)), language);
}

} // namespace tarvo
