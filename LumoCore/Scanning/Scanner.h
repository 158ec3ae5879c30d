#pragma once

#include "LumoCore/Rules/HomePlaces.h"
#include "LumoCore/Rules/Rule.h"
#include "LumoCore/Scanning/FileTree.h"
#include "LumoCore/Scanning/ScanMemory.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace lumo {

struct ScanOptions {
    std::string home;                                  ///< Absolute path of the home folder to scan.
    bool includeProjects = true;                       ///< Discover and measure developer projects.
    std::int64_t unclassifiedMinimumBytes = 100000000; ///< Smallest unclaimed folder to report.
    bool discoverAppCaches = true; ///< Add rules for the caches of installed applications.
};

/// What a scan is doing, in this order.
enum class ScanPhase {
    locating,
    measuringRules,
    searchingProjects,
    measuringProjects,
    measuringUnclassified
};

/// How far a scan is, for whoever shows it; written by the scan, read from any thread.
struct ScanProgress {
    std::atomic<ScanPhase> phase = ScanPhase::locating;
    platform::WalkProgress walked;
};

/// What a scan works with besides its options.
struct ScanContext {
    Date startedAt = {};
    std::stop_token stop = {};
    ScanProgress* progress = nullptr;
    ScanMemory* memory = nullptr;                            ///< Of the pass before, and for the next one.
    InstallersFinder findInstallers = installersByExtension; ///< Called from several threads at once.
    /// Extra rules for this machine, whose ids begin with "cache-app:"; asked when `discoverAppCaches` is
    /// set. It is told what the given rules have located.
    std::function<std::vector<Rule>(const std::vector<std::string>& located, const std::string& home)>
        findAppCaches = {};
};

/// One pass over a home folder. All operations may be called from any thread and keep nothing.
namespace Scanner {

/// What the rules find, the projects, the large folders that nobody claims, and the volume. Never fails;
/// absent only when a stop was requested, at most 100 ms after it.
std::optional<ScanReport> scan(const std::vector<Rule>& rules, const ScanOptions& options,
                               const ScanContext& context);

/// True when the home folder can be listed. Of one that cannot a scan finds next to nothing, which says
/// nothing about what is in it.
bool canList(const std::string& home);

/// How many folders deep below those of the home a scan looks for projects.
inline constexpr int projectDepth = 5;

/// The project folders below the home folder, ascending. A project inside a project is part of it. What is
/// only unpacked in a home is none: nothing in or below "resources/app", "site-packages", "pkg/mod" or a
/// folder with an artifact's name, nor, unless it is a Git repository, a folder with a compiled program
/// directly in it or in a folder above it within the home.
std::vector<std::string> discoverProjects(const std::string& home, int maxDepth,
                                          const std::stop_token& stop = {});

/// What a look into a folder tells of it: it is such a project, or one that is only unpacked there.
enum class ProjectTrace { none, project, unpacked };

/// What was told of folders by their paths, for whoever asks about many paths in the same folders: a look
/// into one of very many entries takes long.
using SeenFolders = std::map<std::string, ProjectTrace>;

/// The one of these projects that the path is or lies in, without a look at any other; absent when none.
/// Folders that were seen are not looked into again, and the others become so.
std::optional<std::string> projectAbove(const std::string& path, const std::string& home, SeenFolders& seen);

/// One project measured; absent when there is no folder at the path.
std::optional<ProjectReport> measureProject(const std::string& path, const std::string& home,
                                            HardLinkRegistry& registry, const FileTree::Watch& watch = {});

/// The same for many at once; those that are absent are left out.
std::vector<ProjectReport> measureProjects(const std::vector<std::string>& paths, const std::string& home,
                                           HardLinkRegistry& registry, const FileTree::Watch& watch = {});

/// The folders where applications keep their files that lie neither in nor above a claimed path.
std::vector<std::string> unclassifiedCandidates(const HomePlaces& places,
                                                const std::vector<std::string>& claimed,
                                                const std::stop_token& stop = {});

/// True when a folder at the path could be one of those candidates: it is directly in a folder where
/// applications keep their files, and neither claimed nor divided itself.
bool isUnclassifiedPlace(const std::string& path, const HomePlaces& places,
                         const std::vector<std::string>& claimed);

/// The folders of many programs' files in the home, the same that candidates are looked for in, that stand
/// there and cannot be listed.
std::vector<std::string> foldersNotListed(const HomePlaces& places);

/// A folder's entries as absolute paths, ascending by name; none when it cannot be listed.
std::vector<std::string> children(const std::string& path);

/// The capacities of the volume that holds the home folder.
VolumeInfo volumeInfo(const std::string& home);

} // namespace Scanner

} // namespace lumo
