#pragma once

#include "LumoCore/Basics/Result.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Paths that come from outside the process: from a person, an option, a preference, a file or an agent. All
/// are read here, so that what is compared later is spelled alike.
namespace tarvo {

/// What is done with a link in the last place of a path.
enum class LastLink {
    followed, ///< The folder it leads to is meant.
    kept,     ///< The link itself is meant, unless a slash follows it.
};

/// The absolute path that a word means: "~" and "~/x" are in the home, relative ones below `from` (the
/// working directory when it is empty), "." and "..", doubled and final slashes are resolved, and existing
/// folders on the way through their links. What lies beneath the home as it really is begins with `home` as
/// it is spelled here. What does not exist keeps its name; an empty word, or one that cannot be resolved,
/// comes back as it is.
std::string pathMeant(std::string_view word, const std::string& home, LastLink last = LastLink::kept,
                      const std::string& from = {});

/// The same for folders in a list. Of one that is a link both are meant, the link and where it leads.
std::vector<std::string> pathsMeant(const std::vector<std::string>& words, const std::string& home);

/// The home to work on, absolute: the folder that was named, or else $HOME. A failure says in the interface
/// language that there is no such folder, and which remedy there is.
lumo::Result<std::string> givenHome(const std::optional<std::string>& named);

} // namespace tarvo
