#include "LumoCore/Basics/Path.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"

#include <array>
#include <set>
#include <string_view>
#include <utility>

// Folders of applications that no rule knows.
namespace lumo::Scanner {

namespace {

using platform::EntryKind;

/// The folders that are many programs', by their usual places and where they have been moved.
std::set<std::string> sharedFolders(const HomePlaces& places) {
    std::set<std::string> folders;
    for (const std::string_view folder : platform::sharedDataFolders()) {
        folders.insert(joined(places.home(), folder));
    }
    for (std::string& folder : places.baseFolders()) {
        folders.insert(std::move(folder));
    }
    return folders;
}

/// The paths that rules and projects already account for, and the folders that are many programs'.
class Claims final {
  public:
    Claims(const HomePlaces& places, const std::vector<std::string>& paths)
        : paths_(paths.begin(), paths.end()), shared_(sharedFolders(places)) {}

    [[nodiscard]] bool cover(const std::string& path) const {
        for (std::size_t end = path.size(); end != std::string::npos && end > 0;
             end = path.rfind('/', end - 1)) {
            if (paths_.contains(path.substr(0, end))) {
                return true;
            }
        }
        return false;
    }

    /// Of such a folder nothing can be said as a whole, only of what is in it.
    [[nodiscard]] bool divide(const std::string& path) const {
        return shared_.contains(path) || isAboveOne(shared_, path) || isAboveOne(paths_, path);
    }

  private:
    static bool isAboveOne(const std::set<std::string>& all, const std::string& path) {
        const std::string prefix = path + "/";
        const auto next = all.lower_bound(prefix);
        return next != all.end() && next->starts_with(prefix);
    }

    std::set<std::string> paths_;
    std::set<std::string> shared_;
};

/// Folders of "~/Library" that hold one folder for each application.
constexpr std::array<std::string_view, 5> libraryFolders{"Application Support", "Containers", "Caches",
                                                         "Group Containers", "Developer"};

std::vector<std::string> foldersIn(const std::string& path) {
    std::vector<std::string> folders = children(path);
    std::erase_if(folders,
                  [](const std::string& child) { return platform::kindOf(child) != EntryKind::folder; });
    return folders;
}

/// How far below the roots candidates are looked for.
constexpr int deepest = 3;

/// Base folders that no name tells from the user's own: those that have been moved, but not to below a hidden
/// folder of the home.
std::vector<std::string> visibleBases(const HomePlaces& places) {
    std::vector<std::string> bases = places.baseFolders();
    std::erase_if(bases, [&](const std::string& base) { return base.starts_with(places.home() + "/."); });
    return bases;
}

/// The root that a visit of the path would begin with; empty when there is none.
std::string_view rootAbove(std::string_view path, const HomePlaces& places) {
    const std::string& home = places.home();
    const auto throughName = [&](const std::string& folder) {
        return path.substr(0, path.find('/', folder.size() + 1));
    };
    if (path.starts_with(home + "/.")) {
        return throughName(home);
    }
    for (const std::string_view name : libraryFolders) {
        const std::string folder = joined(home + "/Library", name);
        if (path.starts_with(folder + "/")) {
            return throughName(folder);
        }
    }
    for (const std::string& base : visibleBases(places)) {
        if (path != base && isInside(path, base)) {
            return path.substr(0, base.size());
        }
    }
    return {};
}

void visit(const std::string& path, int depth, const Claims& claims, std::vector<std::string>& candidates) {
    if (claims.cover(path)) {
        return;
    }
    if (!claims.divide(path)) {
        candidates.push_back(path);
        return;
    }
    if (depth >= deepest) {
        return;
    }
    for (const std::string& child : foldersIn(path)) {
        visit(child, depth + 1, claims, candidates);
    }
}

} // namespace

std::vector<std::string> unclassifiedCandidates(const HomePlaces& places,
                                                const std::vector<std::string>& claimed,
                                                const std::stop_token& stop) {
    const std::string& home = places.home();
    const Claims claims(places, claimed);
    std::vector<std::string> candidates;
    const auto visitRoots = [&](const std::vector<std::string>& roots) {
        for (const std::string& root : roots) {
            if (!stop.stop_requested()) {
                visit(root, 0, claims, candidates);
            }
        }
    };
    for (const std::string_view name : libraryFolders) {
        visitRoots(foldersIn(joined(home + "/Library", name)));
    }
    std::vector<std::string> hidden = foldersIn(home);
    std::erase_if(hidden, [](const std::string& path) { return !fileName(path).starts_with('.'); });
    visitRoots(hidden);
    std::vector<std::string> bases = visibleBases(places);
    std::erase_if(bases, [](const std::string& base) { return platform::kindOf(base) != EntryKind::folder; });
    visitRoots(bases);
    return candidates;
}

bool isUnclassifiedPlace(const std::string& path, const HomePlaces& places,
                         const std::vector<std::string>& claimed) {
    const Claims claims(places, claimed);
    const std::string_view root = rootAbove(path, places);
    if (root.empty() || claims.cover(path) || claims.divide(path)) {
        return false;
    }
    int depth = 0;
    for (std::string_view folder = path; folder != root; ++depth) {
        folder = parentOf(folder);
        if (!claims.divide(std::string(folder))) {
            return false;
        }
    }
    return depth <= deepest;
}

std::vector<std::string> foldersNotListed(const HomePlaces& places) {
    std::vector<std::string> folders;
    const auto note = [&](std::string path) {
        if (platform::kindOf(path) == EntryKind::folder && !platform::canList(path)) {
            folders.push_back(std::move(path));
        }
    };
    for (const std::string_view name : libraryFolders) {
        note(joined(places.home() + "/Library", name));
    }
    for (const std::string& folder : sharedFolders(places)) {
        note(folder);
    }
    return folders;
}

} // namespace lumo::Scanner
