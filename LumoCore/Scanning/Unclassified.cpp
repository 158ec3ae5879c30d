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

/// The paths that rules and projects already account for, and the folders that are many programs'.
class Claims final {
  public:
    Claims(const std::string& home, const std::vector<std::string>& paths)
        : paths_(paths.begin(), paths.end()) {
        for (const std::string_view folder : platform::sharedDataFolders()) {
            shared_.insert(home + "/" + std::string(folder));
        }
    }

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
        return shared_.contains(path) || haveSomeBelow(path);
    }

  private:
    [[nodiscard]] bool haveSomeBelow(const std::string& path) const {
        const std::string prefix = path + "/";
        const auto next = paths_.lower_bound(prefix);
        return next != paths_.end() && next->starts_with(prefix);
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

/// The root that a visit of the path would begin with; empty when there is none.
std::string_view rootAbove(std::string_view path, const std::string& home) {
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

std::vector<std::string> unclassifiedCandidates(const std::string& home,
                                                const std::vector<std::string>& claimed,
                                                const std::stop_token& stop) {
    const Claims claims(home, claimed);
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
    return candidates;
}

bool isUnclassifiedPlace(const std::string& path, const std::string& home,
                         const std::vector<std::string>& claimed) {
    const Claims claims(home, claimed);
    const std::string_view root = rootAbove(path, home);
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

std::vector<std::string> foldersNotListed(const std::string& home) {
    std::vector<std::string> folders;
    const auto note = [&](std::string path) {
        if (platform::kindOf(path) == EntryKind::folder && !platform::canList(path)) {
            folders.push_back(std::move(path));
        }
    };
    for (const std::string_view name : libraryFolders) {
        note(joined(home + "/Library", name));
    }
    for (const std::string_view name : platform::sharedDataFolders()) {
        note(joined(home, name));
    }
    return folders;
}

} // namespace lumo::Scanner
