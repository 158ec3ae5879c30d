#include "LumoCore/Rules/Locator.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "Platform/Folder.h"
#include "Platform/ShellPattern.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace lumo {

namespace {

using platform::EntryKind;

/// The path without "." and ".." and doubled slashes, by its text alone.
std::string standardized(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (part == "..") {
            if (!parts.empty()) {
                parts.pop_back();
            }
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
    }
    std::string absolute;
    for (const std::string_view part : parts) {
        absolute += '/';
        absolute += part;
    }
    return absolute.empty() ? "/" : absolute;
}

/// Patterns for names. Both sides are composed: names come back from some disks decomposed, while the
/// patterns are written composed.
class NamePatterns final {
  public:
    explicit NamePatterns(const std::vector<std::string>& patterns) {
        std::ranges::transform(patterns, std::back_inserter(composed_), composed);
    }

    [[nodiscard]] bool match(const std::string& composedName) const {
        return std::ranges::any_of(composed_, [&](const std::string& pattern) {
            return platform::matchesShellPattern(composedName, pattern);
        });
    }

  private:
    std::vector<std::string> composed_;
};

std::vector<std::string> matchingChildren(const std::string& folder, const std::vector<std::string>& matching,
                                          const std::vector<std::string>& except = {}) {
    const NamePatterns meant(matching);
    const NamePatterns exceptions(except);
    std::vector<std::string> paths;
    for (const std::string& name : platform::namesIn(folder)) {
        const std::string composedName = composed(name);
        if (meant.match(composedName) && !exceptions.match(composedName)) {
            paths.push_back(joined(folder, name));
        }
    }
    return paths;
}

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

struct Resolver {
    const std::string& home;
    const InstallersFinder& findInstallers;

    std::vector<std::string> operator()(const locator::Path& where) const {
        const std::string path = expanded(where.path, home);
        const bool isMeant =
            where.onlyWith.empty() || std::ranges::any_of(where.onlyWith, [&](const std::string& other) {
                return platform::kindOf(expanded(other, home)).has_value();
            });
        return isMeant && platform::kindOf(path) ? std::vector{path} : std::vector<std::string>{};
    }
    std::vector<std::string> operator()(const locator::Children& where) const {
        return matchingChildren(expanded(where.of, home), where.matching, where.except);
    }
    std::vector<std::string> operator()(const locator::Below& where) const {
        std::vector<std::string> paths;
        for (const std::string& folder : matchingChildren(expanded(where.of, home), where.matching)) {
            // Through a link it would be another entry's, or nobody's.
            std::string path = joined(folder, where.inside);
            if (platform::kindOf(folder) == EntryKind::folder && platform::kindOf(path)) {
                paths.push_back(std::move(path));
            }
        }
        return paths;
    }
    std::vector<std::string> operator()(const locator::OlderVersions& where) const {
        return olderVersionsIn(expanded(where.of, home), linkTargets(home), where.kind);
    }
    std::vector<std::string> operator()(const locator::NewestVersion& where) const {
        const std::vector<std::string> versions = versionsIn(expanded(where.of, home), where.kind);
        return versions.empty() ? versions : std::vector{versions.back()};
    }
    std::vector<std::string> operator()(const locator::Installers& where) const {
        return findInstallers(where, home);
    }
};

} // namespace

const std::string& startOf(const Locator& locator) {
    struct Start {
        const std::string& operator()(const locator::Path& where) const { return where.path; }
        const std::string& operator()(const locator::Children& where) const { return where.of; }
        const std::string& operator()(const locator::OlderVersions& where) const { return where.of; }
        const std::string& operator()(const locator::NewestVersion& where) const { return where.of; }
        const std::string& operator()(const locator::Installers& where) const { return where.in; }
        const std::string& operator()(const locator::Below& where) const { return where.of; }
    };
    return std::visit(Start{}, locator);
}

std::vector<std::string> installersByExtension(const locator::Installers& where, const std::string& home) {
    constexpr std::array<std::string_view, 5> extensions{".dmg", ".pkg", ".zip", ".iso", ".xip"};
    std::vector<std::string> paths;
    if (where.use == locator::InstallerUse::used) {
        return paths;
    }
    const std::string folder = expanded(where.in, home);
    for (const std::string& name : platform::namesIn(folder)) {
        const auto ends = [lower = lowerAscii(name)](std::string_view extension) {
            return lower.ends_with(extension);
        };
        const bool isInstaller =
            std::ranges::any_of(extensions, ends) || std::ranges::any_of(where.furtherExtensions, ends);
        std::string path = joined(folder, name);
        if (isInstaller && platform::kindOf(path) == EntryKind::file) {
            paths.push_back(std::move(path));
        }
    }
    return paths;
}

std::vector<std::string> resolve(const Locator& locator, const std::string& home,
                                 const InstallersFinder& findInstallers) {
    return std::visit(Resolver{home, findInstallers}, locator);
}

std::set<std::string> linkTargets(const std::string& home) {
    return linkTargetsIn({home + "/.local/bin", "/usr/local/bin", "/opt/homebrew/bin"});
}

std::set<std::string> linkTargetsIn(const std::vector<std::string>& commandFolders) {
    std::set<std::string> targets;
    for (const std::string& folder : commandFolders) {
        for (const std::string& name : platform::namesIn(folder)) {
            if (const auto target = platform::linkTarget(joined(folder, name))) {
                targets.insert(standardized(target->starts_with('/') ? *target : joined(folder, *target)));
                // A version in use may be reached over more links than this one.
                if (const auto real = platform::withoutLinks(joined(folder, name))) {
                    targets.insert(*real);
                }
            }
        }
    }
    return targets;
}

std::vector<std::string> versionsIn(const std::string& folder, locator::VersionKind kind) {
    const auto isVersion = [kind](const std::string& path) {
        return kind == locator::VersionKind::folder ? platform::kindOf(path) == EntryKind::folder
                                                    : platform::isProgram(path);
    };
    std::vector<std::string> names = platform::namesIn(folder);
    std::erase_if(names, [&](const std::string& name) {
        return !beginsWithNumber(name) || !isVersion(joined(folder, name));
    });
    std::ranges::sort(names, comesBeforeNumerically);
    std::vector<std::string> paths;
    paths.reserve(names.size());
    for (const std::string& name : names) {
        paths.push_back(joined(folder, name));
    }
    return paths;
}

std::vector<std::string> olderVersionsIn(const std::string& folder, const std::set<std::string>& linkTargets,
                                         locator::VersionKind kind) {
    std::vector<std::string> versions = versionsIn(folder, kind);
    if (versions.size() < 2) {
        return {};
    }
    versions.pop_back();
    std::erase_if(versions, [&](const std::string& version) {
        return std::ranges::any_of(linkTargets,
                                   [&](const std::string& target) { return isInside(target, version); });
    });
    return versions;
}

} // namespace lumo
