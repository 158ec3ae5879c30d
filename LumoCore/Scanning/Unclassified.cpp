#include "LumoCore/Basics/Path.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"

#include <set>

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

std::vector<std::string> foldersIn(const std::string& path) {
    std::vector<std::string> folders = children(path);
    std::erase_if(folders,
                  [](const std::string& child) { return platform::kindOf(child) != EntryKind::folder; });
    return folders;
}

void visit(const std::string& path, int depth, const Claims& claims, std::vector<std::string>& candidates) {
    constexpr int deepest = 3;
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
    for (const char* name :
         {"Application Support", "Containers", "Caches", "Group Containers", "Developer"}) {
        visitRoots(foldersIn(home + "/Library/" + name));
    }
    std::vector<std::string> hidden = foldersIn(home);
    std::erase_if(hidden, [](const std::string& path) { return !fileName(path).starts_with('.'); });
    visitRoots(hidden);
    return candidates;
}

} // namespace lumo::Scanner
