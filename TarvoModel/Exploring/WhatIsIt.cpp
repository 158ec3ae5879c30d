#include "TarvoModel/Exploring/WhatIsIt.h"

#include "LumoAI/ExplanationService.h"
#include "LumoAI/NoModel.h"

namespace tarvo {

CertainPlaces::CertainPlaces(const std::string& home)
    : installed_(lumo::Installed::ofThisMachine(home)),
      known_(lumo::HomePlaces::ofThisMachine(home), installed_) {}

std::optional<lumo::Safety> CertainPlaces::safetyOf(const std::string& path, std::int64_t bytes) const {
    lumo::UnclassifiedItem item{.path = path};
    item.usage.allocatedBytes = bytes;
    const auto known = known_.explainAll({item}, {});
    const auto found = known.find(path);
    return found != known.end() ? std::optional(found->second.safety) : std::nullopt;
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
