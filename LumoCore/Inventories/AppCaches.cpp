#include "LumoCore/Inventories/AppCaches.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <array>
#include <set>

namespace lumo::AppCaches {

namespace {

/// Where applications keep caches under their identifier: macOS, the XDG base directories, Flatpak.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> cachePlaces{
    {{"~/Library/Caches", ""}, {"~/.cache", ""}, {"~/.var/app", "/cache"}}};

std::vector<std::string> pathsOf(const std::vector<Rule>& rules, const std::string& home) {
    std::vector<std::string> paths;
    for (std::vector<std::string>& found : resolveAll(rules, home)) {
        std::ranges::move(found, std::back_inserter(paths));
    }
    return paths;
}

bool isTaken(const std::string& path, const std::vector<std::string>& taken) {
    return std::ranges::any_of(
        taken, [&](const std::string& other) { return isInside(other, path) || isInside(path, other); });
}

Rule ruleFor(const InstalledApp& app, const std::string& path, Language language) {
    const std::string name(app.name);
    return {.id = "cache-app:" + app.bundleID,
            .name = language == Language::es ? "Caché de " + name : name + " cache",
            .category = Category::appCache,
            .safety = Safety::safe,
            .explanation = Words{"Archivos temporales de la aplicación. Los vuelve a crear al usarla.",
                                 "Temporary files of the application. It creates them again when used."}
                               .in(language),
            .cleanup = cleanup::DeleteContents{},
            .locator = locator::Path{path},
            .closeFirst = app.bundleID};
}

} // namespace

std::vector<Rule> rules(const std::vector<InstalledApp>& apps, const std::vector<Rule>& given,
                        const HomePlaces& places, Language language) {
    return rulesBeside(pathsOf(given, places.home()), apps, places, language);
}

std::vector<Rule> rulesBeside(const std::vector<std::string>& located, const std::vector<InstalledApp>& apps,
                              const HomePlaces& places, Language language) {
    std::vector<Rule> found;
    std::set<std::string> known;
    for (const InstalledApp& app : apps) {
        if (app.bundleID.empty() || app.bundleID.find('/') != std::string::npos ||
            app.bundleID.starts_with('.') || !known.insert(app.bundleID).second) {
            continue;
        }
        for (const auto& [before, after] : cachePlaces) {
            const std::string path = places.placed(before) + "/" + app.bundleID + std::string(after);
            const std::string absolute = expanded(path, places.home());
            if (platform::kindOf(absolute) == platform::EntryKind::folder && !isTaken(absolute, located)) {
                found.push_back(ruleFor(app, path, language));
                break;
            }
        }
    }
    return found;
}

} // namespace lumo::AppCaches
