#include "LumoCore/Rules/Rule.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace lumo {

namespace {

struct Shown {
    Language language;

    std::string operator()(const locator::Path& where) const { return where.path; }
    std::string operator()(const locator::Children& where) const {
        std::string shown = where.of + "/";
        for (std::size_t index = 0; index < where.matching.size(); ++index) {
            shown += (index > 0 ? ", " : "") + where.matching[index];
        }
        return shown;
    }
    std::string operator()(const locator::OlderVersions& where) const {
        return within(where.of, "<versiones antiguas>", "<old versions>");
    }
    std::string operator()(const locator::NewestVersion& where) const {
        return within(where.of, "<versión en uso>", "<current version>");
    }
    std::string operator()(const locator::Below& where) const {
        return joined(this->operator()(locator::Children{where.of, where.matching}), where.inside);
    }
    std::string operator()(const locator::Installers& where) const {
        if (where.use == locator::InstallerUse::unused) {
            std::string shown = where.in + "/*.dmg, *.pkg, *.zip, *.iso, *.xip";
            for (const std::string_view extension : where.furtherExtensions) {
                shown.append(", *").append(extension);
            }
            return shown;
        }
        return within(where.in, "<instaladores de apps ya instaladas y comprimidos ya descomprimidos>",
                      "<installers of installed apps and already extracted archives>");
    }

  private:
    [[nodiscard]] std::string within(const std::string& folder, std::string_view es,
                                     std::string_view en) const {
        return folder + "/" + Words{es, en}.in(language);
    }
};

} // namespace

std::string Rule::displayPath(Language language) const {
    return std::visit(Shown{language}, locator);
}

std::vector<std::string> Rule::displayPlaces(System system, Language language) const {
    std::vector<std::string> shown;
    for (const Locator& place : places.empty() ? std::vector{locator} : places) {
        // Our own folders have the same names on every system.
        const std::string& start = startOf(place);
        if (system == System::macos || !isInside(start, "~/Library") ||
            isInside(start, OwnFiles::support("~"))) {
            shown.push_back(std::visit(Shown{language}, place));
        }
    }
    return shown;
}

bool Rule::needsFolderPermission() const {
    constexpr std::array<std::string_view, 4> guarded{"~/Downloads", "~/Documents", "~/Desktop",
                                                      "~/Pictures"};
    return std::ranges::any_of(guarded,
                               [&](std::string_view folder) { return startOf(locator).starts_with(folder); });
}

namespace {

/// Adds a path unless it leads to, or into, one of those that are there.
void addOnce(std::string path, std::vector<std::string>& paths, std::vector<std::string>& realPaths) {
    const std::string real = platform::withoutLinks(path).value_or(path);
    const bool isThere =
        std::ranges::any_of(realPaths, [&](const std::string& other) { return isInside(real, other); });
    if (!isThere) {
        paths.push_back(std::move(path));
        realPaths.push_back(real);
    }
}

} // namespace

std::vector<std::string> resolve(const Rule& rule, const std::string& home,
                                 const InstallersFinder& findInstallers) {
    if (rule.places.size() < 2) {
        return resolve(rule.places.empty() ? rule.locator : rule.places.front(), home, findInstallers);
    }
    std::vector<std::string> found;
    for (const Locator& place : rule.places) {
        std::ranges::move(resolve(place, home, findInstallers), std::back_inserter(found));
    }
    if (found.size() < 2) {
        return found;
    }
    std::vector<std::string> paths;
    std::vector<std::string> realPaths;
    for (std::string& path : found) {
        addOnce(std::move(path), paths, realPaths);
    }
    return paths;
}

std::vector<std::vector<std::string>> resolveAll(std::span<const Rule> rules, const std::string& home,
                                                 const InstallersFinder& findInstallers,
                                                 const std::stop_token& stop) {
    std::vector<std::vector<std::string>> paths(rules.size());
    parallelFor(rules.size(), stop,
                [&](std::size_t index) { paths[index] = resolve(rules[index], home, findInstallers); });
    return paths;
}

Cleanup cleanupOf(const Rule& rule, const std::vector<std::string>& paths) {
    const bool reachesOne = paths.size() > 1 && rule.safety == Safety::safe &&
                            std::holds_alternative<cleanup::Command>(rule.cleanup);
    return reachesOne ? cleanup::DeleteContents{} : rule.cleanup;
}

} // namespace lumo
