#pragma once

#include "LumoCore/Basics/Language.h"
#include "Platform/Place.h"

#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// Decides what may be touched in a home folder, and finds it. The home is opened once; whatever is decided
/// about a path is then done to a name in an open folder beneath it, so nobody can put something else in its
/// place between the two. Besides the home, applications directly inside /Applications may be touched.
class PathGuard final {
  public:
    /// A home that is empty, "/", relative or no folder makes a guard that refuses everything.
    explicit PathGuard(std::string home);

    /// Why one of the paths may not be touched, in words for the user; absent when all may. Refused are paths
    /// that are not spelt out ("..", ".", doubled slashes), the home itself, what leaves the home over a
    /// link, and what is, holds or lies in the application's own folder. What does not exist may be touched.
    [[nodiscard]] std::optional<std::string> refusal(const std::vector<std::string>& paths,
                                                     Language language = currentLanguage()) const;

    /// Where the path is. Fails with EXDEV where it may not be touched, as missing where its folder is.
    [[nodiscard]] platform::SystemResult<platform::Place> place(const std::string& path) const;

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

    std::string home_;
    std::optional<platform::BaseFolder> base_;
    std::vector<std::string> ownFolders_; ///< As it is spelt, and where it really is.
};

} // namespace lumo
