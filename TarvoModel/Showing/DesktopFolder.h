#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Where the user's desktop is.
namespace tarvo {

/// home + "/Desktop". Where that is missing and the user's folders have names in another language, the one
/// that the desktop's own settings name (XDG user directories), whether it is there or not.
std::string desktopFolder(const std::string& home);

/// The desktop that such settings name; absent when they name none, or the home folder itself, which is how
/// they say that there is none.
std::optional<std::string> namedDesktop(std::string_view settings, const std::string& home);

} // namespace tarvo
