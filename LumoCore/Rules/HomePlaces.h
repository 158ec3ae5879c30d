#pragma once

#include "LumoCore/Basics/System.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo {

/// Where the usual places of a home really are. On Linux people have their folders in their own language
/// (XDG user directories), and move caches and settings elsewhere by variables (XDG base directories, and the
/// tools' own). Nothing is moved on macOS.
class HomePlaces final {
  public:
    /// What the environment says of a variable; absent when it is not set.
    using Variables = std::function<std::optional<std::string>(const std::string& name)>;

    /// Places that are where they usually are.
    explicit HomePlaces(std::string home, System system = currentSystem());

    /// As that home's user-dirs.dirs and the variables say. A variable counts only when it names a folder
    /// spelt out below the home that neither is nor holds a main folder of the user's, a base folder or
    /// what an earlier variable names: what is in it will be taken for a cache.
    HomePlaces(std::string home, System system, const Variables& variables);

    /// Of this machine, now. The variables of this process say nothing about a home that is not $HOME.
    static HomePlaces ofThisMachine(const std::string& home, System system = currentSystem());

    [[nodiscard]] const std::string& home() const { return home_; }
    [[nodiscard]] System system() const { return system_; }

    /// Where a place such as "~/.cache/pip" is, in the same form. What lies outside the home is given as an
    /// absolute path.
    [[nodiscard]] std::string placed(std::string_view usual) const;

    /// The same as an absolute path.
    [[nodiscard]] std::string path(std::string_view usual) const;

    /// Where the absolute path would be in a home in which nothing is moved: the way back from `path`.
    [[nodiscard]] std::string usual(std::string_view path) const;

    /// Where programs keep their files side by side, each in a folder of its own (the XDG base directories),
    /// as absolute paths; none on macOS.
    [[nodiscard]] std::vector<std::string> baseFolders() const;

    /// The main folders of the user's ("Desktop", "Documents" and so on) as absolute paths, where they are.
    [[nodiscard]] std::vector<std::string> mainFolders() const;

    struct Named;

  private:
    void moveMainFolders(const std::string& settings);
    void moveFolder(std::string_view usual, const std::string& path);
    void moveByVariable(const Named& folder, const Variables& variables);
    [[nodiscard]] bool mayBeTaken(const std::string& path) const;

    std::string home_;
    System system_;
    std::vector<std::pair<std::string, std::string>> moved_; ///< Usual place and real one, the longest first.
    std::vector<std::string> taken_;                         ///< What variables name, absolute.
};

} // namespace lumo
