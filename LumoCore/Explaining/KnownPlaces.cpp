#include "LumoCore/Explaining/KnownPlaces.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <utility>

namespace lumo {

namespace {

using platform::EntryKind;

constexpr Words users{"tú", "you"};
constexpr Words unknown{"desconocida", "desconocida"}; // A stored word, the same in both languages.

bool isHidden(std::string_view path, std::string_view home) {
    const std::string_view inHome = path.substr(home.size() + 1);
    return inHome.starts_with('.') || isInside(inHome, "Library");
}

} // namespace

KnownPlaces::KnownPlaces(std::string home) : home_(std::move(home)) {
    for (const Rule& rule : RuleCatalog::all()) {
        for (std::string& path : resolve(rule.locator, home_)) {
            claimed_.push_back(path);
            rulePlaces_.push_back({std::move(path), rule.name});
        }
    }
    for (std::string own : {OwnFiles::support(home_), OwnFiles::caches(home_), OwnFiles::settings(home_)}) {
        claimed_.push_back(std::move(own));
    }
}

std::optional<Explanation> KnownPlaces::explain(const FolderEvidence& evidence, Date now,
                                                Language language) const {
    const std::optional<Saying> saying = sayingFor(evidence.path);
    if (!saying) {
        return std::nullopt;
    }
    return Explanation{.path = evidence.path,
                       .sizeBytes = evidence.usage.allocatedBytes,
                       .whatItIs = saying->whatItIs.in(language, saying->ruleName),
                       .owner = saying->owner.in(language),
                       .safety = Safety::keep,
                       .suggestedSafety = {},
                       .reason = Words{"Tarvo AI solo hace conjeturas sobre carpetas de apps que no conoce.",
                                       "Tarvo AI only guesses about folders of apps that it does not know."}
                                     .in(language),
                       .howToFree = Words{"Tarvo AI no aconseja borrar nada aquí.",
                                          "Tarvo AI gives no advice to remove anything here."}
                                        .in(language),
                       .note = {},
                       .source = Explanation::Source::heuristic,
                       .createdAt = now};
}

std::optional<KnownPlaces::Saying> KnownPlaces::sayingFor(const std::string& path) const {
    if (path == home_) {
        return Saying{{"Tu carpeta personal, con todo lo tuyo", "Your home folder, with everything of yours"},
                      users};
    }
    if (!isInside(path, home_)) {
        return Saying{{"Algo fuera de tu carpeta personal", "Something outside your home folder"}, unknown};
    }
    const auto rulePlace =
        std::ranges::find_if(rulePlaces_, [&](const RulePlace& place) { return isInside(path, place.path); });
    if (rulePlace != rulePlaces_.end()) {
        return Saying{{"Lo que el catálogo de Tarvo AI conoce como «{}», o parte de ello",
                       "What Tarvo AI's catalogue knows as “{}”, or a part of it"},
                      unknown,
                      rulePlace->ruleName};
    }
    return sayingInHome(path);
}

std::optional<KnownPlaces::Saying> KnownPlaces::sayingInHome(const std::string& path) const {
    if (std::ranges::any_of(claimed_, [&](const std::string& own) { return isInside(path, own); })) {
        return Saying{{"Carpeta propia de Tarvo AI", "Tarvo AI's own folder"}, {"Tarvo AI", "Tarvo AI"}};
    }
    const auto kind = platform::kindOf(path);
    if (kind == EntryKind::link) {
        return Saying{{"Un enlace a otro lugar", "A link to another place"}, unknown};
    }
    if (kind && kind != EntryKind::folder) {
        return Saying{{"Un archivo", "A file"}, unknown};
    }
    if (Scanner::isUnclassifiedPlace(path, home_, claimed_)) {
        return std::nullopt;
    }
    if (isHidden(path, home_)) {
        return Saying{{"Una carpeta en la que guardan cosas varias apps, o parte de lo que guarda una",
                       "A folder in which several apps keep things, or a part of what one keeps"},
                      unknown};
    }
    if (Scanner::projectAbove(path, home_)) {
        return Saying{{"Un proyecto de desarrollo, o parte de uno", "A developer project, or a part of one"},
                      users};
    }
    return Saying{{"Una carpeta tuya", "A folder of your own"}, users};
}

} // namespace lumo
