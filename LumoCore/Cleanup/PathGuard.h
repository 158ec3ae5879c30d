#pragma once

#include "LumoCore/Basics/Language.h"
#include "Platform/Place.h"

#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace lumo {

/// What a path meant at one moment.
struct ResolvedPath {
    std::string path;                ///< Where its item really stands, or would: without links on the way.
    platform::FolderIdentity folder; ///< The folder that it stands in.
    std::optional<platform::EntryIdentity> item = {}; ///< Absent where nothing stands there.

    friend bool operator==(const ResolvedPath&, const ResolvedPath&) = default;
};

/// What paths meant, by the paths as they are spelt. One without a folder to stand in is not there.
using ResolvedPaths = std::map<std::string, ResolvedPath>;

/// Decides what may be touched in a home folder, and finds it. The home is opened once; whatever is decided
/// about a path is then done to a name in an open folder beneath it, so nobody can put something else in its
/// place between the two. Besides the home, applications directly inside /Applications may be touched.
class PathGuard final {
  public:
    /// A home that is empty, "/", relative or no folder makes a guard that refuses everything. The protected
    /// folders are absolute; what they mean, links followed, is looked up once, now.
    explicit PathGuard(std::string home, std::vector<std::string> protectedFolders = {});

    /// Why one of the paths may not be cleaned, in words for the user; absent when all may. Refused are paths
    /// that are not spelt out ("..", ".", doubled slashes), the home itself, what leaves the home over a
    /// link, what is, holds or lies in the application's own folder, and what `item` takes for protected.
    /// What does not exist may be cleaned.
    [[nodiscard]] std::optional<std::string> refusal(const std::vector<std::string>& paths,
                                                     Language language = currentLanguage()) const;

    /// The reason for what is protected alone; of any path, wherever it is.
    [[nodiscard]] std::optional<std::string> protectedRefusal(const std::vector<std::string>& paths,
                                                              Language language = currentLanguage()) const;

    /// Where the path is. Fails with EXDEV where it may not be touched, as missing where its folder is. For
    /// giving back and for our own files: what is protected is no matter.
    [[nodiscard]] platform::SystemResult<platform::Place> place(const std::string& path) const;

    /// The same for what a cleanup takes. Fails with ECANCELED for what is protected (see `mayTake`).
    [[nodiscard]] platform::SystemResult<platform::Place> item(const std::string& path) const;

    /// Fails with ECANCELED when what stands at the place is, lies in, holds or is a link to a protected
    /// folder or to what holds one, however either of them is spelt or mounted.
    [[nodiscard]] platform::SystemResult<void> mayTake(const platform::Place& place) const;

    /// What the paths mean now; to be asked when the user is shown them.
    [[nodiscard]] ResolvedPaths resolve(const std::vector<std::string>& paths) const;

    /// True when the place, which was found for the path, is what the path meant then, and what stands there
    /// is what stood there. Nothing may stand there any more.
    static bool isAsResolved(const std::string& path, const platform::Place& place,
                             const ResolvedPaths& resolved);

    /// The protected folders that are there: what the remover spares wherever it meets them.
    [[nodiscard]] std::span<const platform::FolderIdentity> spared() const { return spared_; }

    /// The same for a path whose missing folders are made first. The application's own folder is no matter.
    [[nodiscard]] platform::SystemResult<platform::Place> placeWithFolders(const std::string& path) const;

    /// The opened home; absent when everything is refused.
    [[nodiscard]] const std::optional<platform::BaseFolder>& base() const { return base_; }
    [[nodiscard]] const std::string& home() const { return home_; }

    /// "outside your home folder: " and the path.
    static std::string outside(const std::string& path, Language language = currentLanguage());

  private:
    [[nodiscard]] bool isApplication(const std::string& path) const;
    [[nodiscard]] std::optional<std::string> relative(const std::string& path) const;
    [[nodiscard]] bool touchesOwnFolder(const std::string& path, const std::string& found) const;
    [[nodiscard]] bool isSpared(std::span<const platform::FolderIdentity> folders) const;
    /// True when the path, links followed, leads to, into or above a protected folder.
    [[nodiscard]] bool leadsToSpared(const std::string& path) const;

    std::string home_;
    std::optional<platform::BaseFolder> base_;
    std::vector<std::string> ownFolders_; ///< As it is spelt, and where it really is.
    std::vector<std::string> protectedFolders_;
    std::vector<platform::FolderIdentity> spared_;
    std::set<platform::FolderIdentity> withSpared_; ///< These and all folders that hold one.
};

} // namespace lumo
