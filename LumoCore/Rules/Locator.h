#pragma once

#include <functional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace lumo {

/// Where a rule looks. Paths begin with "~/" for the home folder, which "~" alone is.
namespace locator {

/// That path, if anything stands there; a final link is not followed. A name that many programs could use is
/// taken only when one of the paths of `onlyWith` stands there too.
struct Path {
    std::string path;
    std::vector<std::string> onlyWith = {};
    friend bool operator==(const Path&, const Path&) = default;
};

/// The entries of a folder whose names match any of the shell patterns of `matching` and none of `except`.
struct Children {
    std::string of;
    std::vector<std::string> matching;
    std::vector<std::string> except = {};
    friend bool operator==(const Children&, const Children&) = default;
};

/// The path `inside` below each entry of a folder whose name matches, where anything stands there.
struct Below {
    std::string of;
    std::vector<std::string> matching;
    std::string inside;
    friend bool operator==(const Below&, const Below&) = default;
};

/// What one version is: a folder, or a program in one file.
enum class VersionKind { folder, file };

/// All versions but the newest and those that a command-line link points into.
struct OlderVersions {
    std::string of;
    VersionKind kind = VersionKind::folder;
    friend bool operator==(const OlderVersions&, const OlderVersions&) = default;
};

struct NewestVersion {
    std::string of;
    VersionKind kind = VersionKind::folder;
    friend bool operator==(const NewestVersion&, const NewestVersion&) = default;
};

enum class InstallerUse { used, unused };

/// Installers and archives in a folder: those whose contents are already on this machine, or the others.
struct Installers {
    std::string in;
    InstallerUse use = InstallerUse::unused;
    friend bool operator==(const Installers&, const Installers&) = default;
};

} // namespace locator

using Locator = std::variant<locator::Path, locator::Children, locator::Below, locator::OlderVersions,
                             locator::NewestVersion, locator::Installers>;

/// The folder or path that the locator starts from, still with "~/".
const std::string& startOf(const Locator& locator);

/// Finds the installers of an absolute folder: absolute paths in ascending order.
using InstallersFinder = std::function<std::vector<std::string>(
    const std::string& folder, locator::InstallerUse use, const std::string& home)>;

/// Tells installers by their extensions (dmg, pkg, zip, iso, xip, in any case) and takes none of them to be
/// used.
std::vector<std::string> installersByExtension(const std::string& folder, locator::InstallerUse use,
                                               const std::string& home);

/// The absolute paths that the locator finds under the home folder now. Never fails: what is missing or
/// cannot be listed gives nothing. May be called from any thread.
std::vector<std::string> resolve(const Locator& locator, const std::string& home,
                                 const InstallersFinder& findInstallers = installersByExtension);

/// Where the links in the command folders point, as absolute paths. The command folders are ".local/bin" of
/// the home folder and the system's two.
std::set<std::string> linkTargets(const std::string& home);

/// The same for given command folders.
std::set<std::string> linkTargetsIn(const std::vector<std::string>& commandFolders);

/// The version folders in a folder (those whose name begins with a number), absolute, oldest first.
std::vector<std::string> versionsIn(const std::string& folder);

/// The versions that `locator::OlderVersions` finds, given where links point.
std::vector<std::string> olderVersionsIn(const std::string& folder, const std::set<std::string>& linkTargets);

} // namespace lumo
