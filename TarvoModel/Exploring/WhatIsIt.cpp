#include "TarvoModel/Exploring/WhatIsIt.h"

#include "LumoAI/ExplanationService.h"
#include "LumoAI/NoModel.h"
#include "LumoCore/Basics/Words.h"

namespace tarvo {

CertainPlaces::CertainPlaces(const std::string& home)
    : installed_(lumo::Installed::ofThisMachine(home)),
      known_(lumo::HomePlaces::ofThisMachine(home), installed_) {}

std::map<std::string, lumo::Safety>
CertainPlaces::safetiesOf(const std::vector<lumo::UnclassifiedItem>& items) const {
    std::map<std::string, lumo::Safety> safeties;
    for (const auto& [path, explanation] : known_.explainAll(items, {})) {
        safeties.emplace(path, explanation.safety);
    }
    return safeties;
}

std::vector<ExplanationLine> whatItIs(const std::string& path, const std::string& home, lumo::Date now,
                                      const std::stop_token& stop) {
    lumo::NoModel none;
    const auto explained =
        lumo::ExplanationService::explain({path}, none,
                                          {.home = home,
                                           .cacheHome = home,
                                           .installed = lumo::Installed::ofThisMachine(home),
                                           .now = now,
                                           .watch = {.progress = nullptr, .stop = stop}});
    const auto found = explained.find(path);
    return found != explained.end() ? explanationLines(found->second) : std::vector<ExplanationLine>();
}

std::optional<ExplanationLine> unreadLine(const lumo::NamedEntry& entry) {
    const std::string label = lumo::Words{"Sin leer", "Not read"}.in();
    if (entry.is(lumo::EntryTraits::unreadable)) {
        return ExplanationLine{
            label, lumo::Words{"No se pudo leer, o no del todo: lo que ocupa no está contado. Casi siempre "
                               "falta permiso.",
                               "It could not be read, or not all of it: what it takes is not counted. Most "
                               "often a permission is missing."}
                       .in()};
    }
    if (entry.is(lumo::EntryTraits::holdsUnreadable)) {
        return ExplanationLine{
            label,
            lumo::Words{"Algo de lo que contiene no se pudo leer, y no está contado. En la lista tiene "
                        "delante un «!».",
                        "Something in it could not be read, and is not counted. In the list it has a "
                        "“!” before it."}
                .in()};
    }
    return std::nullopt;
}

char safetyLetter(lumo::Safety safety, lumo::Language language) {
    switch (safety) {
    case lumo::Safety::safe:
        return 'S';
    case lumo::Safety::review:
        return 'R';
    case lumo::Safety::keep:
        break;
    }
    return language == lumo::Language::es ? 'C' : 'K';
}

} // namespace tarvo
