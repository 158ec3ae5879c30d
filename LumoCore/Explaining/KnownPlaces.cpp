#include "LumoCore/Explaining/KnownPlaces.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Explaining/KnownOwners.h"
#include "LumoCore/Explaining/PlaceTexts.h"
#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <utility>

namespace lumo {

namespace {

using PlaceTexts::Extent;
using platform::EntryKind;
using Source = Explanation::Source;

/// As programs hide their folders; those that have been moved need not have such a name.
bool isHidden(std::string_view path, const HomePlaces& places) {
    const std::string_view inHome = path.substr(places.home().size() + 1);
    const auto holds = [&](const std::string& base) { return isInside(path, base); };
    return inHome.starts_with('.') || std::ranges::any_of(places.baseFolders(), holds) ||
           isInside(inHome, "Library") || (places.system() == System::linux && isInside(inHome, "snap"));
}

/// What is not there, as in a report from elsewhere, was a folder.
EntryKind kindOf(const std::string& path) {
    return platform::kindOf(path).value_or(EntryKind::folder);
}

bool hasIcon(const std::optional<InstalledApp>& app) {
    return app && (app->path.ends_with(".desktop") || app->path.ends_with(".app"));
}

/// What the rule says of installers; null for most rules.
const locator::InstallerUse* installersOf(const Rule& rule) {
    const auto* const where =
        std::get_if<locator::Installers>(rule.places.empty() ? &rule.locator : &rule.places.front());
    return where != nullptr ? &where->use : nullptr;
}

Extent extentOf(const std::string& path, const std::string& place) {
    return path == place ? Extent::whole : Extent::part;
}

} // namespace

KnownPlaces::KnownPlaces(HomePlaces places, const Installed& installed, Language language,
                         const std::string& systemRoot)
    : places_(std::move(places)), installed_(installed), language_(language),
      judge_(std::make_shared<Installers::Judge>(places_.home(), systemRoot, Installers::mostBytesByTheWay)) {
    const std::string& home = places_.home();
    const std::vector<Rule> catalogue = RuleCatalog::inHome(places_, language_);
    lookUp(catalogue, Source::catalogue);
    divideCaches(catalogue);
    lookUp(AppCaches::rulesBeside(claimed_, installed_.apps, places_, language_), Source::inventory);
    for (std::string own : {OwnFiles::support(home), OwnFiles::caches(home), OwnFiles::settings(home)}) {
        claimed_.push_back(std::move(own));
    }
}

void KnownPlaces::lookUp(std::vector<Rule> rules, Source source) {
    std::vector<std::vector<std::string>> found = resolveAll(rules, places_.home());
    for (std::size_t index = 0; index < rules.size(); ++index) {
        Rule& rule = rules[index];
        if (const auto* const use = installersOf(rule); use && *use == locator::InstallerUse::used) {
            usedInstallers_ = rule;
        }
        if (std::vector<std::string>& paths = found[index]; !paths.empty()) {
            claimed_.insert(claimed_.end(), paths.begin(), paths.end());
            rulePlaces_.push_back({std::move(rule), source, std::move(paths)});
        }
    }
}

void KnownPlaces::divideCaches(const std::vector<Rule>& catalogue) {
    const std::string& home = places_.home();
    for (const Rule& rule : catalogue) {
        for (const Locator& place : rule.places) {
            const std::string start = expanded(startOf(place), home);
            std::string around =
                std::holds_alternative<locator::Path>(place) ? std::string(parentOf(start)) : start;
            if (folderLocation(around, places_) == FolderLocation::caches) {
                divided_.push_back(std::move(around));
            }
        }
    }
}

std::optional<Explanation> KnownPlaces::explain(const FolderEvidence& evidence, Date now) const {
    Seen seen;
    return told(evidence, now, seen);
}

std::optional<Explanation> KnownPlaces::told(const FolderEvidence& evidence, Date now, Seen& seen) const {
    std::optional<Explanation> explanation = saying(evidence, seen);
    if (explanation) {
        explanation->path = evidence.path;
        explanation->sizeBytes = evidence.usage.allocatedBytes;
        explanation->createdAt = now;
    }
    return explanation;
}

std::map<std::string, Explanation> KnownPlaces::explainAll(const std::vector<UnclassifiedItem>& items,
                                                           Date now) const {
    const System system = places_.system();
    std::map<std::string, Explanation> explanations;
    Seen seen;
    for (const UnclassifiedItem& item : items) {
        const std::string& home = places_.home();
        FolderEvidence evidence{.path = item.path,
                                .displayPath = abbreviated(item.path, home),
                                .location = folderLocation(item.path, places_),
                                .usage = item.usage,
                                .largestEntries = {},
                                .fileTypes = {},
                                .relatedApp = installed_.related(ownersName(item.path, places_), system)};
        if (auto explanation = told(evidence, now, seen)) {
            explanations.emplace(item.path, std::move(*explanation));
        }
    }
    return explanations;
}

std::optional<Explanation> KnownPlaces::saying(const FolderEvidence& evidence, Seen& seen) const {
    const std::string& path = evidence.path;
    const std::string& home = places_.home();
    if (path == home) {
        return PlaceTexts::ofHome(language_);
    }
    if (!isInside(path, home)) {
        return PlaceTexts::ofOutside(path, places_, language_);
    }
    if (isInside(path, OwnFiles::support(home)) || isInside(path, OwnFiles::caches(home)) ||
        isInside(path, OwnFiles::settings(home))) {
        return PlaceTexts::ofOwnFolder(language_);
    }
    if (auto byRule = ofRulesPlace(evidence)) {
        return byRule;
    }
    if (auto standard = PlaceTexts::ofStandardFolder(path, places_, language_)) {
        return standard;
    }
    if (auto project = inProject(path, seen)) {
        return project;
    }
    if (const auto target = platform::linkTarget(path)) {
        return PlaceTexts::ofLink(*target, language_);
    }
    if (auto above = aboveRules(evidence)) {
        return above;
    }
    if (isHidden(path, places_)) {
        return ofHidden(evidence);
    }
    const EntryKind kind = kindOf(path);
    if (kind == EntryKind::folder) {
        return PlaceTexts::ofUsersFolder(language_);
    }
    return kind == EntryKind::other ? PlaceTexts::ofOtherEntry(language_)
                                    : PlaceTexts::ofFile(true, language_);
}

const Rule& KnownPlaces::ruleFor(const RulePlaces& found, const std::string& place) const {
    const bool mayBeUsed = usedInstallers_ && installersOf(found.rule) != nullptr;
    return mayBeUsed && judge_->useOf(place, language_) ? *usedInstallers_ : found.rule;
}

std::optional<Explanation> KnownPlaces::ofRulesPlace(const FolderEvidence& evidence) const {
    // Of places within each other the innermost knows best.
    const RulePlaces* innermost = nullptr;
    const std::string* place = nullptr;
    for (const RulePlaces& one : rulePlaces_) {
        for (const std::string& path : one.paths) {
            if (isInside(evidence.path, path) && (place == nullptr || path.size() > place->size())) {
                innermost = &one;
                place = &path;
            }
        }
    }
    return innermost != nullptr
               ? std::optional(PlaceTexts::ofRule(ruleFor(*innermost, *place),
                                                  extentOf(evidence.path, *place), innermost->source,
                                                  ownerOf(evidence.path, evidence.relatedApp), language_))
               : std::nullopt;
}

std::optional<Explanation> KnownPlaces::inProject(const std::string& path, Seen& seen) const {
    const auto project = Scanner::projectAbove(path, places_.home(), seen.folders);
    if (!project) {
        return std::nullopt;
    }
    const std::string name = project->substr(places_.home().size() + 1);
    std::string folder = *project;
    for (const std::string_view step : components(std::string_view(path).substr(project->size()))) {
        folder = step.empty() ? folder : joined(folder, step);
        const auto [known, isNew] = seen.artifacts.try_emplace(folder);
        if (isNew) {
            known->second = platform::kindOf(folder) == EntryKind::folder &&
                            ProjectArtifacts::isArtifact(folder, *project);
        }
        if (known->second) {
            return PlaceTexts::ofArtifact(ProjectArtifacts::nameOf(folder, *project), name,
                                          extentOf(path, folder), language_);
        }
    }
    return PlaceTexts::ofProject(name, extentOf(path, *project), language_);
}

std::optional<Explanation> KnownPlaces::aboveRules(const FolderEvidence& evidence) const {
    std::vector<const Rule*> within;
    for (const RulePlaces& one : rulePlaces_) {
        if (std::ranges::any_of(one.paths,
                                [&](const std::string& path) { return isInside(path, evidence.path); })) {
            within.push_back(&one.rule);
        }
    }
    return within.empty() ? std::nullopt
                          : std::optional(PlaceTexts::ofFolderWith(
                                within, ownerOf(evidence.path, evidence.relatedApp), language_));
}

std::optional<Explanation> KnownPlaces::inDividedCache(const std::string& path) const {
    const auto around =
        std::ranges::find_if(divided_, [&](const std::string& folder) { return isInside(path, folder); });
    if (around == divided_.end()) {
        return std::nullopt;
    }
    return PlaceTexts::ofDividedCache(abbreviated(*around, places_.home()), extentOf(path, *around),
                                      ownerOf(*around, std::nullopt), language_);
}

std::optional<Explanation> KnownPlaces::ofHidden(const FolderEvidence& evidence) const {
    const std::string& path = evidence.path;
    // Where a rule takes parts of a cache folder, the rest is what nothing recreates.
    if (auto divided = inDividedCache(path)) {
        return divided;
    }
    const EntryKind kind = kindOf(path);
    const bool isCache = evidence.location == FolderLocation::caches;
    if (kind == EntryKind::file && isCache) {
        return PlaceTexts::ofCacheFile(language_, places_.system());
    }
    if (kind == EntryKind::other) {
        return PlaceTexts::ofOtherEntry(language_);
    }
    const bool isFolder = kind == EntryKind::folder;
    if (isFolder && (mayBeGuessedAbout(path) || (isCache && places_.system() == System::linux))) {
        const auto owner = ownerOf(path, std::nullopt);
        return owner && !hasIcon(evidence.relatedApp) ? std::optional(PlaceTexts::ofProgramsFolder(
                                                            *owner, evidence, language_, places_.system()))
                                                      : std::nullopt;
    }
    for (std::string whole(parentOf(path)); whole.size() > places_.home().size(); whole = parentOf(whole)) {
        if (mayBeGuessedAbout(whole)) {
            const System system = places_.system();
            const auto app = installed_.related(ownersName(whole, places_), system);
            return PlaceTexts::ofPart(abbreviated(whole, places_.home()), ownerOf(whole, app), language_);
        }
    }
    return isFolder ? PlaceTexts::ofSharedFolder(language_) : PlaceTexts::ofFile(false, language_);
}

bool KnownPlaces::mayBeGuessedAbout(const std::string& path) const {
    const bool isSnaps = places_.system() == System::linux && parentOf(path) == places_.home() + "/snap";
    return isSnaps || Scanner::isUnclassifiedPlace(path, places_, claimed_);
}

std::optional<std::string> KnownPlaces::ownerOf(const std::string& path,
                                                const std::optional<InstalledApp>& app) const {
    // An application's own name is what people see; that of a mere program is often an abbreviation.
    const std::string folder = ownersName(path, places_);
    const auto known = places_.system() == System::linux ? knownOwner(folder) : std::nullopt;
    if (known && !hasIcon(app)) {
        return std::string(*known);
    }
    return app ? std::optional(printable(app->spokenName())) : std::nullopt;
}

} // namespace lumo
